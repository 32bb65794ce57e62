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
    // Texts from outside, the first at the height 1. Untyped: the linter does not take a QStringList for a list of texts.
    required property var names
    // Pixels that the axis may be wide, and each of its labels high. Names that need more are wrapped and cut off.
    property real room: Infinity
    property real rowHeight: 0
    // Pixels that the axis would be wide with whole names.
    readonly property real wantedWidth: privat.frame + Math.max(0, ...Array.from(privat.wholeLabels).map(label => labelMetrics.advanceWidth(label)))

    function setCategoriesLabels(labels: var, shortLabels: bool) {
        Array.from(root.categoriesLabels).forEach(label => root.remove(label));
        root.max = labels.length;
        const used = Object.create(null);
        labels.slice(0, privat.mostLabels).forEach((label, index) => root.append(shortLabels ? String(index + 1) : privat.distinct(label, used), index + 1));
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

    FontMetrics {
        id: labelMetrics

        font: root.labelsFont
    }

    FontMetrics {
        id: titleMetrics

        font: root.titleFont
    }

    QtObject {
        id: privat

        // Between and beside tick, label and title.
        readonly property real gaps: 12
        readonly property real frame: privat.gaps + (root.titleVisible ? titleMetrics.height : 0)
        readonly property real labelRoom: root.visible ? root.room - privat.frame : Infinity
        readonly property int mostLines: Math.max(1, Math.floor(root.rowHeight / labelMetrics.lineSpacing))
        readonly property bool shortLabels: root.group.shortLabels
        readonly property list<string> wholeLabels: Array.from(root.names, (name, index) => privat.shortLabels ? String(index + 1) : name)
        readonly property list<string> labels: Array.from(privat.wholeLabels).map(label => privat.fitted(label))
        // Unlike the list, the same as before if its texts are.
        readonly property string labelsKey: JSON.stringify(privat.labels)
        readonly property string invisible: "\u200b"
        // No screen has room for more, and each costs time.
        readonly property int mostLabels: 500

        function fits(text: string): bool {
            return labelMetrics.advanceWidth(text) <= privat.labelRoom;
        }

        function fitted(label: string): string {
            if (privat.fits(label)) {
                return label;
            }
            const words = label.split(" ");
            const lines = [];
            while (words.length > 0 && lines.length < privat.mostLines - 1) {
                let line = words.shift();
                while (words.length > 0 && privat.fits(`${line} ${words[0]}`)) {
                    line += " " + words.shift();
                }
                lines.push(line);
            }
            lines.push(words.join(" "));
            return lines.filter(line => line).map(line => labelMetrics.elidedText(line, Text.ElideRight, privat.labelRoom)).join("\n");
        }

        // The text of the label. An axis refuses one that it has already. `used` tells how often each was asked for.
        function distinct(label: string, used: var): string {
            const escaped = Texts.escaped(label);
            let text = escaped;
            while (text in used) {
                text = escaped + privat.invisible.repeat(used[escaped]++);
            }
            used[text] = 1;
            return text;
        }

        function relabel() {
            root.setCategoriesLabels(privat.labels, privat.shortLabels);
        }

        onLabelsKeyChanged: privat.relabel()
    }

    Component.onCompleted: privat.relabel()
}
