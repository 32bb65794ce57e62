// A switch for a setting of the run to come; locked during a run.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.auto
import brovik.components

Switch {
    id: root

    // One of BrovikSettings.
    required property int key

    Layout.alignment: Qt.AlignHCenter
    enabled: !Auto_.active

    SettingSwitchBinder {
        key: root.key
        control: root
    }
}
