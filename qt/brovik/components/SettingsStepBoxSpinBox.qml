// A setting that is a number, marked if it differs from its default.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.base

RowLayout {
    id: root

    required property real defaultValue
    required property string description
    property alias text: label.text
    property alias spinBox: spinBox
    property alias value: spinBox.value
    property alias realValue: spinBox.realValue
    property alias from: spinBox.from
    property alias to: spinBox.to
    property alias factor: spinBox.factor
    property alias stepSize: spinBox.stepSize
    property int precision: 0
    readonly property string suffix: root.defaultValue !== root.realValue ? Common.defaultSuffixNumber(root.defaultValue, Material.accent) : ""

    Label {
        id: label

        // Not its own height: as long as it is less than that of the control, its changes would pass the layout by.
        Layout.fillHeight: true
        Layout.fillWidth: true
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        textFormat: Text.StyledText
        text: root.description + root.suffix
    }

    MyFloatingPointSpinBox {
        id: spinBox

        Accessible.name: root.description
        precision: root.precision
        editable: true
    }
}
