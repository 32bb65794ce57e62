// A stack whose page always follows its size hints.
import QtQuick
import QtQuick.Layouts

StackLayout {
    id: root

    QtObject {
        id: privat

        readonly property Item page: root.currentIndex < root.count ? root.children[root.currentIndex] : null

        // A stack that is asked for its hints forgets that its pages have changed. Such a page would be arranged by its
        // old hints when it gets a new size, and from then on take no notice of any change of them.
        function refresh() {
            privat.page?.ensurePolished();
        }

        onPageChanged: privat.refresh()
    }

    Connections {
        target: privat.page

        function onWidthChanged() {
            privat.refresh();
        }

        function onHeightChanged() {
            privat.refresh();
        }
    }
}
