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
    property list<string> headerModel: []
    // By column; a width that is no number of 0 or more is no limit. Untyped: a list of numbers with gaps.
    property var headerMinWidths: []
    property var headerMaxWidths: [] // Untyped: likewise
    property var headerFillWidths: [] // Untyped: a list of what counts as true or false
    // By column; what its cells need to stay on one line. A column gets it as far as the table has room. Untyped: a list
    // of numbers with gaps.
    property var headerWantedWidths: []
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
                        id: headerLabel

                        required property int index
                        required property string modelData

                        Layout.fillWidth: Boolean(root.headerFillWidths[index])
                        Layout.preferredWidth: privat.ownWidth(headerLabel, index) + (privat.extraWidths[index] ?? 0)
                        Layout.minimumWidth: privat.limit(root.headerMinWidths[index])
                        Layout.maximumWidth: privat.limit(root.headerMaxWidths[index])
                        font.bold: true
                        wrapMode: Text.WordWrap
                        textFormat: Text.PlainText
                        text: modelData

                        onWidthChanged: view.forceLayout()
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

        interval: privat.crossingTime

        onTriggered: view.hoveredRow = -1
    }

    QtObject {
        id: privat

        readonly property int verticalMargin: 5
        // Milliseconds.
        readonly property int crossingTime: 10
        readonly property int headerSpacing: 10

        // What the columns get beside their own widths; first those that need little.
        readonly property list<real> extraWidths: {
            const labels = Array.from({length: headers.count}, (_, column) => headers.itemAt(column));
            const own = labels.map((label, column) => label ? privat.ownWidth(label, column) : 0);
            const spacing = 2 * root.horizontalMargins + privat.headerSpacing * Math.max(0, own.length - 1);
            let room = Math.max(0, own.reduce((rest, width) => rest - width, root.width - spacing));
            const wanted = own.map((width, column) => Math.max(0, privat.limit(root.headerWantedWidths[column]) - width));
            const extra = wanted.map(() => 0);
            for (const column of Array.from(wanted.keys()).sort((a, b) => wanted[a] - wanted[b])) {
                extra[column] = Math.min(room, wanted[column]);
                room -= extra[column];
            }
            return extra;
        }

        // What the header's text takes within the limits, rounded up as layouts do.
        function ownWidth(label: Label, column: int): real {
            const highest = privat.limit(root.headerMaxWidths[column]);
            const width = Math.ceil(highest < 0 ? label.implicitWidth : Math.min(label.implicitWidth, highest));
            return Math.max(width, privat.limit(root.headerMinWidths[column]));
        }

        function limit(width: var): real {
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
