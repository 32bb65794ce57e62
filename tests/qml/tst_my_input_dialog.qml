// The dialog that asks for a text.
import QtQuick
import QtQuick.Controls
import QtTest

import brovik.base
import kubelor.test

Item {
    BaseTemplate {
        id: window

        width: 800
        height: 1200

        Component {
            id: dialogComponent
            MyInputDialog {}
        }

        Component {
            id: spyComponent
            SignalSpy {}
        }

        MouseArea {
            id: page
            anchors.fill: parent
        }

        DialogTestCase {
            id: testCase

            name: "MyInputDialog"

            readonly property string missing: "Es ist eine Eingabe erforderlich"
            property SignalSpy accepted
            property SignalSpy rejected
            property SignalSpy closed

            function opened(properties) {
                Common.mainHeight = 1200;
                const dialog = createTemporaryObject(dialogComponent, testCase, properties);
                const didOpen = createTemporaryObject(spyComponent, testCase, {target: dialog, signalName: "opened"});
                accepted = createTemporaryObject(spyComponent, testCase, {target: dialog, signalName: "accepted"});
                rejected = createTemporaryObject(spyComponent, testCase, {target: dialog, signalName: "rejected"});
                closed = createTemporaryObject(spyComponent, testCase, {target: dialog, signalName: "closed"});
                dialog.open();
                tryCompare(didOpen, "count", 1);
                tryVerify(() => dialog.input.activeFocus);
                return dialog;
            }

            function button(dialog, text) {
                return findText(popupItem(dialog), text, "checkable");
            }

            // The content of the inner popup.
            function popupItem(dialog) {
                return dialog.input.parent;
            }

            function eyeButton(dialog) {
                return findAccessible(popupItem(dialog), "Passwort anzeigen");
            }

            function findAccessible(item, name) {
                if (item.visible && item.checkable !== undefined && item.Accessible.name === name) {
                    return item;
                }
                for (let i = 0; i < item.children.length; ++i) {
                    const found = findAccessible(item.children[i], name);
                    if (found) {
                        return found;
                    }
                }
                return null;
            }

            function test_defaults() {
                const dialog = createTemporaryObject(dialogComponent, testCase);
                verify(!dialog.visible);
                compare(dialog.stdYes, "OK");
                compare(dialog.stdNo, "Abbrechen");
                compare(dialog.stdColor, "#808080");
                compare(dialog.yes, "OK");
                compare(dialog.no, "Abbrechen");
                compare(dialog.color, "#808080");
                compare(dialog.required, true);
                compare(dialog.popupWidth, 450);
                compare(dialog.password, false);
                compare(dialog.value, "");
                compare(dialog.errorText, "");
                compare(dialog.input.inputMethodHints, Qt.ImhSensitiveData | Qt.ImhNoAutoUppercase);
            }

            function test_it_covers_the_window_down_to_the_keyboard() {
                const dialog = opened({});
                compare(dialog.parent, Dialogs.overlay);
                compare(dialog.opacity, 0.5);
                compare(dialog.width, 800);
                Common.mainHeight = 700;
                compare(dialog.height, 700);
                const clicks = createTemporaryObject(spyComponent, testCase, {target: page, signalName: "pressed"});
                mouseClick(page, 5, 5);
                compare(clicks.count, 0);
                verify(dialog.visible);
                const column = popupItem(dialog);
                compare(column.width + 2 * column.mapToItem(dialog, 0, 0).x, 800);
                dialog.close();
                tryCompare(dialog, "visible", false);
                mouseClick(page, 5, 5);
                compare(clicks.count, 1);
            }

            function test_text_and_title_formats() {
                const dialog = opened({title: "<b>Titel</b>", text: "<i>Text</i>"});
                const title = findText(popupItem(dialog), "<b>Titel</b>");
                compare(title.textFormat, Text.PlainText);
                compare(title.font.pointSize, 16);
                compare(title.padding, 3);
                compare(title.background.color, "#808080");
                compare(findText(popupItem(dialog), "<i>Text</i>", "textFormat").textFormat, Text.RichText);
                dialog.close();
            }

            // A short text takes as much as in the other dialogs, with the field.
            function test_height_of_the_text() {
                const dialog = opened({text: "Text"});
                const text = findText(popupItem(dialog), "Text", "minimumHeight");
                fuzzyCompare(text.height + dialog.input.height, 100, 1);
                dialog.close();
            }

            function test_typing_and_answers_data() {
                return [
                    {tag: "Return", answer: () => keyClick(Qt.Key_Return), accepted: 1, rejected: 0},
                    {tag: "Enter", answer: () => keyClick(Qt.Key_Enter), accepted: 1, rejected: 0},
                    {tag: "Escape", answer: () => keyClick(Qt.Key_Escape), accepted: 0, rejected: 1},
                    {tag: "yes button", answer: dialog => mouseClick(button(dialog, "OK")), accepted: 1, rejected: 0},
                    {tag: "no button", answer: dialog => mouseClick(button(dialog, "Abbrechen")), accepted: 0, rejected: 1},
                    {tag: "twice", answer: dialog => { dialog.accept(); dialog.accept(); dialog.reject(); }, accepted: 1, rejected: 0}
                ];
            }

            function test_typing_and_answers(data) {
                const dialog = opened({});
                keyClick("a");
                keyClick("1");
                compare(dialog.value, "a1");
                data.answer(dialog);
                tryCompare(closed, "count", 1);
                compare(accepted.count, data.accepted);
                compare(rejected.count, data.rejected);
                if (data.accepted) {
                    compare(accepted.signalArguments[0][0], "a1");
                }
            }

            function test_required_text_is_missing_data() {
                return [
                    {tag: "Return", accept: dialog => keyClick(Qt.Key_Return)},
                    {tag: "button", accept: dialog => mouseClick(button(dialog, "OK"))},
                    {tag: "accept", accept: dialog => dialog.accept()}
                ];
            }

            function test_required_text_is_missing(data) {
                const dialog = opened({});
                data.accept(dialog);
                compare(dialog.errorText, missing);
                compare(accepted.count, 0);
                compare(closed.count, 0);
                verify(dialog.visible);
                tryVerify(() => dialog.input.activeFocus);
                const error = findText(popupItem(dialog), missing);
                compare(error.color, "#ff0000");
                compare(error.textFormat, Text.PlainText);
                verify(!button(dialog, "OK").enabled);
                keyClick("a");
                compare(dialog.errorText, "");
                verify(button(dialog, "OK").enabled);
                dialog.accept();
                tryCompare(closed, "count", 1);
                compare(accepted.count, 1);
            }

            function test_long_error_leaves_room_for_the_rest() {
                const dialog = opened({errorText: "Wort ".repeat(1000)});
                const error = findText(popupItem(dialog), dialog.errorText);
                compare(error.lineCount, 3);
                verify(error.truncated);
                verify(popupItem(dialog).implicitHeight < 300);
                dialog.close();
            }

            function test_error_text_follows_each_edit() {
                const dialog = opened({value: "a"});
                compare(dialog.errorText, "");
                keyClick(Qt.Key_Backspace);
                compare(dialog.errorText, missing);
                keyClick("b");
                compare(dialog.errorText, "");
                dialog.close();
            }

            function test_text_that_is_not_required() {
                const dialog = opened({required: false});
                keyClick("a");
                keyClick(Qt.Key_Backspace);
                compare(dialog.errorText, "");
                keyClick(Qt.Key_Return);
                tryCompare(closed, "count", 1);
                compare(accepted.signalArguments[0][0], "");
            }

            function test_reject_clears_the_error() {
                const dialog = opened({});
                dialog.accept();
                compare(dialog.errorText, missing);
                dialog.reject();
                compare(dialog.errorText, "");
                tryCompare(closed, "count", 1);
            }

            function test_no_button_without_a_text() {
                const dialog = opened({no: ""});
                verify(!button(dialog, "Abbrechen"));
                dialog.close();
            }

            function test_password() {
                const dialog = opened({password: true});
                const eye = eyeButton(dialog);
                verify(eye);
                compare(eye.icon.source, "qrc:/brovik/base/img/eye.svg");
                compare(dialog.input.echoMode, TextInput.Password);
                mouseClick(eye);
                compare(eye.icon.source, "qrc:/brovik/base/img/eye-slash.svg");
                compare(dialog.input.echoMode, TextInput.Normal);
                mouseClick(eye);
                compare(dialog.input.echoMode, TextInput.Password);
                dialog.password = false;
                compare(dialog.input.echoMode, TextInput.Normal);
                verify(!eyeButton(dialog));
                dialog.close();
            }

            function test_buttons_stand_from_the_right() {
                const dialog = opened({password: true});
                const yes = button(dialog, "OK");
                const no = button(dialog, "Abbrechen");
                const eye = eyeButton(dialog);
                compare(no.x + no.width + 5, yes.x);
                compare(eye.x + eye.width + 5, no.x);
                compare(yes.parent.x + yes.x + yes.width, popupItem(dialog).width);
                dialog.close();
            }

            function test_reset() {
                const dialog = createTemporaryObject(dialogComponent, testCase, {
                    password: true,
                    value: "v",
                    errorText: "e",
                    title: "t",
                    text: "x",
                    color: "red",
                    yes: "Ja",
                    no: "Nein"
                });
                Backend.startRecordingPrints();
                dialog.reset();
                compare(Backend.takePrints(), ["input dialog resetted"]);
                compare(dialog.password, false);
                compare(dialog.value, "");
                compare(dialog.errorText, "");
                compare(dialog.title, "");
                compare(dialog.text, "");
                compare(dialog.color, "#808080");
                compare(dialog.yes, "OK");
                compare(dialog.no, "Abbrechen");
            }

            function test_width() {
                const dialog = opened({popupWidth: 300});
                verify(popupItem(dialog).width < 300);
                dialog.close();
            }
        }
    }
}
