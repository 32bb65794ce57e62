// The frame of a table's cell; highlights the row under the pointer.
import QtQuick
import QtQuick.Controls

import brovik.base

Control {
    id: root

    required property int row
    // A MyTable; its type would need this one in turn.
    required property var table
    default required property Item content

    contentItem: root.content
    leftPadding: 10
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
