// Fingers, mouse and wheel on the chart.
import QtQuick
import QtCharts

import brovik.chart
import kubelor.test

Item {
    id: root

    width: 700
    height: 400

    ChartView {
        id: view

        anchors.fill: parent

        ValueAxis {
            id: axisTime
        }

        LineSeries {
            axisX: axisTime
            axisY: ValueAxis {}
        }

        ChartTimeWindow {
            id: timeWindow

            axis: axisTime
            lastX: 100
            plotWidth: 600
        }

        ChartTouchArea {
            id: area

            anchors.fill: parent
            timeWindow: timeWindow
        }
    }

    ScreenTestCase {
        name: "ChartTouch"

        function prepare() {
            timeWindow.lastX = 100;
            look(20, 80);
        }

        function cleanup() {
            area.enabled = true;
            compare(area.prevHandledPoints, 0);
            verify(!area.handleXActive);
        }

        function look(min, max) {
            axisTime.min = min;
            axisTime.max = max;
            Chart.prevXMin = min;
            Chart.prevXMax = max;
            Chart.shownSecs = max - min;
        }

        function verifyView(min, max) {
            fuzzyCompare(axisTime.min, min, 1e-6);
            fuzzyCompare(axisTime.max, max, 1e-6);
            fuzzyCompare(Chart.prevXMin, min, 1e-6);
            fuzzyCompare(Chart.prevXMax, max, 1e-6);
        }

        // Moves are delivered with the next frame.
        function send(touch) {
            touch.commit();
            view.update();
            draw(view);
        }

        function test_properties() {
            compare([area.minimumTouchPoints, area.maximumTouchPoints, area.mouseEnabled], [0, 2, true]);
            compare([area.handleXActive, area.prevHandledPoints], [false, 0]);
            const wheelArea = area.children[0];
            compare([wheelArea.width, wheelArea.height], [area.width, area.height]);
            verify(wheelArea.acceptedButtons === Qt.NoButton && wheelArea.propagateComposedEvents);
        }

        // 600 pixels are 60 s.
        function test_one_finger_pans() {
            const touch = touchEvent(area);
            send(touch.press(0, area, 300, 200));
            compare(area.prevHandledPoints, 1);
            verify(!area.handleXActive);
            verifyView(20, 80);
            send(touch.move(0, area, 350, 200));
            verify(area.handleXActive);
            verifyView(15, 75);
            send(touch.move(0, area, 250, 100));
            verifyView(25, 85);
            send(touch.release(0, area, 250, 100));
            verifyView(25, 85);
        }

        function test_mouse_pans() {
            mousePress(area, 300, 200);
            mouseMove(area, 320, 200);
            verify(area.handleXActive);
            mouseMove(area, 350, 200);
            verifyView(15, 75);
            mouseRelease(area, 350, 200);
            verifyView(15, 75);
        }

        function test_pan_beyond_an_edge_has_no_effect() {
            const touch = touchEvent(area);
            send(touch.press(0, area, 100, 200));
            send(touch.move(0, area, 290, 200));
            verifyView(1, 61);
            send(touch.move(0, area, 600, 200));
            verifyView(1, 61);
            send(touch.move(0, area, 200, 200));
            verifyView(10, 70);
            send(touch.release(0, area, 200, 200));
        }

        function test_two_fingers_zoom_data() {
            return [{tag: "left one first", ids: [0, 1]}, {tag: "right one first", ids: [1, 0]}];
        }

        function test_two_fingers_zoom(data) {
            const [left, right] = data.ids;
            const touch = touchEvent(area);
            send(touch.press(left, area, 200, 200).press(right, area, 400, 200));
            compare(area.prevHandledPoints, 2);
            verifyView(20, 80);
            send(touch.move(left, area, 150, 200).move(right, area, 400, 200));
            verifyView(30, 80);
            send(touch.stationary(left).move(right, area, 460, 200));
            verifyView(30, 70);
            compare(Chart.shownSecs, 40);
            send(touch.release(left, area, 150, 200).release(right, area, 460, 200));
            verifyView(30, 70);
        }

        function test_second_finger_ends_the_pan_and_sets_a_new_base() {
            const touch = touchEvent(area);
            send(touch.press(0, area, 300, 200));
            send(touch.move(0, area, 350, 200));
            verify(area.handleXActive);
            send(touch.stationary(0).press(1, area, 500, 200));
            verify(!area.handleXActive);
            compare(area.prevHandledPoints, 2);
            verifyView(15, 75);
            send(touch.stationary(0).release(1, area, 500, 200));
            compare(area.prevHandledPoints, 1);
            verifyView(15, 75);
            send(touch.release(0, area, 350, 200));
        }

        function test_closing_in_stops_at_a_tenth_of_a_second() {
            const touch = touchEvent(area);
            const views = [];
            for (let round = 0; round < 12; ++round) {
                send(touch.press(0, area, 300, 200).press(1, area, 310, 200));
                for (let way = 20; way <= 260; way += 20) {
                    send(touch.move(0, area, 300 - way, 200).move(1, area, 310 + way, 200));
                    views.push(axisTime.max - axisTime.min);
                }
                send(touch.release(0, area, 40, 200).release(1, area, 570, 200));
            }
            verify(views.every(secs => secs >= 0.1));
            compare(views[views.length - 1], views[views.length - 13], "the last round changes nothing");
            compare(Chart.shownSecs, axisTime.max - axisTime.min);
        }

        function test_third_finger_is_not_counted() {
            const touch = touchEvent(area);
            send(touch.press(0, area, 200, 200).press(1, area, 400, 200).press(2, area, 500, 200));
            verify(area.prevHandledPoints <= 2);
            send(touch.release(0, area, 200, 200).release(1, area, 400, 200).release(2, area, 500, 200));
        }

        function test_disabled_area_takes_no_touch() {
            area.enabled = false;
            const touch = touchEvent(area);
            send(touch.press(0, area, 300, 200));
            send(touch.move(0, area, 350, 200));
            send(touch.release(0, area, 350, 200));
            verifyView(20, 80);
            Input.turnWheel(area, Qt.point(50, 50));
            verifyView(20, 80);
        }

        function test_disabled_under_a_finger() {
            const touch = touchEvent(area);
            send(touch.press(0, area, 300, 200));
            send(touch.move(0, area, 350, 200));
            area.enabled = false;
            send(touch.move(0, area, 400, 200));
            verifyView(15, 75);
            send(touch.release(0, area, 400, 200));
            area.enabled = true;
            send(touch.press(0, area, 300, 200));
            verifyView(15, 75);
            send(touch.move(0, area, 350, 200));
            verifyView(10, 70);
            send(touch.release(0, area, 350, 200));
        }

        function test_data_replaced_under_a_finger() {
            const touch = touchEvent(area);
            send(touch.press(0, area, 300, 200));
            send(touch.move(0, area, 350, 200));
            timeWindow.lastX = 0;
            timeWindow.follow(1, true, false);
            send(touch.move(0, area, 250, 200));
            verifyView(0, 1);
            timeWindow.lastX = 1000;
            timeWindow.follow(1000, true, false);
            send(touch.move(0, area, 240, 200));
            verify(axisTime.min >= 0 && axisTime.max <= 1000 && axisTime.min < axisTime.max);
            send(touch.release(0, area, 250, 200));
        }

        function test_wheel_data() {
            return [
                {tag: "up zooms in", pixels: Qt.point(0, 100), view: [30, 70]},
                {tag: "down zooms out", pixels: Qt.point(0, -100), view: [10, 90]},
                {tag: "left shifts back", pixels: Qt.point(50, 0), view: [10, 70]},
                {tag: "right shifts on", pixels: Qt.point(-50, 0), view: [30, 90]},
                {tag: "nothing", pixels: Qt.point(0, 0), view: [20, 80]}
            ];
        }

        function test_wheel(data) {
            verify(Input.turnWheel(area, data.pixels), "accepted");
            verifyView(...data.view);
        }

        function test_wheel_without_pixels_changes_nothing() {
            mouseWheel(area, 300, 200, 0, 120);
            verifyView(20, 80);
        }
    }
}
