// The line of an actuator: in the look and on the axes of the first of them.
import QtQuick

import brovik.chart

ChartLineSeries {
    id: root

    required property ChartLineSeries first

    kind: root.first.kind
    group: root.first.group
    axisX: root.first.axisX
    axisYRight: root.first.axisYRight
    color: root.first.color
}
