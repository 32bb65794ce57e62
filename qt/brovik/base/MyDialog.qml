// Tells the operator something, with details or a traceback to unfold.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base

MyDialogFrame {
    id: root

    // Shown left of the buttons if it is a text. Untyped: otherwise it is the traceback.
    property var time: ""
    property string details: ""
    // Frames with pathRel, pathAbs, lineNo, func and lineStr, outermost first. Untyped: a list of records, or nothing.
    property var traceback: null
    // Shows an exception of the backend, whose text is no markup.
    property bool ofException: false

    function accept() {
        close();
    }

    function reject() {
        close();
    }

    text: "Text"
    plainText: ofException

    // The ids end the deferring: the style has no content of its own that would be made in vain.
    contentItem: MyDialogLoader { // qmllint disable deferred-property-id
        dialog: root

        column: MyDialogColumn {
            dialog: root

            RowLayout {
                Layout.fillWidth: true
                spacing: Common.spacing

                Label {
                    Layout.fillWidth: true
                    text: typeof root.time === "string" ? root.time : ""
                    textFormat: Text.PlainText
                    elide: Text.ElideRight
                }

                Button {
                    id: tracebackButton
                    text: "Traceback"
                    checkable: true
                    visible: root.traceback && !root.details
                }

                Button {
                    id: detailsButton
                    text: "Details"
                    checkable: true
                    visible: root.details
                }

                Button {
                    text: "OK"
                    onClicked: root.close()
                }
            }

            MyTextList {
                id: detailsList

                Layout.fillWidth: true
                Layout.preferredHeight: Math.min(privat.detailsHeight, contentHeight)
                texts: privat.closed ? [] : privat.detailTexts()
                visible: tracebackButton.checked || detailsButton.checked
            }
        }
    }

    onEnterPressed: close()
    onEscapePressed: close()

    onClosed: privat.closed = true

    QtObject {
        id: privat

        readonly property int detailsHeight: 200
        property bool closed: false

        function detailTexts(): list<string> {
            if (root.details) {
                return [root.details];
            }
            if (root.traceback) {
                return ["Traceback (letzter Aufruf zum Schluss):", ...Array.from(root.traceback, frameText)];
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
