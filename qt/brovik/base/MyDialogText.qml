// The main text of a dialog: rich text that scrolls if it is too high. What is too long to be laid out at once is
// shown as plain text.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls

import brovik.base

Loader {
    id: root

    property string text
    property int minimumHeight: Common.dialogTextHeight

    height: Math.max(minimumHeight, implicitHeight)
    sourceComponent: text.length > Common.richTextLimit ? longText : richText

    Component {
        id: richText

        Flickable {
            implicitHeight: label.implicitHeight
            contentWidth: width
            contentHeight: label.implicitHeight
            clip: true
            interactive: contentHeight > height
            boundsBehavior: Flickable.StopAtBounds

            ScrollBar.vertical: ScrollBar {}

            Label {
                id: label
                width: parent.width
                text: root.text
                textFormat: Text.RichText
                wrapMode: Text.Wrap
            }
        }
    }

    Component {
        id: longText

        MyTextList {
            texts: [root.text]
        }
    }
}
