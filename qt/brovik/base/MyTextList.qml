// Plain texts below each other. Only what is in view is laid out, so that their length does not matter.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls

import brovik.base

ListView {
    id: root

    property list<string> texts: []

    // Never higher than the window, or all of a long text would be laid out.
    implicitHeight: Math.min(contentHeight, Common.h)
    clip: true
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    model: privat.pieces(texts)

    ScrollBar.vertical: ScrollBar {
        id: bar

        policy: root.interactive ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
    }

    delegate: Label {
        required property string modelData

        width: root.width - (root.interactive ? bar.width : 0)
        text: modelData
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
    }

    QtObject {
        id: privat

        function pieces(texts: list<string>): list<string> {
            let pieces = [];
            for (const text of texts) {
                pieces = pieces.concat(Texts.split(text));
            }
            return pieces;
        }
    }
}
