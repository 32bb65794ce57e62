// The stack of dialogs and what the backend is told of it, message by message.
import QtQuick
import QtQuick.Controls
import QtTest

import brovik.base
import brovik.gui
import kubelor.test

Item {
    BaseTemplate {
        width: 800
        height: 1200

        Component {
            id: popupComponent
            BasePopup {}
        }

        Component {
            id: positivePopupComponent
            BasePopup {
                id_: 40
            }
        }

        Component {
            id: spyComponent
            SignalSpy {}
        }

        Component {
            id: customComponent
            MyYesNoDialog {
                property int answerCount: 0
            }
        }

        DialogTestCase {
            id: testCase

            name: "Dialogs"

            function test_initial_state() {
                verify(!Dialogs.popupActive);
                verify(Dialogs.overlay);
                compare(Dialogs.inputComp.status, Component.Ready);
                compare(Dialogs.yesNoComp.status, Component.Ready);
                compare(Dialogs.msgComp.status, Component.Ready);
                compare(Dialogs.getOpenDialogById(1), undefined);
            }

            // Messages.

            function test_message_with_automatic_id() {
                const id = nextAutoId();
                const dialog = open(Dialogs.message("Titel A", "Text A"));
                compareSent([[Gui.DialogData, {current: [id, null]}]]);
                verify(Dialogs.popupActive);
                compare(dialog.title, "Titel A");
                compare(dialog.text, "Text A");
                compare(dialog.color, "#0000ff");
                compare(dialog.parent, Dialogs.overlay);
                dialog.accept();
                tryCompareSent([[Gui.DialogData, {[id]: {a: false}, current: null}]]);
                verify(!Dialogs.popupActive);
            }

            function test_message_with_positive_id() {
                open(Dialogs.message("t", "x", "info", {id: 5}));
                compareSent([[Gui.DialogData, {current: [5, null]}]]);
                const [dialog, description] = Dialogs.getOpenDialogById(5);
                compare(dialog.title, "t");
                compare(description, null);
                dialog.reject();
                tryCompareSent([[Gui.DialogData, {5: {a: false}, current: null}]]);
                compare(Dialogs.getOpenDialogById(5), undefined);
            }

            function test_second_message_with_an_open_id_is_refused() {
                const first = open(Dialogs.message("eins", "x", "info", {id: 5}));
                spy.clear();
                Backend.startRecordingPrints();
                compare(Dialogs.message("zwei", "x", "info", {id: 5}), undefined);
                compare(Backend.takePrints(), ["Dialog ist bereits offen: 5", "message: !newId"]);
                compareSent([]);
                compare(Dialogs.getOpenDialogById(5)[0], first);
            }

            function test_second_question_with_an_open_id_is_refused() {
                open(Dialogs.message("eins", "x", "info", {id: 5}));
                spy.clear();
                Backend.startRecordingPrints();
                compare(Dialogs.question("zwei", "x", {id: 5}), undefined);
                compare(Backend.takePrints(), ["Dialog ist bereits offen: 5", "question: !newId"]);
                compareSent([]);
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
                    [Gui.DialogData, {current: [id, null]}],
                    [Gui.DialogData, {current: [id - 1, null]}],
                    [Gui.DialogData, {current: [id - 2, null]}]
                ]);
                cleanup();
                spy.clear();
                Dialogs.message("d", "x");
                compareSent([[Gui.DialogData, {current: [id - 3, null]}]]);
            }

            function test_automatic_id_passes_over_an_open_one() {
                const id = nextAutoId();
                Dialogs.message("a", "x", "info", {id: id});
                Dialogs.message("b", "x");
                compareSent([
                    [Gui.DialogData, {current: [id, null]}],
                    [Gui.DialogData, {current: [id - 1, null]}]
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
                compareSent([[Gui.DialogData, {current: [used, null]}]]);
                const next = data.used ? 6 : used - 1;
                Dialogs.question("t", "x", {id: data.used ? 6 : data.id});
                compareSent([[Gui.DialogData, {current: [next, null]}]]);
            }

            // Questions.

            function test_question_texts_and_defaults() {
                const dialog = open(Dialogs.question("Titel", "Frage <b>fett</b>"));
                compare(dialog.title, "Titel");
                compare(dialog.text, "Frage <b>fett</b>");
                compare(dialog.yes, "OK");
                compare(dialog.no, "");
                compare(dialog.color, "#0000ff");
                compare(dialog.width, 450);
            }

            function test_question_options_data() {
                return [
                    {tag: "yes", options: {yes: "Ja"}, property: "yes", value: "Ja"},
                    {tag: "yes empty", options: {yes: ""}, property: "yes", value: "OK"},
                    {tag: "yes undefined", options: {yes: undefined}, property: "yes", value: "OK"},
                    {tag: "yes null", options: {yes: null}, property: "yes", value: ""},
                    {tag: "no", options: {no: "Nein"}, property: "no", value: "Nein"},
                    {tag: "no null", options: {no: null}, property: "no", value: ""},
                    {tag: "color", options: {color: "pink", category: "error"}, property: "color", value: "#ffc0cb"},
                    {tag: "category", options: {category: "error"}, property: "color", value: "#ff0000"},
                    {tag: "unknown category", options: {category: "x"}, property: "color", value: "#808080"},
                    {tag: "property of the dialog", options: {spacing: 9}, property: "spacing", value: 9},
                    {tag: "title stays the argument", options: {title: "x"}, property: "title", value: "Titel"}
                ];
            }

            function test_question_options(data) {
                const before = JSON.stringify(data.options);
                const dialog = Dialogs.question("Titel", "Text", data.options);
                compare(dialog[data.property], data.value);
                compare(JSON.stringify(data.options), before);
            }

            function test_unknown_property_of_a_question_is_only_reported() {
                ignoreWarning(/Setting initial properties failed: MyYesNoDialog does not have a property called foo/);
                const dialog = open(Dialogs.question("t", "x", {foo: 1}));
                compare(dialog.title, "t");
            }

            function test_question_with_a_positive_id_answers_twice_data() {
                return [
                    {tag: "yes", button: "Ja", accepted: true},
                    {tag: "no", button: "Nein", accepted: false}
                ];
            }

            function test_question_with_a_positive_id_answers_twice(data) {
                const dialog = Dialogs.question("t", "x", {id: 7, yes: "Ja", no: "Nein", description: "d"});
                compareSent([[Gui.DialogData, {current: [7, "d"]}]]);
                clickButton(dialog, data.button);
                compareSent([[Gui.DialogData, {7: {a: data.accepted}}]]);
                tryCompareSent([[Gui.DialogData, {7: {a: data.accepted}, current: null}]]);
            }

            function test_question_with_an_automatic_id_answers_on_closing_data() {
                return [
                    {tag: "yes", button: "Ja", accepted: true},
                    {tag: "no", button: "Nein", accepted: false}
                ];
            }

            function test_question_with_an_automatic_id_answers_on_closing(data) {
                const id = nextAutoId();
                const dialog = Dialogs.question("t", "x", {yes: "Ja", no: "Nein"});
                compareSent([[Gui.DialogData, {current: [id, null]}]]);
                clickButton(dialog, data.button);
                compareSent([]);
                tryCompareSent([[Gui.DialogData, {[id]: {a: data.accepted}, current: null}]]);
            }

            function test_question_without_yes_has_no_yes_button_and_is_not_accepted_by_enter() {
                const dialog = open(Dialogs.question("t", "x", {id: 7, yes: null, no: "Nein"}));
                const accepted = createTemporaryObject(spyComponent, testCase, {target: dialog, signalName: "accepted"});
                verify(!findButton(dialog, ""));
                verify(findButton(dialog, "Nein"));
                spy.clear();
                keyClick(Qt.Key_Enter);
                tryCompareSent([[Gui.DialogData, {7: {a: false}, current: null}]]);
                compare(accepted.count, 0);
            }

            function test_an_answer_counts_once() {
                const dialog = open(Dialogs.question("t", "x", {id: 7}));
                spy.clear();
                dialog.accept();
                dialog.accept();
                dialog.reject();
                tryCompareSent([
                    [Gui.DialogData, {7: {a: true}}],
                    [Gui.DialogData, {7: {a: true}, current: null}]
                ]);
            }

            function test_question_that_is_opened_later() {
                const id = nextAutoId();
                const dialog = Dialogs.question("t", "x", {open: false});
                verify(!dialog.visible);
                verify(Dialogs.popupActive);
                compareSent([[Gui.DialogData, {current: [id, null]}]]);
                dialog.open();
                open(dialog).reject();
                tryCompareSent([[Gui.DialogData, {[id]: {a: false}, current: null}]]);
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
                compareSent([[Gui.DialogData, {current: [id, null]}]]);
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
                tryCompareSent([[Gui.DialogData, {[id]: {a: data.accept}, current: null}]]);
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

            // The stack.

            function test_lower_of_two_questions_is_closed() {
                Dialogs.question("unten", "x", {id: 3, description: "drei"});
                open(Dialogs.question("oben", "x", {id: 4, description: {vier: [4]}}));
                spy.clear();
                Gui.closeDialog(3, true);
                tryCompareSent([
                    [Gui.DialogData, {3: {a: true}}],
                    [Gui.DialogData, {3: {a: true}, current: [4, {vier: [4]}]}]
                ]);
                verify(Dialogs.popupActive);
                Dialogs.acceptCurrent();
                tryCompareSent([
                    [Gui.DialogData, {4: {a: true}}],
                    [Gui.DialogData, {4: {a: true}, current: null}]
                ]);
            }

            function test_closing_the_top_names_the_one_below() {
                const id = nextAutoId();
                Dialogs.question("unten", "x", {description: "unten"});
                open(Dialogs.message("oben", "x", "info", {id: 8}));
                compareSent([
                    [Gui.DialogData, {current: [id, "unten"]}],
                    [Gui.DialogData, {current: [8, null]}]
                ]);
                Dialogs.rejectCurrent();
                tryCompareSent([[Gui.DialogData, {8: {a: false}, current: [id, "unten"]}]]);
            }

            function test_last_dialog_closes() {
                open(Dialogs.message("t", "x", "info", {id: 8}));
                verify(Dialogs.popupActive);
                spy.clear();
                Dialogs.acceptCurrent();
                tryCompareSent([[Gui.DialogData, {8: {a: false}, current: null}]]);
                verify(!Dialogs.popupActive);
            }

            function test_closed_dialog_is_destroyed() {
                const dialog = open(Dialogs.message("t", "x"));
                const destruction = createTemporaryObject(spyComponent, testCase, {target: dialog.Component, signalName: "destruction"});
                dialog.close();
                tryCompare(destruction, "count", 1);
            }

            function test_removal_from_an_empty_stack_sends_nothing() {
                Dialogs.removePopupById(77, true);
                compareSent([]);
            }

            function test_removal_of_an_unknown_id_sends_the_reply() {
                open(Dialogs.message("t", "x", "info", {id: 8}));
                spy.clear();
                Dialogs.removePopupById(77, true);
                compareSent([[Gui.DialogData, {77: {a: true}, current: [8, null]}]]);
                verify(Dialogs.popupActive);
            }

            function test_value_of_a_popup_is_sent_data() {
                return [
                    {tag: "text", value: "abc"},
                    {tag: "number", value: 0},
                    {tag: "null", value: null},
                    {tag: "false", value: false},
                    {tag: "list", value: [1, {b: 2}]}
                ];
            }

            function test_value_of_a_popup_is_sent(data) {
                const popup = createTemporaryObject(popupComponent, testCase);
                popup.open();
                open(popup);
                const id = popup.id_;
                spy.clear();
                popup.accept(data.value);
                compareSent([[Gui.DialogData, {[id]: {a: true, v: data.value}, current: null}]]);
                tryCompareSent([[Gui.PopupOpened, false]]);
            }

            // Popups.

            function test_popup_that_is_none() {
                Backend.startRecordingPrints();
                compare(Dialogs.setupPopup(testCase), undefined);
                compare(Dialogs.setupPopup(null), undefined);
                const prints = Backend.takePrints();
                compare(prints.length, 2);
                verify(/^.*TestCase.* ist keine Instanz von Popup$/.test(prints[0]), prints[0]);
                compare(prints[1], "null ist keine Instanz von Popup");
                compareSent([]);
                verify(!Dialogs.popupActive);
            }

            function test_popup_lifecycle() {
                const id = nextAutoId();
                const popup = createTemporaryObject(popupComponent, testCase);
                popup.open();
                open(popup);
                compareSent([[Gui.PopupOpened, true]]);
                compare(popup.id_, id);
                compare(Dialogs.getOpenDialogById(id), [popup, null]);
                verify(popup.contentItem.activeFocus);
                popup.close();
                tryCompareSent([
                    [Gui.PopupOpened, false],
                    [Gui.DialogData, {[id]: {a: false}, current: null}]
                ]);
                verify(!Dialogs.popupActive);
            }

            function test_popup_takes_a_fresh_automatic_id_each_time() {
                const id = nextAutoId();
                const popup = createTemporaryObject(popupComponent, testCase);
                popup.open();
                open(popup).reject();
                tryCompare(popup, "visible", false);
                popup.open();
                open(popup);
                compare(popup.id_, id - 1);
            }

            function test_popup_keeps_a_positive_id() {
                const popup = createTemporaryObject(positivePopupComponent, testCase);
                popup.open();
                open(popup);
                compareSent([[Gui.PopupOpened, true]]);
                popup.accept();
                compareSent([[Gui.DialogData, {40: {a: true}, current: null}]]);
                tryCompareSent([[Gui.PopupOpened, false]]);
                popup.open();
                open(popup);
                compare(popup.id_, 40);
            }

            function test_two_popups_with_one_positive_id() {
                const first = createTemporaryObject(positivePopupComponent, testCase);
                const second = createTemporaryObject(positivePopupComponent, testCase);
                first.open();
                open(first);
                second.open();
                open(second);
                spy.clear();
                second.reject();
                compareSent([[Gui.DialogData, {40: {a: false}, current: [40, null]}]]);
                verify(Dialogs.popupActive);
                first.reject();
                tryCompareSent([
                    [Gui.DialogData, {40: {a: false}, current: null}],
                    [Gui.PopupOpened, false],
                    [Gui.PopupOpened, false]
                ]);
                verify(!Dialogs.popupActive);
            }

            // What is on top is accepted and rejected.

            function test_accept_current_without_a_dialog() {
                ignoreWarning("Dialogs.acceptCurrent() --> kein Dialog offen");
                Dialogs.acceptCurrent();
                compareSent([]);
            }

            function test_reject_current_without_a_dialog() {
                ignoreWarning("Dialogs.rejectCurrent() --> kein Dialog offen");
                Dialogs.rejectCurrent();
                compareSent([]);
            }

            function test_accept_current_uses_what_the_object_has_data() {
                const head = "import QtQuick.Controls; Popup { property string called: ''; ";
                return [
                    {tag: "customAccept", qml: head + "function customAccept() { called = 'custom' } function accept() { called = 'accept' } }", called: "custom"},
                    {tag: "accept", qml: head + "function accept() { called = 'accept' } }", called: "accept"},
                    {tag: "close", qml: head + "visible: true; onClosed: called = 'closed' }", called: "closed"}
                ];
            }

            function test_accept_current_uses_what_the_object_has(data) {
                const popup = createTemporaryQmlObject(data.qml, testCase);
                const id = Dialogs.setupPopup(popup);
                Dialogs.acceptCurrent();
                tryCompare(popup, "called", data.called);
                Dialogs.removePopupById(id, false);
            }

            function test_reject_current_uses_what_the_object_has_data() {
                const head = "import QtQuick.Controls; Popup { property string called: ''; ";
                return [
                    {tag: "reject", qml: head + "function reject() { called = 'reject' } }", called: "reject"},
                    {tag: "close", qml: head + "visible: true; onClosed: called = 'closed' }", called: "closed"}
                ];
            }

            function test_reject_current_uses_what_the_object_has(data) {
                const popup = createTemporaryQmlObject(data.qml, testCase);
                const id = Dialogs.setupPopup(popup);
                Dialogs.rejectCurrent();
                tryCompare(popup, "called", data.called);
                Dialogs.removePopupById(id, false);
            }

            // Custom components.

            function test_custom_component() {
                verify(Dialogs.addCustomQuestionComponent("eigene", customComponent));
                const dialog = Dialogs.question("t", "x", {component: "eigene", answerCount: 3, id: 7});
                compare(dialog.answerCount, 3);
                compare(dialog.title, "t");
                compare(dialog.text, "x");
                spy.clear();
                open(dialog).accept();
                tryCompareSent([
                    [Gui.DialogData, {7: {a: true}}],
                    [Gui.DialogData, {7: {a: true}, current: null}]
                ]);
                verify(Dialogs.delCustomQuestionComponent("eigene"));
                verify(!Dialogs.delCustomQuestionComponent("eigene"));
            }

            function test_custom_component_that_is_none() {
                Backend.startRecordingPrints();
                verify(!Dialogs.addCustomQuestionComponent("x", 5));
                compare(Backend.takePrints(), ["[addCustomQuestionComponent(name, comp)] 5 ist keine Instanz von Component"]);
            }

            function test_custom_component_with_a_taken_name() {
                verify(Dialogs.addCustomQuestionComponent("eigene", customComponent));
                Backend.startRecordingPrints();
                verify(!Dialogs.addCustomQuestionComponent("eigene", customComponent));
                compare(Backend.takePrints(), ["[addCustomQuestionComponent(name, comp)] der Name eigene ist bereits vergeben"]);
                verify(Dialogs.delCustomQuestionComponent("eigene"));
            }

            function test_unknown_custom_component_data() {
                return [{tag: "nichtda"}, {tag: "toString"}];
            }

            function test_unknown_custom_component(data) {
                const dialog = open(Dialogs.question("t", "Die Frage", {component: data.tag, id: 7, no: "Nein"}));
                compare(dialog.text, `<b><span style="color:red">Für das Bilden dieses Dialogs wurde die Komponente '${data.tag}' angefragt, welche jedoch nicht zur Verfügung steht. Dabei handelt es sich um einen Programmfehler. Bitte melden Sie diesen der Firma Brovik (Foto). Es wird ein normaler Dialog gebildet.</span></b><br>Die Frage`);
                spy.clear();
                clickButton(dialog, "Nein");
                tryCompareSent([
                    [Gui.DialogData, {7: {a: false}}],
                    [Gui.DialogData, {7: {a: false}, current: null}]
                ]);
            }

            // Power.

            function test_poweroff_question() {
                const id = nextAutoId();
                Dialogs.poweroffQuestion();
                compareSent([[Gui.DialogData, {current: [id, "poweroff"]}]]);
                const [dialog, description] = Dialogs.getOpenDialogById(id);
                compare(dialog.title, "Herunterfahren");
                compare(dialog.text, "Soll die Maschine wirklich heruntergefahren werden?");
                compare(dialog.yes, "OK");
                compare(dialog.no, "Abbrechen");
                compare(description, "poweroff");
                // The command fails here, so the program goes on and says so.
                clickButton(dialog, "OK");
                compareSent([[Gui.DialogData, {current: [id - 1, null]}]]);
                const [message] = Dialogs.getOpenDialogById(id - 1);
                compare(message.title, "Poweroff");
                compare(message.text, "'poweroff' hat den Fehlercode 3 zurückgegeben");
                tryCompareSent([[Gui.DialogData, {[id]: {a: true}, current: [id - 1, null]}]]);
            }

            function test_reboot_question() {
                const id = nextAutoId();
                Dialogs.rebootQuestion();
                compareSent([[Gui.DialogData, {current: [id, null]}]]);
                const [dialog] = Dialogs.getOpenDialogById(id);
                compare(dialog.title, "Reboot");
                compare(dialog.text, "Soll die Maschine wirklich neu gestartet werden?");
                compare(dialog.yes, "OK");
                compare(dialog.no, "Abbrechen");
                clickButton(dialog, "OK");
                const [message] = Dialogs.getOpenDialogById(id - 1);
                compare(message.title, "Reboot");
                compare(message.text, "'reboot' hat den Fehlercode 3 zurückgegeben");
            }

            function test_power_question_that_is_rejected_does_nothing() {
                const id = nextAutoId();
                Dialogs.poweroffQuestion();
                spy.clear();
                clickButton(Dialogs.getOpenDialogById(id)[0], "Abbrechen");
                tryCompareSent([[Gui.DialogData, {[id]: {a: false}, current: null}]]);
            }
        }
    }
}
