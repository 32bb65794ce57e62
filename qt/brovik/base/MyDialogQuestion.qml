// What stands in a MyYesNoDialog: its text and its buttons.
import QtQuick
import QtQuick.Layouts

import brovik.base

MyDialogColumn {
    id: root

    readonly property MyYesNoDialog question: root.dialog as MyYesNoDialog

    GridLayout {
        id: buttons

        // The buttons stand one above the other, as wide as the dialog, if there is no room for them side by side.
        readonly property bool stacked: privat.widthOf(yesButton) + privat.widthOf(noButton) > root.question.availableWidth

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
            text: root.question.yes
            visible: text

            onClicked: root.question.accept()
        }

        MyTextButton {
            id: noButton

            Layout.fillWidth: buttons.stacked
            text: root.question.no
            visible: text

            onClicked: root.question.reject()
        }
    }

    QtObject {
        id: privat

        // With what separates it from its neighbour on the left.
        function widthOf(button: MyTextButton): real {
            return button.text ? button.implicitWidth + Common.spacing : 0;
        }
    }
}
