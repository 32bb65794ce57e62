// What a backend gone wild may do to the dialogs.
import QtQuick

import brovik.base
import brovik.gui
import kubelor.test

Item {
    BaseTemplate {
        width: 800
        height: 1200

        MyToast {
            id: toast
            height: 80
        }

        DialogTestCase {
            name: "DialogLoad"

            // Generous for a slow machine under load; what the texts would cost unbounded is minutes.
            readonly property int patience: 20000

            function test_two_hundred_dialogs() {
                const count = 200;
                Backend.runOnThread(`for i in range(${count}):\n    gui.Gui.question(str(i), 'Text', {'id': i + 1})`);
                tryVerify(() => sent.count === count, patience);
                const expected = [];
                for (let id = 1; id <= count; ++id) {
                    expected.push([Gui, Gui.DialogData, {current: [id, null]}]);
                }
                compareSent(expected);
                for (let id = 1; id <= count; ++id) {
                    compare(Dialogs.getOpenDialogById(id)[0].title, String(id - 1));
                }
                Backend.runOnThread(`for i in range(${count}):\n    gui.Gui.close_dialog(i + 1, True)`);
                tryVerify(() => !Dialogs.popupActive, patience);
                compare(sent.count, 2 * count);
            }

            function test_huge_texts_data() {
                const words = "'Wort ' * 2000000";
                return [
                    {tag: "text", title: "'t'", text: words, length: 10000000},
                    {tag: "text without a gap", title: "'t'", text: "'x' * 10000000", length: 10000000},
                    {tag: "lines", title: "'t'", text: "'Zeile\\n' * 1000000", length: 6000000},
                    {tag: "title", title: words, text: "'x'", length: 1}
                ];
            }

            function test_huge_texts(data) {
                const start = Date.now();
                Backend.runOnThread(`gui.Gui.message(${data.title}, ${data.text}, 'info')`);
                tryVerify(() => Dialogs.popupActive, patience);
                const [, , {current: [id]}] = sent.take()[0];
                const dialog = Dialogs.getOpenDialogById(id)[0];
                tryVerify(() => dialog.opened, patience);
                compare(dialog.text.length, data.length);
                verify(dialog.height <= 1200);
                verify(Date.now() - start < patience);
                clickButton(dialog, "OK");
                tryVerify(() => !Dialogs.popupActive);
            }

            function test_huge_details() {
                const dialog = open(Dialogs.message("t", "x", "info", {details: "Wort ".repeat(2000000)}));
                clickButton(dialog, "Details");
                compare(dialog.height <= 1200, true);
            }

            function test_deep_traceback() {
                const frame = {pathRel: "a.py", pathAbs: "/a.py", lineNo: 1, func: "f", lineStr: "f()"};
                const dialog = open(Dialogs.message("RecursionError", "x", "error", {traceback: Array(5000).fill(frame)}));
                clickButton(dialog, "Traceback");
            }

            function test_huge_toast() {
                Backend.runOnThread("gui.Gui.toast_warn('Wort ' * 2000000, 5000)");
                tryVerify(() => toast.opened, patience);
                toast.close();
            }

            function test_strange_options() {
                ignoreWarning(/Could not set initial property yes/);
                ignoreWarning(/Could not set initial property color/);
                Backend.runOnThread("gui.Gui.question('t', 'x', {'id': 3, 'yes': [1], 'color': 5, 'description': b'x', 'open': 1, 'component': {}})");
                tryVerify(() => Dialogs.getOpenDialogById(3));
            }
        }
    }
}
