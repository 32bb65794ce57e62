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
            id: calls

            target: Chart
            signalName: "toPy"
        }

        DialogTestCase {
            name: "ChartList"

            readonly property ListView list: findChild(page, "list")
            readonly property string missing: "Es ist eine Eingabe erforderlich"

            function init() {
                failOnWarning(/.?/);
                Common.mainHeight = 950;
                show([["Fass 1", "success", "gut", "1.1.2025 10:00", 125]]);
                Backend.run("chart.Chart.assigned_names = ['Fass 1', 'Fass 2']");
                calls.clear();
                backRequested.clear();
                spy.clear();
            }

            function cleanupTestCase() {
                show([]);
                Backend.run("chart.Chart.assigned_names = []");
            }

            // Makes records of name, result, status, date and duration the list.
            function show(records, run = Backend.run) {
                run(`
import json
entries = chart.ChartMetaDataList()
for record in json.loads(${JSON.stringify(JSON.stringify(records))}):
    entries.append(chart.ChartMetaData(*record))
chart.Chart.meta_data_list = entries`);
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

            function latestDialog() {
                tryVerify(() => Dialogs.popupActive);
                const id = spy.signalArguments[spy.count - 1][1].current[0];
                return Dialogs.getOpenDialogById(id)[0];
            }

            // The input dialog, ready for typing.
            function openInput() {
                const dialog = latestDialog();
                tryVerify(() => dialog.input.activeFocus);
                return dialog;
            }

            function verifySent(action, value) {
                compare(calls.count, 1);
                compare(calls.signalArguments[0][0], action);
                compare(calls.signalArguments[0][1], value);
                calls.clear();
            }

            function test_back_button() {
                const button = findChild(page, "back");
                compare(button.text, "Zurück zum Chart");
                compare(button.icon.source, "img/arrow-left-circle.svg");
                compare([button.y, button.width, button.height], [10, page.width, Gui.controlHeight]);
                compare(button.font.pointSize, Gui.fSizeM);
                mouseClick(button);
                compare(backRequested.count, 1);
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
                verifySent(Chart.ChartLoad, data.txt);
            }

            function test_names_in_the_dialogs(data) {
                show([[data.txt, "success", "s", "d", 1]]);
                press("löschen");
                const question = open(latestDialog());
                compare(question.text, `Soll das Chart '${Common.escaped(data.txt)}' wirklich gelöscht werden?`);
                clickButton(question, "Ja");
                verifySent(Chart.ChartDelete, data.txt);
                tryVerify(() => !Dialogs.popupActive);
                press("umbenennen");
                const input = openInput();
                compare(input.title, `Chart ${data.txt} umbenennen`);
                compare(input.value, data.txt);
                input.reject();
                compare(calls.count, 0);
            }

            function test_names_in_the_dialogs_data() {
                return test_names_data();
            }

            function test_loading_asks_nothing() {
                press("laden");
                verifySent(Chart.ChartLoad, "Fass 1");
                verify(!Dialogs.popupActive);
            }

            function test_deleting() {
                press("löschen");
                const dialog = latestDialog();
                compare(dialog.title, "Chart löschen");
                compare(dialog.text, "Soll das Chart 'Fass 1' wirklich gelöscht werden?");
                compare([dialog.yes, dialog.no], ["Ja", "Abbrechen"]);
                compare(calls.count, 0);
                clickButton(dialog, "Ja");
                verifySent(Chart.ChartDelete, "Fass 1");
            }

            function test_deleting_cancelled() {
                press("löschen");
                clickButton(latestDialog(), "Abbrechen");
                tryVerify(() => !Dialogs.popupActive);
                compare(calls.count, 0);
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
                verifySent(Chart.ChartRename, ["Fass 1", "Fass 12"]);
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
                verifySent(Chart.ChartRename, ["Fass 1", "Fass 1"]);
            }

            function test_list_changes_while_a_dialog_asks() {
                press("löschen");
                const dialog = latestDialog();
                tryVerify(() => dialog.opened);
                show([["Anderes", "error", "s", "d", 1]], Backend.runOnThread);
                clickButton(dialog, "Ja");
                verifySent(Chart.ChartDelete, "Fass 1");
            }

            function test_list_vanishes_while_a_dialog_asks() {
                press("umbenennen");
                const dialog = openInput();
                show([], Backend.runOnThread);
                keyClick("2");
                keyClick(Qt.Key_Return);
                verifySent(Chart.ChartRename, ["Fass 1", "Fass 12"]);
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

            function test_record_changed_in_place() {
                Backend.runOnThread("record = chart.Chart.find_meta_data_by_name('Fass 1')\nrecord.name, record.status, record.result = 'Neu', 'anders', 'error'\nchart.Chart.emit_meta_data_list_changed()");
                tryVerify(() => part("heading")?.text === "Neu - anders");
                verify(Qt.colorEqual(part("heading").background.color, "lightcoral"));
                press("laden");
                verifySent(Chart.ChartLoad, "Neu");
            }

            function test_thousand_charts() {
                show(Array.from({length: 1000}, (_, i) => [`Fass ${i}`, "success", "s", "d", i]));
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
                    compare(calls.signalArguments[calls.count - 1][1], `Fass ${place}`);
                }
                list.positionViewAtBeginning();
            }

            function test_a_change_keeps_the_place() {
                const rows = count => Array.from({length: count}, (_, i) => [`Fass ${i}`, "success", "s", "d", i]);
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
