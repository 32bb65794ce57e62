// A text on a coloured surface in the window's header.
import QtQuick
import QtQuick.Controls

import brovik.base
import brovik.gui

Label {
    id: root

    leftPadding: Common.spacing
    rightPadding: Common.spacing
    verticalAlignment: Text.AlignVCenter
    // Smaller letters rather than a text that is cut off.
    fontSizeMode: Text.Fit
    minimumPointSize: Texts.drawableSize(Gui.fSizeXs) / 2
    wrapMode: Text.WordWrap
    elide: Text.ElideRight
    textFormat: Text.PlainText
    background: Rectangle {
        color: Common.bg1
    }
}
