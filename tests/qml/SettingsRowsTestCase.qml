// A test of the rows of the settings pages. Its tables say what stands there.
import QtQuick
import QtQuick.Controls.Material

import kubelor.test
import main
import "items.js" as Items
import "settings.js" as Names

ScreenTestCase {
    id: root

    readonly property Component pagesComponent: Component {
        // One below the other and as high as they are, so that every row can be clicked.
        Column {
            readonly property alias run: run
            readonly property alias baths: baths
            readonly property alias misc: misc

            anchors.fill: parent

            SettingsAuto {
                id: run

                width: parent.width
                height: 4500
            }

            SettingsElectrolyte {
                id: baths

                width: parent.width
                height: 1000
            }

            SettingsMisc {
                id: misc

                width: parent.width
                height: 1000
            }
        }
    }

    property Item pages

    // Page, setting, text on a machine of 2024 with steam, decimals, step, lowest, highest and default as shown.
    readonly property var numbers: [
        ["run", "intenseFactor", "Faktor, um den der Lauge- bzw. Säure-Kreislauf verlängert wird (Schritte 4, 7)", 1, 5, 15, 100, 30],
        ["run", "thresholdLwWater", "Leitwert in mS/cm, ab dem das Medium als Wasser erkannt wird", 2, 5, 5, 130, 10],
        ["run", "thresholdLwElectrolyte", "Leitwert in mS/cm, ab dem das Medium als Lauge/Säure erkannt wird", 2, 5, 15, 500, 150],
        ["run", "secsBlowMin", "Sekunden, die das Fass ausgeblasen werden soll, bevor der tatsächliche Leitwert berücksichtigt wird (Schritte 2, 5, 8, 11)", 0, 1, 1, 20, 5],
        ["run", "secsPump", "Sekunden, die pro Durchgang gespült werden soll. (Schritte 3, 6, 9)", 0, 1, 5, 20, 5],
        ["run", "secsBlowAfterPump", "Sekunden, die pro Durchgang nach dem Spülen ausgeblasen werden soll (Schritte 3, 6, 9)", 0, 1, 1, 20, 3],
        ["run", "leakagePFill", "Druck in bar, der erreicht werden soll", 1, 1, 3, 10, 5],
        ["run", "leakagePIncRate", "Zumindest erforderliche Drucksteigerung in bar/s", 2, 1, 1, 20, 3],
        ["run", "leakagePHoldSecs", "Sekunden, die der Druck nach dem Spannen gehalten werden soll", 0, 1, 1, 20, 3],
        ["run", "leakagePMaxLoss", "Druck in bar, der während des Haltens maximal abfallen darf", 2, 1, 1, 20, 7],
        ["run", "blowAfterEmptySecs", "Sekunden, die das Fass weiterhin ausgeblasen werden soll, nachdem es fertig ausgeblasen wurde (um das verbleibende CO2 auszublasen)", 0, 1, 1, 60, 10],
        ["run", "laugeKreisSecs", "Sekunden, die die Lauge durch das Fass im Kreis gepumpt werden soll", 0, 1, 10, 600, 100],
        ["run", "hotKreisFillSecsLegacy", "Sekunden, die der Kreislauf mit Wasser gefüllt wird", 0, 1, 1, 20, 6],
        ["run", "hotKreisCleanSecsLegacy", "Sekunden, die das Wasser weiterhin im Kreis gepumpt wird", 0, 1, 1, 20, 6],
        ["run", "saureKreisSecs", "Sekunden, die die Säure durch das Fass im Kreis gepumpt werden soll", 0, 1, 10, 600, 100],
        ["run", "coldKreisFillSecsLegacy", "Sekunden, die der Kreislauf mit Wasser gefüllt wird", 0, 1, 1, 20, 6],
        ["run", "coldKreisCleanSecsLegacy", "Sekunden, die das Wasser weiterhin im Kreis gepumpt wird", 0, 1, 1, 20, 6],
        ["run", "steamSterilizationSecs", "Sekunden, die das Fass sterilisiert werden soll", 0, 1, 15, 180, 40],
        ["run", "steamCo2BlowSecs", "Sekunden, die nach dem Sterilisieren durchgehend mit CO2 ausgeblasen werden soll", 0, 1, 1, 20, 3],
        ["run", "co2BlowAfterEmptySecs", "Sekunden, die das Fass weiterhin mit CO2 ausgeblasen werden soll, nachdem es leer ist (dabei wird das CO2 getaktet)", 0, 1, 1, 60, 5],
        ["run", "vorspannenP", "Druck in Bar, mit dem vorgespannt werden soll", 1, 1, 1, 20, 7],
        ["baths", "lwTestHoldSecs", "Sekunden, die der Sollwert gehalten werden muss, um die Leitwertprüfung abzuschließen", 0, 1, 5, 30, 20],
        ["baths", "lwSaureMin", "Der Leitwert in mS/cm, den die Säure mindestens haben muss", 0, 1, 1, 50, 10],
        ["baths", "lwSaureSp", "Der Leitwert-Sollwert in mS/cm, den die Säure beim Auffrischen erreichen soll", 0, 1, 11, 100, 20],
        ["baths", "lwLaugeMin", "Der Leitwert in mS/cm, den die Lauge mindestens haben muss", 0, 1, 1, 50, 30],
        ["baths", "lwLaugeSp", "Der Leitwert-Sollwert in mS/cm, den die Lauge beim Auffrischen erreichen soll", 0, 1, 31, 100, 60]
    ]

    // Page, setting, text, default.
    readonly property var switches: [
        ["run", "intenseCleaning", "Intensivreinigung durchführen", false],
        ["run", "doSteamStep", "Dampfsterilisation durchführen", true],
        ["misc", "testLeakageP", "Führe zu Beginn der Automatik eine Dichtheitsprüfung des Systems durch", true],
        ["misc", "testLwWaterHot", "Prüfe während Spülen auf Heißwasser", true],
        ["misc", "testLwWaterCold", "Prüfe während Spülen auf Kaltwasser", true],
        ["misc", "testLwKreisLauge", "Prüfe während Kreislauf Lauge auf Lauge", true],
        ["misc", "testLwKreisSaure", "Prüfe während Kreislauf Säure auf Säure", true],
        ["misc", "testLaugeLevel", "Prüfe Füllstand Laugebecken für die Heizungsautomatik", true]
    ]

    readonly property var texts: [
        ["baths", "lwSaureName", "Produktname Säure: ", "SANAL®-SA 3"],
        ["baths", "lwLaugeName", "Produktname Lauge: ", "RIMALKAN®-HAT 26"]
    ]

    function prepare() {
        Backend.run("config.Config.has_steam_valve, sensor.Sensor.lw_type = True, sensor.SensorLwEnum.Seli_SLI_03");
        pages = createTemporaryObject(pagesComponent, parent);
        draw(pages);
    }

    function rows(page, part) {
        return Items.below(pages[page], item => item[part] !== undefined);
    }

    function row(page, key, part) {
        const found = rows(page, part).filter(item => item.key === Names.keyOf(key));
        compare(found.length, 1);
        return found[0];
    }

    function write(key, value) {
        Backend.runOnThread(`settings.SettingsValues.${Names.pythonName(key)} = ${value}`);
    }

    function takeWishes() {
        answer = (key, value) => {
            const name = root.numbers.concat(root.switches).map(row => row[1]).find(name => Names.keyOf(name) === key);
            root.write(name, typeof value === "boolean" ? (value ? "True" : "False") : `type(settings.SettingsValues.${Names.pythonName(name)})(${value})`);
        };
    }

    function markOf(row, value) {
        return ` <i><font color="${row.Material.accent}">(Default: ${value})</font></i>`;
    }
}
