// The dialogs that the backend asks for, from a thread of its own.
import QtQuick

import brovik.base
import brovik.gui
import kubelor.test

Item {
    BaseTemplate {
        width: 800
        height: 1200

        DialogTestCase {
            name: "BackendDialogs"

            readonly property string frames: "[{'pathRel': 'controller/run.py', 'pathAbs': '/opt/controller/run.py', 'lineNo': 12, 'func': 'run', 'lineStr': 'x = 1 / 0'}]"

            function fromBackend(code) {
                Backend.runOnThread(code);
            }

            function dialog(id) {
                return Dialogs.getOpenDialogById(id)[0];
            }

            function test_message() {
                const id = nextAutoId();
                fromBackend("gui.Gui.message('Titel', 'Text <b>fett</b>', 'error')");
                tryCompareSent([[Gui, Gui.DialogData, {current: [id, null]}]]);
                compare(dialog(id).title, "Titel");
                compare(dialog(id).text, "Text <b>fett</b>");
                compare(dialog(id).color, "#ff0000");
            }

            function test_message_with_an_id() {
                Gui.message("Titel", "Text", "info", 5);
                compareSent([[Gui, Gui.DialogData, {current: [5, null]}]]);
            }

            function test_question() {
                fromBackend("gui.Gui.question('Titel', 'Text', {'id': 7, 'yes': 'Ja', 'no': 'Nein', 'category': 'warning', 'description': {'weiter': [1, None]}})");
                tryCompareSent([[Gui, Gui.DialogData, {current: [7, {weiter: [1, null]}]}]]);
                compare(dialog(7).yes, "Ja");
                compare(dialog(7).no, "Nein");
                compare(dialog(7).color, Common.colorWarning);
                clickButton(dialog(7), "Ja");
                compareSent([[Gui, Gui.DialogData, {7: {a: true}}]]);
                tryCompareSent([[Gui, Gui.DialogData, {7: {a: true}, current: null}]]);
            }

            function test_question_without_yes() {
                fromBackend("gui.Gui.question('Titel', 'Text', {'id': 7, 'yes': None})");
                tryCompareSent([[Gui, Gui.DialogData, {current: [7, null]}]]);
                compare(dialog(7).yes, "");
            }

            function test_question_without_options() {
                const id = nextAutoId();
                fromBackend("gui.Gui.question('Titel', 'Text', {})");
                tryCompareSent([[Gui, Gui.DialogData, {current: [id, null]}]]);
            }

            function test_close_dialog_data() {
                return [
                    {tag: "accepted", accept: "True", value: true},
                    {tag: "rejected", accept: "False", value: false}
                ];
            }

            function test_close_dialog(data) {
                fromBackend("gui.Gui.question('unten', 'x', {'id': 7})");
                fromBackend("gui.Gui.question('oben', 'x', {'id': 8})");
                tryVerify(() => sent.count === 2);
                sent.clear();
                fromBackend(`gui.Gui.close_dialog(7, ${data.accept})`);
                tryCompareSent([
                    [Gui, Gui.DialogData, {7: {a: data.value}}],
                    [Gui, Gui.DialogData, {7: {a: data.value}, current: [8, null]}]
                ]);
            }

            function test_close_dialog_that_is_not_open() {
                fromBackend("gui.Gui.close_dialog(5)\ngui.Gui.message('danach', 'x', 'info')");
                tryVerify(() => Dialogs.popupActive);
                compare(sent.count, 1);
            }

            function test_close_current_dialog_data() {
                return [
                    {tag: "accepted", accept: "True", value: true},
                    {tag: "rejected", accept: "False", value: false}
                ];
            }

            function test_close_current_dialog(data) {
                fromBackend(`gui.Gui.question('t', 'x', {'id': 7})\ngui.Gui.close_current_dialog(${data.accept})`);
                tryCompareSent([
                    [Gui, Gui.DialogData, {current: [7, null]}],
                    [Gui, Gui.DialogData, {7: {a: data.value}}],
                    [Gui, Gui.DialogData, {7: {a: data.value}, current: null}]
                ]);
            }

            function test_close_current_dialog_without_one_data() {
                return [
                    {tag: "accept", accept: "True", warning: "Dialogs.acceptCurrent() --> kein Dialog offen"},
                    {tag: "reject", accept: "False", warning: "Dialogs.rejectCurrent() --> kein Dialog offen"}
                ];
            }

            function test_close_current_dialog_without_one(data) {
                ignoreWarning(data.warning);
                fromBackend(`gui.Gui.close_current_dialog(${data.accept})\ngui.Gui.message('danach', 'x', 'info')`);
                tryVerify(() => Dialogs.popupActive);
                compare(sent.count, 1);
            }

            function test_exception_data() {
                return [
                    {tag: "with traceback", withTraceback: true},
                    {tag: "without traceback", withTraceback: false}
                ];
            }

            function test_exception(data) {
                const id = nextAutoId();
                const frame = {pathRel: "controller/run.py", pathAbs: "/opt/run.py", lineNo: 12, func: "run", lineStr: "x = 1 / 0"};
                const record = {type: "ZeroDivisionError", text: "division by zero", root: "", withTraceback: data.withTraceback, trace: [frame]};
                Backend.startRecordingPrints();
                Gui.exception(record);
                const [print] = Backend.takePrints();
                verify(print.startsWith("onException: "), print);
                compare(JSON.parse(print.slice("onException: ".length)), record);
                compareSent([[Gui, Gui.DialogData, {current: [id, null]}]]);
                const message = open(dialog(id));
                compare(message.title, "ZeroDivisionError");
                compare(message.text, "division by zero");
                compare(message.color, "#ff0000");
                compare(!!findButton(message, "Traceback"), data.withTraceback);
            }

            // As it stands: "<" begins no markup, and lines stay lines.
            function test_text_of_an_exception_is_plain_data() {
                return [
                    {tag: "comparison", text: "'<' not supported between instances of 'str' and 'int'"},
                    {tag: "markup", text: "<b>Datei</b> &amp; <img src='x'> fehlt"},
                    {tag: "lines", text: "erste Zeile\n  zweite Zeile\nZeile 7 in worker.cpp"}
                ];
            }

            function test_text_of_an_exception_is_plain(data) {
                const id = nextAutoId();
                Gui.exception({type: "TypeError", text: data.text, root: "", withTraceback: false, trace: []});
                const message = open(dialog(id));
                compare(message.text, data.text);
                const label = findText(message.contentItem, data.text, "textFormat");
                compare(label.textFormat, Text.PlainText);
                verify(label.lineCount >= data.text.split("\n").length);
            }

            function test_text_of_a_message_is_rich() {
                const id = nextAutoId();
                fromBackend("gui.Gui.message('Titel', '<b>Text</b>', 'error')");
                tryCompareSent([[Gui, Gui.DialogData, {current: [id, null]}]]);
                const message = open(dialog(id));
                compare(findText(message.contentItem, "<b>Text</b>", "textFormat").textFormat, Text.RichText);
            }

            function test_exception_of_the_backend() {
                const id = nextAutoId();
                fromBackend("import brovik\ntry:\n    1 / 0\nexcept ZeroDivisionError:\n    brovik.forward_exception()");
                tryCompareSent([[Gui, Gui.DialogData, {current: [id, null]}]]);
                const message = open(dialog(id));
                compare(message.title, "ZeroDivisionError");
                compare(message.text, "division by zero");
                verify(findButton(message, "Traceback"));
            }
        }
    }
}
