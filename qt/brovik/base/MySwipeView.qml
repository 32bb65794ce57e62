// Pages that only the program changes, and that have a new size at once.
import QtQuick
import QtQuick.Controls

SwipeView {
    id: root

    clip: true
    interactive: false

    Component.onCompleted: {
        // The highlight of the list inside is not seen. It would grow to a new width for seconds, and have the window drawn anew for
        // each step of that.
        const list = root.contentItem as ListView;
        list.highlightResizeDuration = 0;
    }
}
