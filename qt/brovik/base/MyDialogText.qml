// The main text of a dialog: rich text that scrolls if it is too high. What is too long to be laid out at once is
// shown as plain text.
import QtQuick
import QtQuick.Controls

import brovik.base

Item {
    id: root

    property string text
    property int minimumHeight: Common.dialogTextHeight

    implicitHeight: Math.max(minimumHeight, privat.tooLong ? longText.implicitHeight : label.implicitHeight)

    Flickable {
        id: flickable

        anchors.fill: parent
        contentWidth: width
        contentHeight: label.implicitHeight
        clip: true
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        visible: !privat.tooLong

        ScrollBar.vertical: ScrollBar {
            policy: flickable.interactive ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
        }

        Label {
            id: label

            width: parent.width
            text: privat.tooLong ? "" : root.text
            textFormat: Text.RichText
            wrapMode: Text.Wrap
        }
    }

    MyTextList {
        id: longText

        anchors.fill: parent
        texts: privat.tooLong ? [root.text] : []
        visible: privat.tooLong
    }

    QtObject {
        id: privat
        readonly property bool tooLong: root.text.length > Common.richTextLimit
    }
}
