// The pages behind tabs within a page of a stack. They report themselves, see PageReporter.
import QtQml

import brovik.base
import brovik.components

MySwipeView {
    id: root

    // The stack in which the page of the tabs is current, null while it is not.
    required property PageStack frame
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
            root.frame?.setCurrentPage(root.currentPage);
        }
    }

    onFrameChanged: privat.tell()
}
