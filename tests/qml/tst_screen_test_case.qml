import QtQuick

import brovik.auto
import brovik.chart
import brovik.config
import brovik.gui
import brovik.settings
import brovik.shell
import kubelor.test

// What the other tests build on.
ScreenTestCase {
    id: testCase

    name: "ScreenTestCase"

    function test_messages_are_recorded_in_order() {
        const value = {a: [1]};
        Auto_.toPy(Auto_.ToggleAuto, null);
        BrovikSettings.toPy(BrovikSettings.LwSaureMin, 11);
        Chart.toPy(Chart.ChartSave, value);
        value.a.push(2);
        compare(sent.count, 3);
        compareSent([[Auto_, Auto_.ToggleAuto, null], [BrovikSettings, BrovikSettings.LwSaureMin, 11], [Chart, Chart.ChartSave, {a: [1]}]]);
        compareSent([]);
    }

    function test_messages_of_one_singleton_leave_the_others() {
        Shell.toPy(Shell.Update, null);
        Gui.toPy(Gui.Ready, null);
        compareSentThrough(Shell, [[Shell.Update, null]]);
        compare(sent.count, 1);
        compareSent([[Gui, Gui.Ready, null]]);
    }

    function test_messages_of_different_singletons_differ() {
        Auto_.toPy(Auto_.ToggleAuto, null);
        verify(String(readable(sent.take())) !== String(readable([[Chart, Auto_.ToggleAuto, null]])));
    }

    function test_answer_comes_after_the_record() {
        const counts = [];
        answer = (action, value, family) => counts.push([family === Auto_, action, value, sent.count]);
        Auto_.toPy(Auto_.ToggleAuto, "x");
        compare(counts, [[true, Auto_.ToggleAuto, "x", 1]]);
    }

    // Of each kind of property.
    function test_reset() {
        const state = () => [Auto_.active, Config.hasLevelSwitch, BrovikSettings.secsPump, BrovikSettings.secsPumpMax, Chart.metaDataList.length, Shell.upgradables.length, String(Shell.colorUrgencyLow), Gui.page, Gui.status3, Gui.itemsScaleFactor, Gui.controlHeight, Gui.darkThemeEnabled, Gui.fullscreen, Chart.shownSecs];
        const before = state();
        Backend.run(`
auto.Auto.active, config.Config.has_level_switch = True, False
settings.SettingsValues.secs_pump_max, settings.SettingsValues.secs_pump = 30, 25
chart.Chart.meta_data_list.append(chart.ChartMetaData("a", "b", "c", "d", 1))
shell.Shell.upgradables, shell.Shell.color_urgency_low = [{}], "#00ff00"
gui.Gui.page, gui.Gui.status3 = gui.PageEnum.SettingsMisc, "x"
gui.Gui.apply_items_scale_to_default(1.5)
chart.Chart.emit_meta_data_list_changed()`);
        Backend.setDarkTheme(true);
        Gui.fullscreen = true;
        Chart.shownSecs = 5;
        Backend.settle();
        const changed = state();
        before.forEach((value, i) => verify(value !== changed[i], i));
        Backend.reset();
        Backend.settle();
        compare(state(), before);
    }

    // What an event leads to is handled as well.
    function test_settle() {
        const seen = [];
        const chain = left => {
            seen.push(left);
            if (left > 0) {
                Qt.callLater(next => next(left - 1), chain);
            }
        };
        Qt.callLater(chain, 20);
        compare(seen, []);
        Backend.settle();
        compare(seen.length, 21);
    }
}
