// The limits and the product name of a bath.
import brovik.components
import main

SettingsStepBox {
    id: root

    // "Säure" or "Lauge".
    required property string medium
    // What the names of its settings begin with.
    required property string key

    NumberRow {
        id: minimum

        key: `${root.key}Min`
        operatorOnly: true
        description: `Der Leitwert in mS/cm, den die ${root.medium} mindestens haben muss`
    }

    BrovikBoxSeparatorLine {
        noMargins: true
    }

    NumberRow {
        key: `${root.key}Sp`
        operatorOnly: true
        description: `Der Leitwert-Sollwert in mS/cm, den die ${root.medium} beim Auffrischen erreichen soll`
        from: minimum.value + 1
    }

    BrovikBoxSeparatorLine {
        noMargins: true
    }

    TextRow {
        key: `${root.key}Name`
        text: `Produktname ${root.medium}: `
    }
}
