// A page that scrolls if its content is higher than it, and shows by shadows that it does.
import QtQuick
import QtQuick.Layouts
import QtQuick.Window

import brovik.base

Item {
    id: root

    default property alias content: column.data
    property alias spacing: column.spacing

    MyGradientBoxTop {
        id: top

        active: !flickable.atYBeginning
    }

    MyGradientBoxBottom {
        active: !flickable.atYEnd
    }

    Flickable {
        id: flickable

        anchors.fill: parent
        z: -1
        clip: true
        flickableDirection: Flickable.VerticalFlick
        interactive: flickable.contentHeight > flickable.height
        contentWidth: flickable.width
        contentHeight: column.implicitHeight

        ColumnLayout {
            id: column

            width: flickable.width
        }
    }

    QtObject {
        id: privat

        function contains(item: Item): bool {
            return item !== null && (item === column || privat.contains(item.parent));
        }

        function showFocused() {
            const item = root.Window.activeFocusItem;
            if (!privat.contains(item)) {
                return;
            }
            const y = item.mapToItem(column, 0, 0).y;
            const highest = y - top.boxHeight;
            const lowest = y + item.height + top.boxHeight - flickable.height;
            const wanted = Math.max(lowest, Math.min(highest, flickable.contentY));
            flickable.contentY = Math.max(0, Math.min(wanted, flickable.contentHeight - flickable.height));
        }
    }

    // The on-screen keyboard must not cover the field that it writes to.
    onHeightChanged: privat.showFocused()
}
