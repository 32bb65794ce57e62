// A text on a coloured surface in the window's header.
import QtQuick
import QtQuick.Controls

import brovik.base

Label {
    id: root

    leftPadding: root.horizontalAlignment === Text.AlignLeft ? Common.spacing : 0
    verticalAlignment: Text.AlignVCenter
    wrapMode: Text.Wrap
    textFormat: Text.PlainText
    background: Rectangle {
        color: Common.bg1
    }
}
