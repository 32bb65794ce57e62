// Keeps a spin box at a number that is stored elsewhere, by somebody who may take a while.
//
// A number that the operator has set stays in the box until it is answered, so that the next step goes on from there.
import QtQml

import brovik.base

MyStoredValue {
    id: root

    required property MyFloatingPointSpinBox spinBox
    // In the units of the spin box.
    required property int stored
    // How long a number stays in the box without an answer, in milliseconds.
    property int patience: 1000

    readonly property QtObject waiting: QtObject {
        id: privat

        // The numbers that the operator has set and that nobody has answered, the last one at the end.
        property list<int> open: []
        readonly property Timer wait: Timer {
            interval: root.patience

            onTriggered: privat.open = []
        }
        readonly property Connections operator: Connections {
            target: root.spinBox

            function onValueModified() {
                const number = root.spinBox.value;
                if (privat.open.length > 0 || number !== root.stored) {
                    privat.open = [...privat.open, number];
                    privat.wait.restart();
                }
            }
        }

        // If one of the earlier numbers is stored, the last one is still waited for. Any other value ends the waiting:
        // it is the last number, or one that nobody has set here.
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
