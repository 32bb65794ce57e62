// A button that is green and checked, or red and crossed out.
import QtQuick.Controls
import QtQuick.Controls.Material

Button {
    id: root

    property bool active: false

    Material.background: Material.color(root.active ? Material.Green : Material.Red)
    icon.source: root.active ? "qrc:/brovik/base/img/check.svg" : "qrc:/brovik/base/img/x.svg"
}
