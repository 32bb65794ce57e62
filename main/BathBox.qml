// The limits and the product name of a bath.
import brovik.components

SettingsStepBox {
    id: root

    // "Säure" or "Lauge".
    required property string medium
    // Its settings, of BrovikSettings.
    required property int minimumKey
    required property int setpointKey
    required property int nameKey

    SettingNumberRow {
        id: minimum

        key: root.minimumKey
        operatorOnly: true
        description: `Der Leitwert in mS/cm, den die ${root.medium} mindestens haben muss`
    }

    BrovikBoxSeparatorLine {
        noMargins: true
    }

    SettingNumberRow {
        key: root.setpointKey
        operatorOnly: true
        description: `Der Leitwert-Sollwert in mS/cm, den die ${root.medium} beim Auffrischen erreichen soll`
        from: minimum.value + 1
    }

    BrovikBoxSeparatorLine {
        noMargins: true
    }

    SettingTextRow {
        key: root.nameKey
        text: `Produktname ${root.medium}: `
    }
}
