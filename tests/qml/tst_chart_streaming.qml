// The page follows the points as they come.
import QtQuick
import QtTest

import brovik.chart
import kubelor.test

Item {
    id: root

    width: 800
    height: 1000

    Component {
        id: pageComponent

        ChartPage {
            anchors.fill: parent
        }
    }

    Component {
        id: spyComponent

        SignalSpy {}
    }

    ScreenTestCase {
        name: "ChartStreaming"

        property ChartPage page
        readonly property ChartPlot view: findChild(page, "chartView")
        readonly property var autoScroll: findChild(page, "swAutoScroll")
        readonly property var showAll: findChild(page, "swShowAll")

        function prepare() {
            page = createTemporaryObject(pageComponent, root);
            draw(page);
        }

        // Points arrive as they do from the backend.
        function add(line, ...points) {
            const list = points.map(([x, y]) => `(${x}, ${y})`).join(", ");
            Backend.runOnThread(`for point in [${list}]: chart.Chart.${line}.add_point(point)`);
        }

        function setData(line, points) {
            Backend.runOnThread(`chart.Chart.${line}.data = [${points.map(([x, y]) => `(${x}, ${y})`).join(", ")}]`);
        }

        function tryView(min, max) {
            tryVerify(() => view.axisTime.min === min && view.axisTime.max === max, 5000, `${min} to ${max}`);
        }

        function kept() {
            return [Chart.prevXMin, Chart.prevXMax];
        }

        function points(series) {
            return Array.from({length: series.count}, (_, i) => series.at(i));
        }

        function test_view_follows_each_measured_line_data() {
            return [{tag: "p"}, {tag: "lw"}];
        }

        function test_view_follows_each_measured_line(data) {
            add(data.tag, [0.5, 1]);
            tryView(0, 0.5);
            compare(kept(), [0, 0.5]);
            add(data.tag, [59.5, 1]);
            tryView(0, 59.5);
            add(data.tag, [100, 1], [100.5, 1]);
            tryView(40.5, 100.5);
            compare(kept(), [40.5, 100.5]);
        }

        // The chart is laid out for each change of the range.
        function test_the_range_changes_once_per_move() {
            setData("p", [[0, 1], [300, 1]]);
            tryView(240, 300);
            const ranges = createTemporaryObject(spyComponent, root, {target: view.axisTime, signalName: "rangeChanged"});
            add("p", [301, 1]);
            tryView(241, 301);
            compare(ranges.count, 1);
            Input.turnWheel(findChild(page, "touchArea"), Qt.point(50, 0));
            tryView(231, 291);
            compare(ranges.count, 2);
            Input.turnWheel(findChild(page, "touchArea"), Qt.point(0, 100));
            tryView(241, 281);
            compare(ranges.count, 3);
            mouseClick(showAll);
            tryView(0, 301);
            compare(ranges.count, 4);
        }

        function test_other_lines_do_not_move_the_view() {
            add("step", [100, 1]);
            add("kalt", [100, 1]);
            add("p", [1, 1]);
            tryView(0, 1);
        }

        function test_new_points_set_the_view_back_without_auto_scroll() {
            setData("p", [[0, 1], [300, 1]]);
            tryView(240, 300);
            mouseClick(autoScroll);
            verify(!autoScroll.checked);
            tryView(240, 300);
            add("p", [300.5, 1]);
            tryView(0, 60);
            compare(kept(), [0, 60]);
            mouseClick(autoScroll);
            add("p", [301, 1]);
            tryView(241, 301);
        }

        function test_short_chart_without_auto_scroll() {
            mouseClick(autoScroll);
            add("p", [20, 1]);
            tryView(0, 20);
        }

        function test_length_is_that_of_the_pressure_line() {
            add("lw", [50, 1]);
            tryView(0, 50);
            compare(view.lastX, 0);
            verify(showAll.text.endsWith("von -- Sekunden)"));
            add("p", [40, 1]);
            tryCompare(view, "lastX", 40);
            compare(showAll.text, "Zeige alles (aktuell 0.0 bis 40.0 von 40.0 Sekunden)");
        }

        function test_y_axis_grows_with_the_data_and_starts_again_data() {
            return [{tag: "p", axis: "axisP"}, {tag: "lw", axis: "axisLw"}];
        }

        function test_y_axis_grows_with_the_data_and_starts_again(data) {
            const axis = data.tag === "p" ? view.lineP.axisY : view.lineLw.axisY;
            compare([axis.min, axis.max, axis.maxY], [0, 0.5, 0.5]);
            for (const [x, y, max] of [[1, 0.4, 0.5], [2, 3, 3], [3, 1, 3], [4, 7.5, 7.5], [5, -2, 7.5]]) {
                add(data.tag, [x, y]);
                tryView(0, x);
                compare([axis.max, axis.maxY], [max, max]);
            }
            setData(data.tag, [[0, 1], [9, 2]]);
            tryView(0, 9);
            compare([axis.min, axis.max, axis.maxY], [0, 2, 2]);
            setData(data.tag, []);
            tryView(0, 1);
            compare([axis.max, axis.maxY], [0.5, 0.5]);
        }

        function test_show_all() {
            setData("p", [[0, 1], [300, 1]]);
            tryView(240, 300);
            mouseClick(showAll);
            verify(showAll.checked && !autoScroll.checked && !autoScroll.enabled);
            verify(!findChild(page, "touchArea").enabled);
            tryView(0, 300);
            compare(showAll.text, "Zeige weniger (aktuell 300.0 Sekunden)");
            compare(kept(), [240, 300]);
            mouseClick(showAll);
            tryView(240, 300);
            compare(showAll.text, "Zeige alles (aktuell 240.0 bis 300.0 von 300.0 Sekunden)");
            verify(!autoScroll.checked && autoScroll.enabled);
            verify(findChild(page, "touchArea").enabled);
        }

        function test_show_all_of_a_short_chart() {
            add("p", [4, 1]);
            tryView(0, 4);
            mouseClick(showAll);
            tryView(0, 10);
        }

        function test_show_all_goes_on_with_the_recording() {
            setData("p", [[0, 1], [300, 1]]);
            tryView(240, 300);
            mouseClick(showAll);
            add("p", [310, 1]);
            tryView(0, 310);
            compare(showAll.text, "Zeige weniger (aktuell 310.0 Sekunden)");
            compare(kept(), [0, 60]);
        }

        function test_zoomed_width_is_kept() {
            setData("p", [[0, 1], [300, 1]]);
            tryView(240, 300);
            Input.turnWheel(findChild(page, "touchArea"), Qt.point(0, 100));
            tryView(250, 290);
            compare(Chart.shownSecs, 40);
            add("p", [301, 1]);
            tryView(261, 301);
        }

        function test_touch_while_all_is_shown() {
            setData("p", [[0, 1], [300, 1]]);
            tryView(240, 300);
            mouseClick(showAll);
            tryView(0, 300);
            const area = findChild(page, "touchArea");
            mouseDrag(area, area.width / 2, area.height / 2, 100, 0);
            Input.turnWheel(area, Qt.point(50, 50));
            tryView(0, 300);
            compare(kept(), [240, 300]);
        }

        function test_mouse_pans() {
            setData("p", [[0, 1], [300, 1]]);
            tryView(240, 300);
            const area = findChild(page, "touchArea");
            const secs = 100 * 60 / view.plotArea.width;
            mousePress(area, 300, 200);
            mouseMove(area, 350, 200);
            mouseMove(area, 400, 200);
            mouseRelease(area, 400, 200);
            fuzzyCompare(view.axisTime.min, 240 - secs, 1e-6);
            fuzzyCompare(view.axisTime.max, 300 - secs, 1e-6);
        }

        function test_data_that_was_there_before_the_page() {
            setData("p", [[0, 1], [300, 4]]);
            setData("lw", [[0, 1], [300, 50]]);
            tryView(240, 300);
            page.destroy();
            page = createTemporaryObject(pageComponent, root);
            tryView(240, 300);
            tryCompare(view, "lastX", 300);
            compare(view.lineLw.axisY.max, 50);
            verify(view.lineP.count > 0);
        }

        function test_actuator_going_off_leaves_no_tail() {
            Backend.run("chart.Chart.actuator_names = ['Lauge', 'Säure']");
            findChild(page, "optsValves").showLine = true;
            add("l_in", [10, 1]);
            add("p", [20, 1]);
            tryView(0, 20);
            tryVerify(() => points(view.lineLIn).some(point => point.y === 1));
            add("l_in", [25, 0]);
            add("p", [30, 1]);
            tryView(0, 30);
            tryVerify(() => points(view.lineLIn).every(point => point.x < 10000 && (point.x <= 25 || point.y === 0)));
            compare(points(view.lineLIn).filter(point => point.y === 1).map(point => point.x), [10, 25]);
        }

        function test_bad_points_data() {
            return ["nan", "inf", "-inf"].map(number => ({tag: number}));
        }

        function test_bad_points(data) {
            add("p", [10, 1]);
            tryView(0, 10);
            Backend.runOnThread(`
bad = float("${data.tag}")
for line in (chart.Chart.p, chart.Chart.lw, chart.Chart.step, chart.Chart.l_in):
    for point in ((bad, 1.0), (11.0, bad), (bad, bad), (-5.0, 1.0), (3.0, 1.0)):
        line.add_point(point)
chart.Chart.p.add_point((12.0, 1.0))`);
            tryVerify(() => view.axisTime.max === 12 || !isFinite(view.lastX), 5000);
            draw(page);
            const numbers = [view.axisTime.min, view.axisTime.max, Chart.prevXMin, Chart.prevXMax, view.lineP.axisY.max];
            verify(numbers.every(isFinite), numbers);
        }

        // The backend's thread does not wait for this one, nor this one for it.
        function test_burst_from_a_thread() {
            Backend.run(`
import threading
def burst():
    for second in range(10000):
        chart.Chart.p.add_point((float(second), float(second % 9)))
threading.Thread(target=burst).start()`);
            tryView(9939, 9999);
            compare(view.lineP.axisY.max, 8);
            compare(view.lastX, 9999);
        }
    }
}
