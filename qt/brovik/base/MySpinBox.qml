// A labelled spin box on a surface of its own that tells when its value is out of range.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base

Rectangle {
    id: root

    property alias text: label.text
    property alias spinBox: spinBox
    property alias grid: grid
    property alias from: spinBox.from
    property alias to: spinBox.to
    property alias stepSize: spinBox.stepSize
    property alias editable: spinBox.editable
    property int value: 0
    property bool showError: true
    property string warnMsg
    property string infoMsg
    property bool wrap: false
    readonly property bool wrapped: grid.flow === GridLayout.TopToBottom
    readonly property bool shoulWrap: spinBox.implicitWidth + privat.labelWidth > privat.gridWidth
    readonly property bool valueError: root.value < root.from || root.value > root.to
    readonly property bool error: (root.showError && root.valueError) || root.warnMsg !== ""

    signal modified(val: int)
    signal downEnabledChanged(state: bool)
    signal upEnabledChanged(state: bool)

    implicitWidth: Math.max(column.implicitWidth, spinBox.implicitWidth) + Common.spacing
    implicitHeight: Math.max(column.implicitHeight, spinBox.implicitHeight)
    color: root.error ? Common.colorWarning : Common.bg1

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.leftMargin: Common.spacing

        Label {
            Layout.fillWidth: true
            Layout.topMargin: Common.spacing
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            textFormat: Text.StyledText
            text: privat.errorText
            visible: root.error
        }

        GridLayout {
            id: grid

            Layout.fillWidth: true
            columns: 2
            rows: 2
            columnSpacing: Common.spacing
            rowSpacing: Common.spacing
            flow: root.shoulWrap || root.wrap ? GridLayout.TopToBottom : GridLayout.LeftToRight

            Label {
                id: label

                Layout.maximumWidth: root.wrapped ? privat.gridWidth : Common.maxLeftColWidth
                Layout.topMargin: root.wrapped ? Common.spacing : 0
                wrapMode: Text.WordWrap
                textFormat: Text.PlainText
                visible: text !== ""
            }

            MyFloatingPointSpinBox {
                id: spinBox

                Layout.fillWidth: root.wrapped
                Layout.alignment: root.wrapped ? 0 : Qt.AlignRight | Qt.AlignVCenter
                Accessible.name: root.text
                precision: 0
                editable: true

                MyStoredNumber {
                    spinBox: spinBox
                    stored: root.value
                }

                onValueModified: root.modified(value)
            }
        }

        Label {
            Layout.fillWidth: true
            Layout.bottomMargin: Common.spacing
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
            text: root.infoMsg
            visible: root.infoMsg !== ""
        }
    }

    QtObject {
        id: privat

        // The widths that decide the flow must not themselves come from the layout.
        readonly property real gridWidth: root.width - Common.spacing
        readonly property real labelWidth: label.visible ? Math.min(label.implicitWidth, Common.maxLeftColWidth) : 0
        readonly property string rangeText: root.valueError ? `Der Wert ${root.value} liegt nicht im Bereich ${root.from}...${root.to}` : ""
        readonly property string errorText: root.warnMsg + (root.warnMsg && privat.rangeText ? "<br>" : "") + privat.rangeText
    }

    // Connections cannot listen to a signal that it has itself.
    Component.onCompleted: {
        const down = spinBox.down.indicator;
        const up = spinBox.up.indicator;
        down.enabledChanged.connect(() => root.downEnabledChanged(down.enabled));
        up.enabledChanged.connect(() => root.upEnabledChanged(up.enabled));
    }
}
