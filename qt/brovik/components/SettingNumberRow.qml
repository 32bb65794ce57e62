// A setting that is a number: its control, tied to what is stored.
import brovik.components

SettingsStepBoxSpinBox {
    id: root

    // One of BrovikSettings.
    required property int key
    property alias operatorOnly: binder.operatorOnly
    // The range of the setting, in the units of the spin box.
    readonly property alias lowest: binder.lowest
    readonly property alias highest: binder.highest

    defaultValue: binder.defaultValue
    from: root.lowest
    to: root.highest

    SettingNumberBinder {
        id: binder

        key: root.key
        spinBox: root.spinBox
    }
}
