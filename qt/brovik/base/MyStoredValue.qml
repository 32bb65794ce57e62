// Keeps a property of a control at a value that is stored elsewhere.
//
// A control changes its property by itself when the operator uses it. Once the handlers of that change have run,
// and with them the backend and its change signals, the control shows again what is stored. So a value that the backend
// has refused disappears, and one that it has stored stays.
import QtQml

QtObject {
    id: root

    required property QtObject target
    required property string name
    // Untyped: as the property is.
    required property var value

    // A QtObject has no place for children.
    readonly property QtObject inner: QtObject {
        id: privat

        readonly property Binding binding: Binding {
            target: root.target
            property: root.name
            value: root.value
            restoreMode: Binding.RestoreNone
        }

        // A range that has changed may let through what it has cut off before.
        function follow() {
            for (const name of [root.name, "from", "to"]) {
                root.target[name + "Changed"]?.connect(privat.afterHandlers);
            }
        }

        // A control that is taken down may change once more, when this is already gone.
        // The linter does not know that callLater() takes a function, here and below.
        function afterHandlers() {
            if (privat) {
                Qt.callLater(privat.afterNotifications); // qmllint disable type
            }
        }

        // The change signals that other threads have sent meanwhile stand in the event queue before this call.
        function afterNotifications() {
            Qt.callLater(privat.reread); // qmllint disable type
        }

        function reread() {
            if (root.target[root.name] !== root.value) {
                privat.binding.when = false;
                privat.binding.when = true;
            }
        }
    }

    Component.onCompleted: privat.follow()
}
