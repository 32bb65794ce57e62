// The dialog that tells something.
import QtQuick
import QtQuick.Controls

import brovik.base
import brovik.gui
import "items.js" as Items

Item {
    BaseTemplate {
        id: window

        width: 800
        height: 1200

        Component {
            id: dialogComponent
            MyDialog {}
        }

        DialogTestCase {
            id: testCase

            name: "MyDialog"

            readonly property var frames: [
                {pathRel: "controller/run.py", pathAbs: "/opt/controller/run.py", lineNo: 12, func: "run", lineStr: "x = 1 / 0"},
                {pathRel: "../lib/f.py", pathAbs: "/lib/f.py", lineNo: 3, func: "<module>", lineStr: ""}
            ]

            function message(options) {
                return open(Dialogs.message("Titel", "Text", "info", options));
            }

            function shownTexts(list) {
                const texts = [];
                for (let i = 0; i < list.count; ++i) {
                    texts.push(list.itemAtIndex(i).text);
                }
                return texts;
            }

            function detailsOf(dialog) {
                const children = dialog.contentItem.item.children;
                return children[children.length - 1];
            }

            function test_defaults() {
                const dialog = createTemporaryObject(dialogComponent, testCase);
                compare(dialog.title, "Titel");
                compare(dialog.text, "Text");
                compare(dialog.color, "#808080");
                compare(dialog.details, "");
                compare(dialog.traceback, null);
                compare(dialog.closePolicy, Popup.NoAutoClose);
                verify(dialog.modal);
                verify(dialog.focus);
            }

            function test_place_and_size() {
                const dialog = message();
                compare(dialog.parent, Dialogs.overlay);
                compare(dialog.width, 450);
                compare(dialog.x, (800 - 450) / 2);
                compare(dialog.y, (1200 - dialog.height) / 2);
                compare(dialog.height, dialog.contentItem.implicitHeight + dialog.topPadding + dialog.bottomPadding);
            }

            function test_narrow_window() {
                window.width = 400;
                compare(message().width, 400);
                window.width = 800;
            }

            function test_title_is_plain_and_main_text_rich() {
                const dialog = open(Dialogs.message("<b>Titel</b>", "<b>Text</b>"));
                compare(findText(dialog.contentItem, "<b>Titel</b>").textFormat, Text.PlainText);
                const text = findText(dialog.contentItem, "<b>Text</b>", "textFormat");
                compare(text.textFormat, Text.RichText);
            }

            function test_title_bar() {
                const title = findText(message().contentItem, "Titel");
                compare(title.color, "#ffffff");
                compare(title.font.pointSize, 16);
                compare(title.padding, 3);
                compare(title.background.color, "#0000ff");
            }

            function test_short_main_text_takes_a_hundred_pixels() {
                const text = findText(message().contentItem, "Text", "minimumHeight");
                compare(text.height, 100);
            }

            function test_buttons_data() {
                return [
                    {tag: "plain", options: {}, traceback: false, details: false},
                    {tag: "details", options: {details: "d"}, traceback: false, details: true},
                    {tag: "traceback", options: {traceback: frames}, traceback: true, details: false},
                    {tag: "both", options: {details: "d", traceback: frames}, traceback: false, details: true}
                ];
            }

            function test_buttons(data) {
                const dialog = message(data.options);
                verify(findButton(dialog, "OK"));
                compare(!!findButton(dialog, "Traceback"), data.traceback);
                compare(!!findButton(dialog, "Details"), data.details);
                verify(!detailsOf(dialog).visible);
            }

            function test_traceback() {
                const dialog = message({traceback: frames});
                clickButton(dialog, "Traceback");
                const list = detailsOf(dialog);
                tryVerify(() => list.visible);
                tryVerify(() => list.count === 3 && list.itemAtIndex(2));
                compare(shownTexts(list), [
                    "Traceback (letzter Aufruf zum Schluss):",
                    "Datei controller/run.py, Zeile 12, in Funktion run:\n  x = 1 / 0",
                    "Datei /lib/f.py, Zeile 3, in Funktion <module>"
                ]);
                compare(list.itemAtIndex(2).textFormat, Text.PlainText);
                clickButton(dialog, "Traceback");
                tryVerify(() => !list.visible);
            }

            function test_details_come_before_a_traceback() {
                const dialog = message({details: "Zeile <1>", traceback: frames});
                clickButton(dialog, "Details");
                const list = detailsOf(dialog);
                tryVerify(() => list.itemAtIndex(0));
                compare(shownTexts(list), ["Zeile <1>"]);
            }

            function test_details_take_at_most_two_hundred_pixels() {
                const dialog = message({details: "Zeile\n".repeat(100)});
                clickButton(dialog, "Details");
                tryCompare(detailsOf(dialog), "height", 200);
                verify(detailsOf(dialog).interactive);
            }

            function test_scroll_bars_cover_no_text() {
                const dialog = open(Dialogs.message("Titel", "Wort ".repeat(2000), "info", {details: "Zeile ".repeat(500)}));
                clickButton(dialog, "Details");
                const list = detailsOf(dialog);
                tryVerify(() => list.interactive && list.itemAtIndex(0));
                tryCompare(list.itemAtIndex(0), "width", list.width - list.ScrollBar.vertical.width);
                const text = Items.below(dialog.contentItem, item => item.textFormat === Text.RichText)[0];
                const flickable = text.parent.parent;
                tryVerify(() => flickable.interactive);
                tryCompare(text, "width", flickable.width - flickable.ScrollBar.vertical.width);
            }

            function test_texts_without_a_scroll_bar_have_the_full_width() {
                const dialog = message({details: "Zeile"});
                clickButton(dialog, "Details");
                const list = detailsOf(dialog);
                tryVerify(() => list.itemAtIndex(0));
                tryCompare(list, "width", dialog.availableWidth);
                compare(list.itemAtIndex(0).width, list.width);
                compare(Items.below(dialog.contentItem, item => item.textFormat === Text.RichText)[0].width, dialog.availableWidth);
            }

            function test_labels_are_destroyed_when_closed() {
                const dialog = createTemporaryObject(dialogComponent, testCase, {details: "d"});
                dialog.open();
                compare(detailsOf(open(dialog)).count, 1);
                dialog.close();
                tryCompare(detailsOf(dialog), "count", 0);
            }

            function test_time_shows_a_text_and_no_list() {
                const dialog = createTemporaryObject(dialogComponent, testCase, {time: "12:30"});
                dialog.open();
                verify(findText(open(dialog).contentItem, "12:30"));
                dialog.time = frames;
                verify(!findText(dialog.contentItem, "12:30"));
                dialog.close();
            }

            function test_time_has_the_value_of_traceback() {
                compare(message({traceback: frames}).time, frames);
                compare(message().time, "");
            }

            function test_everything_closes_data() {
                return [
                    {tag: "Enter", close: dialog => keyClick(Qt.Key_Enter)},
                    {tag: "Return", close: dialog => keyClick(Qt.Key_Return)},
                    {tag: "Escape", close: dialog => keyClick(Qt.Key_Escape)},
                    {tag: "OK", close: dialog => mouseClick(findButton(dialog, "OK"))},
                    {tag: "accept", close: dialog => dialog.accept()},
                    {tag: "reject", close: dialog => dialog.reject()}
                ];
            }

            function test_everything_closes(data) {
                const dialog = message({id: 5});
                sent.clear();
                data.close(dialog);
                tryCompareSent([[Gui, Gui.DialogData, {5: {a: false}, current: null}]]);
            }

            function test_enter_after_unfolding() {
                const dialog = message({traceback: frames, id: 5});
                clickButton(dialog, "Traceback");
                sent.clear();
                keyClick(Qt.Key_Enter);
                tryCompareSent([[Gui, Gui.DialogData, {5: {a: false}, current: null}]]);
            }

            function test_press_beside_it_does_not_close() {
                const dialog = message();
                mouseClick(testCase.parent, 5, 5);
                verify(dialog.opened);
            }

            function test_focus_returns_to_the_dialog_below() {
                const below = message({id: 5});
                const above = message({id: 6});
                tryVerify(() => above.contentItem.activeFocus);
                sent.clear();
                keyClick(Qt.Key_Escape);
                tryCompareSent([[Gui, Gui.DialogData, {6: {a: false}, current: [5, null]}]]);
                tryVerify(() => below.contentItem.activeFocus);
                keyClick(Qt.Key_Escape);
                tryCompareSent([[Gui, Gui.DialogData, {5: {a: false}, current: null}]]);
            }

            function test_high_text_scrolls_and_keeps_the_buttons_in_the_window() {
                const dialog = open(Dialogs.message("Titel", "Wort ".repeat(2000)));
                tryCompare(dialog, "height", 1200);
                compare(dialog.y, 0);
                const ok = findButton(dialog, "OK");
                verify(ok.mapToItem(testCase.parent, 0, ok.height).y <= 1200);
                clickButton(dialog, "OK");
                tryVerify(() => !Dialogs.popupActive);
            }
        }
    }
}
