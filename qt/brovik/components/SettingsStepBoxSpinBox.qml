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

        Layout.fillWidth: true
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
