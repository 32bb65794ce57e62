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
        }
    }
}
