// A switch whose text wraps where there is no room for it.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.base

Switch {
    id: root

    Layout.fillWidth: true
    Accessible.name: root.text
    horizontalPadding: 0
    spacing: Common.spacing

    contentItem: Label {
        leftPadding: root.indicator.width + root.spacing
        text: root.text
        wrapMode: Text.Wrap
        verticalAlignment: Text.AlignVCenter
        font: root.font
        color: root.enabled ? root.Material.foreground : root.Material.hintTextColor
        Accessible.ignored: true
    }
}
