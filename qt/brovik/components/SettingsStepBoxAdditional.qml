// A remark in the box of a step.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.components

ColumnLayout {
    id: root

    property alias text: label.text
    property bool noSeparator: false

    Layout.fillWidth: true

    BrovikBoxSeparatorLine {
        noMargins: true
        visible: !root.noSeparator
    }

    Label {
        id: label

        Layout.fillWidth: true
        wrapMode: Text.WordWrap
        textFormat: Text.PlainText
    }
}
