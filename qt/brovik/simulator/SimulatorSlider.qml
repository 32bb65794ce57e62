// A value of the simulated hardware: its name and, below, the slider that moves it.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base

ColumnLayout {
    id: root

    // What stands beside the name.
    default property alias beside: heading.data
    property alias text: label.text
    readonly property alias value: slider.value
    property alias to: slider.to
    property alias stepSize: slider.stepSize
    // What the slider shows until somebody moves it.
    required property real stored

    // Somebody has moved the slider.
    signal moved(value: real)

    spacing: 0

    RowLayout {
        id: heading

        Label {
            id: label

            Layout.fillWidth: true
        }
    }

    Slider {
        id: slider

        Layout.fillWidth: true
        Accessible.name: root.text
        topPadding: 0
        bottomPadding: 0
        wheelEnabled: true
        snapMode: Slider.SnapAlways

        MyStoredValue {
            target: slider
            name: "value"
            value: root.stored
        }

        onMoved: root.moved(value)
    }
}
