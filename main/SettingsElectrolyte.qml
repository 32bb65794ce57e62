// The settings of the conductivity tests of the baths.
import QtQuick
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.gui
import brovik.settings
import main

SettingsPage {
    id: root

    pageEnum: Gui.PageSettingsElectrolyte

    SettingsStepBox {
        title: "Leitwertprüfung Allgemein"

        SettingNumberRow {
            key: BrovikSettings.LwTestHoldSecs
            operatorOnly: true
            description: "Sekunden, die der Sollwert gehalten werden muss, um die Leitwertprüfung abzuschließen"
        }
    }

    BathBox {
        title: "Leitwertprüfung Säure (linkes Becken)"
        medium: "Säure"
        minimumKey: BrovikSettings.LwSaureMin
        setpointKey: BrovikSettings.LwSaureSp
        nameKey: BrovikSettings.LwSaureName
    }

    BathBox {
        title: "Leitwertprüfung Lauge (rechtes Becken)"
        medium: "Lauge"
        minimumKey: BrovikSettings.LwLaugeMin
        setpointKey: BrovikSettings.LwLaugeSp
        nameKey: BrovikSettings.LwLaugeName
    }

    Component.onCompleted: Common.settingsElecrolyteIndex = StackLayout.index
}
