// The box of a step that has no settings of its own.
import brovik.components

SettingsStepBox {
    id: root

    SettingsStepBoxAdditional {
        noSeparator: true
        text: "Einstellungen für diesen Schritt sind oben in 'Allgemeine Einstellungen' enthalten."
    }
}
