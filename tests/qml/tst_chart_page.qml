// The page of the chart: what it shows of the chart's state, and what it sends.
import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts
import QtCharts
import QtTest

import brovik.base
import brovik.chart
import brovik.gui
import kubelor.test

Item {
    BaseTemplate {
        id: window

        width: 800
        height: 1000
        font.pointSize: Gui.fSizeS

        Component {
            id: stackComponent

            // The page is built behind another one, as in the main window.
            StackLayout {
                readonly property ChartPage page: charts.children[0]

                anchors.fill: parent

                Item {}

                ChartsOverview {
                    id: charts
                }
            }
        }

        Component {
            id: metricsComponent

            FontMetrics {}
        }

        Component {
            id: spyComponent

            SignalSpy {}
        }

        DialogTestCase {
            id: testCase

            name: "ChartPage"

            property ChartPage page
            readonly property list<string> groups: ["optsLw", "optsP", "optsValves", "optsSteps"]
            readonly property var lines: ["p", "lw", "step", "lIn", "sIn", "kalt", "heiss", "kreis", "sOut", "lOut", "luft", "co2", "kanal", "pumpe", "steam"]

            function prepare() {
                Common.mainHeight = 1000;
                window.setTheme(Material.Dark);
                const stack = createTemporaryObject(stackComponent, window.contentItem);
                page = stack.page;
                stack.currentIndex = 1;
                waitForRendering(page);
            }

            // Lines and axes are no items, so findChild() does not see them.
            function drawn(page) {
                const view = findChild(page, "chartView");
                const series = Array.from({length: view.count}, (_, i) => view.series(i));
                return series.reduce((all, line) => all.concat(line, line.axisX, line.axisY ?? line.axisYRight), []);
            }

            function part(name, page = testCase.page) {
                return findChild(page, name) ?? drawn(page).find(object => object.objectName === name);
            }

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
                waitForRendering(page);
                const view = part("chartView");
                compare(part("swShowAll").contentItem.lineCount, 1);
                const height = view.height;
                Backend.run("chart.Chart.p.add_point((86399.5, 1.0))");
                tryVerify(() => part("swShowAll").contentItem.lineCount === 2);
                waitForRendering(page);
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

            function test_view() {
                const view = part("chartView");
                verify(view.antialiasing && !view.legend.visible);
                compare(view.backgroundColor, "#00000000");
                compare(view.title, "Kein Chart geladen");
                compare(view.titleFont.pointSize, window.font.pointSize);
                compare(view.titleFont.family, window.font.family);
                compare(view.width, page.width);
                verify(part("touchArea").width === view.width && part("touchArea").height === view.height);
            }

            function test_title_is_shown_as_it_stands() {
                set("chart.Chart.current_name = '<b>Fass</b> & \"  4\"'");
                compare(part("chartView").title, Texts.escaped("<b>Fass</b> & \"  4\""));
                set("chart.Chart.current_name = 'x' * 1000");
                waitForRendering(page);
                verify(part("chartView").plotArea.width > page.width / 2);
            }

            function test_colours_of_the_theme_data() {
                return [
                    {tag: "dark", theme: Material.Dark, axis: "lightgrey", grid: "grey", label: "white", markup: "#ffffff"},
                    {tag: "light", theme: Material.Light, axis: "grey", grid: "lightgrey", label: "black", markup: "#000000"}
                ];
            }

            function test_colours_of_the_theme(data) {
                window.setTheme(data.theme);
                for (const row of test_axes_data()) {
                    const axis = part(row.tag);
                    verify(Qt.colorEqual(axis.color, data.axis));
                    verify(Qt.colorEqual(axis.gridLineColor, data.grid));
                    verify(Qt.colorEqual(axis.labelsColor, data.label));
                    compare(axis.titleText, `<font color="${data.markup}">${row.title}</font>`);
                }
                verify(Qt.colorEqual(part("chartView").titleColor, data.label));
            }

            // Title, type, side, and the group that decides on what shows.
            function test_axes_data() {
                return [
                    {tag: "axisTime", title: "Zeit in Sekunden", range: [0, 60]},
                    {tag: "axisValves", title: "Aktoren", group: "optsValves", category: true, right: true, range: [0, 0]},
                    {tag: "axisSteps", title: "Schritt", group: "optsSteps", category: true, right: true, range: [0, 0]},
                    {tag: "axisP", title: "Druck in bar", group: "optsP", range: [0, 0.5]},
                    {tag: "axisLw", title: "Leitwert in mS/cm", group: "optsLw", range: [0, 0.5]}
                ];
            }

            function test_axes(data) {
                const axis = part(data.tag);
                compare(axis.title, data.title);
                compare([axis.min, axis.max], data.range);
                compare(axis.labelsPosition !== undefined, data.category ?? false);
                if (data.category) {
                    compare(axis.labelsPosition, CategoryAxis.AxisLabelsPositionOnValue);
                    verify(!axis.truncateLabels);
                }
                if (!data.group) {
                    verify(axis.visible && axis.titleVisible && axis.gridVisible && axis.labelsVisible);
                    return;
                }
                const group = part(data.group);
                for (const [showLine, showAxis] of [[true, true], [true, false], [false, true], [false, false]]) {
                    group.showLine = showLine;
                    group.showAxis = showAxis;
                    compare(axis.visible, showLine && showAxis);
                }
                for (const [option, shown] of [["showTitle", "titleVisible"], ["showGrid", "gridVisible"], ["showLabels", "labelsVisible"]]) {
                    for (const on of [true, false]) {
                        group[option] = on;
                        compare(axis[shown], on);
                    }
                }
            }

            // Line, axis, colour and group of each series.
            function test_series_data() {
                const measured = [
                    {tag: "lineP", line: Chart.p, axis: "axisP", colour: Material.Green, group: "optsP"},
                    {tag: "lineLw", line: Chart.lw, axis: "axisLw", colour: Material.Blue, group: "optsLw"},
                    {tag: "lineStep", line: Chart.step, axis: "axisSteps", colour: Material.Red, group: "optsSteps", right: true, kind: ChartTrace.Step}
                ];
                const actuators = {
                    lineLIn: Chart.lIn,
                    lineSIn: Chart.sIn,
                    lineKalt: Chart.kalt,
                    lineHeiss: Chart.heiss,
                    lineKreis: Chart.kreis,
                    lineSOut: Chart.sOut,
                    lineLOut: Chart.lOut,
                    lineLuft: Chart.luft,
                    lineCo2: Chart.co2,
                    lineKanal: Chart.kanal,
                    linePumpe: Chart.pumpe,
                    lineSteam: Chart.steam
                };
                return measured.concat(Object.entries(actuators).map(([name, line]) => ({tag: name, line: line, axis: "axisValves", colour: Material.Amber, group: "optsValves", right: true, kind: ChartTrace.Actuator})));
            }

            function test_series(data) {
                const series = part(data.tag);
                compare(series.line, data.line);
                compare(series.trace.line, data.line);
                compare(series.trace.kind, data.kind ?? ChartTrace.Measured);
                compare(series.axisX, part("axisTime"));
                compare(data.right ? series.axisYRight : series.axisY, part(data.axis));
                compare(data.right ? series.axisY : series.axisYRight, null);
                verify(Qt.colorEqual(series.color, window.Material.color(data.colour)));
                for (const shown of [true, false]) {
                    part(data.group).showLine = shown;
                    compare(series.visible, shown);
                }
            }

            function test_every_line_has_its_series() {
                compare(test_series_data().map(row => row.line), lines.map(name => Chart[name]));
                compare(part("chartView").count, 15);
                Backend.startRecordingPrints();
                set("for number in range(1, 16): chart.Chart.line_from_line_enum(chart.LineEnum(number)).add_point((1.0, 1.0))");
                compare(Backend.takePrints(), []);
            }

            // Texts of the labels at 1, 2, ... with `shortLabels` on and off.
            function test_labels_data() {
                const cases = [
                    {tag: "none", names: [], shown: []},
                    {tag: "some", names: ["Vorspülen", "Lauge", "Säure"], shown: ["Vorspülen", "Lauge", "Säure"]},
                    {tag: "equal", names: ["Spülen", "Lauge", "Spülen", "Spülen"], shown: ["Spülen", "Lauge", "Spülen\u200b", "Spülen\u200b\u200b"]},
                    {tag: "markup", names: ["<b>a</b>", "&amp;", "\"'"], shown: ["&lt;b&gt;a&lt;/b&gt;", "&amp;amp;", "&quot;'"]},
                    {tag: "blanks", names: ["", " ", ""], shown: ["", "&nbsp;", "\u200b"]}
                ];
                const rows = [];
                for (const [axis, group, property] of [["axisValves", "optsValves", "actuator_names"], ["axisSteps", "optsSteps", "step_names"]]) {
                    rows.push(...cases.map(row => ({tag: `${axis}: ${row.tag}`, axis: axis, group: group, property: property, names: row.names, shown: row.shown})));
                }
                return rows;
            }

            function test_labels(data) {
                const axis = part(data.axis);
                part(data.group).shortLabels = false;
                set(`import json\nchart.Chart.${data.property} = ['alt 1', 'alt 2']\nchart.Chart.${data.property} = json.loads(${JSON.stringify(JSON.stringify(data.names))})`);
                compare(axis.categoriesLabels, data.shown);
                compare(axis.max, data.names.length);
                part(data.group).shortLabels = true;
                compare(axis.categoriesLabels, data.names.map((_, index) => String(index + 1)));
                part(data.group).shortLabels = false;
                compare(axis.categoriesLabels, data.shown);
            }

            function showRightAxes() {
                set(`chart.Chart.actuator_names = ["Lauge ein", "Heißwasser", "Kreislauf", "Pumpe"]
chart.Chart.step_names = ["Vorspülen mit Kaltwasser", "Sterilisieren mit Dampf", "Lauge im Kreis", "x" * 1000]`);
                for (const name of ["optsValves", "optsSteps"]) {
                    part(name).shortLabels = false;
                    part(name).showLine = true;
                }
                page.parent.parent.anchors.rightMargin = 800 - 710;
                tryCompare(page, "width", 710);
            }

            function test_long_names_stay_within_their_axis() {
                showRightAxes();
                for (const name of ["axisValves", "axisSteps"]) {
                    const axis = part(name);
                    const metrics = createTemporaryObject(metricsComponent, testCase, {font: axis.labelsFont});
                    const lines = axis.categoriesLabels.map(label => label.split("<br>"));
                    verify(lines.every(list => list.every(line => metrics.advanceWidth(line) < axis.room)), axis.categoriesLabels);
                    verify(lines.every(list => list.length * metrics.lineSpacing <= axis.rowHeight), axis.categoriesLabels);
                    compare(lines.length, 4);
                }
                const room = part("axisSteps").room + part("axisValves").room;
                verify(room <= 0.2 * part("chartView").width, room);
                compare(part("axisSteps").categoriesLabels[2].replace(/<br>/g, " "), "Lauge im Kreis");
                verify(part("axisSteps").categoriesLabels[0].startsWith("Vor"));
                verify(part("axisSteps").categoriesLabels[3].endsWith("…"));
            }

            function test_names_are_whole_where_there_is_room() {
                showRightAxes();
                part("optsSteps").shortLabels = true;
                tryVerify(() => part("axisSteps").categoriesLabels[0] === "1");
                compare(part("axisValves").categoriesLabels, ["Lauge ein", "Heißwasser", "Kreislauf", "Pumpe"]);
                part("optsSteps").shortLabels = false;
                for (const name of ["optsLw", "optsP", "optsValves"]) {
                    part(name).showLine = false;
                }
                compare(part("axisSteps").categoriesLabels.slice(0, 3), ["Vorspülen mit Kaltwasser", "Sterilisieren mit Dampf", "Lauge im Kreis"]);
            }

            function test_steps_start_with_short_labels() {
                set("chart.Chart.step_names = ['a', 'b', 'c']\nchart.Chart.actuator_names = ['d', 'e']");
                compare(part("axisSteps").categoriesLabels, ["1", "2", "3"]);
                compare(part("axisValves").categoriesLabels, ["d", "e"]);
            }

            function test_names_that_were_there_before_the_page() {
                Backend.run("chart.Chart.actuator_names = ['d', 'e']");
                const later = createTemporaryObject(stackComponent, window.contentItem).page;
                compare(part("axisValves", later).categoriesLabels, ["d", "e"]);
            }

            function test_long_names_leave_room_for_the_lines() {
                part("optsValves").showLine = true;
                part("optsSteps").showLine = true;
                part("optsSteps").shortLabels = false;
                set("chart.Chart.step_names = ['x' * 1000, 'y' * 1000]\nchart.Chart.actuator_names = ['z' * 1000]");
                waitForRendering(page);
                verify(part("chartView").plotArea.width > page.width / 4);
            }

            function test_view_of_a_page_that_comes_later() {
                Chart.prevXMin = 20;
                Chart.prevXMax = 30;
                const later = createTemporaryObject(stackComponent, window.contentItem).page;
                const axis = part("axisTime", later);
                compare([axis.min, axis.max], [20, 30]);
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
