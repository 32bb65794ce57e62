// Ties a switch to a setting: what it shows, and what is sent.
import QtQml
import QtQuick.Templates as T

import brovik.base
import brovik.settings

MyStoredValue {
    id: root

    // One of BrovikSettings.
    required property int key
    required property T.Switch control
    readonly property bool defaultValue: setting.defaultValue

    readonly property QtObject sending: QtObject {
        readonly property SwitchSetting setting: SwitchSetting {
            id: setting

            key: root.key
        }

        readonly property Connections operator: Connections {
            target: root.control

            function onToggled() {
                setting.send(root.control.checked);
            }
        }
    }

    target: root.control
    name: "checked"
    value: setting.value
}
