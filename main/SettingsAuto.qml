// The settings of the cleaning, in the order of its steps.
import QtQuick
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.config
import brovik.gui
import brovik.settings
import main

SettingsPage {
    id: root

    pageEnum: Gui.PageSettingsAuto

    SettingsStepBox {
        title: "Intensivreinigung"

        SettingSwitchRow {
            key: BrovikSettings.IntenseCleaning
            description: "Intensivreinigung durchführen"
            switchWidth: intenseFactor.spinBox.width
        }

        SettingNumberRow {
            id: intenseFactor

            key: BrovikSettings.IntenseFactor
            description: `Faktor, um den der Lauge- bzw. Säure-Kreislauf verlängert wird ${privat.legacy ? "(Schritte 4, 9)" : "(Schritte 4, 7)"}`
            precision: 1
            stepSize: 5
        }
    }

    SettingsStepBox {
        title: "Allgemeine Einstellungen, die alle Schritte betreffen:"

        // The two thresholds stay at least one step apart.
        SettingNumberRow {
            id: thresholdLwWater

            key: BrovikSettings.ThresholdLwWater
            description: "Leitwert in mS/cm, ab dem das Medium als Wasser erkannt wird"
            precision: 2
            stepSize: 5
            to: Math.min(thresholdLwWater.highest, thresholdLwElectrolyte.value - thresholdLwWater.stepSize)
        }

        BrovikBoxSeparatorLine {
            noMargins: true
        }

        SettingNumberRow {
            id: thresholdLwElectrolyte

            key: BrovikSettings.ThresholdLwElectrolyte
            description: "Leitwert in mS/cm, ab dem das Medium als Lauge/Säure erkannt wird"
            precision: 2
            stepSize: 5
            from: Math.max(thresholdLwElectrolyte.lowest, thresholdLwWater.value + thresholdLwElectrolyte.stepSize)
        }

        BrovikBoxSeparatorLine {
            noMargins: true
        }

        SettingNumberRow {
            key: BrovikSettings.SecsBlowMin
            description: `Sekunden, die das Fass ausgeblasen werden soll, bevor der tatsächliche Leitwert berücksichtigt wird (Schritte 2, 5, ${privat.blowSteps})`
        }

        BrovikBoxSeparatorLine {
            noMargins: true
        }

        SettingNumberRow {
            key: BrovikSettings.SecsPump
            description: `Sekunden, die pro Durchgang gespült werden soll. ${privat.pumpSteps}`
        }

        BrovikBoxSeparatorLine {
            noMargins: true
        }

        SettingNumberRow {
            key: BrovikSettings.SecsBlowAfterPump
            description: `Sekunden, die pro Durchgang nach dem Spülen ausgeblasen werden soll ${privat.pumpSteps}`
        }
    }

    SettingsStepBox {
        num: 1
        title: "Es wird eine Dichtheitsprobe durchgeführt, bevor der eigentliche Automatikbetrieb gestartet wird (gilt auch für Leitwertprüfung)."

        SettingNumberRow {
            key: BrovikSettings.LeakagePFill
            description: "Druck in bar, der erreicht werden soll"
            precision: 1
        }

        SettingNumberRow {
            key: BrovikSettings.LeakagePIncRate
            description: "Zumindest erforderliche Drucksteigerung in bar/s"
            precision: 2
        }

        SettingNumberRow {
            key: BrovikSettings.LeakagePHoldSecs
            description: "Sekunden, die der Druck nach dem Spannen gehalten werden soll"
        }

        SettingNumberRow {
            key: BrovikSettings.LeakagePMaxLoss
            description: "Druck in bar, der während des Haltens maximal abfallen darf"
            precision: 2
        }
    }

    SettingsStepBox {
        num: 2
        title: privat.emptying

        SettingNumberRow {
            key: BrovikSettings.BlowAfterEmptySecs
            description: "Sekunden, die das Fass weiterhin ausgeblasen werden soll, nachdem es fertig ausgeblasen wurde (um das verbleibende CO2 auszublasen)"
        }

        SettingsStepBoxAdditional {
            text: privat.additionalSettings2
        }
    }

    GeneralStepBox {
        num: 3
        title: "Das Fass wird in drei Durchgängen mit Heißwasser gespült." + privat.blow1
    }

    SettingsStepBox {
        num: 4
        title: "Das Fass wird mit Lauge gereinigt."

        SettingNumberRow {
            key: BrovikSettings.LaugeKreisSecs
            description: "Sekunden, die die Lauge durch das Fass im Kreis gepumpt werden soll"
        }
    }

    GeneralStepBox {
        num: 5
        title: "Die Lauge wird mittels Druckluft in das Laugebecken zurückgefördert."
    }

    GeneralStepBox {
        num: 6
        title: privat.emptying
    }

    SettingsStepBox {
        visible: privat.legacy
        num: 7
        title: "Der Kreislauf wird mit Heißwasser gespült."

        SettingNumberRow {
            key: BrovikSettings.HotKreisFillSecsLegacy
            description: privat.cleanSecs1
        }

        SettingNumberRow {
            key: BrovikSettings.HotKreisCleanSecsLegacy
            description: privat.cleanSecs2
        }
    }

    GeneralStepBox {
        visible: privat.legacy
        num: 8
        title: "Das Fass wird in einem Durchgang mit Heißwasser gespült." + privat.blow1
    }

    SettingsStepBox {
        num: privat.legacy ? 9 : 7
        title: "Das Fass wird mit Säure gereinigt."

        SettingNumberRow {
            key: BrovikSettings.SaureKreisSecs
            description: "Sekunden, die die Säure durch das Fass im Kreis gepumpt werden soll"
        }
    }

    GeneralStepBox {
        num: privat.legacy ? 10 : 8
        title: "Die Säure wird mittels CO2 in das Säurebecken zurückgefördert."
    }

    GeneralStepBox {
        num: privat.legacy ? 11 : 9
        title: "Das Fass wird in drei Durchgängen mit Kaltwasser gespült." + privat.blow2
    }

    SettingsStepBox {
        visible: privat.legacy
        num: 12
        title: "Der Kreislauf wird mit Kaltwasser gespült."

        SettingNumberRow {
            key: BrovikSettings.ColdKreisFillSecsLegacy
            description: privat.cleanSecs1
        }

        SettingNumberRow {
            key: BrovikSettings.ColdKreisCleanSecsLegacy
            description: privat.cleanSecs2
        }
    }

    GeneralStepBox {
        visible: privat.legacy
        num: 13
        title: "Das Fass wird in einem Durchgang mit Kaltwasser gespült." + privat.blow2
    }

    SettingsStepBox {
        visible: Config.hasSteamValve
        num: privat.steamNum
        title: "Das Fass wird mit Wasserdampf sterilisiert."

        SettingSwitchRow {
            key: BrovikSettings.DoSteamStep
            description: "Dampfsterilisation durchführen"
            switchWidth: steamSterilizationSecs.spinBox.width
        }

        SettingNumberRow {
            id: steamSterilizationSecs

            key: BrovikSettings.SteamSterilizationSecs
            description: "Sekunden, die das Fass sterilisiert werden soll" + privat.pressureHint
            spinBox.enabled: BrovikSettings.doSteamStep
        }

        SettingNumberRow {
            key: BrovikSettings.SteamCo2BlowSecs
            description: "Sekunden, die nach dem Sterilisieren durchgehend mit CO2 ausgeblasen werden soll"
            spinBox.enabled: BrovikSettings.doSteamStep
        }
    }

    SettingsStepBox {
        num: privat.co2Num
        title: "Das Fass wird noch eine gewisse Zeit mit CO2 (getaktet) ausgeblasen, um die noch enthaltene Luft möglichst gut zu vertreiben."

        SettingNumberRow {
            key: BrovikSettings.Co2BlowAfterEmptySecs
            description: "Sekunden, die das Fass weiterhin mit CO2 ausgeblasen werden soll, nachdem es leer ist (dabei wird das CO2 getaktet)"
        }

        SettingsStepBoxAdditional {
            text: privat.additionalSettings2
        }
    }

    SettingsStepBox {
        num: privat.co2Num + 1
        title: "Das Fass wird mit CO2 auf einen gewissen Druck vorgespannt."

        SettingNumberRow {
            key: BrovikSettings.VorspannenP
            description: "Druck in Bar, mit dem vorgespannt werden soll"
            precision: 1
        }
    }

    QtObject {
        id: privat

        readonly property bool legacy: Config.machineVersion === Config.MachineVersionLegacy
        // Without the step, the next one bears its number.
        readonly property int steamNum: privat.legacy ? 14 : 10
        readonly property int co2Num: privat.steamNum + (BrovikSettings.doSteamStep ? 1 : 0)

        readonly property string blowSteps: `${privat.legacy ? 10 : 8}, ${privat.co2Num}`
        readonly property string pumpSteps: privat.legacy ? "(Schritte 3, 6, 8, 11, 13)" : "(Schritte 3, 6, 9)"
        readonly property string pressureHint: Config.steamPressureSterilization ? " (die ersten 10 Sekunden wird das Fass mit Dampf gespült, die restliche Zeit wird es unter Druck gesetzt)" : ""

        readonly property string emptying: "Das Fass wird in den Kanal entleert und das beinhaltete Gas wird eine gewisse Zeit mit Druckluft ausgeblasen."
        readonly property string blow1: " Es wird mit Druckluft ausgeblasen."
        readonly property string blow2: " Es wird mit CO2 ausgeblasen."
        readonly property string cleanSecs1: "Sekunden, die der Kreislauf mit Wasser gefüllt wird"
        readonly property string cleanSecs2: "Sekunden, die das Wasser weiterhin im Kreis gepumpt wird"
        readonly property string additionalSettings2: "Weitere Einstellungen für diesen Schritt sind oben in 'Allgemeine Einstellungen' enthalten."
    }

    Component.onCompleted: Common.settingsAutoIndex = StackLayout.index
}
