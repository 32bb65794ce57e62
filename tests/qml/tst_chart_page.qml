import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts
import QtCharts
import QtTest

import brovik.base
import brovik.chart
import brovik.gui
import kubelor.test

// The page of the chart: its options, its buttons, and what it sends.
Item {
    BaseTemplate {
        id: window

        width: 800
        height: 1000
        font.pointSize: Gui.fSizeS

        Component {
            id: spyComponent

            SignalSpy {}
        }

        ChartPageTestCase {
            id: testCase

            name: "ChartPage"
            template: window

            function findSwitch(group, text) {
                return findText(part(group), text, "checkable");
            }

            function lowerEdge(item) {
                return item.mapToItem(page, 0, item.height).y;
            }

            // Title, colour, and the switches that differ at the start.
            function test_option_groups_data() {
                return [
                    {tag: "optsLw", title: "Leitwert", line: "lineLw", start: [true, false, false]},
                    {tag: "optsP", title: "Druck", line: "lineP", start: [true, false, false]},
                    {tag: "optsValves", title: "Aktoren", line: "lineLIn", start: [false, true, false]},
                    {tag: "optsSteps", title: "Schritt", line: "lineStep", start: [false, true, true]}
                ];
            }

            function test_option_groups(data) {
                const group = part(data.tag);
                compare(group.title, data.title);
                verify(Qt.colorEqual(group.color, part(data.line).color));
                compare([group.showLine, group.shortLabelsEnabled, group.shortLabels], data.start);
                compare([group.showAxis, group.showTitle, group.showGrid, group.showLabels], [true, true, false, true]);
                compare(group.mapToItem(page, 0, 0).y, 10);
                part("btnShowExtended").checked = true;
                verify(group.showExtended);
            }

            function test_option_groups_share_the_row() {
                const items = groups.map(name => part(name));
                for (let i = 1; i < items.length; ++i) {
                    verify(Math.abs(items[i].x - items[i - 1].x - items[i - 1].width - 5) <= 1);
                    verify(Math.abs(items[i].width - items[0].width) <= 1);
                }
                compare(items[3].x + items[3].width, page.width);
            }

            function test_rows_from_top_to_bottom() {
                const column = part("buttons").parent;
                const rows = [part("optsLw").parent, part("buttons"), part("chartView"), part("swAutoScroll").parent];
                compare(Array.from(column.children), rows);
                for (let i = 1; i < rows.length; ++i) {
                    compare(rows[i].y, rows[i - 1].y + rows[i - 1].height + 5);
                }
                compare(rows[3].y + rows[3].height, page.height);
                compare(Array.from(rows[0].children), groups.map(name => part(name)));
                compare(Array.from(rows[3].children), [part("swAutoScroll"), part("swShowAll")]);
                verify(part("swAutoScroll").x < part("swShowAll").x);
            }

            function test_unfolded_groups_push_the_rest_down() {
                const before = groups.map(name => part(name).height);
                for (let round = 0; round < 2; ++round) {
                    mouseClick(part("btnShowExtended"));
                    tryVerify(() => groups.every((name, i) => part(name).height > before[i] + 100));
                    for (const name of groups) {
                        tryVerify(() => part(name).height === part(name).Layout.preferredHeight);
                        tryVerify(() => lowerEdge(findSwitch(name, "zeige Labels")) <= lowerEdge(part(name)));
                        tryVerify(() => lowerEdge(part(name)) < part("buttons").mapToItem(page, 0, 0).y);
                    }
                    mouseClick(part("btnShowExtended"));
                    tryVerify(() => groups.every((name, i) => part(name).height === before[i]));
                }
            }

            function test_more_options() {
                const button = part("btnShowExtended");
                verify(button.checkable && button.enabled);
                compare(button.text, "mehr Optionen");
                mouseClick(button);
                compare(button.text, "weniger Optionen");
                mouseClick(button);
                compare(button.text, "mehr Optionen");
            }

            function test_button_row() {
                const row = part("buttons");
                compare(row.width, page.width);
                for (const bar of [row.ScrollBar.horizontal, row.ScrollBar.vertical]) {
                    compare(bar.policy, ScrollBar.AlwaysOff);
                }
                const buttons = ["btnShowExtended", "btnBrowser", "btnSave", "btnHand"].map(name => part(name));
                const lefts = buttons.map(button => button.x);
                compare(lefts.slice().sort((a, b) => a - b), lefts);
            }

            function test_nothing_is_cut_off_data() {
                return [
                    {tag: "at rest", code: "", width: 710},
                    {tag: "recording", code: "chart.Chart.active = True", width: 710},
                    {tag: "wide", code: "chart.Chart.active = True", width: 790}
                ];
            }

            function test_nothing_is_cut_off(data) {
                set(data.code + "\nchart.Chart.p.add_point((86399.5, 1.0))");
                part("btnShowExtended").checked = true;
                page.parent.parent.anchors.rightMargin = 800 - data.width;
                tryCompare(page, "width", data.width);
                const last = part("btnHand");
                tryVerify(() => last.mapToItem(page, last.width, 0).x <= data.width);
                for (const name of ["swAutoScroll", "swShowAll"]) {
                    const label = part(name).contentItem;
                    tryVerify(() => label.contentWidth + label.leftPadding <= label.width);
                    verify(!label.truncated);
                    verify(lowerEdge(part(name)) <= page.height);
                }
                compare(part("swAutoScroll").contentItem.lineCount, 1);
                verify(Math.abs(part("swShowAll").x + part("swShowAll").width - data.width) < 1);
            }

            function test_growing_numbers_do_not_move_the_chart() {
                page.parent.parent.anchors.rightMargin = 800 - 710;
                tryCompare(page, "width", 710);
                draw(page);
                const view = part("chartView");
                compare(part("swShowAll").contentItem.lineCount, 1);
                const height = view.height;
                Backend.run("chart.Chart.p.add_point((86399.5, 1.0))");
                tryVerify(() => part("swShowAll").contentItem.lineCount === 2);
                draw(page);
                compare(view.height, height);
            }

            // What enables the button of the list of charts.
            function test_browser_data() {
                const filled = "chart.Chart.meta_data_list.append(chart.ChartMetaData('a', 'success', 's', 'd', 1))\nchart.Chart.emit_meta_data_list_changed()\n";
                return [
                    {tag: "empty list", code: "", enabled: false},
                    {tag: "list", code: filled, enabled: true},
                    {tag: "list during a recording", code: filled + "chart.Chart.active = True", enabled: false},
                    {tag: "after the recording", code: filled + "chart.Chart.active = True\nchart.Chart.active = False", enabled: true},
                    {tag: "list emptied", code: filled + "chart.Chart.meta_data_list = chart.ChartMetaDataList()", enabled: false}
                ];
            }

            function test_browser(data) {
                const requested = createTemporaryObject(spyComponent, testCase, {target: page, signalName: "listRequested"});
                set(data.code);
                const button = part("btnBrowser");
                compare(button.text, "Chart-Browser");
                compare(button.enabled, data.enabled);
                mouseClick(button);
                compare(requested.count, data.enabled ? 1 : 0);
            }

            // A recording of hand operation can be started and ended while no run is active.
            function test_hand_operation_data() {
                const start = "Handbetrieb aufzeichnen";
                return [
                    {tag: "at rest", code: "", enabled: true, active: false, text: start},
                    {tag: "recording", code: "chart.Chart.active = True", enabled: true, active: true, text: "Aufzeichnung beenden"},
                    {tag: "run", code: "auto.Auto.active = True", enabled: false, active: false, text: start},
                    {tag: "recording of a run", code: "auto.Auto.active = chart.Chart.active = True", enabled: false, active: false, text: start}
                ];
            }

            function test_hand_operation(data) {
                set(data.code);
                const button = part("btnHand");
                compare([button.enabled, button.active, button.text], [data.enabled, data.active, data.text]);
                mouseClick(button);
                if (data.enabled) {
                    compareSentThrough(Chart, [[Chart.ChartHand, null]]);
                } else {
                    compareSentThrough(Chart, []);
                }
                set("auto.Auto.active = False");
            }

            function test_saving_needs_something_to_save() {
                const button = part("btnSave");
                compare(button.text, "Speichern");
                verify(!button.enabled);
                mouseClick(button);
                verify(!Dialogs.popupActive);
                set("chart.Chart.savable = True");
                verify(button.enabled);
                set("chart.Chart.savable = False");
                verify(!button.enabled);
            }

            function openSaving() {
                set("chart.Chart.savable = True\nchart.Chart.current_name = 'Fass 1'\nchart.Chart.assigned_names = ['Fass 1', 'Fass 2']");
                mouseClick(part("btnSave"));
                const dialog = latestDialog();
                tryVerify(() => dialog.input.activeFocus);
                return dialog;
            }

            function test_saving() {
                const dialog = openSaving();
                compare(dialog.title, "Chart Name");
                compare(dialog.text, "Bitte einen Namen für das Chart eingeben:");
                compare(dialog.value, "Fass 1");
                compare(dialog.errorText, "");
                keyClick(Qt.Key_Backspace);
                keyClick("3");
                compare(dialog.errorText, "");
                keyClick(Qt.Key_Return);
                compareSentThrough(Chart, [[Chart.ChartSave, "Fass 3"]]);
            }

            function test_offered_name_can_be_accepted_untested() {
                const dialog = openSaving();
                const ok = findText(dialog.input.parent, "OK", "checkable");
                verify(ok.enabled);
                mouseClick(ok);
                compareSentThrough(Chart, [[Chart.ChartSave, "Fass 1"]]);
            }

            function test_saving_checks_each_edit_data() {
                return [
                    {tag: "taken", txt: "Fass 2", error: "Der Name Fass 2 ist bereits vergeben"},
                    {tag: "other case", txt: "fass 2", error: "Der Name fass 2 ist bereits vergeben"},
                    {tag: "nothing", txt: "", error: "Es ist eine Eingabe erforderlich"},
                    {tag: "free", txt: "Fass", error: ""}
                ];
            }

            function test_saving_checks_each_edit(data) {
                const dialog = openSaving();
                dialog.input.selectAll();
                keyClick(Qt.Key_Backspace);
                for (const letter of data.txt) {
                    keyClick(letter);
                }
                compare(dialog.errorText, data.error);
                compare(findText(dialog.input.parent, "OK", "checkable").enabled, !data.error);
                keyClick(Qt.Key_Escape);
                tryVerify(() => !Dialogs.popupActive);
                compareSentThrough(Chart, []);
            }

            function test_return_does_not_honour_the_taken_name() {
                const dialog = openSaving();
                keyClick(Qt.Key_Backspace);
                keyClick("2");
                verify(dialog.errorText !== "");
                keyClick(Qt.Key_Return);
                compareSentThrough(Chart, [[Chart.ChartSave, "Fass 2"]]);
            }

            function test_no_data() {
                compare(part("swShowAll").text, "Zeige alles (aktuell 0.0 bis 60.0 von -- Sekunden)");
                compare([part("axisTime").min, part("axisTime").max], [0, 60]);
                compare([part("swAutoScroll").text, part("swAutoScroll").checked, part("swShowAll").checked], ["AutoScroll", true, false]);
                mouseClick(part("swShowAll"));
                compare(part("swShowAll").text, "Zeige weniger (aktuell -- Sekunden)");
                compare([part("axisTime").min, part("axisTime").max], [0, 10]);
                mouseClick(part("swShowAll"));
                compare([part("axisTime").min, part("axisTime").max], [0, 60]);
            }
        }
    }
}
