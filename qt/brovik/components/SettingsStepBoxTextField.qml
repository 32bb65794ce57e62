// A setting that is a text.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

RowLayout {
    id: root

    property alias text: label.text
    property alias product: field.text
    property alias field: field
    readonly property int gap: 10

    spacing: root.gap

    Label {
        id: label

        // Not its own height: as long as it is less than that of the field, its changes would pass the layout by.
        Layout.fillHeight: true
        Layout.maximumWidth: root.width / 2
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        textFormat: Text.PlainText
    }

    TextField {
        id: field

        Layout.fillWidth: true
        Accessible.name: root.text
    }
}
