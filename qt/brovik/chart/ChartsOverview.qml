// The page of the charts: the chart itself, and the list of the saved ones.
import QtQuick
import QtQuick.Layouts

import brovik.base
import brovik.chart
import brovik.components
import brovik.gui

PageStack {
    id: root

    readonly property bool isCurrent: StackLayout.isCurrentItem

    shown: root.isCurrent
    currentPage: Gui.PageChart

    ChartPage {
        objectName: "chartPage"

        onListRequested: root.currentIndex = 1
    }

    ChartsListPage {
        objectName: "listPage"

        onBackRequested: root.currentIndex = 0
    }

    Component.onCompleted: Common.chartsOverviewIndex = StackLayout.index
}
