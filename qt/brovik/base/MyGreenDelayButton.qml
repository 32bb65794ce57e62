// A button to be held that can turn green.
import QtQuick.Controls
import QtQuick.Controls.Material

import brovik.base

DelayButton {
    id: root

    property bool isGreen: false

    delay: Common.delayButtonDelay
    Material.background: root.isGreen ? Material.color(Material.Green) : undefined
    Material.accent: root.isGreen ? Material.color(Material.Green) : undefined
}
