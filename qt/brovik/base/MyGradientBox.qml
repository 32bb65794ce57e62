// The shadow at one edge of a scrollable area: there is more to see in this direction.
import QtQuick
import QtQuick.Window

import brovik.gui

Rectangle {
    id: root

    readonly property color bg: Window.window?.color ?? "transparent"
    readonly property int boxHeight: 50
    property bool active: false
    property bool atTop: true

    anchors {
        top: root.atTop ? parent?.top : undefined
        bottom: root.atTop ? undefined : parent?.bottom
        left: parent?.left
        right: parent?.right
    }
    height: root.boxHeight
    visible: root.active && Gui.indicateScrollable
    gradient: Gradient {
        GradientStop {
            position: root.atTop ? 0 : 1
            color: root.bg
        }
        GradientStop {
            position: root.atTop ? 1 : 0
            color: Qt.alpha(root.bg, 0)
        }
    }
}
