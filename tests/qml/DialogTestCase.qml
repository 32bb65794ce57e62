// A test of dialogs. It stands in the window that shows them.
import QtQuick

import brovik.base

ScreenTestCase {
    id: root

    function initTestCase() {
        root.Window.window.requestActivate();
        tryVerify(() => root.Window.window.active);
    }

    function cleanup() {
        closeAll();
    }

    // Closes every dialog that a test has left open.
    function closeAll() {
        for (let left = 300; Dialogs.popupActive && left > 0; --left) {
            const before = sent.count;
            Dialogs.rejectCurrent();
            tryVerify(() => sent.count > before);
        }
        verify(!Dialogs.popupActive);
    }

    // The next id that Dialogs gives by itself.
    function nextAutoId() {
        const probe = Dialogs.message("", "");
        const id = sent.take()[0][2].current[0];
        probe.close();
        tryVerify(() => sent.count === 1);
        sent.clear();
        return id - 1;
    }

    // The dialog that the backend was told of last.
    function latestDialog() {
        tryVerify(() => Dialogs.popupActive);
        const [, , data] = sent.messages[sent.count - 1];
        return Dialogs.getOpenDialogById(data.current[0])[0];
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
