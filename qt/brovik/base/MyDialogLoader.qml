// Makes what stands in a dialog. Of hundreds that open at once only for those that are drawn, once all have opened:
// the time and the memory of a dialog go into this.
import QtQuick

import brovik.base

Loader {
    id: root

    required property MyDialogFrame dialog
    // The file of a MyDialogColumn.
    required property url column

    active: false
    focus: true

    Connections {
        target: root.dialog

        function onCoveredChanged() {
            privat.prepare();
        }
    }

    Component.onCompleted: {
        root.setSource(root.column, {dialog: root.dialog});
        privat.prepare();
    }

    QtObject {
        id: privat

        function prepare() {
            if (Dialogs.many) {
                // The linter does not know that callLater() takes a function.
                Qt.callLater(load); // qmllint disable type
            } else {
                load();
            }
        }

        // What was made stays, with what the operator has unfolded in it.
        function load() {
            // The call may come when the dialog is already gone.
            if (privat && !root.dialog.covered) {
                root.active = true;
            }
        }
    }
}
