// Makes the content of a dialog, which takes most of a dialog's time and memory. If hundreds of dialogs open at once,
// only those that are drawn get theirs, when all have opened.
import QtQuick

import brovik.base

FocusScope {
    id: root

    required property MyDialogFrame dialog
    required property Component column
    readonly property Item item: privat.item

    implicitWidth: item ? item.implicitWidth : 0
    implicitHeight: item ? item.implicitHeight : 0
    focus: true

    Connections {
        target: root.dialog

        function onCoveredChanged() {
            privat.prepare();
        }
    }

    Component.onCompleted: privat.prepare()

    QtObject {
        id: privat

        property Item item: null

        function prepare() {
            if (Dialogs.many) {
                // The linter does not know that callLater() takes a function.
                Qt.callLater(load); // qmllint disable type
            } else {
                load();
            }
        }

        // What was made stays, with what the operator has unfolded in it. A Loader of Qt 6.4 refuses components that
        // are bound to their file.
        function load() {
            // The call may come when the dialog is already gone.
            if (privat && !privat.item && !root.dialog.covered) {
                privat.item = root.column.createObject(root, {"anchors.fill": root});
            }
        }
    }
}
