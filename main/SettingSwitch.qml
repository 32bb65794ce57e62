// A switch for a setting of the run to come; locked during a run.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.auto
import brovik.base
import brovik.settings

Switch {
    id: root

    // One of BrovikSettings.
    required property int key

    Layout.alignment: Qt.AlignHCenter
    enabled: !Auto_.active

    SwitchSetting {
        id: setting

        key: root.key
    }

    MyStoredValue {
        target: root
        name: "checked"
        value: setting.value
    }

    onToggled: setting.send(root.checked)
}
