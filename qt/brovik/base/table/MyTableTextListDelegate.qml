// A cell that shows a list of texts, numbered if there are several.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base

MyTableDelegateContainer {
    id: root

    // Untyped: the roles of the row, made by the view.
    required property var model

    ColumnLayout {
        Repeater {
            id: entries

            model: root.model.display

            RowLayout {
                id: entry

                required property int index
                required property string modelData

                Label {
                    Layout.alignment: Qt.AlignTop
                    font.bold: true
                    font.italic: true
                    text: `${entry.index + 1}: `
                    visible: entries.count > 1
                }

                Label {
                    Layout.fillWidth: true
                    wrapMode: Text.Wrap
                    textFormat: Text.PlainText
                    text: entry.modelData
                }
            }
        }
    }
}
