import QtQuick
import QtQuick.Controls
import QtTest

import brovik.base
import brovik.gui
import brovik.shell
import kubelor.test
import "items.js" as Items

// The tables of the available and of the installed packages.
Item {
    BaseTemplate {
        id: window

        width: 710
        height: 600
        font.pointSize: Gui.fSizeS

        Component {
            id: availableComponent

            UpdatesTabAvailable {
                anchors.fill: parent
            }
        }

        Component {
            id: installedComponent

            UpdatesTabInstalled {
                anchors.fill: parent
            }
        }

        Component {
            id: spyComponent

            SignalSpy {}
        }

        ScreenTestCase {
            name: "UpdatesTables"

            property UpdatesTabTable page

            readonly property var tables: [
                {
                    tag: "available",
                    component: availableComponent,
                    list: "upgradables",
                    headers: ["Paketname", "Version", "installiert", "Priorität", "Änderungen", "Changelog einsehen"],
                    fillWidths: [0, 0, 0, 0, 1],
                    minWidths: [120, 0, 0, 0, 200],
                    record: "{'name': 'kubelor', 'versionNew': '1.2', 'versionOld': '1.1', 'urgency': 'high', 'lastChange': ['eins', 'zwei'], 'changelogAvailable': 'kubelor.log'}",
                    shown: [["kubelor"], ["1.2"], ["1.1"], ["Hoch"], ["1: ", "eins", "2: ", "zwei"]],
                    buttonColumn: 5,
                    buttonKey: "changelogAvailable",
                    button: "kubelor.log",
                    action: Shell.Changelog
                },
                {
                    tag: "installed",
                    component: installedComponent,
                    list: "installed",
                    headers: ["Paketname", "Version", "Architektur", "Beschreibung", "Changelog einsehen"],
                    fillWidths: [0, 0, 0, 1],
                    minWidths: [120, 0, 0, 200],
                    record: "{'name': 'kubelor', 'version': '1.1', 'arch': 'arm64', 'description': 'Bedienung', 'name2': 'kubelor'}",
                    shown: [["kubelor"], ["1.1"], ["arm64"], ["Bedienung"]],
                    buttonColumn: 4,
                    buttonKey: "name2",
                    button: "kubelor",
                    action: Shell.LocalChangelog
                }
            ]

            function prepare() {
                Backend.run("shell.Shell.color_urgency_low, shell.Shell.color_urgency_medium, shell.Shell.color_urgency_high, shell.Shell.color_urgency_other = '#00ff00', '#ffff00', '#ff0000', '#0000ff'");
            }

            // Shows this table with these records, written in Python.
            function show(data, records) {
                page = createTemporaryObject(data.component, window.contentItem);
                publish(data, records);
            }

            function publish(data, records) {
                Backend.runOnThread(`shell.Shell.${data.list} = ${records}`);
                tryCompare(page.table, "rows", Shell[data.list].length);
                draw(page);
            }

            function texts(item) {
                return Items.below(item, child => child instanceof Label && child.visible).map(label => label.text);
            }

            function cell(column, row = 0) {
                return page.table.itemAtCell(column, row);
            }

            function row(columns, row = 0) {
                return Array.from({length: columns}, (_, column) => texts(cell(column, row)));
            }

            function test_form_data() {
                return tables;
            }

            function test_form(data) {
                show(data, "[]");
                verify(page.clip);
                verify(!page.interactive);
                compare(page.count, 2);
                compare(page.itemAt(0), page.packages);
                compare(page.itemAt(0).tableView, page.table);
                verify(page.itemAt(1) instanceof UpdatesChangelogFlick);
                compare(page.packages.headerModel, data.headers);
                compare(Array.from(page.packages.headerFillWidths), data.fillWidths);
                compare(Array.from(page.packages.headerMinWidths), data.minWidths);
                compare(page.table.rows, 0);
            }

            function test_many_lists_are_shown_once_data() {
                return tables;
            }

            function test_many_lists_are_shown_once(data) {
                show(data, "[]");
                const filled = createTemporaryObject(spyComponent, window.contentItem, {target: page.model, signalName: "rowsChanged"});
                Backend.runOnThread(`for n in range(200):\n    shell.Shell.${data.list} = [{'name': str(n)}]`);
                tryCompare(page.table, "rows", 1);
                compare(page.model.getRow(0).name, "199");
                compare(filled.count, 1);
            }

            function test_record_data() {
                return tables;
            }

            function test_record(data) {
                show(data, `[${data.record}]`);
                compare(page.table.columns, data.headers.length);
                compare(row(data.shown.length), data.shown);
                compare(cell(data.buttonColumn).btn.text, "Changelog");
            }

            function test_delegates() {
                show(tables[0], `[${tables[0].record}]`);
                verify([0, 1, 2].every(column => cell(column) instanceof MyTableDefaultDelegate));
                verify(cell(3) instanceof MyTableUrgencyDelegate);
                verify(cell(4) instanceof MyTableTextListDelegate);
                verify(cell(5) instanceof MyTableChangelogBtnDelegate);
                show(tables[1], `[${tables[1].record}]`);
                verify([0, 1, 2, 3].every(column => cell(column) instanceof MyTableDefaultDelegate));
                verify(cell(4) instanceof MyTableChangelogBtnDelegate);
            }

            function test_urgency_words_data() {
                return [{tag: "low", text: "Niedrig"}, {tag: "medium", text: "Mittel"}, {tag: "high", text: "Hoch"}, {tag: "HIGH", text: "HIGH"}, {tag: "optional", text: "optional"}];
            }

            function test_urgency_words(data) {
                show(tables[0], `[{'urgency': '${data.tag}'}]`);
                compare(texts(cell(3)), [data.text]);
                compare(cell(3).contentItem.color, Shell.getUrgencyColor(data.tag));
            }

            // Until the backend has written the colours.
            function test_urgency_without_colours() {
                Backend.run("shell.Shell.color_urgency_low, shell.Shell.color_urgency_other = 'keine Farbe', ''");
                verify(!Shell.colorUrgencyLow.valid);
                const label = createTemporaryQmlObject("import QtQuick; import brovik.shell; Text { color: Shell.colorUrgencyLow }", window.contentItem);
                show(tables[0], "[{'urgency': 'low'}, {}]");
                compare([0, 1].map(row => texts(cell(3, row))), [["Niedrig"], ["?"]]);
                compare([0, 1].map(row => cell(3, row).contentItem.color), [label.color, label.color]);
            }

            function test_changelog_button_data() {
                return tables;
            }

            function test_changelog_button(data) {
                show(data, `[{'name': 'other'}, ${data.record}]`);
                compare(page.currentIndex, 0);
                mouseClick(cell(data.buttonColumn, 1).btn);
                compareSent([[Shell, data.action, data.button]]);
                compare(page.currentIndex, 1);
                tryVerify(() => page.itemAt(1).mapToItem(page, 0, 0).x === 0);
                mouseClick(page.itemAt(1).backBtn);
                compare(page.currentIndex, 0);
                compareSent([]);
            }

            function test_changelog_value_data() {
                const values = [["''", false], ["None", false], ["False", false], ["'x'", true, "x"], ["True", true, true], ["7", true, 7], ["0", false], ["[]", false], ["{}", false], ["['x']", true, ["x"]], ["{'x': 1}", true, {x: 1}], ["b''", false]];
                return values.reduce((rows, [value, enabled, sent]) => rows.concat(tables.map(table => Object.assign({}, table, {tag: `${table.tag} ${value}`, value: value, enabled: enabled, sent: sent}))), []);
            }

            function test_changelog_value(data) {
                show(data, `[{'${data.buttonKey}': ${data.value}}]`);
                compare(cell(data.buttonColumn).btn.enabled, data.enabled);
                mouseClick(cell(data.buttonColumn).btn);
                compareSent(data.enabled ? [[Shell, data.action, data.sent]] : []);
                compare(page.currentIndex, data.enabled ? 1 : 0);
            }

            // A cell that lacks its value is empty, and nothing else is.
            function test_bad_records_data() {
                const bad = ["{}", "{'name': None, 'version': 3, 'versionNew': 2.5, 'versionOld': [], 'urgency': {}, 'lastChange': 'eins', 'arch': True, 'description': {'a': 1}}"];
                return bad.reduce((rows, record, i) => rows.concat(tables.map(table => Object.assign({}, table, {tag: `${table.tag} ${i}`, bad: record}))), []);
            }

            function test_bad_records(data) {
                for (const order of [[data.bad, data.record], [data.record, data.bad]]) {
                    show(data, `[${order}]`);
                    const good = order.indexOf(data.record);
                    compare(row(data.shown.length, good), data.shown);
                    verify(cell(data.buttonColumn, good).btn.enabled);
                    const empty = data.shown.map((_, column) => data.list === "installed" || column < 3 ? [""] : column === 3 ? ["?"] : []);
                    compare(row(data.shown.length, 1 - good), empty);
                    verify(!cell(data.buttonColumn, 1 - good).btn.enabled);
                }
            }

            function test_bad_changes() {
                show(tables[0], "[{'lastChange': ['eins', None, 3, ['x']]}]");
                compare(texts(cell(4)), ["1: ", "eins", "2: ", "", "3: ", "", "4: ", ""]);
            }

            function test_markup_is_text_data() {
                return tables;
            }

            function test_markup_is_text(data) {
                const markup = "<b>x</b><img src='file:///x'>";
                const keys = ["name", "versionNew", "versionOld", "urgency", "version", "arch", "description"];
                show(data, `[dict.fromkeys(${JSON.stringify(keys)}, "${markup}") | {'lastChange': ["${markup}"]}]`);
                const labels = Items.below(page.table, item => item instanceof Label && item.text === markup);
                compare(labels.length, data.shown.length);
                labels.forEach(label => compare(label.textFormat, Text.PlainText));
            }

            function test_huge_texts_are_cut_data() {
                return tables;
            }

            // The value of the button is none of them.
            function test_huge_texts_are_cut(data) {
                const huge = "'lang ' * 10000";
                const keys = ["name", "versionNew", "versionOld", "urgency", "version", "arch", "description", data.buttonKey];
                show(data, `[dict.fromkeys(${JSON.stringify(keys)}, ${huge}) | {'lastChange': [${huge}]}]`);
                const cut = "lang ".repeat(2000) + "…";
                const labels = Items.below(page.table, item => item instanceof Label && item.text === cut);
                compare(labels.length, data.shown.length);
                cell(data.buttonColumn).btn.clicked();
                compare(sent.take()[0][2].length, 50000);
            }

            function test_lists_follow_data() {
                return tables;
            }

            function test_lists_follow(data) {
                show(data, `[${data.record}] * 3`);
                compare(page.table.rows, 3);
                publish(data, "[]");
                publish(data, "[{'name': 'neu'}]");
                compare(texts(cell(0)), ["neu"]);
                publish(data, `[${data.record}]`);
                tryVerify(() => texts(cell(0))[0] !== "neu");
                compare(row(data.shown.length), data.shown);
            }

            function test_all_columns_fit_a_small_window_data() {
                return tables;
            }

            function test_all_columns_fit_a_small_window(data) {
                show(data, `[${data.record}]`);
                compare(page.table.contentWidth, 710);
                const button = cell(data.buttonColumn).btn;
                verify(button.mapToItem(page, 0, 0).x + button.width <= 710);
                verify(button.contentItem.implicitWidth <= button.width, `${button.contentItem.implicitWidth} ${button.width} ${page.buttonWidth}`);
            }

            // A finger hits the button of a row with a single line.
            function test_height_of_the_button_data() {
                return tables;
            }

            function test_height_of_the_button(data) {
                show(data, `[${data.record.replace("['eins', 'zwei']", "['eins']")}]`);
                const button = cell(data.buttonColumn).btn;
                verify(button.height >= 44, button.height);
                compare(button.implicitHeight, 10);
                compare(cell(data.buttonColumn).height, button.height + 2 * 5);
            }

            function test_high_rows_give_the_button_their_height() {
                show(tables[1], "[{'description': 'Wort ' * 100, 'name2': 'x'}]");
                tryVerify(() => cell(4).btn.height > 88 && cell(4).btn.height === cell(3).height - 2 * 5);
            }

            function test_versions_stay_on_one_line_data() {
                const [available, installed] = tables;
                const version = "5.15.8+dfsg-3+deb12u1";
                return [
                    {tag: "installed", table: installed, records: `[{'version': '${version}'}, {'version': '1.0'}]`, width: 800, lines: {1: 1}},
                    {tag: "available", table: available, records: `[{'versionNew': '${version}', 'versionOld': '${version}'}]`, width: 1000, lines: {1: 1, 2: 1}},
                    {tag: "room for one", table: available, records: `[{'versionNew': '${version}', 'versionOld': '1.2.3-4+deb12'}]`, width: 760, lines: {1: 2, 2: 1}},
                    {tag: "no room", table: installed, records: "[{'version': '1.2.' * 50}]", width: 710, lines: {1: 5}},
                    {tag: "endless", table: installed, records: "[{'version': '1' * 20000}]", width: 710, lines: {1: 5}}
                ];
            }

            // They break only if there is no room, and then all columns stay in sight.
            function test_versions_stay_on_one_line(data) {
                window.width = data.width;
                show(data.table, data.records);
                for (const column in data.lines) {
                    const label = cell(Number(column)).contentItem;
                    tryVerify(() => data.lines[column] === 1 ? label.lineCount === 1 : label.lineCount >= data.lines[column], 5000, `${label.text} ${label.lineCount} ${label.width}`);
                }
                compare(page.table.contentWidth, data.width);
                // The room goes back to where it came from.
                publish(data.table, "[{}]");
                tryVerify(() => page.table.itemAtCell(1, 0).width < 100);
                compare(page.table.contentWidth, data.width);
                window.width = 710;
            }

            function test_versions_stay_on_one_line_in_larger_letters() {
                window.width = 1200;
                show(tables[1], "[{'version': '5.15.8+dfsg-3+deb12u1'}]");
                const label = cell(1).contentItem;
                tryCompare(label, "lineCount", 1);
                const width = label.width;
                Backend.run("gui.Gui.apply_items_scale_to_default(1.6)");
                tryVerify(() => label.width > 1.4 * width && label.lineCount === 1);
                Backend.run("gui.Gui.apply_items_scale_to_default(1.0)");
                tryVerify(() => label.width < 1.1 * width && label.lineCount === 1);
                window.width = 710;
            }

            function test_long_texts_wrap() {
                show(tables[1], "[{'description': 'Wort ' * 100}, {}]");
                const description = cell(3).contentItem;
                tryVerify(() => description.lineCount > 5 && cell(3).height >= description.contentHeight);
                compare(page.table.contentWidth, 710);
            }
        }
    }
}
