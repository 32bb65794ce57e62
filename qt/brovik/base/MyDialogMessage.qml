// What stands in a MyDialog: its text, buttons, and what they unfold.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base

MyDialogColumn {
    id: root

    readonly property MyDialog message: root.dialog as MyDialog

    RowLayout {
        Layout.fillWidth: true
        spacing: Common.spacing

        Label {
            Layout.fillWidth: true
            text: typeof root.message.time === "string" ? root.message.time : ""
            textFormat: Text.PlainText
            elide: Text.ElideRight
        }

        Button {
            id: tracebackButton

            text: "Traceback"
            checkable: true
            visible: root.message.traceback && !root.message.details
        }

        Button {
            id: detailsButton

            text: "Details"
            checkable: true
            visible: root.message.details
        }

        Button {
            text: "OK"

            onClicked: root.message.close()
        }
    }

    MyTextList {
        Layout.fillWidth: true
        Layout.preferredHeight: Math.min(privat.detailsHeight, contentHeight)
        texts: privat.closed ? [] : privat.detailTexts()
        visible: tracebackButton.checked || detailsButton.checked
    }

    Connections {
        target: root.message

        function onClosed() {
            privat.closed = true;
        }
    }

    QtObject {
        id: privat

        readonly property int detailsHeight: 200
        property bool closed: false

        function detailTexts(): list<string> {
            if (root.message.details) {
                return [root.message.details];
            }
            if (root.message.traceback) {
                return ["Traceback (letzter Aufruf zum Schluss):", ...Array.from(root.message.traceback, frameText)];
            }
            return [];
        }

        function frameText(frame: var): string {
            const file = String(frame.pathRel).startsWith(".") ? frame.pathAbs : frame.pathRel;
            const line = frame.lineStr ? `:\n  ${frame.lineStr}` : "";
            return `Datei ${file}, Zeile ${frame.lineNo}, in Funktion ${frame.func}${line}`;
        }
    }
}
