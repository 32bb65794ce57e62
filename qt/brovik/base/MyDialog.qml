// Tells the operator something, with details or a traceback to unfold.
import QtQuick

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

    // The id ends the deferring: the style has no content of its own that would be made in vain.
    contentItem: MyDialogLoader { // qmllint disable deferred-property-id
        id: loader

        dialog: root
        column: Qt.resolvedUrl("MyDialogMessage.qml")
    }

    onEnterPressed: close()
    onEscapePressed: close()
}
