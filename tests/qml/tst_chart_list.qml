// The list of saved charts, and what can be done with each.
import QtQuick
import QtQuick.Controls
import QtTest

import brovik.base
import brovik.chart
import brovik.gui
import kubelor.test

Item {
    BaseTemplate {
        id: window

        width: 720
        height: 950

        ChartsListPage {
            id: page

            anchors.fill: parent
        }

        SignalSpy {
            id: backRequested

            target: page
            signalName: "backRequested"
        }

        SignalSpy {
            id: models

            signalName: "modelChanged"
        }

        Component {
            id: buttonComponent

            Button {}
        }

        DialogTestCase {
            name: "ChartList"

            readonly property ListView list: findChild(page, "list")
            readonly property string missing: "Es ist eine Eingabe erforderlich"

            function prepare() {
                Common.mainHeight = 950;
                show([["Fass 1", "success", "gut", "1.1.2025 10:00", 125]]);
                Backend.run("chart.Chart.assigned_names = ['Fass 1', 'Fass 2']");
                backRequested.clear();
            }

            // Makes records of name, result, status, date and duration the list.
            function show(records, run = Backend.run) {
                run(`
import json
entries = chart.ChartMetaDataList()
for record in json.loads(${JSON.stringify(JSON.stringify(records))}):
    entries.append(chart.ChartMetaData(*record))
chart.Chart.meta_data_list = entries`);
                // The list follows later, and the count may be the same.
                Backend.settle();
                tryCompare(list, "count", records.length);
                list.forceLayout();
            }

            function part(name, index = 0) {
                return findChild(list.itemAtIndex(index), name);
            }

            function press(text, index = 0) {
                mouseClick(findText(list.itemAtIndex(index), text, "checkable"));
            }

            function dialogButton(dialog, text) {
                return findText(dialog.input.parent, text, "checkable");
            }

            // The input dialog, ready for typing.
            function openInput() {
                const dialog = latestDialog();
                tryVerify(() => dialog.input.activeFocus);
                return dialog;
            }

            function test_back_button() {
                const button = findChild(page, "back");
                compare(button.text, "Zurück zum Chart");
                compare(button.icon.source, "img/arrow-left-circle.svg");
                compare([button.y, button.width, button.height], [10, page.width, Gui.controlHeight]);
                compare(button.font.pointSize, Gui.fSizeM);
                mouseClick(button);
                compare(backRequested.count, 1);
                // As large as the style's own.
                const plain = createTemporaryObject(buttonComponent, page);
                compare([button.icon.width, button.icon.height], [plain.icon.width, plain.icon.height]);
                verify(list.clip);
                compare(list.y + list.height, page.height);
            }

            function test_colour_of_the_result_data() {
                return [
                    {tag: "success", colour: "lightgreen"},
                    {tag: "warning", colour: Qt.lighter("orange")},
                    {tag: "error", colour: "lightcoral"},
                    {tag: "aborted", colour: "lightblue"},
                    {tag: "", colour: "lightblue"},
                    {tag: "Success", colour: "lightblue"}
                ];
            }

            function test_colour_of_the_result(data) {
                show([["a", data.tag, "s", "d", 1]]);
                verify(Qt.colorEqual(part("heading").background.color, data.colour));
                compare(part("heading").color, "#000000");
                compare(part("heading").padding, 3);
            }

            function test_texts() {
                compare(part("heading").text, "Fass 1 - gut");
                compare(part("dateTime").text, "Datum/Zeit: 1.1.2025 10:00");
                compare(part("duration").text, "Prozessdauer: 2 Minuten und 5 Sekunden");
            }

            function test_order_of_an_entry() {
                const parts = ["heading", "dateTime", "duration"].map(name => part(name));
                const buttons = ["laden", "löschen", "umbenennen"].map(text => findText(list.itemAtIndex(0), text, "checkable"));
                compare(Array.from(parts[0].parent.children), parts.concat(buttons[0].parent));
                verify(parts.every((label, i) => i === 0 || label.y >= parts[i - 1].y + parts[i - 1].height));
                verify(buttons[0].parent.y >= parts[2].y + parts[2].height);
                const lefts = buttons.map(button => button.x);
                compare(lefts.slice().sort((a, b) => a - b), lefts);
                verify(buttons.every(button => button.enabled && button.y === buttons[0].y));
            }

            function test_duration_data() {
                return [
                    {tag: "0", text: "weniger als eine Sekunde"},
                    {tag: "1", text: "1 Sekunden"},
                    {tag: "59", text: "59 Sekunden"},
                    {tag: "60", text: "1 Minuten"},
                    {tag: "61", text: "1 Minuten und 1 Sekunden"},
                    {tag: "3600", text: "60 Minuten"},
                    {tag: "86399", text: "1439 Minuten und 59 Sekunden"}
                ];
            }

            function test_duration(data) {
                show([["a", "success", "s", "d", Number(data.tag)]]);
                compare(part("duration").text, "Prozessdauer: " + data.text);
            }

            function test_entry_fills_the_width() {
                const entry = list.itemAtIndex(0);
                compare(entry.width, list.width);
                const box = entry.children[0];
                compare([box.x, box.width], [0, list.width]);
                compare(entry.height, box.height + 5);
            }

            // Shown as they stand, inside the window.
            function test_names_data() {
                return [
                    {tag: "markup", txt: "<b>fett</b><img src='x'>"},
                    {tag: "entity", txt: "a &amp; b &lt;"},
                    {tag: "quotes", txt: "'a' \"b\" `c` ${d}"},
                    {tag: "long", txt: "x".repeat(1000)},
                    {tag: "blanks", txt: "   "},
                    {tag: "empty", txt: ""}
                ];
            }

            function test_names(data) {
                show([[data.txt, "success", data.txt, data.txt, 1]]);
                compare(part("heading").text, `${data.txt} - ${data.txt}`);
                for (const name of ["heading", "dateTime"]) {
                    compare(part(name).textFormat, Text.PlainText);
                    verify(part(name).contentWidth <= part(name).width);
                    verify(!part(name).truncated);
                }
                press("laden");
                compareSentThrough(Chart, [[Chart.ChartLoad, data.txt]]);
            }

            function test_names_in_the_dialogs(data) {
                show([[data.txt, "success", "s", "d", 1]]);
                press("löschen");
                const question = open(latestDialog());
                compare(question.text, `Soll das Chart '${Texts.escaped(data.txt)}' wirklich gelöscht werden?`);
                clickButton(question, "Ja");
                compareSentThrough(Chart, [[Chart.ChartDelete, data.txt]]);
                tryVerify(() => !Dialogs.popupActive);
                press("umbenennen");
                const input = openInput();
                compare(input.title, `Chart ${data.txt} umbenennen`);
                compare(input.value, data.txt);
                input.reject();
                compareSentThrough(Chart, []);
            }

            function test_names_in_the_dialogs_data() {
                return test_names_data();
            }

            function test_loading_asks_nothing() {
                press("laden");
                compareSentThrough(Chart, [[Chart.ChartLoad, "Fass 1"]]);
                verify(!Dialogs.popupActive);
            }

            function test_deleting() {
                press("löschen");
                const dialog = latestDialog();
                compare(dialog.title, "Chart löschen");
                compare(dialog.text, "Soll das Chart 'Fass 1' wirklich gelöscht werden?");
                compare([dialog.yes, dialog.no], ["Ja", "Abbrechen"]);
                compareSentThrough(Chart, []);
                clickButton(dialog, "Ja");
                compareSentThrough(Chart, [[Chart.ChartDelete, "Fass 1"]]);
            }

            function test_deleting_cancelled() {
                press("löschen");
                clickButton(latestDialog(), "Abbrechen");
                tryVerify(() => !Dialogs.popupActive);
                compareSentThrough(Chart, []);
            }

            function test_renaming() {
                press("umbenennen");
                const dialog = openInput();
                compare(dialog.title, "Chart Fass 1 umbenennen");
                compare(dialog.text, "Bitte einen neuen Namen für das Chart eingeben:");
                compare(dialog.value, "Fass 1");
                compare(dialog.errorText, "Der Name Fass 1 ist bereits vergeben");
                verify(!dialogButton(dialog, "OK").enabled);
                keyClick("2");
                compare(dialog.errorText, "");
                verify(dialogButton(dialog, "OK").enabled);
                mouseClick(dialogButton(dialog, "OK"));
                compareSentThrough(Chart, [[Chart.ChartRename, ["Fass 1", "Fass 12"]]]);
            }

            // What is typed over the name, and what is said of it.
            function test_renaming_checks_each_edit_data() {
                return [
                    {tag: "other case", txt: "fASS 1", error: ""},
                    {tag: "other chart", txt: "Fass 2", error: "Der Name Fass 2 ist bereits vergeben"},
                    {tag: "other chart in other case", txt: "fass 2", error: ""},
                    {tag: "nothing", txt: "", error: missing}
                ];
            }

            function test_renaming_checks_each_edit(data) {
                press("umbenennen");
                const dialog = openInput();
                dialog.input.selectAll();
                keyClick(Qt.Key_Backspace);
                for (const letter of data.txt) {
                    keyClick(letter);
                }
                compare(dialog.value, data.txt);
                compare(dialog.errorText, data.error);
                compare(dialogButton(dialog, "OK").enabled, !data.error);
            }

            function test_return_does_not_honour_the_taken_name() {
                press("umbenennen");
                const dialog = openInput();
                verify(!dialogButton(dialog, "OK").enabled);
                keyClick(Qt.Key_Return);
                compareSentThrough(Chart, [[Chart.ChartRename, ["Fass 1", "Fass 1"]]]);
            }

            function test_list_changes_while_a_dialog_asks() {
                press("löschen");
                const dialog = latestDialog();
                tryVerify(() => dialog.opened);
                show([["Anderes", "error", "s", "d", 1]], Backend.runOnThread);
                clickButton(dialog, "Ja");
                compareSentThrough(Chart, [[Chart.ChartDelete, "Fass 1"]]);
            }

            function test_list_vanishes_while_a_dialog_asks() {
                press("umbenennen");
                const dialog = openInput();
                show([], Backend.runOnThread);
                keyClick("2");
                keyClick(Qt.Key_Return);
                compareSentThrough(Chart, [[Chart.ChartRename, ["Fass 1", "Fass 12"]]]);
            }

            function test_list_changes_while_it_shows() {
                const row = i => [`Fass ${i}`, "success", `Status ${i}`, "d", i];
                const rows = count => Array.from({length: count}, (_, i) => row(i));
                for (const count of [3, 1, 0, 5, 2, 100, 1, 4]) {
                    show(rows(count), Backend.runOnThread);
                    for (let i = 0; i < Math.min(count, 4); ++i) {
                        compare(part("heading", i).text, `Fass ${i} - Status ${i}`);
                    }
                }
            }

            function rows(count) {
                return Array.from({length: count}, (_, i) => [`Fass ${i}`, "success", "s", "d", i]);
            }

            // The backend changes the list first, and tells of it later.
            function test_list_shrinks_before_it_is_announced() {
                show(rows(100));
                Backend.runOnThread("entries = chart.Chart.meta_data_list\nfor _ in range(98): entries.remove(entries[0])");
                for (const index of [99, 50, 3, 0]) {
                    list.positionViewAtIndex(index, ListView.Beginning);
                    list.forceLayout();
                    draw(list);
                }
                Backend.runOnThread("chart.Chart.emit_meta_data_list_changed()");
                tryCompare(list, "count", 2);
                list.forceLayout();
                compare([0, 1].map(i => part("heading", i).text), ["Fass 98 - s", "Fass 99 - s"]);
            }

            function test_changes_that_wait_rebuild_the_list_once() {
                models.target = list;
                models.clear();
                Backend.runOnThread("for _ in range(100): chart.Chart.emit_meta_data_list_changed()");
                compare(models.count, 0);
                tryCompare(models, "count", 2);
                Backend.settle();
                compare(models.count, 2, "taken away and set again");
            }

            function test_list_changes_while_it_is_scrolled() {
                show(rows(20));
                Backend.run(`
import threading
def change():
    entries = chart.Chart.meta_data_list
    for number in range(300):
        entries.append(chart.ChartMetaData(f"Neu {number}", "error", "s", "d", number))
        if number % 3:
            entries.remove(entries[0])
        chart.Chart.sort_and_emit_meta_data_list_changed()
    chart.Chart.assigned_names = ["fertig"]
threading.Thread(target=change).start()`);
                let turn = 0;
                tryVerify(() => {
                    list.positionViewAtIndex(++turn % 2 * (list.count - 1), ListView.Contain);
                    return Chart.assignedNames[0] === "fertig";
                }, 30000);
                tryCompare(list, "count", 120);
                list.positionViewAtEnd();
                list.forceLayout();
                compare(part("heading", 119).text, "Neu 99 - s");
            }

            function test_record_changed_in_place() {
                Backend.runOnThread("record = chart.Chart.find_meta_data_by_name('Fass 1')\nrecord.name, record.status, record.result = 'Neu', 'anders', 'error'\nchart.Chart.emit_meta_data_list_changed()");
                tryVerify(() => part("heading")?.text === "Neu - anders");
                verify(Qt.colorEqual(part("heading").background.color, "lightcoral"));
                press("laden");
                compareSentThrough(Chart, [[Chart.ChartLoad, "Neu"]]);
            }

            function test_thousand_charts() {
                show(rows(1000));
                verify(list.contentItem.children.length < 50, "only what shows is made");
                list.positionViewAtIndex(999, ListView.End);
                list.forceLayout();
                compare(part("heading", 999).text, "Fass 999 - s");
                list.positionViewAtBeginning();
            }

            function test_entries_are_right_wherever_the_list_is_scrolled_to() {
                const results = ["success", "warning", "error", "?"];
                show(Array.from({length: 1000}, (_, i) => [`Fass ${i}`, results[i % 4], `Status ${i}`, `Tag ${i}`, i]));
                for (const place of [0, 3, 500, 503, 999, 700, 1]) {
                    list.positionViewAtIndex(place, ListView.Contain);
                    list.forceLayout();
                    compare(part("heading", place).text, `Fass ${place} - Status ${place}`);
                    compare(part("dateTime", place).text, `Datum/Zeit: Tag ${place}`);
                    verify(Qt.colorEqual(part("heading", place).background.color, [Qt.color("lightgreen"), Qt.lighter("orange"), Qt.color("lightcoral"), Qt.color("lightblue")][place % 4]));
                    press("laden", place);
                    compareSentThrough(Chart, [[Chart.ChartLoad, `Fass ${place}`]]);
                }
                list.positionViewAtBeginning();
            }

            function test_a_change_keeps_the_place() {
                show(rows(100));
                list.positionViewAtIndex(50, ListView.Beginning);
                const before = list.contentY - list.originY;
                verify(before > 0);
                show(rows(99), Backend.runOnThread);
                tryVerify(() => Math.abs(list.contentY - list.originY - before) < list.height / 2);
                show(rows(2), Backend.runOnThread);
                tryVerify(() => list.atYBeginning);
                compare(part("heading", 0).text, "Fass 0 - s");
            }
        }
    }
}
