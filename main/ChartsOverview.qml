// The page of the charts.
import QtQuick
import QtQuick.Layouts

import brovik.base
import brovik.gui

StackLayout {
    id: root

    readonly property bool isCurrent: StackLayout.isCurrentItem

    onIsCurrentChanged: {
        if (isCurrent) {
            Gui.changePage(Gui.PageChart);
        }
    }

    Component.onCompleted: Common.chartsOverviewIndex = StackLayout.index
}
