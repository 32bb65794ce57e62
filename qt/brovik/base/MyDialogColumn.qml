// What stands in a dialog: title bar, main text, and below them what the dialog adds.
import QtQuick
import QtQuick.Layouts

import brovik.base

ColumnLayout {
    id: root

    required property MyDialogFrame dialog

    spacing: Common.spacing
    focus: true

    Keys.onEnterPressed: dialog.enterPressed()
    Keys.onReturnPressed: dialog.enterPressed()
    Keys.onEscapePressed: dialog.escapePressed()

    MyDialogTitle {
        Layout.fillWidth: true
        title: root.dialog.title
        barColor: root.dialog.color
    }

    MyDialogText {
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.minimumHeight: 0
        Layout.preferredHeight: implicitHeight
        text: root.dialog.text
        plain: root.dialog.plainText
        minimumHeight: root.dialog.textMinimumHeight
    }
}
