// The popups of pages in the stack of dialogs.
import QtQuick

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

        DialogTestCase {
            id: testCase

            name: "Popups"

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
                compareSent([[Gui, Gui.PopupOpened, true]]);
                compare(popup.id_, id);
                compare(Dialogs.getOpenDialogById(id), [popup, null]);
                verify(popup.contentItem.activeFocus);
                popup.close();
                tryCompareSent([
                    [Gui, Gui.PopupOpened, false],
                    [Gui, Gui.DialogData, {[id]: {a: false}, current: null}]
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
                compareSent([[Gui, Gui.PopupOpened, true]]);
                popup.accept();
                compareSent([[Gui, Gui.DialogData, {40: {a: true}, current: null}]]);
                tryCompareSent([[Gui, Gui.PopupOpened, false]]);
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
                sent.clear();
                second.reject();
                compareSent([[Gui, Gui.DialogData, {40: {a: false}, current: [40, null]}]]);
                verify(Dialogs.popupActive);
                first.reject();
                tryCompareSent([
                    [Gui, Gui.DialogData, {40: {a: false}, current: null}],
                    [Gui, Gui.PopupOpened, false],
                    [Gui, Gui.PopupOpened, false]
                ]);
                verify(!Dialogs.popupActive);
            }

            // How a popup begins to close, whether that reports its leaving at once, and how it is opened anew.
            function test_opened_again_while_it_fades_out_data() {
                return [
                    {tag: "rejected", leave: popup => popup.reject(), atOnce: true, accepted: false},
                    {tag: "accepted", leave: popup => popup.accept(), atOnce: true, accepted: true},
                    {tag: "closed", leave: popup => popup.close(), atOnce: false, accepted: false},
                    {tag: "closed by the backend", leave: () => Gui.closeCurrentDialog(false), atOnce: true, accepted: false}
                ];
            }

            // The backend sees the same as if it had been gone meanwhile.
            function test_opened_again_while_it_fades_out(data) {
                const popup = createTemporaryObject(popupComponent, testCase);
                popup.open();
                open(popup);
                const first = popup.id_;
                sent.clear();
                data.leave(popup);
                verify(popup.visible && !popup.opened);
                popup.open();
                open(popup);
                const second = popup.id_;
                compare(second, first - 1);
                const removal = [Gui, Gui.DialogData, {[first]: {a: data.accepted}, current: null}];
                const closing = [Gui, Gui.PopupOpened, false];
                compareSent([...(data.atOnce ? [removal, closing] : [closing, removal]), [Gui, Gui.PopupOpened, true]]);
                compare(Dialogs.getOpenDialogById(first), undefined);
                compare(Dialogs.getOpenDialogById(second), [popup, null]);
                popup.close();
                tryCompareSent([
                    [Gui, Gui.PopupOpened, false],
                    [Gui, Gui.DialogData, {[second]: {a: false}, current: null}]
                ]);
                verify(!Dialogs.popupActive);
            }

            function test_answers_of_a_popup_opened_again_data() {
                return [
                    {tag: "Enter", answer: () => keyClick(Qt.Key_Enter), accepted: true},
                    {tag: "Return", answer: () => keyClick(Qt.Key_Return), accepted: true},
                    {tag: "Escape", answer: () => keyClick(Qt.Key_Escape), accepted: false},
                    {tag: "accept", answer: popup => popup.accept(), accepted: true},
                    {tag: "close_current_dialog", answer: () => Gui.closeCurrentDialog(false), accepted: false},
                    {tag: "close_dialog", answer: popup => Gui.closeDialog(popup.id_, true), accepted: true}
                ];
            }

            function test_answers_of_a_popup_opened_again(data) {
                const popup = createTemporaryObject(popupComponent, testCase);
                popup.open();
                open(popup).reject();
                popup.open();
                open(popup);
                tryVerify(() => popup.contentItem.activeFocus);
                sent.clear();
                data.answer(popup);
                tryCompareSent([
                    [Gui, Gui.DialogData, {[popup.id_]: {a: data.accepted}, current: null}],
                    [Gui, Gui.PopupOpened, false]
                ]);
                verify(!popup.visible && !Dialogs.popupActive);
            }

            // It has not come back to the stack when it leaves again.
            function test_opened_again_and_closed_before_it_is_there() {
                const popup = createTemporaryObject(popupComponent, testCase);
                popup.open();
                open(popup).reject();
                sent.clear();
                popup.open();
                popup.close();
                tryCompareSent([[Gui, Gui.PopupOpened, false], [Gui, Gui.PopupOpened, false]]);
                verify(!popup.visible && !Dialogs.popupActive);
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
                sent.clear();
                popup.accept(data.value);
                compareSent([[Gui, Gui.DialogData, {[id]: {a: true, v: data.value}, current: null}]]);
                tryCompareSent([[Gui, Gui.PopupOpened, false]]);
            }
        }
    }
}
