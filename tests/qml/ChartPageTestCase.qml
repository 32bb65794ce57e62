// A test of the page of the chart.
import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.base
import brovik.chart

DialogTestCase {
    id: root

    // The window that the test stands in.
    required property BaseTemplate template

    readonly property Component stackComponent: Component {
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

    property ChartPage page
    readonly property list<string> groups: ["optsLw", "optsP", "optsValves", "optsSteps"]

    function prepare() {
        Common.mainHeight = 1000;
        template.setTheme(Material.Dark);
        const stack = createTemporaryObject(stackComponent, template.contentItem);
        page = stack.page;
        stack.currentIndex = 1;
        draw(page);
    }

    // Lines and axes are no items, so findChild() does not see them.
    function drawn(page) {
        const view = findChild(page, "chartView");
        const series = Array.from({length: view.count}, (_, i) => view.series(i));
        return series.reduce((all, line) => all.concat(line, line.axisX, line.axisY ?? line.axisYRight), []);
    }

    function part(name, page = root.page) {
        return findChild(page, name) ?? drawn(page).find(object => object.objectName === name);
    }
}
