import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.config
import brovik.gui
import brovik.settings
import kubelor.test
import main
import "items.js" as Items
import "settings.js" as Names

// The boxes of the settings pages.
Item {
    id: root

    width: 720
    height: 4500

    Component {
        id: runComponent

        SettingsAuto {
            anchors.fill: parent
        }
    }

    Component {
        id: bathsComponent

        SettingsElectrolyte {
            anchors.fill: parent
        }
    }

    Component {
        id: miscComponent

        SettingsMisc {
            anchors.fill: parent
        }
    }

    ScreenTestCase {
        name: "SettingsPages"

        readonly property string emptying: "Das Fass wird in den Kanal entleert und das beinhaltete Gas wird eine gewisse Zeit mit Druckluft ausgeblasen."
        readonly property string general: "Einstellungen für diesen Schritt sind oben in 'Allgemeine Einstellungen' enthalten."
        readonly property string further: "Weitere Einstellungen für diesen Schritt sind oben in 'Allgemeine Einstellungen' enthalten."

        // Number on a legacy machine and on others, with and without the steam step; title; settings; remark.
        readonly property var boxes: [
            {legacy: [0, 0], other: [0, 0], title: "Intensivreinigung", keys: ["intenseCleaning", "intenseFactor"]},
            {legacy: [0, 0], other: [0, 0], title: "Allgemeine Einstellungen, die alle Schritte betreffen:", keys: ["thresholdLwWater", "thresholdLwElectrolyte", "secsBlowMin", "secsPump", "secsBlowAfterPump"], lines: 4},
            {legacy: [1, 1], other: [1, 1], title: "Es wird eine Dichtheitsprobe durchgeführt, bevor der eigentliche Automatikbetrieb gestartet wird (gilt auch für Leitwertprüfung).", keys: ["leakagePFill", "leakagePIncRate", "leakagePHoldSecs", "leakagePMaxLoss"]},
            {legacy: [2, 2], other: [2, 2], title: emptying, keys: ["blowAfterEmptySecs"], remark: further, lines: 1},
            {legacy: [3, 3], other: [3, 3], title: "Das Fass wird in drei Durchgängen mit Heißwasser gespült. Es wird mit Druckluft ausgeblasen.", remark: general},
            {legacy: [4, 4], other: [4, 4], title: "Das Fass wird mit Lauge gereinigt.", keys: ["laugeKreisSecs"]},
            {legacy: [5, 5], other: [5, 5], title: "Die Lauge wird mittels Druckluft in das Laugebecken zurückgefördert.", remark: general},
            {legacy: [6, 6], other: [6, 6], title: emptying, remark: general},
            {legacy: [7, 7], title: "Der Kreislauf wird mit Heißwasser gespült.", keys: ["hotKreisFillSecsLegacy", "hotKreisCleanSecsLegacy"]},
            {legacy: [8, 8], title: "Das Fass wird in einem Durchgang mit Heißwasser gespült. Es wird mit Druckluft ausgeblasen.", remark: general},
            {legacy: [9, 9], other: [7, 7], title: "Das Fass wird mit Säure gereinigt.", keys: ["saureKreisSecs"]},
            {legacy: [10, 10], other: [8, 8], title: "Die Säure wird mittels CO2 in das Säurebecken zurückgefördert.", remark: general},
            {legacy: [11, 11], other: [9, 9], title: "Das Fass wird in drei Durchgängen mit Kaltwasser gespült. Es wird mit CO2 ausgeblasen.", remark: general},
            {legacy: [12, 12], title: "Der Kreislauf wird mit Kaltwasser gespült.", keys: ["coldKreisFillSecsLegacy", "coldKreisCleanSecsLegacy"]},
            {legacy: [13, 13], title: "Das Fass wird in einem Durchgang mit Kaltwasser gespült. Es wird mit CO2 ausgeblasen.", remark: general},
            {legacy: [14, 14], other: [10, 10], title: "Das Fass wird mit Wasserdampf sterilisiert.", keys: ["doSteamStep", "steamSterilizationSecs", "steamCo2BlowSecs"], steamValve: true},
            {legacy: [15, 14], other: [11, 10], title: "Das Fass wird noch eine gewisse Zeit mit CO2 (getaktet) ausgeblasen, um die noch enthaltene Luft möglichst gut zu vertreiben.", keys: ["co2BlowAfterEmptySecs"], remark: further, lines: 1},
            {legacy: [16, 15], other: [12, 11], title: "Das Fass wird mit CO2 auf einen gewissen Druck vorgespannt.", keys: ["vorspannenP"]}
        ]

        function prepare() {
            Backend.run("config.Config.has_steam_valve, sensor.Sensor.lw_type = True, sensor.SensorLwEnum.Seli_SLI_03");
        }

        function make(component) {
            const page = createTemporaryObject(component, root);
            draw(page);
            return page;
        }

        function boxesOf(page) {
            return Items.below(page, item => item instanceof SettingsStepBox);
        }

        function row(page, key) {
            return Items.below(page, item => item.key === Names.keyOf(key) && item.description !== undefined)[0];
        }

        function shownLines(box) {
            return Items.below(box, item => item instanceof BrovikBoxSeparatorLine && item.noMargins && item.visible).length;
        }

        function withText(page, text) {
            return Items.below(page, item => item.text === text)[0];
        }

        function columnOf(page) {
            return Items.below(page, item => item instanceof ColumnLayout)[0];
        }

        // What stands in a box below its title: "number", "switch", "text", "remark" and the lines between.
        function partsOf(box) {
            const kind = item => {
                if (item instanceof BrovikBoxSeparatorLine) {
                    return item.noMargins && item.visible ? "line" : undefined;
                }
                const kinds = {spinBox: "number", switch_: "switch", field: "text", noSeparator: "remark"};
                return kinds[Object.keys(kinds).find(part => item[part] !== undefined)];
            };
            return Items.below(box, kind).map(kind);
        }

        // Stands between each two of them.
        function separated(parts) {
            return parts.reduce((all, part) => all.concat(all.length ? ["line"] : [], part), []);
        }

        function test_pages_are_spaced_and_end_in_a_gap_data() {
            return [{tag: "run", component: runComponent}, {tag: "baths", component: bathsComponent}, {tag: "misc", component: miscComponent}];
        }

        function test_pages_are_spaced_and_end_in_a_gap(data) {
            const page = make(data.component);
            compare(page.spacing, Common.spacing);
            const column = columnOf(page);
            const gap = column.children[column.children.length - 1];
            compare([gap.children.length, gap.height], [0, Common.spacing]);
            compare(gap.y + gap.height, column.height);
        }

        function test_parts_of_the_boxes_of_the_run() {
            Backend.run("config.Config.machine_version = config.MachineVersion.Legacy");
            const number = count => Array(count).fill("number");
            const remark = ["remark"];
            const further = ["number", "remark", "line"];
            compare(boxesOf(make(runComponent)).map(partsOf), [["switch", "number"], separated(number(5)), number(4), further, remark, number(1), remark, remark, number(2), remark, number(1), remark, remark, number(2), remark, ["switch", "number", "number"], further, number(1)]);
        }

        function test_parts_of_the_boxes_of_the_baths() {
            const bath = separated(["number", "number", "text"]);
            compare(boxesOf(make(bathsComponent)).map(partsOf), [["number"], bath, bath]);
        }

        function test_parts_of_the_checks() {
            const page = make(miscComponent);
            compare(partsOf(boxesOf(page)[0]), ["line", ...separated(Array(6).fill("switch"))]);
            const hint = Items.below(page, item => item instanceof Label && item.font.italic)[0];
            verify(Items.bottomOf(hint) <= Items.topOf(row(page, "testLeakageP")));
        }

        function test_boxes_of_the_run_data() {
            const rows = [];
            for (const legacy of [true, false]) {
                for (const valve of [true, false]) {
                    for (const steam of [true, false]) {
                        rows.push({tag: `${legacy ? "legacy" : "2024"}, ${valve ? "" : "no "}steam valve, steam step ${steam ? "on" : "off"}`, legacy, valve, steam});
                    }
                }
            }
            return rows;
        }

        function test_boxes_of_the_run(data) {
            const page = make(runComponent);
            const python = value => value ? "True" : "False";
            Backend.runOnThread(`
config.Config.machine_version = config.MachineVersion.${data.legacy ? "Legacy" : "_2024"}
config.Config.has_steam_valve = ${python(data.valve)}
settings.SettingsValues.do_steam_step = ${python(data.steam)}`);
            const found = boxesOf(page);
            compare(found.length, boxes.length);
            const column = data.legacy ? "legacy" : "other";
            const index = data.steam ? 0 : 1;
            boxes.forEach((expected, i) => {
                const box = found[i];
                const there = expected[column] !== undefined && (data.valve || !expected.steamValve);
                tryCompare(box, "visible", there, 5000, expected.title);
                if (there) {
                    tryCompare(box, "num", expected[column][index]);
                }
                compare(box.title, expected.title);
                compare(Items.below(box, item => item.description !== undefined).map(item => item.key), (expected.keys ?? []).map(Names.keyOf));
                const remarks = Items.below(box, item => item instanceof SettingsStepBoxAdditional);
                compare(remarks.map(remark => remark.text), expected.remark ? [expected.remark] : []);
                if (there) {
                    compare(shownLines(box), expected.lines ?? 0);
                }
            });
        }

        // Not legacy, steam valve and steam step: 1 to 12 without a gap.
        function test_numbers_not_legacy_with_steam() {
            const page = make(runComponent);
            compare(boxesOf(page).filter(box => box.visible).map(box => box.num), [0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12]);
            verify(row(page, "secsBlowMin").text.endsWith("(Schritte 2, 5, 8, 11)"));
        }

        function test_numbers_not_legacy_without_steam() {
            Backend.run("config.Config.has_steam_valve = settings.SettingsValues.do_steam_step = False");
            compare(boxesOf(make(runComponent)).filter(box => box.visible).map(box => box.num).slice(-2), [10, 11]);
        }

        function test_numbers_legacy_with_the_steam_step_off() {
            Backend.run("config.Config.machine_version, settings.SettingsValues.do_steam_step = config.MachineVersion.Legacy, False");
            const page = make(runComponent);
            compare(boxesOf(page).filter(box => box.visible).map(box => box.num).slice(-3), [14, 14, 15]);
            verify(!row(page, "steamSterilizationSecs").spinBox.enabled);
            verify(!row(page, "steamCo2BlowSecs").spinBox.enabled);
        }

        function test_steam_numbers_are_enabled_with_the_steam_step() {
            const page = make(runComponent);
            for (const [code, enabled] of [["False", false], ["True", true]]) {
                Backend.runOnThread(`settings.SettingsValues.do_steam_step = ${code}`);
                tryCompare(row(page, "steamSterilizationSecs").spinBox, "enabled", enabled);
                tryCompare(row(page, "steamCo2BlowSecs").spinBox, "enabled", enabled);
            }
        }

        function test_steps_in_texts_data() {
            const pump = steps => ({secsPump: `gespült werden soll. (Schritte ${steps})`, secsBlowAfterPump: `nach dem Spülen ausgeblasen werden soll (Schritte ${steps})`});
            const legacy = Object.assign({intenseFactor: "verlängert wird (Schritte 4, 9)"}, pump("3, 6, 8, 11, 13"));
            const other = Object.assign({intenseFactor: "verlängert wird (Schritte 4, 7)"}, pump("3, 6, 9"));
            return [
                {tag: "legacy, steam step on", version: "Legacy", steam: "True", ends: Object.assign({secsBlowMin: "(Schritte 2, 5, 10, 15)"}, legacy)},
                {tag: "legacy, steam step off", version: "Legacy", steam: "False", ends: Object.assign({secsBlowMin: "(Schritte 2, 5, 10, 14)"}, legacy)},
                {tag: "2024, steam step on", version: "_2024", steam: "True", ends: Object.assign({secsBlowMin: "(Schritte 2, 5, 8, 11)"}, other)},
                {tag: "2024, steam step off", version: "_2024", steam: "False", ends: Object.assign({secsBlowMin: "(Schritte 2, 5, 8, 10)"}, other)}
            ];
        }

        function test_steps_in_texts(data) {
            const page = make(runComponent);
            Backend.run(`config.Config.machine_version, settings.SettingsValues.do_steam_step = config.MachineVersion.${data.version}, ${data.steam}`);
            for (const key in data.ends) {
                verify(row(page, key).description.endsWith(data.ends[key]), row(page, key).description);
            }
        }

        function test_steam_under_pressure_is_explained() {
            const steam = row(make(runComponent), "steamSterilizationSecs");
            Backend.run("config.Config.steam_pressure_sterilization = True");
            compare(steam.description, "Sekunden, die das Fass sterilisiert werden soll (die ersten 10 Sekunden wird das Fass mit Dampf gespült, die restliche Zeit wird es unter Druck gesetzt)");
        }

        function test_switches_are_as_wide_as_the_spin_box_below() {
            const page = make(runComponent);
            for (const [switchKey, numberKey] of [["intenseCleaning", "intenseFactor"], ["doSteamStep", "steamSterilizationSecs"]]) {
                verify(row(page, numberKey).spinBox.width > 0);
                compare(row(page, switchKey).switch_.width, row(page, numberKey).spinBox.width);
            }
        }

        function test_water_threshold_stays_below_the_electrolyte_threshold() {
            const page = make(runComponent);
            const water = row(page, "thresholdLwWater");
            const electrolyte = row(page, "thresholdLwElectrolyte");
            Backend.runOnThread("settings.SettingsValues.threshold_lw_electrolyte = 0.2");
            tryCompare(electrolyte, "value", 20);
            compare(water.to, 15);
            Backend.runOnThread("settings.SettingsValues.threshold_lw_water = 0.15");
            tryCompare(water, "value", 15);
            verify(!water.spinBox.up.indicator.enabled);
            compare(electrolyte.from, 20);
            verify(!electrolyte.spinBox.down.indicator.enabled);
            Backend.runOnThread("settings.SettingsValues.threshold_lw_electrolyte = 0.25");
            tryCompare(water, "to", 20);
            verify(water.spinBox.up.indicator.enabled);
        }

        // Whatever is stored.
        function test_thresholds_that_cross() {
            const page = make(runComponent);
            Backend.runOnThread("settings.SettingsValues.threshold_lw_water = 1.3\nsettings.SettingsValues.threshold_lw_electrolyte = 0.1");
            const water = row(page, "thresholdLwWater");
            const electrolyte = row(page, "thresholdLwElectrolyte");
            tryVerify(() => electrolyte.value - water.value >= 5 && electrolyte.from === water.value + 5);
        }

        function test_boxes_of_the_baths() {
            const found = boxesOf(make(bathsComponent));
            compare(found.map(box => box.title), ["Leitwertprüfung Allgemein", "Leitwertprüfung Säure (linkes Becken)", "Leitwertprüfung Lauge (rechtes Becken)"]);
            compare(found.map(shownLines), [0, 2, 2]);
            compare(found.map(box => box.num), [0, 0, 0]);
        }

        function test_setpoint_stays_above_the_minimum_data() {
            return [{tag: "lwSaure", python: "lw_saure"}, {tag: "lwLauge", python: "lw_lauge"}];
        }

        function test_setpoint_stays_above_the_minimum(data) {
            const setpoint = row(make(bathsComponent), `${data.tag}Sp`);
            Backend.runOnThread(`settings.SettingsValues.${data.python}_sp_max, settings.SettingsValues.${data.python}_min = 90, 40`);
            tryCompare(setpoint, "from", 41);
            tryCompare(setpoint, "to", 90);
            verify(setpoint.value >= 41);
            compareSent([]);
        }

        function test_checks() {
            const page = make(miscComponent);
            const box = boxesOf(page)[0];
            compare(page.switchWidth, 100);
            compare(box.title, "Verschiedene Prüfungen");
            const hint = Items.below(box, item => item instanceof Label && item.font.italic)[0];
            compare(hint.text, "Solange es kein Problem mit folgenden Prüfungen gibt, wird dringend davon abgeraten, diese zu deaktivieren. Bei Problemen kontaktieren Sie bitte die Fa. Brovik und deaktivieren Sie die entsprechende Prüfung nur temporär.");
            compare(hint.wrapMode, Text.WordWrap);
            compare(shownLines(box), 6);
            for (const switchRow of Items.below(box, item => item.switch_ !== undefined)) {
                compare(switchRow.switch_.width, 100);
            }
            Backend.runOnThread("config.Config.has_level_switch = False");
            tryCompare(row(page, "testLaugeLevel"), "visible", false);
            compare(shownLines(box), 5);
        }

        function test_calibration_data() {
            return [
                {tag: "pressure", box: 1, title: "Drucksensor kalibrieren (System muss drucklos sein!)", set: BrovikSettings.POffsetSet, reset: BrovikSettings.POffsetReset, offset: "p_offset", unit: "bar"},
                {tag: "conductivity", box: 2, title: "Leitwertsensor kalibrieren (System muss gespült und leer sein!)", set: BrovikSettings.LwOffsetSet, reset: BrovikSettings.LwOffsetReset, offset: "lw_offset", unit: "mS/cm"}
            ];
        }

        function test_calibration(data) {
            const box = boxesOf(make(miscComponent))[data.box];
            compare(box.title, data.title);
            const [calibrate, reset] = [withText(box, "Kalibrieren"), withText(box, "Offset zurücksetzen")];
            // To the pixel that an odd width leaves.
            verify(Math.abs(calibrate.width - reset.width) <= 1);
            for (const button of [calibrate, reset]) {
                verify(button.font.bold);
                compare(button.height, Gui.controlHeight);
                compare(button.font.pointSize, Gui.fSizeM);
            }
            mouseClick(calibrate);
            compareSent([[BrovikSettings, data.set, null]]);
            mouseClick(reset);
            compareSent([[BrovikSettings, data.reset, null]]);
            const offset = withText(box, `Aktueller Offset: 0 ${data.unit}`);
            verifyBelowEachOther([calibrate, offset]);
            compare(Items.topOf(calibrate), Items.topOf(reset));
            verify(calibrate.x + calibrate.width <= reset.x);
            verifyCentred(offset, box);
            Backend.runOnThread(`settings.SettingsValues.${data.offset} = -0.25`);
            tryVerify(() => withText(box, `Aktueller Offset: -0.25 ${data.unit}`));
        }

        function test_conductivity_sensor_with_pulses_is_not_calibrated() {
            const box = boxesOf(make(miscComponent))[2];
            verify(box.visible);
            Backend.runOnThread("sensor.Sensor.lw_type = sensor.SensorLwEnum.ILFS_02_TK2");
            tryCompare(box, "visible", false);
        }
    }
}
