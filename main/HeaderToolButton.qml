// An icon beside the tabs that can be pressed.
import QtQuick.Controls

ToolButton {
    id: root

    padding: 0
    display: AbstractButton.IconOnly
}
