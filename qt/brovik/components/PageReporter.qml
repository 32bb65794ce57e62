// Reports a page to the PageStack that it stands in, whenever it turns current there.
import QtQuick
import QtQuick.Layouts

import brovik.components

QtObject {
    id: root

    required property Item page
    // One of Gui's page values.
    required property int pageEnum
    readonly property bool isCurrent: root.page.StackLayout.isCurrentItem

    onIsCurrentChanged: {
        if (root.isCurrent) {
            (root.page.parent as PageStack)?.setCurrentPage(root.pageEnum);
        }
    }
}
