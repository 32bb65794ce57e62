// A test of the automatic page, which stands alone in its stack.
import QtQuick
import QtQuick.Layouts

import main

ScreenTestCase {
    id: root

    readonly property Component pageComponent: Component {
        StackLayout {
            readonly property alias page: page

            anchors.fill: parent

            AutoOverview {
                id: page
            }

            Item {}
        }
    }

    property StackLayout stack
    property AutoOverview page

    function prepare() {
        stack = createTemporaryObject(pageComponent, parent);
        page = stack.page;
        draw(page);
    }

    function named(name) {
        return findChild(page, name);
    }

    function hold(button) {
        mousePress(button);
        tryCompare(button, "progress", 1);
        mouseRelease(button);
    }
}
