// An axis of names.
import QtQuick
import QtCharts

import brovik.base
import brovik.chart

CategoryAxis {
    id: root

    required property string title
    // Decides what shows of the axis.
    required property ChartsOptionGroup group
    // Texts from outside, the first at the height 1.
    required property var names

    function setCategoriesLabels(labels: var, shortLabels: bool) {
        Array.from(root.categoriesLabels).forEach(label => root.remove(label));
        root.max = labels.length;
        const used = new Set();
        labels.forEach((label, index) => root.append(shortLabels ? String(index + 1) : privat.distinct(label, used), index + 1));
    }

    min: 0
    max: 0
    visible: root.group.showLine && root.group.showAxis
    color: ChartColors.axisColor
    gridLineColor: ChartColors.gridColor
    gridVisible: root.group.showGrid
    labelsColor: ChartColors.labelColor
    labelsPosition: CategoryAxis.AxisLabelsPositionOnValue
    labelsVisible: root.group.showLabels
    titleText: ChartColors.axisTitle(root.title)
    titleVisible: root.group.showTitle
    truncateLabels: false

    QtObject {
        id: privat

        readonly property bool shortLabels: root.group.shortLabels
        readonly property string invisible: "\u200b"

        // The text of the label. An axis refuses one that it has already.
        function distinct(label: string, used: var): string {
            let text = Common.escaped(label);
            while (used.has(text)) {
                text += privat.invisible;
            }
            used.add(text);
            return text;
        }

        function relabel() {
            root.setCategoriesLabels(root.names, privat.shortLabels);
        }

        onShortLabelsChanged: privat.relabel()
    }

    onNamesChanged: privat.relabel()
    Component.onCompleted: privat.relabel()
}
