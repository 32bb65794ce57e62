// The title bar of a dialog.
import QtQuick
import QtQuick.Controls

import brovik.base

Label {
    id: root

    property string title: "Titel"
    property color barColor: Common.colorDialog

    padding: privat.padding
    text: Texts.shortened(title)
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    color: Common.fgOnBar
    font.pointSize: privat.size

    background: Rectangle {
        color: root.barColor
    }

    QtObject {
        id: privat

        readonly property int padding: 3
        readonly property int size: 16
    }

    onTitleChanged: Texts.logCut(title)
}
