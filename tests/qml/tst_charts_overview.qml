// The stack of the chart page and the list page, and what it reports.
import QtQuick
import QtQuick.Layouts
import QtTest

import brovik.base
import brovik.chart
import brovik.gui
import kubelor.test

Item {
    id: root

    width: 800
    height: 1000

    Component {
        id: stackComponent

        StackLayout {
            readonly property alias charts: charts

            anchors.fill: parent

            Item {}

            ChartsOverview {
                id: charts
            }
        }
    }

    SignalSpy {
        id: pageChanged

        target: Gui
        signalName: "pageChanged"
    }

    ScreenTestCase {
        name: "ChartsOverview"

        property StackLayout stack
        property ChartsOverview charts

        function prepare() {
            Backend.run("entries = chart.Chart.meta_data_list\nentries.append(chart.ChartMetaData('a', 'success', 'gut', 'heute', 61))\nchart.Chart.emit_meta_data_list_changed()");
            stack = createTemporaryObject(stackComponent, root);
            charts = stack.charts;
            pageChanged.clear();
        }

        function press(name) {
            draw(charts);
            mouseClick(findChild(charts, name));
        }

        function test_it_tells_its_place() {
            compare(Common.chartsOverviewIndex, 1);
        }

        function test_hidden_page_reports_nothing() {
            compare(charts.currentPage, Gui.PageChart);
            charts.currentIndex = 1;
            compare(charts.currentPage, Gui.PageChartsList);
            charts.currentIndex = 0;
            compare(charts.currentPage, Gui.PageChart);
            compare(pageChanged.count, 0);
            compare(Gui.page, Gui.PageAuto);
        }

        // On becoming current the page reports what it shows.
        function test_report_on_becoming_current_data() {
            return [{tag: "chart", index: 0, page: Gui.PageChart}, {tag: "list", index: 1, page: Gui.PageChartsList}];
        }

        function test_report_on_becoming_current(data) {
            charts.currentIndex = data.index;
            stack.currentIndex = 1;
            compare(Gui.page, data.page);
            compare(pageChanged.count, 1);
        }

        function test_report_of_each_page() {
            stack.currentIndex = 1;
            compare(Gui.page, Gui.PageChart);
            press("btnBrowser");
            compare(charts.currentIndex, 1);
            compare(Gui.page, Gui.PageChartsList);
            press("back");
            compare(charts.currentIndex, 0);
            compare(Gui.page, Gui.PageChart);
            compare(pageChanged.count, 3);
        }

        function test_list_page_stays_behind_other_tabs() {
            stack.currentIndex = 1;
            press("btnBrowser");
            stack.currentIndex = 0;
            stack.currentIndex = 1;
            compare(Gui.page, Gui.PageChartsList);
        }
    }
}
