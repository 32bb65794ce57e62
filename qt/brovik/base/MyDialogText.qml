// The main text of a dialog: rich or plain text that scrolls if it is too high. Rich text that is too long to be laid out
// at once is shown as plain text.
import QtQuick
import QtQuick.Controls

import brovik.base

Item {
    id: root

    property string text
    property bool plain: false
    property int minimumHeight: Dialogs.textHeight

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

        // Whether there is a bar depends on the height of the text, and that on its width: one after the other.
        // The linter does not know that callLater() takes a function.
        onInteractiveChanged: Qt.callLater(privat.makeRoom) // qmllint disable type

        ScrollBar.vertical: ScrollBar {
            id: bar

            policy: flickable.interactive ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
        }

        Label {
            id: label

            width: flickable.width - privat.barWidth
            text: privat.tooLong ? "" : root.plain ? Texts.plain(root.text) : root.text
            textFormat: root.plain ? Text.PlainText : Text.RichText
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

        // Characters.
        readonly property int richLimit: 20000
        readonly property bool tooLong: root.text.length > privat.richLimit
        // What the scroll bar takes from the text.
        property real barWidth: 0

        function makeRoom() {
            // The call may come when this is already gone.
            if (privat) {
                privat.barWidth = flickable.interactive ? bar.width : 0;
            }
        }
    }
}
