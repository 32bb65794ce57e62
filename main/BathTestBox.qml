// The box of a bath on the automatic page. During a run it shows the limits of the run, else those of the settings.
import brovik.auto
import brovik.components
import brovik.settings

ElectrolyteBox {
    id: root

    // Its settings, of BrovikSettings.
    required property int minimumKey
    required property int setpointKey
    required property int nameKey
    required property int minimumOfRun
    required property int setpointOfRun

    product: name.value
    minimum: Auto_.active ? root.minimumOfRun : storedMinimum.value
    setpoint: Auto_.active ? root.setpointOfRun : storedSetpoint.value
    sbMinimum.from: storedMinimum.lowest
    sbMinimum.to: storedMinimum.highest
    sbSetpoint.to: storedSetpoint.highest

    NumberSetting {
        id: storedMinimum

        key: root.minimumKey
    }

    NumberSetting {
        id: storedSetpoint

        key: root.setpointKey
    }

    TextSetting {
        id: name

        key: root.nameKey
    }

    sbMinimum.onValueModified: storedMinimum.send(root.sbMinimum.value)
    sbSetpoint.onValueModified: storedSetpoint.send(root.sbSetpoint.value)
}
