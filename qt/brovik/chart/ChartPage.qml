// The chart, what can be chosen of it, and how it is saved.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.auto
import brovik.base
import brovik.chart
import brovik.components
import brovik.gui

// Not itself a layout: in a StackLayout that would miss some changes of its content.
Item {
    id: root

    signal listRequested

    ColumnLayout {
        anchors.fill: parent
        spacing: Common.spacing

        RowLayout {
            Layout.fillWidth: true
            Layout.topMargin: privat.topMargin
            spacing: Common.spacing

            ChartsOptionGroup {
                id: optsLw

                objectName: "optsLw"

                title: "Leitwert"
                color: plot.lineLw.color
                showLine: true
                showExtended: btnShowExtended.checked
            }

            ChartsOptionGroup {
                id: optsP

                objectName: "optsP"

                title: "Druck"
                color: plot.lineP.color
                showLine: true
                showExtended: btnShowExtended.checked
            }

            ChartsOptionGroup {
                id: optsValves

                objectName: "optsValves"

                title: "Aktoren"
                color: plot.lineLIn.color
                showExtended: btnShowExtended.checked
                shortLabelsEnabled: true
            }

            ChartsOptionGroup {
                id: optsSteps

                objectName: "optsSteps"

                title: "Schritt"
                color: plot.lineStep.color
                showExtended: btnShowExtended.checked
                shortLabelsEnabled: true
                shortLabels: true
            }
        }

        ScrollView {
            objectName: "buttons"

            Layout.fillWidth: true
            ScrollBar.horizontal.policy: ScrollBar.AlwaysOff
            ScrollBar.vertical.policy: ScrollBar.AlwaysOff

            RowLayout {
                spacing: Common.spacing

                Button {
                    id: btnShowExtended

                    objectName: "btnShowExtended"

                    horizontalPadding: Common.spacing
                    checkable: true
                    text: checked ? "weniger Optionen" : "mehr Optionen"
                }

                Button {
                    objectName: "btnBrowser"

                    horizontalPadding: Common.spacing
                    enabled: Chart.metaDataList?.length > 0 && !Chart.active
                    text: "Chart-Browser"

                    onClicked: root.listRequested()
                }

                Button {
                    objectName: "btnSave"

                    horizontalPadding: Common.spacing
                    enabled: Chart.savable
                    text: "Speichern"

                    onClicked: privat.askForName()
                }

                MyGreenCheckButton {
                    objectName: "btnHand"

                    horizontalPadding: Common.spacing
                    enabled: !Auto_.active
                    active: enabled && Chart.active
                    text: active ? "Aufzeichnung beenden" : "Handbetrieb aufzeichnen"

                    onClicked: Chart.toPy(Chart.ChartHand, null)
                }
            }
        }

        ChartPlot {
            id: plot

            objectName: "chartView"

            Layout.fillWidth: true
            Layout.fillHeight: true
            optsLw: optsLw
            optsP: optsP
            optsValves: optsValves
            optsSteps: optsSteps
            // Only controls know the window's font.
            titleFont: swAutoScroll.font

            onPointsDrawn: xLast => timeWindow.follow(xLast, swAutoScroll.checked, swShowAll.checked)

            ChartTouchArea {
                objectName: "touchArea"

                anchors.fill: parent
                enabled: !swShowAll.checked
                timeWindow: timeWindow
            }
        }

        RowLayout {
            spacing: privat.switchSpacing

            ChartSwitch {
                id: swAutoScroll

                objectName: "swAutoScroll"

                Layout.fillWidth: false
                enabled: !swShowAll.checked
                checked: true
                text: "AutoScroll"
            }

            ChartSwitch {
                id: swShowAll

                objectName: "swShowAll"

                // Room for two lines, so that the chart does not change its height when the numbers grow.
                Layout.minimumHeight: topPadding + 2 * Math.ceil(showAllFont.height) + bottomPadding
                text: privat.showAllText

                onCheckedChanged: {
                    if (checked) {
                        swAutoScroll.checked = false;
                        timeWindow.showAll();
                    } else {
                        timeWindow.showPrevious();
                    }
                }
            }
        }
    }

    FontMetrics {
        id: showAllFont

        font: swShowAll.font
    }

    ChartTimeWindow {
        id: timeWindow

        axis: plot.axisTime
        lastX: plot.lastX
        plotWidth: plot.plotArea.width
    }

    PageReporter {
        page: root
        pageEnum: Gui.PageChart
    }

    QtObject {
        id: privat

        readonly property int topMargin: 10
        readonly property int switchSpacing: 15
        readonly property string lastXText: plot.lastX === 0 ? "--" : plot.lastX.toFixed(1)
        readonly property string showAllText: {
            if (swShowAll.checked) {
                return `Zeige weniger (aktuell ${privat.lastXText} Sekunden)`;
            }
            return `Zeige alles (aktuell ${Chart.prevXMin.toFixed(1)} bis ${Chart.prevXMax.toFixed(1)} von ${privat.lastXText} Sekunden)`;
        }

        function askForName() {
            const dialog = Dialogs.input("Chart Name", "Bitte einen Namen für das Chart eingeben:", {text: Chart.currentName});
            dialog.input.textEdited.connect(() => dialog.errorText = ChartsStuff.getNameErrorText(dialog.value));
            dialog.accepted.connect(txt => Chart.toPy(Chart.ChartSave, txt));
        }
    }
}
