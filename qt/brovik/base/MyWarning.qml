// A banner that warns of something.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.gui

Rectangle {
    id: root

    property alias title: heading.text
    property alias text: label.text
    property alias labelHeading: heading
    property alias labelText: label
    property alias dismissBtn: dismissButton

    implicitWidth: column.implicitWidth + 2 * Common.spacing
    implicitHeight: column.implicitHeight + 2 * Common.spacing
    color: Common.colorWarning

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: Common.spacing
        spacing: Common.spacing

        Label {
            id: heading

            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
            font.pointSize: Gui.hSize
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            visible: text
        }

        Label {
            id: label

            Layout.fillWidth: true
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            visible: text
        }
    }

    ToolButton {
        id: dismissButton

        anchors.top: parent.top
        anchors.right: parent.right
        Accessible.name: "Hinweis ausblenden"
        display: AbstractButton.IconOnly
        icon.source: "qrc:/brovik/base/img/x.svg"
        visible: false

        onClicked: root.visible = false
    }
}
