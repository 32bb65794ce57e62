// Keeps a property of a control at a value that is stored elsewhere.
//
// A control changes its property by itself when the operator uses it. Once the handlers of that change have run,
// and with them the backend and its change signals, the control shows again what is stored. So a wish that was not
// taken disappears, and one that was taken stays.
import QtQml

Binding {
    id: root

    // True while the control is put back: what is connected to its changes need not report this one.
    readonly property bool rereading: privat.rereading

    restoreMode: Binding.RestoreNone

    Component.onCompleted: privat.follow()

    // A Binding has no place for children.
    property QtObject _privat: QtObject {
        id: privat

        property bool rereading: false

        // A range that has changed may let through what it has cut off before.
        function follow() {
            for (const name of [root.property, "from", "to"]) {
                root.target[name + "Changed"]?.connect(privat.afterHandlers);
            }
        }

        function afterHandlers() {
            Qt.callLater(privat.afterNotifications);
        }

        // Change signals from other threads are events that were in the queue before this second call.
        function afterNotifications() {
            Qt.callLater(privat.reread);
        }

        function reread() {
            if (root.target[root.property] === root.value) {
                return;
            }
            privat.rereading = true;
            root.when = false;
            root.when = true;
            privat.rereading = false;
        }
    }
}
