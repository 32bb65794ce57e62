import QtQuick
import Qt.labs.qmlmodels
import QtTest

import brovik.base

// When a table is laid out anew, and in which directions it is dragged.
Item {
    id: root

    width: 700
    height: 500

    Component {
        id: tableComponent

        MyTable {
            // What every row is to have as its height from the next layout on.
            property int rowHeight: 50

            width: 300
            height: 400
            headerModel: ["Zeile"]
            model: TableModel {
                TableModelColumn {
                    display: "text"
                }
            }
            tableView.rowHeightProvider: () => rowHeight
        }
    }

    SignalSpy {
        id: flickEnded

        signalName: "flickEnded"
    }

    ScreenTestCase {
        name: "TableLayout"

        property MyTable table
        property TableView view

        function show(rows, properties = {}) {
            table = createTemporaryObject(tableComponent, root, properties);
            view = table.tableView;
            flickEnded.target = view;
            flickEnded.clear();
            table.model.rows = Array.from({length: rows}, (_, i) => ({text: `${i}`}));
            tryVerify(() => view.itemAtCell(0, 0)?.height === 50);
        }

        function drag(x, y) {
            mouseDrag(view, 150, 150, x, y);
        }

        function test_directions_data() {
            return [
                {tag: "small", rows: 3, properties: {}, moves: [false, false]},
                {tag: "high", rows: 40, properties: {}, moves: [false, true]},
                {tag: "wide", rows: 3, properties: {headerMinWidths: [900]}, moves: [true, false]},
                {tag: "high and wide", rows: 40, properties: {headerMinWidths: [900]}, moves: [true, true]}
            ];
        }

        // What fits does not move.
        function test_directions(data) {
            show(data.rows, data.properties);
            compare(view.flickableDirection, Flickable.AutoFlickIfNeeded);
            let moved = [false, false];
            view.contentXChanged.connect(() => moved[0] = true);
            view.contentYChanged.connect(() => moved[1] = true);
            drag(-100, 0);
            drag(0, -100);
            compare(moved, data.moves);
        }

        function test_width() {
            show(3);
            table.rowHeight = 70;
            compare(view.itemAtCell(0, 0).height, 50);
            table.width = 290;
            compare(view.itemAtCell(0, 0).height, 70);
        }

        // A short one: what comes into sight is laid out anyway.
        function test_end_of_a_flick() {
            show(40);
            table.rowHeight = 70;
            view.flick(0, -200);
            tryCompare(flickEnded, "count", 1);
            compare(view.topRow, 0);
            compare(view.itemAtCell(0, 0).height, 70);
        }
    }
}
