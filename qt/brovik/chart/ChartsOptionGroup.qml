// The switches of one kind of line.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.chart
import brovik.components

BrovikBox {
    id: root

    property string title
    // Background of the heading.
    property color color: ChartColors.headingColor
    property alias showLine: lineSwitch.checked
    property alias showAxis: axisSwitch.checked
    property alias showTitle: titleSwitch.checked
    property alias showGrid: gridSwitch.checked
    property alias showLabels: labelsSwitch.checked
    property alias shortLabels: shortLabelsSwitch.checked
    // The switches of the axis are unfolded.
    property bool showExtended
    // The axis has texts for labels, which numbers can stand for.
    property bool shortLabelsEnabled

    Layout.alignment: Qt.AlignTop

    Label {
        objectName: "heading"

        Layout.fillWidth: true
        padding: privat.headingPadding
        color: Common.fgOnBar
        text: root.title
        wrapMode: Text.Wrap

        background: Rectangle {
            color: root.color
        }
    }

    ChartSwitch {
        id: lineSwitch

        topPadding: 0
        bottomPadding: 0
        text: "anzeigen"
    }

    Item {
        objectName: "extended"

        Layout.fillWidth: true
        Layout.preferredHeight: root.showExtended ? extended.implicitHeight : 0
        clip: true
        // Nothing that is folded away takes the focus.
        enabled: root.showExtended

        Behavior on Layout.preferredHeight {
            NumberAnimation {
                duration: privat.unfoldingTime
            }
        }

        ColumnLayout {
            id: extended

            width: parent.width

            ChartSwitch {
                id: axisSwitch

                topPadding: 0
                bottomPadding: 0
                enabled: root.showLine
                checked: true
                text: "zeige Achse"
            }

            ColumnLayout {
                enabled: root.showLine

                ChartSwitch {
                    id: titleSwitch

                    topPadding: 0
                    bottomPadding: 0
                    checked: true
                    text: "zeige Titel"
                }

                ChartSwitch {
                    id: gridSwitch

                    topPadding: 0
                    bottomPadding: 0
                    text: "zeige Grid"
                }

                ChartSwitch {
                    id: labelsSwitch

                    topPadding: 0
                    bottomPadding: 0
                    checked: true
                    text: "zeige Labels"
                }

                ChartSwitch {
                    id: shortLabelsSwitch

                    topPadding: 0
                    bottomPadding: 0
                    visible: root.shortLabelsEnabled
                    enabled: root.shortLabelsEnabled && root.showLabels
                    text: "kurze Labels"
                }
            }
        }
    }

    QtObject {
        id: privat

        readonly property int headingPadding: 3
        // Milliseconds.
        readonly property int unfoldingTime: 300
    }
}
