import QtQuick
import QtQuick.Controls.Material

import brovik.settings
import kubelor.test
import main
import "items.js" as Items
import "settings.js" as Names

// Every row of the settings pages: what it shows, what it sends, and when.
Item {
    id: root

    width: 720
    height: 6500

    Component {
        id: pagesComponent

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

    ScreenTestCase {
        id: testCase

        name: "SettingsRows"

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
            pages = createTemporaryObject(pagesComponent, root);
            waitForRendering(pages);
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
                const name = testCase.numbers.concat(testCase.switches).map(row => row[1]).find(name => Names.keyOf(name) === key);
                testCase.write(name, typeof value === "boolean" ? (value ? "True" : "False") : `type(settings.SettingsValues.${Names.pythonName(name)})(${value})`);
            };
        }

        function markOf(row, value) {
            return ` <i><font color="${row.Material.accent}">(Default: ${value})</font></i>`;
        }

        // A step that the range allows, away from the default.
        function stepOf(data) {
            const up = data.value + data.step <= data.to;
            return {direction: up ? "up" : "down", value: data.value + (up ? data.step : -data.step)};
        }

        function test_nothing_is_sent_on_construction() {
            compareSent([]);
        }

        // Whatever is stored.
        function test_nothing_is_sent_on_construction_with_other_values_data() {
            return [{tag: "lowest", bound: "Min"}, {tag: "highest", bound: "Max"}];
        }

        function test_nothing_is_sent_on_construction_with_other_values(data) {
            const stored = key => BrovikSettings[key + data.bound];
            const keys = numbers.map(row => row[1]);
            keys.forEach(key => write(key, stored(key)));
            switches.forEach(([, key, , value]) => write(key, value ? "False" : "True"));
            texts.forEach(([, key]) => write(key, "'Anders'"));
            Backend.settle();
            sent.clear();
            pages = createTemporaryObject(pagesComponent, root);
            waitForRendering(pages);
            Backend.settle();
            for (const [page, key, , precision] of numbers) {
                // A setpoint is held up by its minimum.
                const lowest = key.endsWith("Sp") ? stored(key.replace("Sp", "Min")) + 1 : stored(key);
                compare(row(page, key, "spinBox").value, Math.round(Math.max(stored(key), lowest) * Math.pow(10, precision)), key);
            }
            compareSent([]);
        }

        function test_rows_are_those_of_the_table() {
            for (const page of ["run", "baths", "misc"]) {
                const keys = table => table.filter(row => row[0] === page).map(row => Names.keyOf(row[1]));
                compare(rows(page, "spinBox").map(row => row.key), keys(numbers));
                compare(rows(page, "switch_").map(row => row.key), keys(switches));
                compare(rows(page, "field").map(row => row.key), keys(texts));
            }
        }

        function numberRows() {
            return numbers.map(([page, key, text, precision, step, from, to, value]) => ({tag: key, page, key, text, precision, step, from, to, value, factor: Math.pow(10, precision)}));
        }

        // The boxes of legacy machines are not there to be clicked on.
        function shown(data) {
            if (data.key.endsWith("Legacy")) {
                Backend.run("config.Config.machine_version = config.MachineVersion.Legacy");
                waitForRendering(pages);
            }
            const found = row(data.page, data.key, "spinBox");
            verify(found.visible);
            return found;
        }

        function test_number_data() {
            return numberRows();
        }

        function test_number(data) {
            const found = row(data.page, data.key, "spinBox");
            compare(found.description, data.text);
            compare(found.text, data.text);
            compare([found.precision, found.stepSize, found.from, found.to, found.value], [data.precision, data.step, data.from, data.to, data.value]);
            compare(found.defaultValue, BrovikSettings[data.key + "Default"]);
            compare(found.realValue, data.value / data.factor);
            compare(found.spinBox.displayText, (data.value / data.factor).toFixed(data.precision));
            verify(found.spinBox.editable);
            compare(found.spinBox.Accessible.name, data.text);
            compareSent([]);
        }

        function test_number_changed_by_the_operator_data() {
            return numberRows();
        }

        function test_number_changed_by_the_operator(data) {
            takeWishes();
            const found = shown(data);
            const description = found.description;
            const {direction, value} = stepOf(data);
            mouseClick(found.spinBox[direction].indicator);
            compare(found.value, value);
            compare(found.text, description + markOf(found, data.value / data.factor));
            tryCompare(BrovikSettings, data.key, value / data.factor);
            Backend.settle();
            compare(found.value, value);
            compareSent([[BrovikSettings, Names.keyOf(data.key), value / data.factor]]);
        }

        function test_number_refused_goes_back_data() {
            return numberRows();
        }

        function test_number_refused_goes_back(data) {
            const found = shown(data);
            const {direction, value} = stepOf(data);
            mouseClick(found.spinBox[direction].indicator);
            compare(found.value, value);
            tryCompare(found, "value", data.value);
            compare(found.text, found.description);
            compareSent([[BrovikSettings, Names.keyOf(data.key), value / data.factor]]);
        }

        function test_number_typed_data() {
            return numberRows();
        }

        function test_number_typed(data) {
            takeWishes();
            const found = shown(data);
            const {value} = stepOf(data);
            found.spinBox.contentItem.forceActiveFocus();
            found.spinBox.contentItem.selectAll();
            for (const character of (value / data.factor).toFixed(data.precision)) {
                keyClick(character);
            }
            keyClick(Qt.Key_Return);
            tryCompare(BrovikSettings, data.key, value / data.factor);
            compare(found.value, value);
            compareSent([[BrovikSettings, Names.keyOf(data.key), value / data.factor]]);
        }

        // What the backend changes comes back to it once, but for the numbers of the baths.
        function test_number_changed_by_the_backend_data() {
            return numberRows();
        }

        function test_number_changed_by_the_backend(data) {
            takeWishes();
            const found = row(data.page, data.key, "spinBox");
            const {value} = stepOf(data);
            write(data.key, value / data.factor);
            tryCompare(found, "value", value);
            compare(found.text, found.description + markOf(found, data.value / data.factor));
            Backend.settle();
            compareSent((data.page === "run" ? [[BrovikSettings, Names.keyOf(data.key), value / data.factor]] : []));
            write(data.key, data.value / data.factor);
            tryCompare(found, "value", data.value);
            compare(found.text, found.description);
        }

        function test_number_follows_its_bounds_data() {
            return numberRows();
        }

        function test_number_follows_its_bounds(data) {
            const found = row(data.page, data.key, "spinBox");
            const lowest = BrovikSettings[data.key + "Min"];
            const highest = BrovikSettings[data.key + "Max"];
            write(data.key + "Max", (data.to + 1) / data.factor);
            tryCompare(found, "to", data.to + 1);
            // Not that of the boxes that another one holds up.
            if (data.from === Math.round(lowest * data.factor)) {
                write(data.key + "Min", (data.from - 1) / data.factor);
                tryCompare(found, "from", data.from - 1);
            }
            compare(found.value, data.value);
            write(data.key + "Max", highest);
            write(data.key + "Min", lowest);
            tryCompare(found, "to", data.to);
            tryCompare(found, "from", data.from);
            compareSent([]);
        }

        function switchRows() {
            return switches.map(([page, key, text, value]) => ({tag: key, page, key, text, value}));
        }

        function test_switch_data() {
            return switchRows();
        }

        function test_switch(data) {
            const found = row(data.page, data.key, "switch_");
            compare(found.description, data.text);
            compare(found.text, data.text);
            compare(found.checked, data.value);
            compare(found.defaultValue, data.value);
            compare(found.switch_.Accessible.name, data.text);
        }

        function test_switch_changed_by_the_operator_data() {
            return switchRows();
        }

        function test_switch_changed_by_the_operator(data) {
            takeWishes();
            const found = row(data.page, data.key, "switch_");
            mouseClick(found.switch_);
            compare(found.text, data.text + markOf(found, data.value ? "ein" : "aus"));
            tryCompare(BrovikSettings, data.key, !data.value);
            Backend.settle();
            compare(found.checked, !data.value);
            compareSent([[BrovikSettings, Names.keyOf(data.key), !data.value]]);
        }

        function test_switch_refused_goes_back_data() {
            return switchRows();
        }

        function test_switch_refused_goes_back(data) {
            const found = row(data.page, data.key, "switch_");
            mouseClick(found.switch_);
            compare(found.checked, !data.value);
            tryCompare(found, "checked", data.value);
            compare(found.text, data.text);
            compareSent([[BrovikSettings, Names.keyOf(data.key), !data.value]]);
        }

        function test_switch_changed_by_the_backend_data() {
            return switchRows();
        }

        function test_switch_changed_by_the_backend(data) {
            const found = row(data.page, data.key, "switch_");
            write(data.key, data.value ? "False" : "True");
            tryCompare(found, "checked", !data.value);
            compare(found.text, data.text + markOf(found, data.value ? "ein" : "aus"));
            compareSent([]);
        }

        function textRows() {
            return texts.map(([page, key, text, value]) => ({tag: key, page, key, text, value}));
        }

        function type(found, text) {
            found.field.forceActiveFocus();
            for (const character of text) {
                keyClick(character);
            }
        }

        function pauseOf(row) {
            return Array.from({length: row.data.length}, (_, i) => row.data[i]).find(object => object.interval !== undefined);
        }

        function test_text_data() {
            return textRows();
        }

        function test_text(data) {
            const found = row(data.page, data.key, "field");
            compare(found.text, data.text);
            compare(found.product, data.value);
            compare(found.field.Accessible.name, data.text);
            compare(pauseOf(found).interval, 3000);
            verify(!pauseOf(found).running && !pauseOf(found).repeat);
        }

        function test_text_typed_in_several_bursts_is_sent_once_data() {
            return textRows();
        }

        function test_text_typed_in_several_bursts_is_sent_once(data) {
            const python = Names.pythonName(data.key);
            let sentAt = 0;
            answer = (key, value) => {
                sentAt = Date.now();
                Backend.runOnThread(`settings.SettingsValues.${python} = ${JSON.stringify(value)}`);
            };
            const found = row(data.page, data.key, "field");
            type(found, "ab");
            const first = Date.now();
            tryVerify(() => Date.now() - first > 500);
            type(found, "c");
            const last = Date.now();
            compare(found.product, data.value + "abc");
            compareSent([]);
            tryCompare(sent, "count", 1);
            // As the clock of the timer runs, which is coarse.
            verify(sentAt - last > 2900, sentAt - last);
            compareSent([[BrovikSettings, Names.keyOf(data.key), data.value + "abc"]]);
            compare(BrovikSettings[data.key], data.value + "abc");
            Backend.settle();
            compare(found.product, data.value + "abc");
            verify(!pauseOf(found).running);
        }

        // By the on-screen keyboard or from the clipboard, too.
        function test_text_changed_without_a_key_data() {
            return textRows();
        }

        function test_text_changed_without_a_key(data) {
            answer = (key, value) => Backend.runOnThread(`settings.SettingsValues.${Names.pythonName(data.key)} = ${JSON.stringify(value)}`);
            const found = row(data.page, data.key, "field");
            const pause = pauseOf(found);
            pause.interval = 1;
            found.product = "Neu";
            verify(pause.running);
            tryCompare(BrovikSettings, data.key, "Neu");
            Backend.settle();
            compare(found.product, "Neu");
            verify(!pause.running);
            compareSent([[BrovikSettings, Names.keyOf(data.key), "Neu"]]);
        }

        // It is a change like any other.
        function test_text_typed_and_taken_back_is_sent() {
            const found = row("baths", "lwSaureName", "field");
            type(found, "x");
            pauseOf(found).interval = 1;
            keyClick(Qt.Key_Backspace);
            tryCompare(sent, "count", 1);
            compareSent([[BrovikSettings, BrovikSettings.LwSaureName, "SANAL®-SA 3"]]);
            Backend.settle();
            verify(!pauseOf(found).running);
        }

        function test_text_refused_goes_back_data() {
            return textRows();
        }

        function test_text_refused_goes_back(data) {
            const found = row(data.page, data.key, "field");
            pauseOf(found).interval = 1;
            type(found, "x");
            tryCompare(sent, "count", 1);
            pauseOf(found).interval = 3000;
            tryCompare(found, "product", data.value);
            compareSent([[BrovikSettings, Names.keyOf(data.key), data.value + "x"]]);
        }

        function test_text_changed_by_the_backend_data() {
            return textRows();
        }

        function test_text_changed_by_the_backend(data) {
            const found = row(data.page, data.key, "field");
            write(data.key, "'<b>Neu</b>'");
            tryCompare(found, "product", "<b>Neu</b>");
            verify(!pauseOf(found).running);
            compareSent([]);
        }

        function test_text_changed_by_the_backend_while_it_is_typed() {
            const found = row("baths", "lwSaureName", "field");
            type(found, "x");
            write("lwSaureName", "'Neu'");
            tryCompare(BrovikSettings, "lwSaureName", "Neu");
            Backend.settle();
            compare(found.product, "SANAL®-SA 3x");
            pauseOf(found).interval = 1;
            type(found, "y");
            tryCompare(found, "product", "Neu");
            compareSent([[BrovikSettings, BrovikSettings.LwSaureName, "SANAL®-SA 3xy"]]);
        }
    }
}
