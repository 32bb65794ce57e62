// The popup that powers the machine off, and the keys of every popup.
import QtQuick
import QtTest

import brovik.base
import brovik.gui

Item {
    BaseTemplate {
        width: 800
        height: 1200

        Component {
            id: powerPopup
            PowerPopup {}
        }

        Component {
            id: popupComponent
            BasePopup {}
        }

        Component {
            id: spyComponent
            SignalSpy {}
        }

        DialogTestCase {
            id: testCase

            name: "PowerPopup"

            function opened(component) {
                const popup = createTemporaryObject(component, testCase);
                popup.open();
                open(popup);
                tryVerify(() => popup.contentItem.activeFocus);
                sent.clear();
                return popup;
            }

            function test_texts() {
                const popup = opened(powerPopup);
                compare(findButton(popup, "Herunterfahren").width, popup.availableWidth);
                compare(findButton(popup, "Neu starten").width, popup.availableWidth);
                compare(popup.width, 450);
                compare(popup.x, (800 - 450) / 2);
                compare(popup.y, (1200 - popup.implicitHeight) / 2);
                verify(popup.modal);
                verify(popup.focus);
            }

            function test_enter_asks_before_the_popup_leaves_data() {
                return [{tag: "Enter", key: Qt.Key_Enter}, {tag: "Return", key: Qt.Key_Return}];
            }

            function test_enter_asks_before_the_popup_leaves(data) {
                const popup = opened(powerPopup);
                const id = popup.id_;
                keyClick(data.key);
                compareSent([
                    [Gui, Gui.DialogData, {current: [id - 1, "poweroff"]}],
                    [Gui, Gui.DialogData, {[id]: {a: true}, current: [id - 1, "poweroff"]}]
                ]);
                tryCompareSent([[Gui, Gui.PopupOpened, false]]);
                compare(Dialogs.getOpenDialogById(id - 1)[0].title, "Herunterfahren");
            }

            function test_buttons_ask_before_the_popup_leaves_data() {
                return [
                    {tag: "Herunterfahren", title: "Herunterfahren", description: "poweroff"},
                    {tag: "Neu starten", title: "Reboot", description: null}
                ];
            }

            function test_buttons_ask_before_the_popup_leaves(data) {
                const popup = opened(powerPopup);
                const id = popup.id_;
                clickButton(popup, data.tag);
                compareSent([[Gui, Gui.DialogData, {current: [id - 1, data.description]}]]);
                tryCompareSent([
                    [Gui, Gui.PopupOpened, false],
                    [Gui, Gui.DialogData, {[id]: {a: false}, current: [id - 1, data.description]}]
                ]);
                compare(Dialogs.getOpenDialogById(id - 1)[0].title, data.title);
            }

            function test_accept_current_asks_too() {
                const popup = opened(powerPopup);
                const id = popup.id_;
                Gui.closeCurrentDialog(true);
                tryCompareSent([
                    [Gui, Gui.DialogData, {current: [id - 1, "poweroff"]}],
                    [Gui, Gui.DialogData, {[id]: {a: true}, current: [id - 1, "poweroff"]}],
                    [Gui, Gui.PopupOpened, false]
                ]);
            }

            function test_keys_of_a_popup_data() {
                return [
                    {tag: "Enter", key: Qt.Key_Enter, accepted: true},
                    {tag: "Return", key: Qt.Key_Return, accepted: true},
                    {tag: "Escape", key: Qt.Key_Escape, accepted: false}
                ];
            }

            // The key event does not reach the backend as a value.
            function test_keys_of_a_popup(data) {
                const popup = opened(popupComponent);
                const signal = data.accepted ? "accepted" : "rejected";
                const answers = createTemporaryObject(spyComponent, testCase, {target: popup, signalName: signal});
                keyClick(data.key);
                compare(answers.count, 1);
                tryCompareSent([
                    [Gui, Gui.DialogData, {[popup.id_]: {a: data.accepted}, current: null}],
                    [Gui, Gui.PopupOpened, false]
                ]);
            }

            function test_an_answer_counts_once() {
                const popup = opened(popupComponent);
                popup.accept();
                popup.accept();
                popup.reject();
                keyClick(Qt.Key_Enter);
                tryCompareSent([
                    [Gui, Gui.DialogData, {[popup.id_]: {a: true}, current: null}],
                    [Gui, Gui.PopupOpened, false]
                ]);
            }

            function test_press_beside_the_popup_closes_it() {
                const popup = opened(popupComponent);
                mouseClick(testCase.parent, 5, 5);
                tryCompareSent([
                    [Gui, Gui.PopupOpened, false],
                    [Gui, Gui.DialogData, {[popup.id_]: {a: false}, current: null}]
                ]);
            }

            function test_reject_before_the_first_opening() {
                const popup = createTemporaryObject(popupComponent, testCase);
                const rejected = createTemporaryObject(spyComponent, testCase, {target: popup, signalName: "rejected"});
                popup.reject();
                compare(rejected.count, 1);
                compareSent([]);
            }

            function test_narrow_window() {
                const width = Common.w1;
                Common.w1 = 300;
                const popup = createTemporaryObject(popupComponent, testCase);
                compare(popup.width, 300);
                compare(popup.x, 0);
                Common.w1 = Qt.binding(() => testCase.Window.width);
                compare(Common.w1, width);
            }
        }
    }
}
