import QtQuick

import main

// Where the window comes up when nothing is stored: this run has a settings file of its own.
Item {
    id: root

    width: 100
    height: 100

    Component {
        id: mainComponent

        Main {
            // To be replaced.
            x: 300
            y: 300
        }
    }

    Component {
        id: plainComponent

        Window {
            x: 0
            y: 70
            visible: true
        }
    }

    ScreenTestCase {
        name: "WindowPlace"

        // The platform leaves room for a frame, and does so for any window.
        function test_at_the_left_edge() {
            const window = createTemporaryObject(mainComponent, root);
            const plain = createTemporaryObject(plainComponent, root);
            compare([window.x, window.y], [plain.x, plain.y]);
        }
    }
}
