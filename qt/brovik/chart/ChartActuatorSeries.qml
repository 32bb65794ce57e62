// The line of an actuator, with the colour and on the axes of the line of the first actuator.
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
