// A button that is green and checked while what it stands for is active.
import QtQuick.Controls
import QtQuick.Controls.Material

import brovik.base

Button {
    id: root

    property bool active: false

    Material.background: root.active ? Material.color(Material.Green) : undefined
    Material.accent: root.active ? Common.colorOn : undefined
    display: root.active ? AbstractButton.TextBesideIcon : AbstractButton.TextOnly
    icon.source: "qrc:/brovik/base/img/check.svg"
}
