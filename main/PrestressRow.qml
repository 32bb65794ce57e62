// Shows and changes the pressure that the barrel is left with.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.gui
import brovik.settings

RowLayout {
    id: root

    Label {
        font.bold: true
        font.pointSize: Texts.drawableSize(Gui.fSizeL)
        text: "Vorspanndruck:"
    }

    MyFloatingPointSpinBox {
        id: spinBox

        objectName: "prestress"

        Accessible.name: "Vorspanndruck"
        precision: 1
        from: number.lowest
        to: number.highest

        SettingNumberBinder {
            id: number

            key: BrovikSettings.VorspannenP
            spinBox: spinBox
        }
    }
}
