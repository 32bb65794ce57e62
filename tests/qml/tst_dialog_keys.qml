// What a hardware keyboard does in an open dialog: it stays there.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtTest

import brovik.base

Item {
    BaseTemplate {
        id: window

        width: 800
        height: 1200

        ColumnLayout {
            Button {
                id: pageButton

                text: "Seite"
            }

            TextField {
                id: pageField
            }
        }

        PowerPopup {
            id: powerPopup
        }

        SignalSpy {
            id: pressed

            target: pageButton
            signalName: "clicked"
        }

        DialogTestCase {
            id: testCase

            name: "DialogKeys"

            // What shows a dialog, what happens there first, and how many things in it Tab goes to.
            readonly property var dialogs: [
                {tag: "message", stops: 1, show: () => Dialogs.message("t", "x")},
                {tag: "message with details", stops: 2, show: () => Dialogs.message("t", "x", "info", {details: "d"})},
                {tag: "question", stops: 2, show: () => Dialogs.question("t", "x", {yes: "Ja", no: "Nein"})},
                {tag: "input", stops: 3, show: () => Dialogs.input("t", "x")},
                {tag: "password", stops: 4, show: () => Dialogs.input("t", "x", {password: true, text: "geheim"})},
                {tag: "empty input", stops: 2, show: () => Dialogs.input("t", "x"), prepare: dialog => { dialog.value = ""; dialog.accept(); }},
                {tag: "popup", stops: 2, show: () => { powerPopup.open(); return powerPopup; }}
            ]

            function prepare() {
                pageButton.forceActiveFocus();
                pressed.clear();
                pageField.clear();
            }

            // The item in which the dialog's controls stand.
            function room(dialog) {
                return dialog.input?.parent ?? dialog.contentItem;
            }

            function isIn(item, ancestor) {
                return item !== null && (item === ancestor || isIn(item.parent, ancestor));
            }

            function shown(data) {
                return awaited(data.show(), data);
            }

            function awaited(dialog, data) {
                tryVerify(() => dialog.opened !== false && isIn(window.activeFocusItem, room(dialog)));
                data.prepare?.(dialog);
                return dialog;
            }

            function test_tab_stays_inside_data() {
                return [].concat(...dialogs.map(data => [
                    Object.assign({}, data, {tag: `${data.tag} forwards`, modifiers: Qt.NoModifier}),
                    Object.assign({}, data, {tag: `${data.tag} backwards`, modifiers: Qt.ShiftModifier})
                ]));
            }

            function test_tab_stays_inside(data) {
                const dialog = shown(data);
                const visited = new Set();
                for (let i = 0; i < 3 * data.stops; ++i) {
                    keyClick(data.modifiers === Qt.ShiftModifier ? Qt.Key_Backtab : Qt.Key_Tab, data.modifiers);
                    verify(isIn(window.activeFocusItem, room(dialog)), window.activeFocusItem);
                    visited.add(String(window.activeFocusItem));
                }
                compare(visited.size, data.stops);
            }

            function test_space_presses_nothing_below_data() {
                return dialogs;
            }

            // From the moment at which it comes up.
            function test_space_presses_nothing_below(data) {
                const dialog = data.show();
                keyClick(Qt.Key_Space);
                compare(pressed.count, 0);
                awaited(dialog, data);
                for (let i = 0; i < 2 * data.stops; ++i) {
                    keyClick(Qt.Key_Tab);
                    if (window.activeFocusItem instanceof TextField) {
                        keyClick(Qt.Key_Space);
                    }
                }
                compare(pressed.count, 0);
                compare(pageField.text, "");
            }

            function test_escape_closes_from_every_field_data() {
                return [].concat(...dialogs.map(data => Array.from({length: data.stops + 1}, (_, i) => Object.assign({}, data, {tag: `${data.tag} ${i}`, tabs: i}))));
            }

            function test_escape_closes_from_every_field(data) {
                shown(data);
                for (let i = 0; i < data.tabs; ++i) {
                    keyClick(Qt.Key_Tab);
                }
                keyClick(Qt.Key_Escape);
                tryVerify(() => !Dialogs.popupActive);
            }
        }
    }
}
