// The title bar of a dialog.
import QtQuick
import QtQuick.Controls

import brovik.base

Label {
    id: root

    property alias barColor: bar.color

    padding: Common.dialogTitlePadding
    text: "Titel"
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    color: "white"
    font.pointSize: Common.dialogTitleSize

    background: Rectangle {
        id: bar
        color: "grey"
    }
}
