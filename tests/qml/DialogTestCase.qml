// A test of dialogs. It stands in the window that shows them.
import QtQuick
import QtTest

import brovik.base
import brovik.gui

TestCase {
    id: root

    readonly property GuiSpy spy: GuiSpy {}

    when: windowShown

    function initTestCase() {
        root.Window.window.requestActivate();
        tryVerify(() => root.Window.window.active);
    }

    function init() {
        failOnWarning(/.?/);
        spy.clear();
    }

    function cleanup() {
        closeAll();
    }

    // Closes every dialog that a test has left open.
    function closeAll() {
        for (let left = 300; Dialogs.popupActive && left > 0; --left) {
            const before = spy.count;
            Dialogs.rejectCurrent();
            tryVerify(() => spy.count > before);
        }
        verify(!Dialogs.popupActive);
    }

    // What was sent by now, compared with the pairs of enum and value.
    function compareSent(expected) {
        compare(JSON.stringify(spy.take()), JSON.stringify(expected));
    }

    // What has been sent as soon as there are as many messages as expected.
    function tryCompareSent(expected) {
        tryVerify(() => spy.count >= expected.length);
        compareSent(expected);
    }

    // The next id that Dialogs gives by itself.
    function nextAutoId() {
        const probe = Dialogs.message("", "");
        const id = spy.take()[0][1].current[0];
        probe.close();
        tryVerify(() => spy.count === 1);
        spy.clear();
        return id - 1;
    }

    // The visible item below `item` with this text and, if given, this property.
    function findText(item, text, property = "text") {
        if (item.visible && item.text === text && item[property] !== undefined) {
            return item;
        }
        for (let i = 0; i < item.children.length; ++i) {
            const found = findText(item.children[i], text, property);
            if (found) {
                return found;
            }
        }
        return null;
    }

    function findButton(dialog, text) {
        return findText(dialog.contentItem, text, "checkable");
    }

    function clickButton(dialog, text) {
        tryVerify(() => dialog.opened);
        mouseClick(findButton(dialog, text));
    }

    function open(dialog) {
        tryVerify(() => dialog.opened);
        return dialog;
    }
}
