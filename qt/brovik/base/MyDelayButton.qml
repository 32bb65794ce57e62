// A button that is held until it is filled, and acts when it is let go.
import QtQuick
import QtQuick.Controls

DelayButton {
    id: root

    signal myActivated

    checkable: false

    QtObject {
        id: privat

        property bool filled: false
    }

    onPressed: privat.filled = false
    onActivated: privat.filled = true
    onReleased: {
        if (privat.filled) {
            root.myActivated();
        }
    }
    onClicked: root.checked = false
}
