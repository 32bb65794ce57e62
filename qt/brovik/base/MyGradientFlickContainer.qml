// Gives a flickable the shadows that tell that there is more to scroll.
import QtQuick

import brovik.base

Item {
    id: root

    property alias flickable: loader.sourceComponent

    MyGradientBoxTop {
        id: top
    }

    MyGradientBoxBottom {
        id: bottom
    }

    Loader {
        id: loader

        anchors.fill: parent
        z: -1

        onLoaded: {
            top.active = Qt.binding(() => privat.canFlick && !privat.content.atYBeginning);
            bottom.active = Qt.binding(() => privat.canFlick && !privat.content.atYEnd);
        }
    }

    QtObject {
        id: privat

        readonly property Flickable content: loader.item as Flickable
        // An optional property of the flickable.
        readonly property bool canFlick: !(privat.content?.["disableFlick"] ?? false)
    }
}
