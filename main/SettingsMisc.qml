// The checks of the run, and the calibration of the sensors.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.config
import brovik.gui
import brovik.sensor
import brovik.settings
import main

SettingsPage {
    id: root

    readonly property int switchWidth: 100

    pageEnum: Gui.PageSettingsMisc

    SettingsStepBox {
        title: "Verschiedene Prüfungen"

        Label {
            Layout.fillWidth: true
            font.italic: true
            wrapMode: Text.WordWrap
            text: "Solange es kein Problem mit folgenden Prüfungen gibt, wird dringend davon abgeraten, diese zu deaktivieren. Bei Problemen kontaktieren Sie bitte die Fa. Brovik und deaktivieren Sie die entsprechende Prüfung nur temporär."
        }

        CheckRow {
            key: BrovikSettings.TestLeakageP
            description: "Führe zu Beginn der Automatik eine Dichtheitsprüfung des Systems durch"
            switchWidth: root.switchWidth
        }

        CheckRow {
            key: BrovikSettings.TestLwWaterHot
            description: "Prüfe während Spülen auf Heißwasser"
            switchWidth: root.switchWidth
        }

        CheckRow {
            key: BrovikSettings.TestLwWaterCold
            description: "Prüfe während Spülen auf Kaltwasser"
            switchWidth: root.switchWidth
        }

        CheckRow {
            key: BrovikSettings.TestLwKreisLauge
            description: "Prüfe während Kreislauf Lauge auf Lauge"
            switchWidth: root.switchWidth
        }

        CheckRow {
            key: BrovikSettings.TestLwKreisSaure
            description: "Prüfe während Kreislauf Säure auf Säure"
            switchWidth: root.switchWidth
        }

        CheckRow {
            visible: Config.hasLevelSwitch
            key: BrovikSettings.TestLaugeLevel
            description: "Prüfe Füllstand Laugebecken für die Heizungsautomatik"
            switchWidth: root.switchWidth
        }
    }

    CalibrationBox {
        title: "Drucksensor kalibrieren (System muss drucklos sein!)"
        offset: BrovikSettings.pOffset
        unit: "bar"

        onCalibrate: BrovikSettings.toPy(BrovikSettings.POffsetSet, null)
        onReset: BrovikSettings.toPy(BrovikSettings.POffsetReset, null)
    }

    CalibrationBox {
        visible: Sensor.lwType === SensorEnums.Seli_SLI_03
        title: "Leitwertsensor kalibrieren (System muss gespült und leer sein!)"
        offset: BrovikSettings.lwOffset
        unit: "mS/cm"

        onCalibrate: BrovikSettings.toPy(BrovikSettings.LwOffsetSet, null)
        onReset: BrovikSettings.toPy(BrovikSettings.LwOffsetReset, null)
    }

    Component.onCompleted: Common.settingsMiscIndex = StackLayout.index
}
