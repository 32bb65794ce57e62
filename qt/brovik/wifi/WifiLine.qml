// A wireless network and what can be done with it. Its name is chosen by strangers.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.base

Rectangle {
    id: root

    property alias quality: qualityLabel.text
    property string ssid: "essid"
    property bool is5GHz: false
    property alias btn: button

    implicitHeight: 40
    color: Common.bg1

    RowLayout {
        anchors.fill: parent

        Label {
            objectName: "ssid"

            Layout.fillWidth: true
            Layout.leftMargin: Common.spacing
            font.pointSize: privat.pointSize
            elide: Text.ElideRight
            maximumLineCount: 1
            text: privat.inOneLine(root.ssid)
            textFormat: Text.PlainText
        }

        Label {
            id: qualityLabel

            objectName: "quality"

            // "100%" is wider.
            Layout.minimumWidth: implicitWidth
            Layout.preferredWidth: privat.columnWidth
            font.pointSize: privat.pointSize
            horizontalAlignment: Text.AlignRight
            text: "quality"
            textFormat: Text.PlainText
        }

        Label {
            objectName: "band"

            Layout.alignment: Qt.AlignLeft | Qt.AlignVCenter
            Layout.preferredWidth: privat.columnWidth
            font.pointSize: privat.pointSize
            text: root.is5GHz ? "5GHz" : ""
        }

        Button {
            id: button

            Layout.leftMargin: Common.spacing
            Layout.preferredWidth: privat.buttonWidth
            Layout.preferredHeight: root.implicitHeight
            Accessible.description: root.ssid
            topInset: 0
            bottomInset: 0
            font.pointSize: privat.pointSize
            text: "dis/connect"

            // The style's own one has a shadow, and those of a long list would take longer to draw than all else.
            background: Rectangle {
                radius: 2
                color: !button.enabled ? button.Material.buttonDisabledColor : button.down ? Common.colorHovered : Common.colorActive
            }
        }
    }

    QtObject {
        id: privat

        readonly property int pointSize: 12
        readonly property int columnWidth: 40
        readonly property int buttonWidth: 100

        // There is room for one line. What stands behind a break is shown all the same, else one network could pass for another.
        function inOneLine(text: string): string {
            return Texts.plain(text).replace(/[\n\v\f\r\u0085\u2028\u2029]/g, "\u2424");
        }
    }
}
