// Asks the operator for a decision.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

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

    width: Common.dialogMaxWidth
    color: "blue"
    text: "Frage"

    RowLayout {
        Layout.fillWidth: true
        spacing: Common.spacing

        Item {
            Layout.fillWidth: true
        }

        MyTextButton {
            text: root.yes
            visible: text
            onClicked: root.accept()
        }

        MyTextButton {
            text: root.no
            visible: text
            onClicked: root.reject()
        }
    }

    onEnterPressed: accept()
    onEscapePressed: reject()
}
