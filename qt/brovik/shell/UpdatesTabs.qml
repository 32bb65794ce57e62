// The pages behind the tabs of the updates. They report themselves, see UpdatesTabReporter.
import QtQml
import QtQuick.Controls

import brovik.components

SwipeView {
    id: root

    // The stack in which the updates are the current page, null while they are not.
    required property PageStack frame
    // The page that was reported last.
    property int currentPage

    // Takes the report of the page that has turned current.
    function setCurrentPage(pageEnum: int) {
        root.currentPage = pageEnum;
        privat.tell();
    }

    clip: true
    interactive: false

    QtObject {
        id: privat

        function tell() {
            root.frame?.setCurrentPage(root.currentPage);
        }
    }

    onFrameChanged: privat.tell()
}
