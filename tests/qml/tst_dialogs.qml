// Messages and inputs, and what the backend is told of them, message by message.
import QtQuick

import brovik.base
import brovik.gui
import kubelor.test

Item {
    BaseTemplate {
        id: window

        width: 800
        height: 1200

        DialogTestCase {
            name: "Dialogs"

            function test_initial_state() {
                verify(!Dialogs.popupActive);
                verify(Dialogs.overlay);
                compare(Dialogs.inputComp.status, Component.Ready);
                compare(Dialogs.yesNoComp.status, Component.Ready);
                compare(Dialogs.msgComp.status, Component.Ready);
                compare(Dialogs.getOpenDialogById(1), undefined);
            }

            function test_message_with_automatic_id() {
                const id = nextAutoId();
                const dialog = open(Dialogs.message("Titel A", "Text A"));
                compareSent([[Gui, Gui.DialogData, {current: [id, null]}]]);
                verify(Dialogs.popupActive);
                compare(dialog.title, "Titel A");
                compare(dialog.text, "Text A");
                compare(dialog.color, "#0000ff");
                compare(dialog.parent, Dialogs.overlay);
                dialog.accept();
                tryCompareSent([[Gui, Gui.DialogData, {[id]: {a: false}, current: null}]]);
                verify(!Dialogs.popupActive);
            }

            function test_message_with_positive_id() {
                open(Dialogs.message("t", "x", "info", {id: 5}));
                compareSent([[Gui, Gui.DialogData, {current: [5, null]}]]);
                const [dialog, description] = Dialogs.getOpenDialogById(5);
                compare(dialog.title, "t");
                compare(description, null);
                dialog.reject();
                tryCompareSent([[Gui, Gui.DialogData, {5: {a: false}, current: null}]]);
                compare(Dialogs.getOpenDialogById(5), undefined);
            }

            function test_second_message_with_an_open_id_is_refused() {
                const first = open(Dialogs.message("eins", "x", "info", {id: 5}));
                sent.clear();
                Backend.startRecordingPrints();
                compare(Dialogs.message("zwei", "x", "info", {id: 5}), undefined);
                compare(Backend.takePrints(), ["Dialog ist bereits offen: 5", "message: !newId"]);
                compareSent([]);
                compare(Dialogs.getOpenDialogById(5)[0], first);
                expectOnly("eins", "zwei");
            }

            // Nothing of what is refused shows, at once or later.
            function expectOnly(shown, refused) {
                for (let turn = 0; turn < 2; ++turn) {
                    verify(findText(Dialogs.overlay, shown));
                    verify(!findText(Dialogs.overlay, refused));
                    Backend.settle();
                }
            }

            function test_second_question_with_an_open_id_is_refused() {
                open(Dialogs.message("eins", "x", "info", {id: 5}));
                sent.clear();
                Backend.startRecordingPrints();
                compare(Dialogs.question("zwei", "x", {id: 5}), undefined);
                compare(Backend.takePrints(), ["Dialog ist bereits offen: 5", "question: !newId"]);
                compareSent([]);
                expectOnly("eins", "zwei");
            }

            function test_category_colors_data() {
                return [
                    {tag: "info", color: "#0000ff"},
                    {tag: "warning", color: Common.colorWarning.toString()},
                    {tag: "error", color: "#ff0000"},
                    {tag: "success", color: "#008000"},
                    {tag: "anything", color: "#808080"}
                ];
            }

            function test_category_colors(data) {
                compare(Dialogs.message("t", "x", data.tag).color.toString(), data.color);
            }

            function test_default_color_of_an_unknown_category() {
                compare(Dialogs.colorFromCategory("x"), "gray");
                compare(Dialogs.colorFromCategory("x", "pink"), "pink");
                compare(Dialogs.colorFromCategory("info", "pink"), "blue");
            }

            function test_automatic_ids_count_down_and_are_never_reset() {
                const id = nextAutoId();
                Dialogs.message("a", "x");
                Dialogs.question("b", "x");
                Dialogs.input("c", "x");
                compareSent([
                    [Gui, Gui.DialogData, {current: [id, null]}],
                    [Gui, Gui.DialogData, {current: [id - 1, null]}],
                    [Gui, Gui.DialogData, {current: [id - 2, null]}]
                ]);
                cleanup();
                sent.clear();
                Dialogs.message("d", "x");
                compareSent([[Gui, Gui.DialogData, {current: [id - 3, null]}]]);
            }

            function test_automatic_id_passes_over_an_open_one() {
                const id = nextAutoId();
                Dialogs.message("a", "x", "info", {id: id});
                Dialogs.message("b", "x");
                compareSent([
                    [Gui, Gui.DialogData, {current: [id, null]}],
                    [Gui, Gui.DialogData, {current: [id - 1, null]}]
                ]);
            }

            function test_strange_ids_data() {
                return [
                    {tag: "text", id: "5", used: 5},
                    {tag: "fraction", id: 5.7, used: 5},
                    {tag: "word", id: "abc", used: null},
                    {tag: "null", id: null, used: null},
                    {tag: "map", id: {}, used: null}
                ];
            }

            function test_strange_ids(data) {
                const used = data.used ?? nextAutoId();
                Dialogs.message("t", "x", "info", {id: data.id});
                compareSent([[Gui, Gui.DialogData, {current: [used, null]}]]);
                const next = data.used ? 6 : used - 1;
                Dialogs.question("t", "x", {id: data.used ? 6 : data.id});
                compareSent([[Gui, Gui.DialogData, {current: [next, null]}]]);
            }

            // Inputs.

            function test_input_with_result_data() {
                return [
                    {tag: "accepted", accept: true},
                    {tag: "rejected", accept: false}
                ];
            }

            function test_input_with_result(data) {
                const id = nextAutoId();
                const dialog = open(Dialogs.input("Titel", "Text", {text: "abc", id: 9}));
                compareSent([[Gui, Gui.DialogData, {current: [id, null]}]]);
                compare(dialog.title, "Titel");
                compare(dialog.text, "Text");
                compare(dialog.value, "abc");
                compare(dialog.color, "#0000ff");
                compare(dialog.password, false);
                compare(dialog.popupWidth, 450);
                if (data.accept) {
                    dialog.accept();
                } else {
                    dialog.reject();
                }
                compareSent([]);
                tryCompareSent([[Gui, Gui.DialogData, {[id]: {a: data.accept}, current: null}]]);
            }

            function test_input_in_a_narrow_window() {
                const dialog = open(Dialogs.input("t", "x"));
                window.width = 400;
                tryCompare(dialog, "popupWidth", 400);
                window.width = 800;
                tryCompare(dialog, "popupWidth", 450);
            }

            function test_input_options() {
                const dialog = Dialogs.input("t", "x", {category: "error", password: true, open: false});
                compare(dialog.color, "#ff0000");
                compare(dialog.value, "");
                compare(dialog.password, true);
                verify(!dialog.visible);
                dialog.open();
                open(dialog);
            }
        }
    }
}
