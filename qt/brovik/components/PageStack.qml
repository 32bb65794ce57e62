// A stack of pages that report themselves, see PageReporter.
import QtQml

import brovik.base
import brovik.gui

MyStackLayout {
    id: root

    // The stack itself is on the screen.
    required property bool shown
    // The page that was reported last.
    property int currentPage

    // Takes the report of the page that has turned current.
    function setCurrentPage(pageEnum: int) {
        root.currentPage = pageEnum;
        privat.tell();
    }

    QtObject {
        id: privat

        function tell() {
            if (root.shown) {
                Gui.changePage(root.currentPage);
            }
        }
    }

    onShownChanged: privat.tell()
}
