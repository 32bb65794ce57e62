// Questions, custom ones among them, and how they are answered.
import QtQuick
import QtTest

import brovik.base
import brovik.gui
import kubelor.test

Item {
    BaseTemplate {
        id: window

        width: 800
        height: 1200

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

            name: "Questions"

            function test_question_texts_and_defaults() {
                const dialog = open(Dialogs.question("Titel", "Frage <b>fett</b>"));
                compare(dialog.title, "Titel");
                compare(dialog.text, "Frage <b>fett</b>");
                compare(dialog.yes, "OK");
                compare(dialog.no, "");
                compare(dialog.color, "#0000ff");
                compare(dialog.width, 450);
            }

            function test_question_in_a_narrow_window() {
                const dialog = open(Dialogs.question("t", "x"));
                window.width = 400;
                tryCompare(dialog, "width", 400);
                window.width = 800;
                tryCompare(dialog, "width", 450);
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

            function test_button_texts_data() {
                const [brief, wide, widest] = ["Ja", "Ja, das Fass jetzt leeren und spülen", "Ja, das Fass jetzt leeren und spülen, und danach die Maschine ausschalten"];
                const rows = [
                    {tag: "short", yes: brief, no: "Nein", stacked: false},
                    {tag: "one long", yes: widest, no: "Nein", stacked: true},
                    {tag: "two long", yes: wide, no: "Nein, das Fass bleibt, wie es ist", stacked: true},
                    {tag: "in several lines", yes: widest, no: `Nein${widest}`, stacked: true},
                    {tag: "long without no", yes: widest, no: "", stacked: true},
                    {tag: "long without yes", yes: null, no: widest, stacked: true}
                ];
                return [].concat(...[800, 300].map(width => rows.map(row => Object.assign({}, row, {tag: `${row.tag} ${width}`, width: width}))));
            }

            // All texts are there, and nothing leaves the dialog.
            function test_button_texts(data) {
                window.width = data.width;
                tryCompare(Common, "w1", data.width);
                const dialog = open(Dialogs.question("t", "x", {yes: data.yes, no: data.no}));
                const buttons = [data.yes, data.no].filter(Boolean).map(text => findButton(dialog, text));
                for (const button of buttons) {
                    const label = button.contentItem;
                    verify(!label.truncated && label.height >= label.contentHeight, label.text);
                    const start = button.mapToItem(dialog.contentItem, 0, 0);
                    const end = button.mapToItem(dialog.contentItem, button.width, button.height);
                    verify(start.x >= 0 && end.x <= dialog.contentItem.width && end.y <= dialog.contentItem.height, `${start} ${end}`);
                    compare(button.width === dialog.contentItem.width, data.stacked);
                }
                if (buttons.length === 2) {
                    const [yes, no] = buttons;
                    verify(data.stacked ? yes.y + yes.height <= no.y : yes.x + yes.width <= no.x);
                }
                window.width = 800;
            }

            function test_huge_button_texts_stay_in_the_window() {
                const dialog = open(Dialogs.question("t", "x", {yes: "lang ".repeat(1000), no: "x".repeat(5000)}));
                compare(dialog.height <= window.height / 2, true);
                dialog.reject();
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
                compareSent([[Gui, Gui.DialogData, {current: [7, "d"]}]]);
                clickButton(dialog, data.button);
                compareSent([[Gui, Gui.DialogData, {7: {a: data.accepted}}]]);
                tryCompareSent([[Gui, Gui.DialogData, {7: {a: data.accepted}, current: null}]]);
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
                compareSent([[Gui, Gui.DialogData, {current: [id, null]}]]);
                clickButton(dialog, data.button);
                compareSent([]);
                tryCompareSent([[Gui, Gui.DialogData, {[id]: {a: data.accepted}, current: null}]]);
            }

            function test_question_without_yes_has_no_yes_button_and_is_not_accepted_by_enter() {
                const dialog = open(Dialogs.question("t", "x", {id: 7, yes: null, no: "Nein"}));
                const accepted = createTemporaryObject(spyComponent, testCase, {target: dialog, signalName: "accepted"});
                verify(!findButton(dialog, ""));
                verify(findButton(dialog, "Nein"));
                sent.clear();
                keyClick(Qt.Key_Enter);
                tryCompareSent([[Gui, Gui.DialogData, {7: {a: false}, current: null}]]);
                compare(accepted.count, 0);
            }

            function test_an_answer_counts_once() {
                const dialog = open(Dialogs.question("t", "x", {id: 7}));
                sent.clear();
                dialog.accept();
                dialog.accept();
                dialog.reject();
                tryCompareSent([
                    [Gui, Gui.DialogData, {7: {a: true}}],
                    [Gui, Gui.DialogData, {7: {a: true}, current: null}]
                ]);
            }

            function test_question_that_is_opened_later() {
                const id = nextAutoId();
                const dialog = Dialogs.question("t", "x", {open: false});
                verify(!dialog.visible);
                verify(Dialogs.popupActive);
                compareSent([[Gui, Gui.DialogData, {current: [id, null]}]]);
                dialog.open();
                open(dialog).reject();
                tryCompareSent([[Gui, Gui.DialogData, {[id]: {a: false}, current: null}]]);
            }

            // Custom components.

            function test_custom_component() {
                verify(Dialogs.addCustomQuestionComponent("eigene", customComponent));
                const dialog = Dialogs.question("t", "x", {component: "eigene", answerCount: 3, id: 7});
                compare(dialog.answerCount, 3);
                compare(dialog.title, "t");
                compare(dialog.text, "x");
                sent.clear();
                open(dialog).accept();
                tryCompareSent([
                    [Gui, Gui.DialogData, {7: {a: true}}],
                    [Gui, Gui.DialogData, {7: {a: true}, current: null}]
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
                sent.clear();
                clickButton(dialog, "Nein");
                tryCompareSent([
                    [Gui, Gui.DialogData, {7: {a: false}}],
                    [Gui, Gui.DialogData, {7: {a: false}, current: null}]
                ]);
            }

            // Power.

            function test_poweroff_question() {
                const id = nextAutoId();
                Dialogs.poweroffQuestion();
                compareSent([[Gui, Gui.DialogData, {current: [id, "poweroff"]}]]);
                const [dialog, description] = Dialogs.getOpenDialogById(id);
                compare(dialog.title, "Herunterfahren");
                compare(dialog.text, "Soll die Maschine wirklich heruntergefahren werden?");
                compare(dialog.yes, "OK");
                compare(dialog.no, "Abbrechen");
                compare(description, "poweroff");
                // The command fails here, so the program goes on and says so.
                clickButton(dialog, "OK");
                compareSent([[Gui, Gui.DialogData, {current: [id - 1, null]}]]);
                const [message] = Dialogs.getOpenDialogById(id - 1);
                compare(message.title, "Poweroff");
                compare(message.text, "'poweroff' hat den Fehlercode 3 zurückgegeben");
                tryCompareSent([[Gui, Gui.DialogData, {[id]: {a: true}, current: [id - 1, null]}]]);
            }

            function test_reboot_question() {
                const id = nextAutoId();
                Dialogs.rebootQuestion();
                compareSent([[Gui, Gui.DialogData, {current: [id, null]}]]);
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
                sent.clear();
                clickButton(Dialogs.getOpenDialogById(id)[0], "Abbrechen");
                tryCompareSent([[Gui, Gui.DialogData, {[id]: {a: false}, current: null}]]);
            }
        }
    }
}
