// An icon in the foreground colour of the theme.
import QtQuick
import Qt5Compat.GraphicalEffects

import brovik.base

Item {
    id: root

    property size size: Qt.size(30, 30)
    property alias source: image.source
    property color color: Common.fg1

    // An empty value brings the theme's colour back.
    function setColor(col: var) {
        root.color = col || Qt.binding(() => Common.fg1);
    }

    implicitWidth: size.width
    implicitHeight: size.height

    Image {
        id: image

        anchors.centerIn: parent
        width: root.size.width
        height: root.size.height
        sourceSize.width: root.size.width
        sourceSize.height: root.size.height
        fillMode: Image.PreserveAspectFit
        antialiasing: true
        visible: false
    }

    // The icons are black outlines; this gives them their colour.
    ColorOverlay {
        anchors.fill: image
        source: image
        color: root.color
    }
}
