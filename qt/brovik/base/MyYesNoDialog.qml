// Asks the operator for a decision.
import QtQuick

import brovik.base

MyDialogFrame {
    id: root

    // Texts of the buttons; a button without a text is not shown.
    property string yes: "OK"
    property string no: ""

    signal accepted
    signal rejected

    function accept() {
        if (closing) {
            return;
        }
        if (yes) {
            accepted();
        }
        close();
    }

    function reject() {
        if (closing) {
            return;
        }
        rejected();
        close();
    }

    width: Dialogs.dialogMaxWidth
    color: Common.infoBarColor
    text: "Frage"

    // The id ends the deferring: the style has no content of its own that would be made in vain.
    contentItem: MyDialogLoader { // qmllint disable deferred-property-id
        id: loader

        dialog: root
        column: Qt.resolvedUrl("MyDialogQuestion.qml")
    }

    onEnterPressed: accept()
    onEscapePressed: reject()
}
