// Icon and text of a check button whose text comes from outside: the style's own content would take it for markup.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

import brovik.base

Item {
    id: root

    required property MyGreenCheckButton button

    implicitWidth: row.implicitWidth
    implicitHeight: row.implicitHeight

    Row {
        id: row

        anchors.centerIn: parent
        spacing: root.button.spacing

        MyIcon {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            visible: root.button.active
            size: Qt.size(root.button.icon.width, root.button.icon.height)
            source: root.button.icon.source
            color: label.color
        }

        Label {
            id: label

            readonly property real room: root.width - (icon.visible ? icon.width + row.spacing : 0)

            Accessible.ignored: true
            width: Math.min(implicitWidth, room)
            color: root.button.enabled ? Material.foreground : Material.hintTextColor
            elide: Text.ElideRight
            font: root.button.font
            textFormat: Text.PlainText
            text: Texts.plain(root.button.text)
        }
    }
}
