// The checks of the run, and the calibration of the sensors.
pragma ComponentBehavior: Bound

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

BrovikFlickable {
    id: root

    readonly property int switchWidth: 100

    spacing: Common.spacing

    SettingsStepBox {
        title: "Verschiedene Prüfungen"

        Label {
            Layout.fillWidth: true
            font.italic: true
            wrapMode: Text.WordWrap
            text: "Solange es kein Problem mit folgenden Prüfungen gibt, wird dringend davon abgeraten, diese zu deaktivieren. Bei Problemen kontaktieren Sie bitte die Fa. Brovik und deaktivieren Sie die entsprechende Prüfung nur temporär."
        }

        Repeater {
            model: [
                {key: "testLeakageP", text: "Führe zu Beginn der Automatik eine Dichtheitsprüfung des Systems durch"},
                {key: "testLwWaterHot", text: "Prüfe während Spülen auf Heißwasser"},
                {key: "testLwWaterCold", text: "Prüfe während Spülen auf Kaltwasser"},
                {key: "testLwKreisLauge", text: "Prüfe während Kreislauf Lauge auf Lauge"},
                {key: "testLwKreisSaure", text: "Prüfe während Kreislauf Säure auf Säure"},
                {key: "testLaugeLevel", text: "Prüfe Füllstand Laugebecken für die Heizungsautomatik", needsLevelSwitch: true}
            ]

            ColumnLayout {
                id: check

                required property var modelData

                visible: Config.hasLevelSwitch || !modelData.needsLevelSwitch

                BrovikBoxSeparatorLine {
                    noMargins: true
                }

                SwitchRow {
                    key: check.modelData.key
                    description: check.modelData.text
                    switchWidth: root.switchWidth
                }
            }
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

    Item {
        Layout.preferredHeight: Common.spacing
    }

    PageReporter {
        page: root
        pageEnum: Gui.PageSettingsMisc
    }

    Component.onCompleted: Common.settingsMiscIndex = StackLayout.index
}
