// A table under a header that stays in place.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base

ColumnLayout {
    id: root

    property int horizontalMargins: 10
    property alias model: view.model
    property var headerModel: []
    // By column; a width that is no number of 0 or more is no limit.
    property var headerMinWidths: []
    property var headerMaxWidths: []
    property var headerFillWidths: []
    property alias delegate: view.delegate
    // The cell under the pointer, or the last one that was.
    property Item hoveredCell
    readonly property alias tableView: view
    readonly property alias resetRowTimer: resetRowTimer

    spacing: 0

    Flickable {
        id: header

        Layout.fillWidth: true
        Layout.preferredHeight: headerBackground.height
        contentX: view.contentX
        contentWidth: headerBackground.width
        interactive: false
        clip: true

        Rectangle {
            id: headerBackground

            implicitWidth: Math.max(headerRow.implicitWidth + 2 * root.horizontalMargins, root.width)
            implicitHeight: headerRow.implicitHeight + 2 * privat.verticalMargin
            color: Common.bg1

            RowLayout {
                id: headerRow

                anchors {
                    fill: parent
                    topMargin: privat.verticalMargin
                    bottomMargin: privat.verticalMargin
                    leftMargin: root.horizontalMargins
                    rightMargin: root.horizontalMargins
                }
                spacing: privat.headerSpacing

                Repeater {
                    id: headers

                    model: root.headerModel

                    Label {
                        required property int index
                        required property string modelData

                        Layout.fillWidth: Boolean(root.headerFillWidths[index])
                        Layout.minimumWidth: privat.limit(root.headerMinWidths[index])
                        Layout.maximumWidth: privat.limit(root.headerMaxWidths[index])
                        font.bold: true
                        wrapMode: Text.WordWrap
                        textFormat: Text.PlainText
                        text: modelData
                    }
                }
            }
        }
    }

    TableView {
        id: view

        property int hoveredRow: -1

        // Removes all rows but the first.
        function clear() {
            if (view.rows > 1) {
                view.model.removeRow(1, view.rows - 1);
            }
        }

        // The cell's item, or null. With noCheck the indices are known to be good.
        function itemAtRowAndColumn(row: int, col: int, noCheck: bool): Item {
            if (!noCheck && !(privat.isRow(row) && col >= 0 && col < view.model.columnCount)) {
                console.warn(`Invalid row or column index: ${row}.${col} (${view.model.rowCount}.${view.model.columnCount})`);
                return null;
            }
            return view.itemAtCell(col, row);
        }

        // The items of a row, from left to right.
        function itemsAtRow(row: int): list<Item> {
            if (!privat.isRow(row)) {
                console.warn(`Invalid row index: ${row} (${view.model.rowCount})`);
                return [];
            }
            return Array.from({length: view.model.columnCount}, (_, col) => view.itemAtRowAndColumn(row, col, true));
        }

        Layout.fillWidth: true
        Layout.fillHeight: true
        contentWidth: headerBackground.implicitWidth
        clip: true
        reuseItems: false
        flickableDirection: Flickable.AutoFlickIfNeeded
        columnWidthProvider: column => privat.columnWidth(column)
        delegate: MyTableDefaultDelegate {
            table: root
        }

        // The heights of the rows follow from the widths of their texts.
        onWidthChanged: view.forceLayout()
        onFlickEnded: view.forceLayout()
    }

    // A row stays highlighted while the pointer crosses from one of its cells to the next.
    Timer {
        id: resetRowTimer

        interval: 10

        onTriggered: view.hoveredRow = -1
    }

    QtObject {
        id: privat

        readonly property int verticalMargin: 5
        readonly property int headerSpacing: 10

        function limit(width): real {
            return typeof width === "number" && width >= 0 ? width : -1;
        }

        function isRow(row: int): bool {
            return row >= 0 && row < view.model.rowCount;
        }

        function columnWidth(column: int): real {
            const margin = column === headers.count - 1 ? root.horizontalMargins : 0;
            return headers.itemAt(column).width + privat.headerSpacing + margin;
        }
    }
}
