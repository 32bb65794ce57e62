// An axis of numbers.
import QtQuick
import QtCharts

import brovik.chart

ValueAxis {
    id: root

    required property string title
    // Decides what shows of the axis; without one all of it does.
    property ChartsOptionGroup group

    visible: !root.group || root.group.showLine && root.group.showAxis
    color: ChartColors.axisColor
    gridLineColor: ChartColors.gridColor
    gridVisible: root.group?.showGrid ?? true
    labelsColor: ChartColors.labelColor
    labelsVisible: root.group?.showLabels ?? true
    titleText: ChartColors.axisTitle(root.title)
    titleVisible: root.group?.showTitle ?? true
}
