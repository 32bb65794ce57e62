// The page of the charts: the chart itself, and the list of the saved ones.
import QtQuick
import QtQuick.Layouts

import brovik.base
import brovik.chart
import brovik.gui

MyStackLayout {
    id: root

    // The Gui.PageEnum value of the page shown in this stack.
    property int currentPage: Gui.PageChart
    readonly property bool isCurrent: StackLayout.isCurrentItem

    // The first page reports as soon as it is made.
    QtObject {
        id: privat

        function enter(page: int) {
            root.currentPage = page;
            privat.report();
        }

        function report() {
            if (root.isCurrent) {
                Gui.changePage(root.currentPage);
            }
        }
    }

    ChartPage {
        objectName: "chartPage"

        StackLayout.onIsCurrentItemChanged: {
            if (StackLayout.isCurrentItem) {
                privat.enter(Gui.PageChart);
            }
        }

        onListRequested: root.currentIndex = 1
    }

    ChartsListPage {
        objectName: "listPage"

        StackLayout.onIsCurrentItemChanged: {
            if (StackLayout.isCurrentItem) {
                privat.enter(Gui.PageChartsList);
            }
        }

        onBackRequested: root.currentIndex = 0
    }

    onIsCurrentChanged: privat.report()

    Component.onCompleted: Common.chartsOverviewIndex = StackLayout.index
}
