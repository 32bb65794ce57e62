// Shows the name of an output, and whether it is on.
import QtQuick
import QtQuick.Controls

import brovik.actuator
import brovik.base

Row {
    id: root

    required property DOut out
    readonly property int size: 10
    readonly property int gap: 5

    spacing: root.gap

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: root.size
        height: root.size
        color: root.out.state ? Common.colorOn : Common.colorOff
    }

    Label {
        textFormat: Text.PlainText
        // The window is as wide as what it shows.
        text: Texts.shortened(root.out.name)
    }
}
