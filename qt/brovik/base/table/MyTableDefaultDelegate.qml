// A cell that shows a text.
import QtQuick
import QtQuick.Controls

import brovik.base

MyTableDelegateContainer {
    id: root

    // Untyped: the roles of the row, made by the view.
    required property var model

    Label {
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        text: root.model.display
    }
}
