// Shows and changes the pressure that the barrel is left with.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.gui
import brovik.settings

RowLayout {
    id: root

    Label {
        font.bold: true
        font.pointSize: Gui.fSizeL
        text: "Vorspanndruck:"
    }

    MyFloatingPointSpinBox {
        id: spinBox

        objectName: "prestress"

        Accessible.name: "Vorspanndruck"
        precision: 1
        from: Math.round(BrovikSettings.vorspannenPMin * factor)
        to: Math.round(BrovikSettings.vorspannenPMax * factor)

        MyStoredValue {
            id: stored

            target: spinBox
            name: "value"
            value: Math.round(BrovikSettings.vorspannenP * spinBox.factor)
        }
    }

    QtObject {
        id: privat

        // What the backend has written itself goes back to it once. The way back from a refused wish does not: it
        // would be a wish against one that is only late.
        function send() {
            if (!stored.rereading) {
                BrovikSettings.toPy(BrovikSettings.VorspannenP, spinBox.realValue);
            }
        }
    }

    // Connected late, so that the first value is not sent.
    Component.onCompleted: spinBox.realValueChanged.connect(privat.send)
}
