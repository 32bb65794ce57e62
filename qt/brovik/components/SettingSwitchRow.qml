// A setting that is on or off: its control, tied to what is stored.
import brovik.components

SettingsStepBoxSwitch {
    id: root

    // One of BrovikSettings.
    required property int key

    defaultValue: binder.defaultValue

    SettingSwitchBinder {
        id: binder

        key: root.key
        control: root.switch_
    }
}
