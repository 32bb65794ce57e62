// The title bar of a dialog.
import QtQuick
import QtQuick.Controls

import brovik.base

Label {
    id: root

    property string title: "Titel"
    property color barColor: Common.colorDialog

    padding: Common.dialogTitlePadding
    text: Common.shortText(title)
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    color: Common.fgOnBar
    font.pointSize: Common.dialogTitleSize

    background: Rectangle {
        color: root.barColor
    }

    onTitleChanged: Common.logCutText(title)
}
