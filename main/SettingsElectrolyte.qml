// The settings of the conductivity tests of the baths.
import QtQuick
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.gui
import main

BrovikFlickable {
    id: root

    spacing: Common.spacing

    SettingsStepBox {
        title: "Leitwertprüfung Allgemein"

        NumberRow {
            key: "lwTestHoldSecs"
            operatorOnly: true
            description: "Sekunden, die der Sollwert gehalten werden muss, um die Leitwertprüfung abzuschließen"
        }
    }

    BathBox {
        title: "Leitwertprüfung Säure (linkes Becken)"
        medium: "Säure"
        key: "lwSaure"
    }

    BathBox {
        title: "Leitwertprüfung Lauge (rechtes Becken)"
        medium: "Lauge"
        key: "lwLauge"
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
