// The settings of the conductivity tests of the baths.
import QtQuick
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.gui
import brovik.settings
import main

BrovikFlickable {
    id: root

    spacing: Common.spacing

    SettingsStepBox {
        title: "Leitwertprüfung Allgemein"

        NumberRow {
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

    Item {
        Layout.preferredHeight: Common.spacing
    }

    PageReporter {
        page: root
        pageEnum: Gui.PageSettingsElectrolyte
    }

    Component.onCompleted: Common.settingsElecrolyteIndex = StackLayout.index
}
