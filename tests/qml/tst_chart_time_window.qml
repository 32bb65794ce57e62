// The arithmetic of the visible stretch of time.
import QtQuick
import QtCharts
import QtTest

import brovik.chart

Item {
    id: root

    Component {
        id: windowComponent

        ChartTimeWindow {
            axis: ValueAxis {
                min: 0
                max: 60
            }
            lastX: 100
            plotWidth: 600
        }
    }

    SignalSpy {
        id: rangeSpy

        signalName: "rangeChanged"
    }

    ScreenTestCase {
        name: "ChartTimeWindow"

        property ChartTimeWindow view

        function prepare() {
            view = createTemporaryObject(windowComponent, root);
        }

        function look(min, max, lastX = 100) {
            view.lastX = lastX;
            view.axis.min = min;
            view.axis.max = max;
            Chart.prevXMin = min;
            Chart.prevXMax = max;
            Chart.shownSecs = max - min;
        }

        function verifyView(min, max, secs) {
            fuzzyCompare(view.axis.min, min, 1e-9);
            fuzzyCompare(view.axis.max, max, 1e-9);
            fuzzyCompare(Chart.prevXMin, min, 1e-9);
            fuzzyCompare(Chart.prevXMax, max, 1e-9);
            fuzzyCompare(Chart.shownSecs, secs, 1e-9);
        }

        // The axis follows a point at `x`; `kept` is what the page goes back to.
        function test_follow_data() {
            return [
                {tag: "auto, short chart", x: 20, auto: true, axis: [0, 20], kept: [0, 20]},
                {tag: "auto, long chart", x: 200, auto: true, axis: [140, 200], kept: [140, 200]},
                {tag: "auto, first point", x: 0, auto: true, axis: [0, 0], kept: [0, 0]},
                {tag: "no auto, short chart", x: 20, auto: false, axis: [0, 20], kept: [0, 20]},
                {tag: "no auto, long chart", x: 200, auto: false, axis: [0, 60], kept: [0, 60]},
                {tag: "all", x: 200, auto: false, all: true, axis: [0, 201], kept: [0, 60]},
                {tag: "auto and all", x: 200, auto: true, all: true, axis: [140, 201], kept: [140, 200]}
            ];
        }

        function test_follow(data) {
            view.lastX = 201;
            view.follow(data.x, data.auto, data.all ?? false);
            compare([view.axis.min, view.axis.max], data.axis);
            compare([Chart.prevXMin, Chart.prevXMax], data.kept);
            compare(Chart.shownSecs, 60);
        }

        function test_follow_keeps_the_zoomed_width() {
            look(10, 20);
            view.follow(200, true, false);
            verifyView(190, 200, 10);
        }

        // 600 pixels show 60 s. The chart goes to 100 s.
        function test_pan_data() {
            return [
                {tag: "to the left", way: -100, from: 20, to: 30},
                {tag: "to the right", way: 100, from: 20, to: 10},
                {tag: "to the first second", way: 200, from: 20, to: 0},
                {tag: "beyond the first second", way: 201, from: 20, to: 20},
                {tag: "to the last second", way: -200, from: 20, to: 40},
                {tag: "beyond the last second", way: -201, from: 20, to: 20}
            ];
        }

        function test_pan(data) {
            look(data.from, data.from + 60);
            view.startPan();
            compare(view.offsetX, data.from);
            view.pan(data.way);
            verifyView(data.to, data.to + 60, 60);
        }

        function test_pan_has_no_effect_beyond_the_edge_and_goes_on_within() {
            look(20, 80);
            view.startPan();
            for (const [way, min] of [[50, 15], [150, 5], [250, 5], [900, 5], [190, 1], [-100, 30]]) {
                view.pan(way);
                verifyView(min, min + 60, 60);
            }
        }

        function test_chart_shorter_than_shown_secs_cannot_be_panned() {
            look(0, 60, 59);
            view.startPan();
            for (const way of [-300, -1, 0, 1, 300]) {
                view.pan(way);
                verifyView(0, 60, 60);
            }
        }

        // Two pixels of each finger are 0.4 s: double speed.
        function test_zoom_data() {
            return [
                {tag: "in", left: 50, right: -50, from: [20, 80], to: [10, 90]},
                {tag: "together", left: -50, right: 50, from: [20, 80], to: [30, 70]},
                {tag: "left finger alone", left: -50, right: 0, from: [20, 80], to: [30, 80]},
                {tag: "right finger alone", left: 0, right: 50, from: [20, 80], to: [20, 70]},
                {tag: "both to the right", left: 50, right: 50, from: [20, 80], to: [10, 70]},
                {tag: "left edge", left: 200, right: 0, from: [20, 80], to: [0, 100]},
                {tag: "left edge shifts", left: 150, right: 50, from: [20, 80], to: [0, 80]},
                {tag: "right edge", left: 0, right: -200, from: [20, 80], to: [20, 100]},
                {tag: "whole chart", left: 500, right: -500, from: [20, 80], to: [0, 100]},
                {tag: "just over 0.1 s", left: -300, right: 0, from: [20, 80.11], to: [80, 80.11], plot: 601.1},
                {tag: "under 0.1 s", left: -300, right: 0, from: [20, 80.09], to: [20, 80.09], plot: 600.9},
                {tag: "fingers pass each other", left: -400, right: 400, from: [20, 80], to: [20, 80]}
            ];
        }

        function test_zoom(data) {
            view.plotWidth = data.plot ?? 600;
            look(...data.from);
            view.zoom(data.left, data.right);
            verifyView(data.to[0], data.to[1], data.to[1] - data.to[0]);
        }

        function test_zoom_stops_at_a_tenth_of_a_second() {
            look(20, 80);
            for (let step = 0; step < 100; ++step) {
                view.zoom(-10, 10);
            }
            const secs = view.axis.max - view.axis.min;
            verify(secs >= 0.1 && secs < 0.11, secs);
            verifyView(view.axis.min, view.axis.max, secs);
        }

        function test_wheel_data() {
            return [
                {tag: "nothing", x: 0, y: 0, to: [20, 80]},
                {tag: "up", x: 0, y: 100, to: [30, 70]},
                {tag: "down", x: 0, y: -100, to: [10, 90]},
                {tag: "down at the left edge", x: 0, y: -210, to: [0, 100]},
                {tag: "too near", x: 0, y: 300, to: [20, 80]},
                {tag: "too near leaves the whole handler", x: 50, y: 300, to: [20, 80]},
                {tag: "left", x: 50, y: 0, to: [10, 70], secs: 60},
                {tag: "right", x: -50, y: 0, to: [30, 90], secs: 60},
                {tag: "beyond the first second", x: 150, y: 0, to: [0, 50], secs: 60},
                {tag: "beyond the last second", x: -150, y: 0, to: [50, 100], secs: 60},
                {tag: "beyond all", x: -500, y: 0, to: [20, 80], secs: 60},
                {tag: "both", x: 50, y: 100, to: [20, 60], secs: 40}
            ];
        }

        function test_wheel(data) {
            look(20, 80);
            view.wheel(data.x, data.y);
            verifyView(data.to[0], data.to[1], data.secs ?? data.to[1] - data.to[0]);
        }

        function test_wheel_sets_both_ends_at_once() {
            look(20, 80);
            rangeSpy.target = view.axis;
            rangeSpy.clear();
            view.wheel(-50, 0);
            compare(rangeSpy.count, 1);
            rangeSpy.target = null;
        }

        function test_jump_far_ahead_keeps_the_ends_in_order() {
            look(0, 60, 1000);
            rangeSpy.target = view.axis;
            rangeSpy.clear();
            view.follow(1000, true, false);
            verifyView(940, 1000, 60);
            verify(Array.from(rangeSpy.signalArguments).every(([min, max]) => min < max));
            rangeSpy.target = null;
        }

        function test_show_all_data() {
            return [
                {tag: "no data", lastX: 0, max: 10},
                {tag: "short", lastX: 9.9, max: 10},
                {tag: "long", lastX: 3600, max: 3600}
            ];
        }

        function test_show_all(data) {
            look(5, 65, data.lastX);
            view.showAll();
            compare([view.axis.min, view.axis.max], [0, data.max]);
            compare([Chart.prevXMin, Chart.prevXMax, Chart.shownSecs], [5, 65, 60]);
            view.showPrevious();
            verifyView(5, 65, 60);
        }

        function test_plot_without_width_data() {
            return [
                {tag: "pan", use: () => { view.startPan(); view.pan(0); view.pan(5); }},
                {tag: "zoom", use: () => { view.zoom(0, 0); view.zoom(5, -5); view.zoom(-5, 5); }}
            ];
        }

        function test_plot_without_width(data) {
            look(20, 80);
            view.plotWidth = 0;
            data.use();
            verify(isFinite(view.axis.min) && view.axis.min <= view.axis.max);
            verify(isFinite(Chart.prevXMin) && isFinite(Chart.prevXMax) && isFinite(Chart.shownSecs));
        }
    }
}
