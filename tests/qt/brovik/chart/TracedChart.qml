// A chart with one line that is traced, and the same chart with a series that the test fills itself.
import QtCharts
import QtQuick
import brovik.chart

Row {
    id: root

    required property ChartLine line
    required property int kind
    property alias trace: trace
    property alias drawn: drawn
    property alias reference: reference
    property alias time: time
    property alias value: value

    ChartView {
        width: 600
        height: 400
        antialiasing: true
        legend.visible: false

        ValueAxis {
            id: time

            max: 60
        }

        ValueAxis {
            id: value

            max: root.kind === TraceKinds.Measured ? trace.maxY : 14
        }

        LineSeries {
            id: drawn

            axisX: time
            axisY: value
            color: "green"

            Component.onCompleted: root.line.registerQmlLine(this, value)
        }

        ChartTrace {
            id: trace

            line: root.line
            kind: root.kind
        }
    }

    ChartView {
        width: 600
        height: 400
        antialiasing: true
        legend.visible: false

        ValueAxis {
            id: referenceTime

            min: time.min
            max: time.max
        }

        ValueAxis {
            id: referenceValue

            min: value.min
            max: value.max
        }

        LineSeries {
            id: reference

            axisX: referenceTime
            axisY: referenceValue
            color: "green"
        }
    }
}
