// Asks what to do with the machine: power off or restart.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base

BasePopup {
    id: root

    // The question enters the stack before the popup leaves it.
    function customAccept() {
        Dialogs.poweroffQuestion();
        root.accept();
    }

    contentItem: ColumnLayout {
        spacing: Common.spacing

        Button {
            Layout.fillWidth: true
            text: "Herunterfahren"

            onClicked: {
                Dialogs.poweroffQuestion();
                root.close();
            }
        }

        Button {
            Layout.fillWidth: true
            text: "Neu starten"

            onClicked: {
                Dialogs.rebootQuestion();
                root.close();
            }
        }
    }
}
