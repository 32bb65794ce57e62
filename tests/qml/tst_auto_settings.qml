import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.base
import brovik.gui
import brovik.settings
import kubelor.test

// The settings that the automatic page shows and changes.
Item {
    id: root

    width: 800
    height: 1100

    AutoOverviewTestCase {
        name: "AutoSettings"

        function test_switches_data() {
            return [
                {tag: "intense", text: "Intensivreinigung durchführen", key: BrovikSettings.IntenseCleaning, setting: "intense_cleaning", before: false},
                {tag: "steam", text: "Dampfsterilisation durchführen", key: BrovikSettings.DoSteamStep, setting: "do_steam_step", before: true}
            ];
        }

        function test_switches(data) {
            set("config.Config.has_steam_valve = True");
            draw(page);
            const control = named(data.tag);
            compare(control.text, data.text);
            compare(control.checked, data.before);
            // Refused: back to what is stored.
            mouseClick(control);
            compareSent([[BrovikSettings, data.key, !data.before]]);
            tryCompare(control, "checked", data.before);
            // Taken, on the backend's thread.
            answer = (key, value) => Backend.runOnThread(`settings.SettingsValues.${data.setting} = ${value ? "True" : "False"}`);
            mouseClick(control);
            draw(page);
            compare(control.checked, !data.before);
            compareSent([[BrovikSettings, data.key, !data.before]]);
            // Changed elsewhere.
            set(`settings.SettingsValues.${data.setting} = ${data.before ? "True" : "False"}`);
            tryCompare(control, "checked", data.before);
            compareSent([]);
        }

        function test_pressure_sterilisation_is_named_so() {
            set("config.Config.has_steam_valve = config.Config.steam_pressure_sterilization = True");
            compare(named("steam").text, "Dampfdrucksterilisation durchführen");
        }

        function test_prestress_pressure_shows_the_setting() {
            const spinBox = named("prestress");
            compare([spinBox.displayText, spinBox.precision], ["0.7", 1]);
            const label = spinBox.parent.children[0];
            compare([label.text, label.font.bold, label.font.pointSize], ["Vorspanndruck:", true, Gui.fSizeL]);
            verify(label.x < spinBox.x);
            compare([spinBox.from, spinBox.to], [Math.round(BrovikSettings.vorspannenPMin * 10), Math.round(BrovikSettings.vorspannenPMax * 10)]);
            verify(!spinBox.editable);
            compareSent([]);
        }

        function test_prestress_pressure_refused() {
            const spinBox = named("prestress");
            mouseClick(spinBox.up.indicator);
            compareSent([[BrovikSettings, BrovikSettings.VorspannenP, 0.8]]);
            tryCompare(spinBox, "value", 7);
            // The way back is no wish.
            compareSent([]);
        }

        function test_prestress_pressure_taken() {
            const spinBox = named("prestress");
            answer = (key, value) => Backend.runOnThread(`settings.SettingsValues.vorspannen_p = ${value}`);
            mouseClick(spinBox.up.indicator);
            draw(page);
            compare(spinBox.realValue, 0.8);
            compare(BrovikSettings.vorspannenP, 0.8);
            compareSent([[BrovikSettings, BrovikSettings.VorspannenP, 0.8]]);
        }

        function test_prestress_pressure_written_by_the_backend_comes_back_once() {
            answer = (key, value) => Backend.runOnThread(`settings.SettingsValues.vorspannen_p = ${value}`);
            set("settings.SettingsValues.vorspannen_p = 1.1");
            compare(named("prestress").value, 11);
            compareSent([[BrovikSettings, BrovikSettings.VorspannenP, 1.1]]);
        }

        function boxes() {
            return ["saure", "lauge"].map(named);
        }

        function values() {
            return boxes().map(box => [box.sbMinimum.value, box.sbSetpoint.value]);
        }

        function test_boxes_show_the_settings() {
            compare(boxes().map(box => box.what), ["Säure", "Lauge"]);
            compare(boxes().map(box => box.product), ["SANAL®-SA 3", "RIMALKAN®-HAT 26"]);
            compare(boxes().map(box => box.unit), ["mS/cm", "mS/cm"]);
            compare(values(), [[10, 20], [30, 60]]);
            verify(boxes()[0].x < boxes()[1].x);
            verify(Math.abs(boxes()[0].width - boxes()[1].width) <= 1);
        }

        function test_boxes_show_the_run() {
            set("auto.Auto.lw_saure_min, auto.Auto.lw_saure_sp, auto.Auto.lw_lauge_min, auto.Auto.lw_lauge_sp = 7, 14, 8, 16\nauto.Auto.active = True");
            tryVerify(() => values().toString() === "7,14,8,16");
            set("settings.SettingsValues.lw_saure_min = 12");
            compare(boxes()[0].sbMinimum.value, 7);
            set("auto.Auto.active = False");
            tryVerify(() => values().toString() === "12,20,30,60");
            compareSent([]);
        }

        function test_boxes_follow_their_bath() {
            const [acid, lye] = boxes();
            set("auto.Auto.lw_saure_max, auto.Auto.lw_lauge_max = 1.5, 2.5\nauto.Auto.lw_saure_active = True");
            compare([acid.lwActualMax, lye.lwActualMax], [1.5, 2.5]);
            compare([acid.active, lye.active], [true, false]);
            set("auto.Auto.lw_saure_active = False\nauto.Auto.lw_lauge_active = True");
            compare([acid.active, lye.active], [false, true]);
        }

        function test_bath_that_is_too_low_data() {
            return [{tag: "saure", other: "lauge"}, {tag: "lauge", other: "saure"}];
        }

        function test_bath_that_is_too_low(data) {
            compare(named(data.tag).color, Common.bg2);
            set(`auto.Auto.lw_${data.tag}_too_low = True`);
            compare(named(data.tag).color, Common.colorWarning);
            compare(named(data.other).color, Common.bg2);
        }

        function test_limits_data() {
            return [
                {tag: "acid minimum", box: "saure", spinBox: "sbMinimum", key: BrovikSettings.LwSaureMin, setting: "lw_saure_min", before: 10, from: 1, to: 50},
                {tag: "acid set point", box: "saure", spinBox: "sbSetpoint", key: BrovikSettings.LwSaureSp, setting: "lw_saure_sp", before: 20, from: 11, to: 100},
                {tag: "lye minimum", box: "lauge", spinBox: "sbMinimum", key: BrovikSettings.LwLaugeMin, setting: "lw_lauge_min", before: 30, from: 1, to: 50},
                {tag: "lye set point", box: "lauge", spinBox: "sbSetpoint", key: BrovikSettings.LwLaugeSp, setting: "lw_lauge_sp", before: 60, from: 31, to: 100}
            ];
        }

        function test_limits(data) {
            const spinBox = named(data.box)[data.spinBox];
            compare([spinBox.from, spinBox.to], [data.from, data.to]);
            // Refused.
            mouseClick(spinBox.up.indicator);
            compareSent([[BrovikSettings, data.key, data.before + 1]]);
            tryCompare(spinBox, "value", data.before);
            // Taken.
            answer = (key, value) => Backend.runOnThread(`settings.SettingsValues.${data.setting} = ${value}`);
            mouseClick(spinBox.up.indicator);
            draw(page);
            compare(spinBox.value, data.before + 1);
            compareSent([[BrovikSettings, data.key, data.before + 1]]);
            // Written by the backend: no message.
            set(`settings.SettingsValues.${data.setting} = ${data.before}`);
            compare(spinBox.value, data.before);
            compareSent([]);
        }
    }
}
