// A page that scrolls if its content is higher than it, and shows by shadows that it does.
import QtQuick
import QtQuick.Layouts

import brovik.base

Item {
    id: root

    default property alias content: column.data
    property alias spacing: column.spacing

    MyGradientBoxTop {
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
}
