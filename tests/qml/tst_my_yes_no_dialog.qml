// The dialog that asks.
import QtQuick
import QtQuick.Controls
import QtTest

import brovik.base

Item {
    BaseTemplate {
        width: 800
        height: 1200

        Component {
            id: dialogComponent
            MyYesNoDialog {}
        }

        Component {
            id: spyComponent
            SignalSpy {}
        }

        DialogTestCase {
            id: testCase

            name: "MyYesNoDialog"

            property SignalSpy accepted
            property SignalSpy rejected
            property SignalSpy closed

            function opened(properties) {
                const dialog = createTemporaryObject(dialogComponent, testCase, properties);
                accepted = createTemporaryObject(spyComponent, testCase, {target: dialog, signalName: "accepted"});
                rejected = createTemporaryObject(spyComponent, testCase, {target: dialog, signalName: "rejected"});
                closed = createTemporaryObject(spyComponent, testCase, {target: dialog, signalName: "closed"});
                dialog.open();
                open(dialog);
                tryVerify(() => dialog.contentItem.activeFocus);
                return dialog;
            }

            function compareAnswer(acceptedCount, rejectedCount) {
                tryCompare(closed, "count", 1);
                compare(accepted.count, acceptedCount);
                compare(rejected.count, rejectedCount);
            }

            function test_defaults() {
                const dialog = opened({});
                compare(dialog.title, "Titel");
                compare(dialog.text, "Frage");
                compare(dialog.color, "#0000ff");
                compare(dialog.yes, "OK");
                compare(dialog.no, "");
                compare(dialog.width, 450);
                compare(dialog.x, (800 - 450) / 2);
                compare(dialog.y, (1200 - dialog.height) / 2);
                compare(dialog.closePolicy, Popup.NoAutoClose);
                verify(dialog.modal);
                verify(dialog.focus);
                verify(findButton(dialog, "OK"));
                compare(findText(dialog.contentItem, "Frage", "textFormat").textFormat, Text.RichText);
                dialog.close();
            }

            function test_width_may_be_given() {
                const dialog = opened({width: 300});
                compare(dialog.width, 300);
                compare(dialog.x, 250);
                dialog.close();
            }

            function test_answers_data() {
                return [
                    {tag: "yes button", answer: dialog => clickButton(dialog, "Ja"), accepted: 1, rejected: 0},
                    {tag: "no button", answer: dialog => clickButton(dialog, "Nein"), accepted: 0, rejected: 1},
                    {tag: "Enter", answer: () => keyClick(Qt.Key_Enter), accepted: 1, rejected: 0},
                    {tag: "Return", answer: () => keyClick(Qt.Key_Return), accepted: 1, rejected: 0},
                    {tag: "Escape", answer: () => keyClick(Qt.Key_Escape), accepted: 0, rejected: 1},
                    {tag: "accept", answer: dialog => dialog.accept(), accepted: 1, rejected: 0},
                    {tag: "reject", answer: dialog => dialog.reject(), accepted: 0, rejected: 1},
                    {tag: "close", answer: dialog => dialog.close(), accepted: 0, rejected: 0},
                    {tag: "twice", answer: dialog => { dialog.accept(); dialog.accept(); dialog.reject(); }, accepted: 1, rejected: 0}
                ];
            }

            function test_answers(data) {
                data.answer(opened({yes: "Ja", no: "Nein"}));
                compareAnswer(data.accepted, data.rejected);
            }

            function test_without_yes_data() {
                return [
                    {tag: "Enter", answer: () => keyClick(Qt.Key_Enter), rejected: 0},
                    {tag: "Escape", answer: () => keyClick(Qt.Key_Escape), rejected: 1}
                ];
            }

            function test_without_yes(data) {
                data.answer(opened({yes: ""}));
                compareAnswer(0, data.rejected);
            }

            function test_opened_again_it_answers_again() {
                const dialog = opened({});
                dialog.accept();
                compareAnswer(1, 0);
                dialog.open();
                open(dialog).accept();
                tryCompare(closed, "count", 2);
                compare(accepted.count, 2);
            }
        }
    }
}
