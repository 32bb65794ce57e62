// The state of one bath, its limits, and the start of its conductivity test.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.auto
import brovik.base
import brovik.components
import brovik.gui

BrovikBox {
    id: root

    property real lwActualMax
    // "Säure" or "Lauge".
    property string what
    property string unit: "mS/cm"
    property bool active: false
    property string product
    // What is stored, in `unit`; the spin boxes show it as far as their ranges let them.
    property int minimum
    property int setpoint
    // What the name of the product needs, and what it gets at least: boxes in a row keep their rows aligned.
    readonly property alias productHeight: productLabel.implicitHeight
    property real minimumProductHeight: 0
    property alias sbMinimum: sbMinimum
    property alias sbSetpoint: sbSetpoint
    property alias btnStart: btnStart

    Label {
        Layout.fillWidth: true
        horizontalAlignment: Text.AlignHCenter
        font.bold: true
        font.pointSize: Texts.drawableSize(Gui.fSizeL)
        text: root.what
    }

    Label {
        id: productLabel

        Layout.fillWidth: true
        Layout.preferredHeight: Math.max(implicitHeight, root.minimumProductHeight)
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        text: Texts.shortened(root.product)
    }

    BrovikBoxSeparatorLine {}

    RowLayout {
        Item {
            Layout.fillWidth: true
        }

        GridLayout {
            columns: 2
            columnSpacing: 0

            Label {
                Layout.alignment: Qt.AlignRight
                font.pointSize: privat.valueSize
                text: "Aktueller Höchstwert: "
            }
            Label {
                font.pointSize: privat.valueSize
                text: `${root.lwActualMax.toFixed(2)} ${root.unit}`
            }
            Label {
                Layout.alignment: Qt.AlignRight
                font.pointSize: privat.valueSize
                text: `Sollwert ${root.what}: `
            }
            Label {
                font.pointSize: privat.valueSize
                text: `${sbSetpoint.value} ${root.unit}`
            }
            Label {
                Layout.alignment: Qt.AlignRight
                font.pointSize: privat.valueSize
                text: `Mindestwert ${root.what}: `
            }
            Label {
                font.pointSize: privat.valueSize
                text: `${sbMinimum.value} ${root.unit}`
            }
        }

        Item {
            Layout.fillWidth: true
        }
    }

    BrovikBoxSeparatorLine {}

    GridLayout {
        columns: 2
        columnSpacing: Common.spacing

        Label {
            Layout.alignment: Qt.AlignHCenter
            text: "Minimum"
        }

        Label {
            Layout.alignment: Qt.AlignHCenter
            text: "Sollwert"
        }

        MyFloatingPointSpinBox {
            id: sbMinimum

            Layout.fillWidth: true
            Accessible.name: `Minimum ${root.what}`
            enabled: !Auto_.active
            precision: 0
            editable: true

            MyStoredNumber {
                spinBox: sbMinimum
                stored: root.minimum
            }
        }

        MyFloatingPointSpinBox {
            id: sbSetpoint

            Layout.fillWidth: true
            Accessible.name: `Sollwert ${root.what}`
            enabled: !Auto_.active
            precision: 0
            editable: true
            from: sbMinimum.value + 1

            MyStoredNumber {
                spinBox: sbSetpoint
                stored: root.setpoint
            }
        }
    }

    BrovikBoxSeparatorLine {}

    BrovikDelayButton {
        id: btnStart

        enabled: false
        font.pointSize: privat.buttonSize
        delay: 1000
        text: `Überprüfung ${!root.active ? "starten" : Auto_.lwSpReached ? "abschließen" : "abbrechen"}`
    }

    TextMetrics {
        id: widestValue

        font.pointSize: Texts.drawableSize(Gui.fSizeS)
        text: `Aktueller Höchstwert: 000.00 ${root.unit}`
    }

    TextMetrics {
        id: widestButton

        font.pointSize: Texts.drawableSize(Gui.fSizeM)
        font.bold: true
        text: "Überprüfung abschließen"
    }

    QtObject {
        id: privat

        readonly property real room: root.width - 2 * root.margins
        // The same for every value and button text, so that they do not jump.
        readonly property real valueSize: Texts.fittingSize(widestValue, privat.room)
        readonly property real buttonSize: Texts.fittingSize(widestButton, privat.room - btnStart.leftPadding - btnStart.rightPadding)
    }
}
