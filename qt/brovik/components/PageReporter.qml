// Reports a page whenever it turns current: to the frame that it stands in, a PageStack or a PageSwipeView, or to Gui if it
// stands in none.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.components
import brovik.gui

QtObject {
    id: root

    required property Item page
    // One of Gui's page values.
    required property int pageEnum
    readonly property bool isCurrent: root.page.StackLayout.isCurrentItem || root.page.SwipeView.isCurrentItem

    readonly property QtObject inner: QtObject {
        id: privat

        function report() {
            const stack = root.page.parent as PageStack;
            const tabs = root.page.SwipeView.view as PageSwipeView;
            if (stack) {
                stack.setCurrentPage(root.pageEnum);
            } else if (tabs) {
                tabs.setCurrentPage(root.pageEnum);
            } else {
                Gui.changePage(root.pageEnum);
            }
        }
    }

    onIsCurrentChanged: {
        if (root.isCurrent) {
            privat.report();
        }
    }
}
