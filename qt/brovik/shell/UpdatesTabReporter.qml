// Reports a tab to the UpdatesTabs that it stands in, whenever it turns current there; hides it while it is aside.
import QtQuick
import QtQuick.Controls

import brovik.shell

QtObject {
    id: root

    required property Item tab
    // One of Gui's page values.
    required property int pageEnum
    readonly property bool isCurrent: root.tab.SwipeView.isCurrentItem
    readonly property UpdatesPageSight sight: UpdatesPageSight {
        page: root.tab
    }

    onIsCurrentChanged: {
        if (root.isCurrent) {
            (root.tab.SwipeView.view as UpdatesTabs)?.setCurrentPage(root.pageEnum);
        }
    }
}
