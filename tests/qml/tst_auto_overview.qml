import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.auto
import brovik.base
import brovik.gui

// What the automatic page shows, and how a run and a test are started.
Item {
    id: root

    readonly property string startHint: "Button eine Sekunde zum Starten gedrückt halten und dann loslassen"
    readonly property string stopHint: "Button eine Sekunde zum Abbrechen gedrückt halten und dann loslassen"
    readonly property string upgradeHint: "Es wird/wurde ein Upgrade durchgeführt. Bitte die Maschine nach dem Upgrade neu starten."
    readonly property string sensorHint: "Es wird kein Signal vom Leitwertsensor erkannt"

    width: 800
    height: 1100

    AutoOverviewTestCase {
        name: "AutoOverview"

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
            draw(page);
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
            draw(page);
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
            draw(page);
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

        function test_plain_run_keeps_its_text_when_the_setting_is_turned_on() {
            set("auto.Auto.active = True");
            set("settings.SettingsValues.intense_cleaning = True");
            verify(!page.intenseCleaning);
            compare(named("start").text, "Automatikbetrieb abbrechen");
            set("auto.Auto.active = False");
            compare(named("start").text, "Intensivreinigung starten");
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
