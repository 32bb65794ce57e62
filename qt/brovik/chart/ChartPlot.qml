// The drawing of the chart: axes and lines.
import QtQuick
import QtQuick.Controls.Material
import QtCharts

import brovik.base
import brovik.chart

ChartView {
    id: root

    required property ChartsOptionGroup optsLw
    required property ChartsOptionGroup optsP
    required property ChartsOptionGroup optsValves
    required property ChartsOptionGroup optsSteps
    readonly property alias axisTime: axisTime
    readonly property alias lineP: lineP
    readonly property alias lineLw: lineLw
    readonly property alias lineStep: lineStep
    readonly property alias lineLIn: lineLIn
    // Highest time of the chart, seconds; 0 without points.
    readonly property real lastX: lineP.trace.lastX

    // A measured line was drawn up to there.
    signal pointsDrawn(xLast: real)

    antialiasing: true
    backgroundColor: "transparent"
    legend.visible: false
    margins {
        top: Common.spacing
        left: Common.spacing
        right: Common.spacing
        bottom: Common.spacing
    }
    // The chart takes its title for rich text, and lays it out again and again to find what fits.
    title: Texts.escaped(Texts.shortened(Chart.currentName))
    titleColor: ChartColors.labelColor

    ChartValueAxis {
        id: axisTime

        objectName: "axisTime"

        title: "Zeit in Sekunden"

        // No bindings: they would lay the axes out once for each end.
        Component.onCompleted: AxisRange.set(axisTime, Chart.prevXMin, Chart.prevXMax)
    }

    ChartCategoryAxis {
        id: axisValves

        objectName: "axisValves"

        title: "Aktoren"
        group: root.optsValves
        names: Chart.actuatorNames
        room: privat.roomBeside(axisSteps)
        rowHeight: privat.leastPlotHeight / names.length
    }

    ChartCategoryAxis {
        id: axisSteps

        objectName: "axisSteps"

        title: "Schritt"
        group: root.optsSteps
        names: Chart.stepNames
        room: privat.roomBeside(axisValves)
        rowHeight: privat.leastPlotHeight / names.length
    }

    ChartValueAxis {
        id: axisP

        property real maxY: lineP.trace.maxY

        objectName: "axisP"

        title: "Druck in bar"
        group: root.optsP
        min: 0
        max: maxY
    }

    ChartValueAxis {
        id: axisLw

        property real maxY: lineLw.trace.maxY

        objectName: "axisLw"

        title: "Leitwert in mS/cm"
        group: root.optsLw
        min: 0
        max: maxY
    }

    ChartLineSeries {
        id: lineP

        objectName: "lineP"

        line: Chart.p
        kind: TraceKinds.Measured
        group: root.optsP
        axisX: axisTime
        axisY: axisP
        color: root.Material.color(Material.Green)
        trace.onPointsDrawn: xLast => root.pointsDrawn(xLast)
    }

    ChartLineSeries {
        id: lineLw

        objectName: "lineLw"

        line: Chart.lw
        kind: TraceKinds.Measured
        group: root.optsLw
        axisX: axisTime
        axisY: axisLw
        color: root.Material.color(Material.Blue)
        trace.onPointsDrawn: xLast => root.pointsDrawn(xLast)
    }

    ChartLineSeries {
        id: lineStep

        objectName: "lineStep"

        line: Chart.step
        kind: TraceKinds.Step
        group: root.optsSteps
        axisX: axisTime
        axisYRight: axisSteps
        color: root.Material.color(Material.Red)
    }

    ChartLineSeries {
        id: lineLIn

        objectName: "lineLIn"

        line: Chart.lIn
        kind: TraceKinds.Actuator
        group: root.optsValves
        axisX: axisTime
        axisYRight: axisValves
        color: root.Material.color(Material.Amber)
    }

    ChartActuatorSeries { objectName: "lineSIn"; line: Chart.sIn; first: lineLIn }
    ChartActuatorSeries { objectName: "lineKalt"; line: Chart.kalt; first: lineLIn }
    ChartActuatorSeries { objectName: "lineHeiss"; line: Chart.heiss; first: lineLIn }
    ChartActuatorSeries { objectName: "lineKreis"; line: Chart.kreis; first: lineLIn }
    ChartActuatorSeries { objectName: "lineSOut"; line: Chart.sOut; first: lineLIn }
    ChartActuatorSeries { objectName: "lineLOut"; line: Chart.lOut; first: lineLIn }
    ChartActuatorSeries { objectName: "lineLuft"; line: Chart.luft; first: lineLIn }
    ChartActuatorSeries { objectName: "lineCo2"; line: Chart.co2; first: lineLIn }
    ChartActuatorSeries { objectName: "lineKanal"; line: Chart.kanal; first: lineLIn }
    ChartActuatorSeries { objectName: "linePumpe"; line: Chart.pumpe; first: lineLIn }
    ChartActuatorSeries { objectName: "lineSteam"; line: Chart.steam; first: lineLIn }

    QtObject {
        id: privat

        // The chart gives this part of its width to all y axes together, and each side as much as it has axes.
        readonly property real axesPart: 0.4
        // Title and time axis take the rest. The height of the plot itself depends on the labels: a binding loop.
        readonly property real leastPlotHeight: root.height * 0.7
        readonly property real roomOfEach: {
            const count = [axisP, axisLw, axisValves, axisSteps].filter(axis => axis.visible).length;
            return Math.floor(privat.axesPart * (root.width - root.margins.left - root.margins.right) / count);
        }

        // How wide an axis on the right may be: what the other one on that side does not need is free.
        function roomBeside(other: ChartCategoryAxis): real {
            return other.visible ? Math.max(privat.roomOfEach, 2 * privat.roomOfEach - other.wantedWidth) : privat.roomOfEach;
        }
    }

    Component.onCompleted: {
        for (const axis of [axisTime, axisP, axisLw, axisValves, axisSteps]) {
            AxisLines.cutSteep(axis);
        }
    }
}
