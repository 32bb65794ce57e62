// What all screens share: layout constants, colours, helper functions.
pragma Singleton

import QtQuick

Item {
    id: root

    property int spacing: 5
}
