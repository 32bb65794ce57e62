// A push button of the machine: on while the pointer holds it.
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.sensor

Button {
    id: root

    required property int input

    // In the dark theme its colour would be too pale for its text.
    Material.theme: Material.Light
    Layout.fillWidth: true
    topPadding: 0
    bottomPadding: 0

    onPressed: Sensor.requestValueChange(root.input, true)
    onReleased: Sensor.requestValueChange(root.input, false)
    onCanceled: Sensor.requestValueChange(root.input, false)
}
