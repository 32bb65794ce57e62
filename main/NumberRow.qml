// A setting that is a number, on a settings page.
import brovik.components
import main

SettingsStepBoxSpinBox {
    id: root

    // One of BrovikSettings.
    required property int key
    property alias operatorOnly: number.operatorOnly
    // The range of the setting, in the units of the spin box.
    readonly property alias lowest: number.lowest
    readonly property alias highest: number.highest

    defaultValue: number.defaultValue
    from: root.lowest
    to: root.highest

    SettingNumber {
        id: number

        key: root.key
        spinBox: root.spinBox
    }
}
