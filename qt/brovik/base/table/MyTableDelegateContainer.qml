// The frame of a table's cell; highlights the row under the pointer.
import QtQuick
import QtQuick.Controls

import brovik.base

Control {
    id: root

    required property int row
    // Untyped: a MyTable, whose type would need this one in turn.
    required property var table
    default required property Item content
    readonly property int margin: 10

    contentItem: root.content
    leftPadding: root.margin
    rightPadding: 0
    verticalPadding: 5
    hoverEnabled: true
    background: Rectangle {
        color: root.row === root.table.tableView.hoveredRow ? Common.colorHovered : root.row % 2 === 1 ? Common.bg2 : "transparent"
    }

    // The next cell may be entered before this one is left.
    onHoveredChanged: {
        if (root.hovered) {
            root.table.resetRowTimer.stop();
            root.table.hoveredCell = root;
            root.table.tableView.hoveredRow = root.row;
        } else if (root.table.hoveredCell === root) {
            root.table.resetRowTimer.restart();
        }
    }
}
