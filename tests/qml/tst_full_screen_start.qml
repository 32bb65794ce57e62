import QtQuick

import brovik.base
import brovik.gui

// The state of the window when the backend hears that it is ready.
Item {
    id: root

    Component {
        id: windowComponent

        BaseTemplate {
            id: window

            property var atReady: []

            width: 640
            height: 480

            Connections {
                target: Gui

                function onToPy(what) {
                    if (what === Gui.Ready) {
                        window.atReady.push(window.visibility);
                    }
                }
            }
        }
    }

    ScreenTestCase {
        name: "FullScreenStart"

        function test_at_ready_data() {
            return [{tag: "wanted", fullscreen: true, visibility: Window.FullScreen}, {tag: "not wanted", fullscreen: false, visibility: Window.Windowed}];
        }

        function test_at_ready(data) {
            Gui.fullscreen = data.fullscreen;
            const window = createTemporaryObject(windowComponent, root);
            compare(window.atReady, [data.visibility]);
        }
    }
}
