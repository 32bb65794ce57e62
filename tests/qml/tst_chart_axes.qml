import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts
import QtCharts

import brovik.base
import brovik.chart
import brovik.gui
import kubelor.test

// What the page of the chart draws: view, axes, lines and labels.
Item {
    BaseTemplate {
        id: window

        width: 800
        height: 1000
        font.pointSize: Gui.fSizeS

        Component {
            id: metricsComponent

            FontMetrics {}
        }

        ChartPageTestCase {
            id: testCase

            name: "ChartAxes"
            template: window

            readonly property var lines: ["p", "lw", "step", "lIn", "sIn", "kalt", "heiss", "kreis", "sOut", "lOut", "luft", "co2", "kanal", "pumpe", "steam"]

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
                draw(page);
                verify(part("chartView").plotArea.width > page.width / 2);
            }

            // Of a title that finds no room the chart lays out each half anew, with a memory that no machine has.
            function test_of_a_long_title_the_beginning_is_shown() {
                set("chart.Chart.current_name = 'Wort ' * 200000");
                compare(part("chartView").title, "Wort ".repeat(40) + "…");
                draw(page);
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
                    {tag: "lineStep", line: Chart.step, axis: "axisSteps", colour: Material.Red, group: "optsSteps", right: true, kind: TraceKinds.Step}
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
                return measured.concat(Object.entries(actuators).map(([name, line]) => ({tag: name, line: line, axis: "axisValves", colour: Material.Amber, group: "optsValves", right: true, kind: TraceKinds.Actuator})));
            }

            function test_series(data) {
                const series = part(data.tag);
                compare(series.line, data.line);
                compare(series.trace.line, data.line);
                compare(series.trace.kind, data.kind ?? TraceKinds.Measured);
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
                    {tag: "names of methods", names: ["constructor", "toString", "constructor"], shown: ["constructor", "toString", "constructor\u200b"]},
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

            // A text in place of a list is a list of letters. The page must not count them one by one over and over.
            function test_thousands_of_equal_names() {
                part("optsValves").shortLabels = false;
                set("chart.Chart.actuator_names = 'x' * 20000");
                const axis = part("axisValves");
                compare(axis.max, 20000);
                compare(axis.categoriesLabels.length, 500);
                compare(axis.categoriesLabels[499], "x" + "\u200b".repeat(499));
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
                draw(page);
                verify(part("chartView").plotArea.width > page.width / 4);
            }

            function test_view_of_a_page_that_comes_later() {
                Chart.prevXMin = 20;
                Chart.prevXMax = 30;
                const later = createTemporaryObject(stackComponent, window.contentItem).page;
                const axis = part("axisTime", later);
                compare([axis.min, axis.max], [20, 30]);
            }
        }
    }
}
