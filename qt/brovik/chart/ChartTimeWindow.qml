// The stretch of time that the chart shows. It follows the points, and the operator pans and zooms it.
import QtQuick
import QtCharts

import brovik.chart

QtObject {
    id: root

    required property ValueAxis axis
    // Highest time of the chart, seconds.
    required property real lastX
    // Width of the plot area, pixels.
    required property real plotWidth
    // `axis.min` at the start of the pan.
    property real offsetX

    // Shows the points up to `xLast`: the last ones, or without `autoScroll` the first ones.
    function follow(xLast: real, autoScroll: bool, showAll: bool) {
        const xMin = autoScroll ? Math.max(0, xLast - Chart.shownSecs) : 0;
        const xMax = autoScroll ? xLast : Math.min(xLast, Chart.shownSecs);
        privat.store(xMin, xMax);
        privat.show(xMin, showAll ? root.lastX : xMax);
    }

    function startPan() {
        root.offsetX = root.axis.min;
    }

    // `distance`: way of the finger since the start of its touch, pixels.
    function pan(distance: real) {
        const xMin = root.offsetX - distance * privat.secsPerPixel;
        const xMax = xMin + Chart.shownSecs;
        if (xMin >= 0 && xMax <= root.lastX) {
            privat.store(xMin, xMax);
            privat.show(xMin, xMax);
        }
    }

    // `left`, `right`: way of each finger since the last step, pixels. Each moves its own edge at double speed.
    function zoom(left: real, right: real) {
        const ratio = privat.secsPerPixel * privat.zoomSpeed;
        privat.zoomTo(root.axis.min - left * ratio, root.axis.max - right * ratio);
    }

    // Zooms by the vertical and shifts by the horizontal turn of the wheel, pixels.
    function wheel(deltaX: real, deltaY: real) {
        const diffY = deltaY / privat.wheelPixelsPerSecZoomed;
        if (deltaY !== 0 && !privat.zoomTo(root.axis.min + diffY, root.axis.max - diffY)) {
            return;
        }
        if (deltaX !== 0) {
            privat.shift(deltaX / privat.wheelPixelsPerSecShifted);
        }
    }

    function showAll() {
        privat.show(0, Math.max(privat.leastSecsOfAll, root.lastX));
    }

    // Back to what was shown before showAll().
    function showPrevious() {
        privat.show(Chart.prevXMin, Chart.prevXMax);
    }

    readonly property QtObject inner: QtObject {
        id: privat

        readonly property real secsPerPixel: (root.axis.max - root.axis.min) / root.plotWidth
        readonly property real zoomSpeed: 2
        readonly property real wheelPixelsPerSecZoomed: 10
        readonly property real wheelPixelsPerSecShifted: 5
        readonly property real leastSecs: 0.1
        readonly property real leastSecsOfAll: 10

        // Shows this stretch within the ends of the chart. False, and nothing changed, if it would be too short.
        function zoomTo(xMin: real, xMax: real): bool {
            const min = Math.max(xMin, 0);
            const max = Math.min(xMax + min - xMin, root.lastX);
            // Also false if the ends are NaN: the plot has no width yet.
            if (!(max - min >= privat.leastSecs)) {
                return false;
            }
            Chart.shownSecs = max - min;
            privat.store(min, max);
            privat.show(min, max);
            return true;
        }

        // The width may change at the ends of the chart.
        function shift(secs: real) {
            const xMin = root.axis.min - secs;
            const min = Math.max(xMin, 0);
            const max = Math.min(xMin + Chart.shownSecs, root.lastX);
            if (min < max) {
                privat.store(min, max);
                privat.show(min, max);
            }
        }

        function store(xMin: real, xMax: real) {
            Chart.prevXMin = xMin;
            Chart.prevXMax = xMax;
        }

        function show(xMin: real, xMax: real) {
            AxisRange.set(root.axis, xMin, xMax);
        }
    }
}
