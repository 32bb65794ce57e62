// A box with the number and the title of a step, and its settings below.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.gui

BrovikBox {
    id: root

    default property alias settings: column.data
    property int num: 0
    property alias title: titleLabel.text

    RowLayout {
        spacing: 0

        Label {
            Layout.alignment: Qt.AlignTop
            // Two figures may need more.
            Layout.preferredWidth: Math.max(Gui.boxLeftMargin, implicitWidth + Common.spacing)
            font.bold: true
            text: `${root.num}:`
            visible: root.num !== 0
        }

        Label {
            id: titleLabel

            Layout.fillWidth: true
            font.bold: true
            wrapMode: Text.WordWrap
            textFormat: Text.PlainText
        }
    }

    BrovikBoxSeparatorLine {
        Layout.bottomMargin: 0
    }

    ColumnLayout {
        id: column
    }
}
