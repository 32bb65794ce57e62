// The frame of the settings pages.
import QtQuick
import QtQuick.Layouts

import brovik.base
import brovik.gui

ColumnLayout {
    id: root

    readonly property bool isCurrent: StackLayout.isCurrentItem

    // Shows the page at this position.
    function changeIndex(index: int) {
        pages.currentIndex = index;
    }

    // Shows the update pages, and this tab of theirs.
    function showUpdatePage(index = 0) {
    }

    StackLayout {
        id: pages
    }

    onIsCurrentChanged: {
        if (isCurrent) {
            Gui.changePage(Gui.PageSettingsAuto);
        }
    }

    Component.onCompleted: Common.settingsOverviewIndex = StackLayout.index
}
