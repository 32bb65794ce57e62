import QtQuick
import QtQuick.Controls.Material
import QtTest

import brovik.base
import brovik.components

Item {
    id: root

    width: 400
    height: 200

    Component {
        id: buttonComponent

        MyDelayButton {
            width: 200
            height: 60
            delay: 50
        }
    }

    Component {
        id: largeComponent

        BrovikDelayButton {}
    }

    Component {
        id: greenComponent

        MyGreenDelayButton {}
    }

    SignalSpy {
        id: myActivated

        signalName: "myActivated"
    }

    ScreenTestCase {
        name: "DelayButton"

        property MyDelayButton button

        function prepare() {
            button = createTemporaryObject(buttonComponent, root);
            myActivated.target = button;
            myActivated.clear();
        }

        function hold() {
            mousePress(button);
            tryCompare(button, "progress", 1);
        }

        function verifyAtRest() {
            tryCompare(button, "progress", 0);
            verify(!button.checked);
            verify(!button.checkable);
        }

        function test_released_before_the_delay_runs_out() {
            button.delay = 60000;
            mousePress(button);
            tryVerify(() => button.progress > 0);
            mouseRelease(button);
            compare(myActivated.count, 0);
            verifyAtRest();
        }

        function test_held_past_the_delay_and_released() {
            hold();
            compare(myActivated.count, 0);
            mouseRelease(button);
            compare(myActivated.count, 1);
            verifyAtRest();
        }

        function test_held_with_the_space_key() {
            button.forceActiveFocus();
            keyPress(Qt.Key_Space);
            tryCompare(button, "progress", 1);
            compare(myActivated.count, 0);
            keyRelease(Qt.Key_Space);
            compare(myActivated.count, 1);
            verifyAtRest();
        }

        function test_works_a_second_time() {
            for (let count = 1; count <= 2; ++count) {
                hold();
                mouseRelease(button);
                compare(myActivated.count, count);
                verifyAtRest();
            }
        }

        function test_short_press_after_a_long_one() {
            hold();
            mouseRelease(button);
            verifyAtRest();
            button.delay = 60000;
            mouseClick(button);
            compare(myActivated.count, 1);
            verifyAtRest();
        }

        function test_let_go_beside_the_button() {
            hold();
            mouseMove(button, 2 * button.width, 2 * button.height);
            mouseRelease(button, 2 * button.width, 2 * button.height);
            compare(myActivated.count, 0);
            verifyAtRest();
        }

        function test_locked_while_it_is_held() {
            hold();
            button.enabled = false;
            mouseRelease(button);
            button.enabled = true;
            compare(myActivated.count, 0);
            verifyAtRest();
        }

        function test_a_click_clears_the_check_mark() {
            hold();
            mouseRelease(button);
            verify(!button.checked);
        }

        function test_large_button() {
            const large = createTemporaryObject(largeComponent, root);
            compare(large.delay, 750);
            verify(large.font.bold);
            compare(large.font.pointSize, 16);
        }

        function test_green_button() {
            const green = createTemporaryObject(greenComponent, root);
            const plain = green.Material.background;
            compare(green.delay, 1500);
            verify(!green.isGreen);
            green.isGreen = true;
            compare(green.Material.background, green.Material.color(Material.Green));
            compare(green.Material.accent, green.Material.color(Material.Green));
            green.isGreen = false;
            compare(green.Material.background, plain);
        }
    }
}
