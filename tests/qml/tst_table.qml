import QtQuick
import QtQuick.Controls
import Qt.labs.qmlmodels

import brovik.base
import brovik.shell
import kubelor.test

Item {
    id: root

    width: 700
    height: 500

    Component {
        id: packages

        MyTable {
            id: packagesTable

            width: 600
            height: 400
            headerModel: ["Paketname", "Priorität", "Änderungen", "Changelog einsehen"]
            headerMinWidths: [100, 80, 50, -1]
            headerMaxWidths: [100, null, undefined, 150]
            headerFillWidths: [false, 0, 1]
            model: TableModel {
                rows: [
                    {name: "kubelor", urgency: "high", changes: ["eins", "zwei"], changelog: "kubelor.log"},
                    {name: "controller", urgency: "low", changes: ["eine einzige, aber sehr lange Änderung, die in ihrer Spalte gewiss umbrochen wird"], changelog: ""},
                    {name: "<b>fett</b>", urgency: "??", changes: [], changelog: ""}
                ]

                TableModelColumn {
                    display: "name"
                }

                TableModelColumn {
                    display: "urgency"
                }

                TableModelColumn {
                    display: "changes"
                }

                TableModelColumn {
                    display: "changelog"
                }
            }
            delegate: DelegateChooser {
                DelegateChoice {
                    column: 1

                    MyTableUrgencyDelegate {
                        table: packagesTable
                    }
                }

                DelegateChoice {
                    column: 2

                    MyTableTextListDelegate {
                        table: packagesTable
                    }
                }

                DelegateChoice {
                    column: 3

                    MyTableChangelogBtnDelegate {
                        table: packagesTable
                    }
                }

                DelegateChoice {
                    MyTableDefaultDelegate {
                        table: packagesTable
                    }
                }
            }
        }
    }

    Component {
        id: plain

        MyTable {
            width: 300
            height: 200
            headerModel: ["A", "B"]
            headerMinWidths: [400, 400]
            model: TableModel {
                rows: [{a: "1", b: "2"}, {a: "3", b: "4"}]

                TableModelColumn {
                    display: "a"
                }

                TableModelColumn {
                    display: "b"
                }
            }
        }
    }

    Component {
        id: changelogButton

        MyTableChangelogBtnDelegate {}
    }

    ScreenTestCase {
        name: "Table"

        property MyTable table
        property TableView view

        function prepare() {
            Backend.run("shell.Shell.upgradables = [{'urgency': 'high'}, {'urgency': 'low'}]\nshell.Shell.color_urgency_high = '#ff0000'\nshell.Shell.color_urgency_low = '#00ff00'\nshell.Shell.color_urgency_other = '#0000ff'");
            show(packages);
        }

        function show(component) {
            table = createTemporaryObject(component, root);
            view = table.tableView;
            tryVerify(() => view.itemAtCell(0, view.rows - 1) !== null);
            draw(view);
        }

        function texts(item) {
            let found = [];
            for (let i = 0; i < item.children.length; ++i) {
                const child = item.children[i];
                found = found.concat(child instanceof Label && child.visible ? [child.text] : texts(child));
            }
            return found;
        }

        function cell(row, column) {
            return view.itemAtRowAndColumn(row, column, false);
        }

        function header() {
            return table.children[0].contentItem.children[0];
        }

        function headerLabels() {
            const row = header().children[0];
            return Array.from({length: row.children.length}, (_, i) => row.children[i]).filter(child => child instanceof Label);
        }

        function test_header() {
            compare(headerLabels().map(label => label.text), ["Paketname", "Priorität", "Änderungen", "Changelog einsehen"]);
            compare(header().color, Common.bg1);
            const [name, urgency, changes, log] = headerLabels();
            compare(name.width, 100);
            compare(urgency.width, 80);
            verify(log.width <= 150);
            // The filling column takes what is left, without the gaps and the margins.
            fuzzyCompare(changes.width, 600 - 2 * 10 - 3 * 10 - 100 - 80 - log.width, 0.01);
        }

        function test_columns_stand_under_their_headers() {
            const labels = headerLabels();
            labels.forEach((label, column) => {
                const expected = label.width + 10 + (column === labels.length - 1 ? 10 : 0);
                fuzzyCompare(view.columnWidthProvider(column), expected, 0.01);
            });
            compare(view.contentWidth, header().implicitWidth);
            verify(!view.reuseItems);
        }

        function test_header_follows_sideways() {
            show(plain);
            compare(header().width, 400 + 400 + 10 + 2 * 10);
            view.contentX = 50;
            compare(table.children[0].contentX, 50);
            verify(!table.children[0].interactive);
        }

        function test_rows_are_as_high_as_their_texts() {
            const label = cell(1, 2).contentItem;
            tryVerify(() => cell(1, 2).height >= label.implicitHeight);
            verify(cell(1, 2).height > cell(2, 0).height);
            const before = cell(1, 2).height;
            table.width = 500;
            tryVerify(() => cell(1, 2).height > before);
        }

        function test_default_delegate_shows_plain_text() {
            compare(texts(cell(2, 0)), ["<b>fett</b>"]);
            compare(cell(2, 0).contentItem.textFormat, Text.PlainText);
        }

        function test_text_list_is_numbered() {
            compare(texts(cell(0, 2)), ["1: ", "eins", "2: ", "zwei"]);
            compare(texts(cell(2, 2)), []);
        }

        function test_text_list_with_a_single_entry_shows_no_index() {
            compare(texts(cell(1, 2)), ["eine einzige, aber sehr lange Änderung, die in ihrer Spalte gewiss umbrochen wird"]);
        }

        function test_changelog_button() {
            const button = cell(0, 3).btn;
            compare(button.text, "Changelog");
            verify(button.enabled);
            verify(!cell(1, 3).btn.enabled);
            compare(button.implicitHeight, 10);
            compare([button.padding, button.rightInset, button.leftInset, button.topInset, button.bottomInset], [0, 5, 0, 0, 0]);
            fuzzyCompare(button.height, cell(0, 3).height - 2 * 5, 0.01);
        }

        function test_changelog_button_with_other_values_data() {
            return [
                {tag: "null", value: null, enabled: false},
                {tag: "undefined", value: undefined, enabled: false},
                {tag: "false", value: false, enabled: false},
                {tag: "0", value: 0, enabled: false},
                {tag: "empty list", value: [], enabled: false},
                {tag: "true", value: true, enabled: true},
                {tag: "number", value: 7, enabled: true},
                {tag: "list", value: ["kubelor", "1.0"], enabled: true}
            ];
        }

        function test_changelog_button_with_other_values(data) {
            const delegate = createTemporaryObject(changelogButton, root, {table, row: 0, model: {display: data.value}});
            compare(delegate.btn.enabled, data.enabled);
        }

        function test_urgency_data() {
            return [
                {tag: "low", text: "Niedrig", color: "#00ff00"},
                {tag: "medium", text: "Mittel", color: "#ffff00"},
                {tag: "high", text: "Hoch", color: "#ff0000"},
                {tag: "HIGH", text: "HIGH", color: "#0000ff"},
                {tag: "constructor", text: "constructor", color: "#0000ff"}
            ];
        }

        function test_urgency(data) {
            Backend.run("shell.Shell.color_urgency_medium = '#ffff00'");
            Backend.run(`shell.Shell.upgradables = [{'urgency': '${data.tag}'}]`);
            compare(texts(cell(0, 1)), [data.text]);
            compare(cell(0, 1).contentItem.color, Qt.color(data.color));
        }

        function test_urgency_of_an_absent_row() {
            compare(texts(cell(2, 1)), ["?"]);
            compare(cell(2, 1).contentItem.color, Qt.color("#0000ff"));
        }

        function test_row_colours() {
            compare(view.hoveredRow, -1);
            compare(cell(0, 0).background.color, Qt.color("transparent"));
            compare(cell(1, 0).background.color, Common.bg2);
            compare(cell(2, 0).background.color, Qt.color("transparent"));
        }

        function test_hover_highlights_the_row() {
            mouseMove(cell(1, 0), 10, 10);
            compare(view.hoveredRow, 1);
            compare(cell(1, 0).background.color, Common.colorHovered);
            compare(cell(1, 2).background.color, Common.colorHovered);
            compare(cell(0, 0).background.color, Qt.color("transparent"));
            mouseMove(root, 690, 490);
            tryCompare(view, "hoveredRow", -1);
            compare(cell(1, 0).background.color, Common.bg2);
        }

        function test_hover_does_not_flicker_between_cells() {
            let rows = [];
            mouseMove(cell(1, 0), 10, 10);
            view.hoveredRowChanged.connect(() => rows.push(view.hoveredRow));
            mouseMove(cell(1, 1), 10, 10);
            verify(!table.resetRowTimer.running);
            mouseMove(cell(0, 1), 10, 10);
            verify(!table.resetRowTimer.running);
            compare(rows, [0]);
            compare(table.resetRowTimer.interval, 10);
        }

        function test_cells_by_position() {
            verify(cell(0, 0) !== null);
            compare(texts(cell(0, 0)), ["kubelor"]);
            const row = view.itemsAtRow(1);
            compare(row.length, 4);
            compare(row[0], cell(1, 0));
            compare(row[3], cell(1, 3));
        }

        function test_bad_indices_data() {
            return [{tag: "row below", row: -1, column: 0}, {tag: "row above", row: 3, column: 0}, {tag: "column below", row: 0, column: -1}, {tag: "column above", row: 0, column: 4}];
        }

        function test_bad_indices(data) {
            ignoreWarning(`Invalid row or column index: ${data.row}.${data.column} (3.4)`);
            compare(view.itemAtRowAndColumn(data.row, data.column, false), null);
        }

        function test_bad_row() {
            ignoreWarning("Invalid row index: 3 (3)");
            compare(view.itemsAtRow(3).length, 0);
        }

        function test_clear_leaves_the_first_row() {
            view.clear();
            compare(view.model.rowCount, 1);
            tryCompare(view, "rows", 1);
            compare(texts(cell(0, 0)), ["kubelor"]);
            view.clear();
            compare(view.model.rowCount, 1);
        }
    }
}
