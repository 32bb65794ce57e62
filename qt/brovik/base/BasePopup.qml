// A popup of a page that stands in the stack of open dialogs each time it is open.
// A derived type may have a function customAccept(), which then takes the place of accept() for Enter and Return.
import QtQuick
import QtQuick.Controls

import brovik.base
import brovik.gui

Popup {
    id: root

    property int id_: 0

    signal accepted
    signal rejected

    // The backend gets `value`, if there is one: plain data only.
    function accept(value: var) {
        if (privat.leave(true, value)) {
            root.accepted();
        }
    }

    function reject() {
        if (privat.leave(false)) {
            root.rejected();
        }
    }

    x: (Common.w1 - width) / 2
    y: (Common.h - implicitHeight) / 2
    width: Dialogs.dialogWidth
    modal: true
    Overlay.modal: Rectangle {
        color: Common.colorVeil
    }
    focus: true

    // While it fades out it may be opened anew, and then never counts as closed.
    onAboutToShow: {
        privat.finishClosing();
        // No key before it is open acts on what had the focus when it was open last.
        root.contentItem.focus = true;
    }
    onAboutToHide: privat.closing = true
    onClosed: privat.finishClosing()

    onOpened: {
        root.contentItem.forceActiveFocus();
        root.id_ = Dialogs.setupPopup(root, root.id_);
        privat.emit = true;
    }

    Component.onCompleted: {
        const keys = root.contentItem.Keys;
        keys.enterPressed.connect(privat.acceptByKey);
        keys.returnPressed.connect(privat.acceptByKey);
        keys.escapePressed.connect(() => root.reject());
    }

    QtObject {
        id: privat

        // Closing has not yet been reported to the backend.
        property bool emit: false
        // The popup is fading out: it has its answer already.
        property bool closing: false

        function leave(accepted: bool, value: var): bool {
            if (privat.closing) {
                return false;
            }
            if (root.id_ !== 0) {
                Dialogs.removePopupById(root.id_, accepted, value);
            }
            privat.emit = false;
            root.close();
            return true;
        }

        // It is gone, or comes back.
        function finishClosing() {
            if (!privat.closing) {
                return;
            }
            privat.closing = false;
            Gui.toPy(Gui.PopupOpened, false);
            if (privat.emit && root.id_ !== 0) {
                Dialogs.removePopupById(root.id_, false);
            }
            privat.emit = false;
        }

        // The key event must not reach the backend as a value.
        function acceptByKey() {
            if (!privat.closing) {
                Dialogs.acceptDialog(root);
            }
        }
    }
}
