// A chart of fifteen lines as the chart page shows it, outputs and steps visible as well.
import QtCharts
import QtQuick
import brovik.chart

Window {
    id: root

    property alias timeMin: axisTime.min
    property alias timeMax: axisTime.max
    property bool autoScroll: true

    function follow(xLast: real) {
        const xMin = root.autoScroll ? Math.max(0, xLast - Chart.shownSecs) : 0;
        axisTime.min = Chart.prevXMin = xMin;
        axisTime.max = Chart.prevXMax = xLast;
    }

    width: 800
    height: 1200
    visible: true

    ValueAxis {
        id: axisTime

        max: 60
    }

    ValueAxis {
        id: axisP

        max: traceP.maxY
    }

    ValueAxis {
        id: axisLw

        max: traceLw.maxY
    }

    ValueAxis {
        id: axisValves

        max: 13
    }

    ValueAxis {
        id: axisSteps

        max: 13
    }

    ChartView {
        id: chart

        anchors.fill: parent
        antialiasing: true
        legend.visible: false

        LineSeries {
            axisX: axisTime
            axisY: axisP

            Component.onCompleted: Chart.p.registerQmlLine(this, axisP)
        }

        LineSeries {
            axisX: axisTime
            axisY: axisLw

            Component.onCompleted: Chart.lw.registerQmlLine(this, axisLw)
        }

        LineSeries {
            axisX: axisTime
            axisYRight: axisSteps

            Component.onCompleted: Chart.step.registerQmlLine(this, axisSteps)
        }
    }

    ChartTrace {
        id: traceP

        kind: ChartTrace.Measured
        line: Chart.p

        onPointsDrawn: xLast => root.follow(xLast)
    }

    ChartTrace {
        id: traceLw

        kind: ChartTrace.Measured
        line: Chart.lw

        onPointsDrawn: xLast => root.follow(xLast)
    }

    ChartTrace {
        kind: ChartTrace.Step
        line: Chart.step
    }

    Instantiator {
        model: [Chart.co2, Chart.heiss, Chart.kalt, Chart.kanal, Chart.kreis, Chart.lIn, Chart.lOut, Chart.luft, Chart.pumpe, Chart.sIn, Chart.sOut, Chart.steam]

        delegate: ChartTrace {
            required property ChartLine modelData

            kind: ChartTrace.Actuator
            line: modelData

            Component.onCompleted: modelData.registerQmlLine(chart.createSeries(ChartView.SeriesTypeLine, modelData.name, axisTime, axisValves), axisValves)
        }
    }
}
