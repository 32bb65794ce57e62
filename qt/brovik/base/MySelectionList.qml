// A labelled selection box on a surface of its own.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base

Rectangle {
    id: root

    property alias text: label.text
    property alias model: comboBox.model
    property alias comboBox: comboBox
    property alias currentIndex: comboBox.currentIndex

    implicitHeight: grid.implicitHeight
    color: Common.bg1

    GridLayout {
        id: grid

        anchors.fill: parent
        columns: 2
        rows: 2
        columnSpacing: Common.spacing
        rowSpacing: Common.spacing
        flow: privat.stacked ? GridLayout.TopToBottom : GridLayout.LeftToRight

        Label {
            id: label

            Layout.maximumWidth: privat.stacked ? root.width - Common.spacing : Common.maxLeftColWidth
            Layout.leftMargin: Common.spacing
            Layout.topMargin: privat.stacked ? Common.spacing : 0
            wrapMode: Text.WordWrap
            textFormat: Text.PlainText
        }

        ComboBox {
            id: comboBox

            Layout.fillWidth: true
            Layout.leftMargin: Common.spacing
            Layout.rightMargin: Common.spacing
            Accessible.name: root.text
        }
    }

    QtObject {
        id: privat

        // What decides the flow must not itself come from the layout.
        readonly property real labelWidth: Math.min(label.implicitWidth, Common.maxLeftColWidth)
        readonly property bool stacked: Common.minRightColWidth + privat.labelWidth > root.width
    }
}
