// Keeps a spin box at a number that is stored elsewhere, by somebody who may take a while.
//
// What the operator wishes stays in the box until it is answered, so that the next step goes on from there.
import QtQml

import brovik.base

MyStoredValue {
    id: root

    required property MyFloatingPointSpinBox spinBox
    // In the units of the spin box.
    required property int stored
    // How long a wish stays without an answer, in milliseconds.
    property int patience: 1000

    readonly property QtObject wishing: QtObject {
        id: privat

        // What the operator has wished and nobody has answered, the last wish last.
        property list<int> open: []
        readonly property Timer wait: Timer {
            interval: root.patience

            onTriggered: privat.open = []
        }
        readonly property Connections operator: Connections {
            target: root.spinBox

            function onValueModified() {
                const wish = root.spinBox.value;
                if (privat.open.length > 0 || wish !== root.stored) {
                    privat.open = [...privat.open, wish];
                    privat.wait.restart();
                }
            }
        }

        // Any value but that of an earlier wish ends the waiting: the last wish is stored, or something else is.
        function answer() {
            const answered = Array.from(privat.open).indexOf(root.stored);
            if (answered >= 0 && answered < privat.open.length - 1) {
                privat.open = Array.from(privat.open).filter((_, i) => i !== answered);
                privat.wait.restart();
            } else {
                privat.open = [];
            }
        }
    }

    target: root.spinBox
    name: "value"
    value: privat.open.length > 0 ? privat.open[privat.open.length - 1] : root.stored

    onStoredChanged: privat.answer()
}
