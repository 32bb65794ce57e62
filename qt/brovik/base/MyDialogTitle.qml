// The title bar of a dialog.
import QtQuick
import QtQuick.Controls

import brovik.base

Label {
    id: root

    property color barColor: "grey"

    padding: Common.dialogTitlePadding
    text: "Titel"
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    color: "white"
    font.pointSize: Common.dialogTitleSize

    background: Rectangle {
        color: root.barColor
    }
}
