import QtQuick

import brovik.simulator
import kubelor.test

// Where the simulator's window comes up, and the button that brings it back.
Item {
    id: root

    width: 200
    height: 200

    Component {
        id: simulatorComponent

        Item {
            readonly property alias win: win
            readonly property alias gear: gear

            anchors.fill: parent

            SimulatorOptionsWindow {
                id: win
            }

            SimulatorOptionsButton {
                id: gear

                win: win
            }
        }
    }

    Component {
        id: plainComponent

        Window {
            visible: true
        }
    }

    ScreenTestCase {
        name: "SimulatorGear"
        // This platform says so whenever the least size of a window changes.
        fatalWarnings: /^(?!This plugin does not support propagateSizeHints)/

        property SimulatorOptionsWindow win
        property SimulatorOptionsButton gear

        function prepare() {
            Backend.run("simulator.Simulator.enabled = True");
            const simulator = createTemporaryObject(simulatorComponent, root);
            win = simulator.win;
            gear = simulator.gear;
            tryVerify(() => win.visible);
        }

        // Where it comes up is left to the window manager.
        function test_place() {
            const plain = createTemporaryObject(plainComponent, root);
            tryVerify(() => plain.visible);
            compare([win.x, win.y], [plain.x, plain.y]);
        }

        function test_state_data() {
            return [
                {tag: "minimised", leave: () => win.showMinimized(), left: Window.Minimized},
                {tag: "hidden", leave: () => win.hide(), left: Window.Hidden},
                {tag: "closed", leave: () => win.close(), left: Window.Hidden}
            ];
        }

        function test_state(data) {
            data.leave();
            tryCompare(win, "visibility", data.left);
            // This platform leaves the focus with a window that it has minimised.
            tryVerify(() => !win.active || data.left === Window.Minimized);
            mouseClick(gear);
            tryCompare(win, "visibility", Window.Windowed);
            tryVerify(() => win.visible && win.active);
        }
    }
}
