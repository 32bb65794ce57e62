// Pans the chart with one finger, zooms it with two, and does both with the wheel.
import QtQuick

import brovik.chart

MultiPointTouchArea {
    id: root

    required property ChartTimeWindow timeWindow
    // A one-finger pan is running.
    property bool handleXActive: false
    // Number of fingers at the last update.
    property int prevHandledPoints: 0

    minimumTouchPoints: 0
    maximumTouchPoints: 2
    mouseEnabled: true

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.NoButton
        propagateComposedEvents: true

        onWheel: wheel => {
            root.timeWindow.wheel(wheel.pixelDelta.x, wheel.pixelDelta.y);
            wheel.accepted = true;
        }
    }

    QtObject {
        id: privat

        // Where each finger was at the last update. A touch point itself keeps its last step while it rests.
        // Untyped: QML has no name for maps.
        property var lastX: new Map()

        function update(points: var) {
            if (points.length !== 1) {
                root.handleXActive = false;
            }
            // The first update after a change only sets the new base.
            if (points.length !== root.prevHandledPoints) {
                root.prevHandledPoints = points.length;
            } else if (points.length === 1) {
                privat.pan(points[0]);
            } else if (points.length === 2) {
                privat.zoom(...points);
            }
            privat.lastX = new Map(Array.from(points, point => [point.pointId, point.x]));
        }

        function pan(point: var) {
            if (!root.handleXActive) {
                root.handleXActive = true;
                root.timeWindow.startPan();
            }
            root.timeWindow.pan(point.x - point.startX);
        }

        function zoom(one: var, other: var) {
            const [left, right] = one.x <= other.x ? [one, other] : [other, one];
            root.timeWindow.zoom(left.x - privat.lastX.get(left.pointId), right.x - privat.lastX.get(right.pointId));
        }

        // A touch that ends without a release, such as one that the area is disabled under.
        function reset() {
            root.handleXActive = false;
            root.prevHandledPoints = 0;
        }
    }

    onTouchUpdated: touchPoints => privat.update(touchPoints)
    onCanceled: privat.reset()
    onEnabledChanged: privat.reset()
}
