// Ties a spin box to a setting: its range, what it shows, and what is sent.
import QtQml

import brovik.base
import brovik.settings

MyStoredValue {
    id: root

    required property MyFloatingPointSpinBox spinBox
    required property string key
    // Sends what the operator changes. Otherwise, what the backend has changed itself goes back to it once, too.
    property bool operatorOnly: false
    readonly property real defaultValue: setting.defaultValue
    // The range, in the units of the spin box.
    readonly property int lowest: Math.round(setting.lowest * root.spinBox.factor)
    readonly property int highest: Math.round(setting.highest * root.spinBox.factor)

    readonly property Setting stored: Setting {
        id: setting

        key: root.key
    }

    function send() {
        // The way back from a refused wish would be a wish against one that is only late.
        if (!root.rereading) {
            setting.send(root.spinBox.realValue);
        }
    }

    target: root.spinBox
    name: "value"
    value: Math.round(setting.value * root.spinBox.factor)

    // Connected late, so that the first value is not sent.
    Component.onCompleted: {
        const change = root.operatorOnly ? root.spinBox.valueModified : root.spinBox.realValueChanged;
        change.connect(root.send);
    }
}
