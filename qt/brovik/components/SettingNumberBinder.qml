// Ties a spin box to a setting: its range, what it shows, and what is sent.
import QtQml

import brovik.base
import brovik.components
import brovik.settings

MyStoredNumber {
    id: root

    // One of BrovikSettings.
    required property int key
    // Sends what the operator changes. Otherwise, what the backend has changed itself goes back to it once, too.
    property bool operatorOnly: false
    readonly property real defaultValue: setting.defaultValue
    // The range, in the units of the spin box.
    readonly property int lowest: Math.round(setting.lowest * root.spinBox.factor)
    readonly property int highest: Math.round(setting.highest * root.spinBox.factor)

    readonly property QtObject sending: QtObject {
        readonly property NumberSetting setting: NumberSetting {
            id: setting

            key: root.key
        }

        readonly property SettingReturn giveBack: SettingReturn {
            setting: setting
            factor: root.spinBox.factor
            stored: root.stored
            enabled: !root.operatorOnly
            patience: root.patience
        }

        readonly property Connections operator: Connections {
            target: root.spinBox

            function onValueModified() {
                setting.send(root.spinBox.realValue);
            }
        }
    }

    stored: Math.round(setting.value * root.spinBox.factor)
}
