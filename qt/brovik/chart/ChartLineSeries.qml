// One line of the chart. Its trace draws it.
import QtQuick
import QtCharts

import brovik.chart

LineSeries {
    id: root

    required property ChartLine line
    required property int kind
    required property ChartsOptionGroup group
    readonly property ChartTrace trace: ChartTrace {
        line: root.line
        kind: root.kind
    }

    visible: root.group.showLine

    Component.onCompleted: root.line.registerQmlLine(root, root.axisY ?? root.axisYRight)
}
