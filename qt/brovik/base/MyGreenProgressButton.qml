// A button whose background fills with green as something proceeds.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

Button {
    id: root

    property bool showCheck: false
    property bool showProgress: false
    property bool fillGreen: false
    property real progress: 0.3

    Material.background: root.fillGreen && !root.showProgress ? privat.green : undefined
    display: root.showCheck ? AbstractButton.TextBesideIcon : AbstractButton.TextOnly
    icon.source: "qrc:/brovik/base/img/check.svg"

    QtObject {
        id: privat

        readonly property color green: Material.color(Material.Green)
        readonly property Component bar: Rectangle {
            anchors {
                top: parent.top
                bottom: parent.bottom
                left: parent.left
            }
            width: parent.width * Math.min(Math.max(root.progress, 0.0), 1.0)
            radius: (parent as Rectangle).radius
            color: privat.green
            visible: root.showProgress
        }
    }

    Component.onCompleted: privat.bar.createObject(root.background)
}
