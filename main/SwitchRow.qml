// A setting that is on or off, on a settings page.
import brovik.base
import brovik.components
import brovik.settings

SettingsStepBoxSwitch {
    id: root

    // One of BrovikSettings.
    required property int key

    defaultValue: setting.defaultValue

    SwitchSetting {
        id: setting

        key: root.key
    }

    MyStoredValue {
        target: root.switch_
        name: "checked"
        value: setting.value
    }

    switch_.onToggled: setting.send(root.checked)
}
