// Asks the operator for a decision.
pragma ComponentBehavior: Bound

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

    width: Dialogs.dialogMaxWidth
    color: Common.infoBarColor
    text: "Frage"

    // The ids end the deferring: the style has no content of its own that would be made in vain.
    contentItem: MyDialogLoader { // qmllint disable deferred-property-id
        dialog: root

        column: MyDialogColumn {
            dialog: root

            GridLayout {
                id: buttons

                // The buttons stand one above the other, as wide as the dialog, if there is no room for them side by side.
                readonly property bool stacked: privat.widthOf(yesButton) + privat.widthOf(noButton) > root.availableWidth

                Layout.fillWidth: true
                columns: stacked ? 1 : 3
                columnSpacing: Common.spacing
                rowSpacing: 0

                Item {
                    Layout.fillWidth: true
                    visible: !buttons.stacked
                }

                MyTextButton {
                    id: yesButton

                    Layout.fillWidth: buttons.stacked
                    text: root.yes
                    visible: text
                    onClicked: root.accept()
                }

                MyTextButton {
                    id: noButton

                    Layout.fillWidth: buttons.stacked
                    text: root.no
                    visible: text
                    onClicked: root.reject()
                }
            }
        }
    }

    onEnterPressed: accept()
    onEscapePressed: reject()

    QtObject {
        id: privat

        // With what separates it from its neighbour on the left.
        function widthOf(button: MyTextButton): real {
            return button.text ? button.implicitWidth + Common.spacing : 0;
        }
    }
}
