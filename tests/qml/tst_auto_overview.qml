import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.auto
import brovik.base
import brovik.gui
import brovik.settings
import kubelor.test
import main

Item {
    id: root

    readonly property string startHint: "Button eine Sekunde zum Starten gedrückt halten und dann loslassen"
    readonly property string stopHint: "Button eine Sekunde zum Abbrechen gedrückt halten und dann loslassen"
    readonly property string upgradeHint: "Es wird/wurde ein Upgrade durchgeführt. Bitte die Maschine nach dem Upgrade neu starten."
    readonly property string sensorHint: "Es wird kein Signal vom Leitwertsensor erkannt"

    width: 800
    height: 1100

    Component {
        id: pageComponent

        StackLayout {
            readonly property alias page: page

            anchors.fill: parent

            AutoOverview {
                id: page
            }

            Item {}
        }
    }

    ScreenTestCase {
        name: "AutoOverview"

        property StackLayout stack
        property AutoOverview page

        function prepare() {
            stack = createTemporaryObject(pageComponent, root);
            page = stack.page;
            waitForRendering(page);
        }

        function named(name) {
            return findChild(page, name);
        }

        function hold(button) {
            mousePress(button);
            tryCompare(button, "progress", 1);
            mouseRelease(button);
        }

        // Top margin of each part, and what fills the width; the rest stands in its middle.
        function test_layout_data() {
            return [
                {tag: "information", margin: 30, wide: true},
                {tag: "start", margin: 0, wide: true},
                {tag: "intense", margin: 0},
                {tag: "steam", margin: 0},
                {tag: "steamWarning", margin: 0, wide: true},
                {tag: "progressText", margin: 0, wide: true},
                {tag: "progressBar", margin: 0, wide: true},
                {tag: "status3", margin: 10, wide: true},
                {tag: "prestress", margin: 20, row: true},
                {tag: "saure", margin: 20, row: true, wide: true}
            ];
        }

        function layoutPart(row) {
            return row.row ? named(row.tag).parent : named(row.tag);
        }

        function test_layout(data) {
            set("config.Config.has_steam_valve = True\ngui.Gui.status3 = 'Schritt 2'");
            waitForRendering(page);
            const item = layoutPart(data);
            compare(item.Layout.topMargin, data.margin);
            if (data.wide) {
                compare([item.x, item.width], [0, page.width]);
            } else {
                verify(item.width < page.width && Math.abs(2 * item.x + item.width - page.width) <= 1);
            }
        }

        function test_order() {
            set("config.Config.has_steam_valve = True\ngui.Gui.status3 = 'Schritt 2'");
            waitForRendering(page);
            const items = test_layout_data().map(layoutPart);
            for (let i = 1; i < items.length; ++i) {
                verify(items[i].y >= items[i - 1].y + items[i - 1].height, test_layout_data()[i].tag);
            }
        }

        function test_texts_in_the_middle_data() {
            return [{tag: "information"}, {tag: "progressText"}, {tag: "status3"}];
        }

        function test_texts_in_the_middle(data) {
            compare(named(data.tag).horizontalAlignment, Text.AlignHCenter);
        }

        function test_long_texts_wrap_data() {
            return [{tag: "information"}, {tag: "status3"}];
        }

        function test_long_texts_wrap(data) {
            set("gui.Gui.status3 = 'Zwischen den Schritten ' * 10\nshell.Shell.upgrade_in_progress_or_finished = True");
            stack.width = 400;
            waitForRendering(page);
            const label = named(data.tag);
            verify(label.lineCount > 1 && label.contentWidth <= label.width);
        }

        function test_read_only_data() {
            return [{tag: "isCurrent"}, {tag: "intenseCleaning"}];
        }

        function test_read_only(data) {
            let refused = false;
            try {
                page[data.tag] = !page[data.tag];
            } catch (error) {
                refused = true;
            }
            verify(refused);
        }

        function test_information_data() {
            const warning = Common.colorWarning;
            return [
                {tag: "at rest", text: root.startHint},
                {tag: "during a run", code: "auto.Auto.active = True", text: root.stopHint},
                {tag: "defective sensor", code: "sensor.Sensor.lw_sensor_defective = True", text: root.sensorHint, color: warning},
                {tag: "upgrade", code: "shell.Shell.upgrade_in_progress_or_finished = True", text: root.upgradeHint, color: warning},
                {tag: "upgrade and defective sensor", code: "shell.Shell.upgrade_in_progress_or_finished = sensor.Sensor.lw_sensor_defective = True", text: root.upgradeHint, color: warning},
                {tag: "defective sensor during a run", code: "auto.Auto.active = sensor.Sensor.lw_sensor_defective = True", text: root.sensorHint, color: warning}
            ];
        }

        function test_information(data) {
            set(data.code ?? "");
            compare(named("information").text, data.text);
            compare(named("information").color, data.color ?? page.Material.foreground);
        }

        function test_start_button_text_data() {
            return [
                {tag: "Automatikbetrieb starten", code: ""},
                {tag: "Automatikbetrieb abbrechen", code: "auto.Auto.active = True"},
                {tag: "Intensivreinigung starten", code: "settings.SettingsValues.intense_cleaning = True"},
                {tag: "Intensivreinigung abbrechen", code: "auto.Auto.active = auto.Auto.intense_cleaning = True"}
            ];
        }

        function test_start_button_text(data) {
            set(data.code);
            compare(named("start").text, data.tag);
        }

        function test_intensive_run_keeps_its_text_when_the_setting_is_turned_off() {
            set("settings.SettingsValues.intense_cleaning = auto.Auto.intense_cleaning = auto.Auto.active = True");
            verify(page.intenseCleaning);
            set("settings.SettingsValues.intense_cleaning = False");
            verify(page.intenseCleaning);
            compare(named("start").text, "Intensivreinigung abbrechen");
            set("auto.Auto.active = False");
            verify(!page.intenseCleaning);
        }

        // Which buttons are enabled: start, acid test, lye test.
        function test_locks_data() {
            return [
                {tag: "at rest", code: "", enabled: [true, true, true]},
                {tag: "run", code: "auto.Auto.active = True", enabled: [true, false, false]},
                {tag: "acid test", code: "auto.Auto.lw_saure_active = True", enabled: [false, true, false]},
                {tag: "lye test", code: "auto.Auto.lw_lauge_active = True", enabled: [false, false, true]},
                {tag: "defective sensor", code: "sensor.Sensor.lw_sensor_defective = True", enabled: [false, false, false]},
                {tag: "upgrade", code: "shell.Shell.upgrade_in_progress_or_finished = True", enabled: [false, true, true]}
            ];
        }

        function test_locks(data) {
            set(data.code);
            compare([named("start"), named("saure").btnStart, named("lauge").btnStart].map(button => button.enabled), data.enabled);
        }

        function test_controls_locked_during_a_run() {
            set("config.Config.has_steam_valve = True\nauto.Auto.active = True");
            for (const name of ["intense", "steam"]) {
                verify(!named(name).enabled);
            }
            for (const name of ["saure", "lauge"]) {
                verify(!named(name).sbMinimum.enabled && !named(name).sbSetpoint.enabled);
            }
            verify(named("prestress").enabled);
        }

        function test_start_button_held_for_a_second() {
            const button = named("start");
            compare(button.delay, 1000);
            compare(button.font.pointSize, 20);
            compare(button.height, 75);
            hold(button);
            compareSent([[Auto_, Auto_.ToggleAuto, null]]);
        }

        function test_start_button_released_early() {
            const button = named("start");
            mousePress(button);
            tryVerify(() => button.progress > 0);
            mouseRelease(button);
            tryCompare(button, "progress", 0);
            compareSent([]);
        }

        function test_test_buttons_data() {
            return [{tag: "saure", action: Auto_.ToggleLwTestSaure}, {tag: "lauge", action: Auto_.ToggleLwTestLauge}];
        }

        function test_test_buttons(data) {
            hold(named(data.tag).btnStart);
            compareSent([[Auto_, data.action, null]]);
        }

        function test_switches_data() {
            return [
                {tag: "intense", text: "Intensivreinigung durchführen", key: BrovikSettings.IntenseCleaning, setting: "intense_cleaning", before: false},
                {tag: "steam", text: "Dampfsterilisation durchführen", key: BrovikSettings.DoSteamStep, setting: "do_steam_step", before: true}
            ];
        }

        function test_switches(data) {
            set("config.Config.has_steam_valve = True");
            waitForRendering(page);
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
            waitForRendering(page);
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

        function test_steam_data() {
            return [
                {tag: "no valve, step on", valve: "False", step: "True", shown: [false, false]},
                {tag: "no valve, step off", valve: "False", step: "False", shown: [false, false]},
                {tag: "valve, step on", valve: "True", step: "True", shown: [true, true]},
                {tag: "valve, step off", valve: "True", step: "False", shown: [true, false]}
            ];
        }

        function test_steam(data) {
            set(`config.Config.has_steam_valve = ${data.valve}\nsettings.SettingsValues.do_steam_step = ${data.step}`);
            compare([named("steam").visible, named("steamWarning").visible], data.shown);
        }

        function test_steam_warning() {
            set("config.Config.has_steam_valve = True");
            const warning = named("steamWarning");
            compare(warning.color, Common.colorWarning);
            compare(findChild(warning, "text").text, "Das Fass und Teile der Maschine werden durch die Dampfsterilisation sehr heiß! Persönliche Schutzausrüstung tragen!");
            const row = warning.children[0];
            tryVerify(() => warning.height === row.implicitHeight + 20);
            compare([row.x, row.y, row.spacing, row.width], [10, 10, 10, warning.width - 20]);
            const [icon, text] = Array.from(row.children);
            compare(icon.source, "qrc:/brovik/base/img/exclamation-triangle.svg");
            verify(icon.x < text.x);
            compare(text.wrapMode, Text.WordWrap);
        }

        function test_progress_text_colour_data() {
            const palette = color => page.Material.color(color);
            return [
                {tag: "Warning", color: () => palette(Material.Orange)},
                {tag: "Success", color: () => palette(Material.Green)},
                {tag: "Error", color: () => palette(Material.Red)},
                {tag: "Normal", color: () => page.Material.foreground}
            ];
        }

        function test_progress_text_colour(data) {
            set("auto.Auto.progress_color = auto.ProgressColor.Error");
            set(`auto.Auto.progress_color = auto.ProgressColor.${data.tag}`);
            compare(named("progressText").color, data.color());
        }

        function test_progress_text_is_shown_as_it_stands() {
            set("auto.Auto.progress, auto.Auto.progress_str = -1, '<b>42</b> %'");
            compare(named("progressText").text, "<b>42</b> %");
            compare(named("progressText").textFormat, Text.PlainText);
            compare(named("progressText").font.pointSize, 100);
        }

        function test_progress_bar_data() {
            return [
                {tag: "-1: indeterminate", progress: -1, indeterminate: true, position: 0},
                {tag: "0: empty and determinate", progress: 0, indeterminate: false, position: 0},
                {tag: "42", progress: 42, indeterminate: false, position: 0.42},
                {tag: "above 100", progress: 150, indeterminate: false, position: 1}
            ];
        }

        function test_progress_bar(data) {
            set(`auto.Auto.progress = ${data.progress}`);
            const bar = named("progressBar");
            compare([bar.from, bar.to], [0, 100]);
            compare(bar.indeterminate, data.indeterminate);
            compare(bar.position, data.position);
        }

        function test_status_3() {
            const label = named("status3");
            verify(!label.visible);
            set("gui.Gui.status3 = '<i>Schritt 2</i>'");
            verify(label.visible);
            compare(label.text, "<i>Schritt 2</i>");
            compare(label.textFormat, Text.PlainText);
            set("gui.Gui.status3 = ''");
            verify(!label.visible);
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
            waitForRendering(page);
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
            waitForRendering(page);
            compare(spinBox.value, data.before + 1);
            compareSent([[BrovikSettings, data.key, data.before + 1]]);
            // Written by the backend: no message.
            set(`settings.SettingsValues.${data.setting} = ${data.before}`);
            compare(spinBox.value, data.before);
            compareSent([]);
        }

        function test_page_reports_itself() {
            verify(page.isCurrent);
            stack.currentIndex = 1;
            verify(!page.isCurrent);
            Gui.changePage(Gui.PageSettingsMisc);
            stack.currentIndex = 0;
            compare(Gui.page, Gui.PageAuto);
        }

        function test_page_writes_its_index() {
            Common.autoOverviewIndex = 7;
            createTemporaryObject(pageComponent, root);
            compare(Common.autoOverviewIndex, 0);
        }
    }
}
