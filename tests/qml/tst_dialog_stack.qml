// The stack of dialogs: what stands on top, and what the backend is told when a dialog leaves it.
import QtQuick
import QtTest

import brovik.base
import brovik.gui

Item {
    BaseTemplate {
        width: 800
        height: 1200

        Component {
            id: spyComponent
            SignalSpy {}
        }

        DialogTestCase {
            id: testCase

            name: "DialogStack"

            function test_lower_of_two_questions_is_closed() {
                Dialogs.question("unten", "x", {id: 3, description: "drei"});
                open(Dialogs.question("oben", "x", {id: 4, description: {vier: [4]}}));
                sent.clear();
                Gui.closeDialog(3, true);
                tryCompareSent([
                    [Gui, Gui.DialogData, {3: {a: true}}],
                    [Gui, Gui.DialogData, {3: {a: true}, current: [4, {vier: [4]}]}]
                ]);
                verify(Dialogs.popupActive);
                Dialogs.acceptCurrent();
                tryCompareSent([
                    [Gui, Gui.DialogData, {4: {a: true}}],
                    [Gui, Gui.DialogData, {4: {a: true}, current: null}]
                ]);
            }

            function test_closing_the_top_names_the_one_below() {
                const id = nextAutoId();
                Dialogs.question("unten", "x", {description: "unten"});
                open(Dialogs.message("oben", "x", "info", {id: 8}));
                compareSent([
                    [Gui, Gui.DialogData, {current: [id, "unten"]}],
                    [Gui, Gui.DialogData, {current: [8, null]}]
                ]);
                Dialogs.rejectCurrent();
                tryCompareSent([[Gui, Gui.DialogData, {8: {a: false}, current: [id, "unten"]}]]);
            }

            function test_last_dialog_closes() {
                open(Dialogs.message("t", "x", "info", {id: 8}));
                verify(Dialogs.popupActive);
                sent.clear();
                Dialogs.acceptCurrent();
                tryCompareSent([[Gui, Gui.DialogData, {8: {a: false}, current: null}]]);
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
                sent.clear();
                Dialogs.removePopupById(77, true);
                compareSent([[Gui, Gui.DialogData, {77: {a: true}, current: [8, null]}]]);
                verify(Dialogs.popupActive);
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
        }
    }
}
