// A page of settings: boxes below each other, with a gap below the last one. It reports itself.
import QtQuick
import QtQuick.Layouts

import brovik.base
import brovik.components

BrovikFlickable {
    id: root

    default property alias boxes: column.data
    // One of Gui's page values.
    required property int pageEnum

    spacing: Common.spacing

    ColumnLayout {
        id: column

        spacing: root.spacing
    }

    Item {
        Layout.preferredHeight: Common.spacing
    }

    PageReporter {
        page: root
        pageEnum: root.pageEnum
    }
}
