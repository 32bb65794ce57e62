// The simulated hardware, for a developer: its inputs to play with, its outputs to watch.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.actuator
import brovik.base
import brovik.config
import brovik.sensor
import brovik.simulator

ApplicationWindow {
    id: root

    // A window of its own inherits neither theme nor font.
    Material.theme: Common.theme
    Material.accent: Common.accentColor
    font.capitalization: Font.MixedCase
    title: "Simulator"
    visible: Simulator.enabled
    minimumWidth: (layout.implicitWidth + privat.margins) * layout.scale
    minimumHeight: layout.implicitHeight * layout.scale
    width: minimumWidth
    height: minimumHeight

    RowLayout {
        id: layout

        anchors {
            fill: parent
            leftMargin: privat.margins / 2
            rightMargin: privat.margins / 2
        }

        // Takes the room that the column has after scaling.
        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true
            implicitWidth: inputs.implicitWidth * inputs.scale
            implicitHeight: inputs.implicitHeight * inputs.scale

            ColumnLayout {
                id: inputs

                objectName: "inputs"

                width: parent.width / scale
                height: parent.height / scale
                spacing: 0
                scale: privat.drawnScale(Simulator.simScaleFactor)
                transformOrigin: Item.TopLeft

                SimulatorSlider {
                    text: `A-In 0 (${value} %)`
                    stored: Simulator.simAIn0
                    to: 100
                    stepSize: 1

                    onMoved: value => Simulator.toPy(Simulator.SimAIn0, value)
                }

                SimulatorSlider {
                    text: `A-In 1 (${value} %)`
                    stored: Simulator.simAIn1
                    to: 100
                    stepSize: 1

                    onMoved: value => Simulator.toPy(Simulator.SimAIn1, value)
                }

                SimulatorSlider {
                    text: `Druck (${value.toFixed(2)} bar)`
                    stored: Sensor.druck
                    to: 5
                    stepSize: 0.1

                    onMoved: value => Sensor.requestValueChange(SensorEnums.SensorP, value)
                }

                SimulatorSlider {
                    text: `Leitwert (${value.toFixed(2)} mS/cm)`
                    stored: Sensor.leitwert
                    to: 50
                    stepSize: 1 / Math.pow(10, lwDecimalPlaces.value)

                    onMoved: value => Sensor.requestValueChange(SensorEnums.SensorLw, value)

                    SpinBox {
                        id: lwDecimalPlaces

                        objectName: "lwDecimalPlaces"

                        Layout.preferredWidth: privat.decimalPlacesWidth
                        Accessible.name: ToolTip.text
                        ToolTip.text: "Nachkommastellen (Präzision) des Sliders"
                        ToolTip.visible: hovered
                        hoverEnabled: true
                        wheelEnabled: true
                        from: 0
                        to: 2
                    }
                }

                SimulatorSlider {
                    text: `Drucksteigerungsrate ${value.toFixed(2)} bar/s (Dichtheitsprobe)`
                    stored: Simulator.pIncRate
                    to: 0.5
                    stepSize: 0.01

                    onMoved: value => Simulator.changePIncRate(value)
                }

                SimulatorSlider {
                    text: `Druckabfallrate ${value.toFixed(2)} bar/s (Dichtheitsprobe)`
                    stored: Simulator.pDecRate
                    to: 0.5
                    stepSize: 0.01

                    onMoved: value => Simulator.changePDecRate(value)
                }

                SimulatorPushButton {
                    Material.background: Material.Green
                    text: "Taster grün"
                    input: SensorEnums.StartBtn
                }

                SimulatorPushButton {
                    Material.background: Material.Red
                    text: "Taster rot"
                    input: SensorEnums.StopBtn
                }

                Item {
                    Layout.fillHeight: true
                }
            }
        }

        ColumnLayout {
            Label {
                visible: !Config.hasLevelSwitch
                text: "<i>Der Füllstandsschalter ist in der Config deaktiviert</i>"
            }

            MyGreenCheckButton {
                objectName: "level"

                text: "Schwimmer"
                active: Sensor.level.state

                onClicked: Sensor.requestValueChange(SensorEnums.SensorLevel, null)
            }

            Repeater {
                model: [Actuator.mvLaugeIn, Actuator.mvSaureIn, Actuator.mvKalt, Actuator.mvHeiss, Actuator.mvKreis, Actuator.mvSaureOut, Actuator.mvLaugeOut, Actuator.mvLuft, Actuator.mvCo2, Actuator.mvKanal, Actuator.pumpe, Actuator.heat1, Actuator.mvSteam]

                SimuIndicator {
                    required property DOut modelData

                    out: modelData
                }
            }

            Item {
                Layout.fillHeight: true
            }
        }
    }

    QtObject {
        id: privat

        readonly property int margins: 10
        readonly property int decimalPlacesWidth: 150
        readonly property real smallestScale: 0.25
        readonly property real largestScale: 4

        // The backend may write any number. Nothing can be read or drawn beyond these limits.
        function drawnScale(factor: real): real {
            return isNaN(factor) ? Simulator.simScaleFactorDefault : Math.max(privat.smallestScale, Math.min(factor, privat.largestScale));
        }
    }
}
