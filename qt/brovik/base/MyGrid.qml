// A table of names and values from a flat list: name, value, name, value.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base

GridLayout {
    id: root

    // Texts. Untyped: createObject() would leave a typed list empty.
    property var model: []
    property int alignmentLeft: Qt.AlignRight | Qt.AlignVCenter
    property int alignmentRight: Qt.AlignLeft | Qt.AlignVCenter

    columns: 2
    columnSpacing: Common.spacing
    rowSpacing: Common.spacing

    Repeater {
        id: cells

        model: root.model

        Label {
            required property int index
            required property string modelData
            readonly property bool isLeft: index % root.columns === 0

            Layout.alignment: isLeft ? root.alignmentLeft : root.alignmentRight
            Layout.topMargin: index < root.columns ? Common.spacing : 0
            Layout.bottomMargin: index >= cells.count - root.columns ? Common.spacing : 0
            font.bold: isLeft
            textFormat: Text.PlainText
            text: modelData
        }
    }
}
