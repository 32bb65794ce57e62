// A check of the run that can be turned off, behind a line.
import QtQuick.Layouts

import brovik.components

ColumnLayout {
    id: root

    property alias key: row.key
    property alias description: row.description
    property alias switchWidth: row.switchWidth

    BrovikBoxSeparatorLine {
        noMargins: true
    }

    SettingSwitchRow {
        id: row
    }
}
