// A framed box of full width with a column for its content.
import QtQuick
import QtQuick.Layouts

import brovik.base

Rectangle {
    id: root

    default property alias content: column.data
    readonly property int margins: 10

    Layout.fillWidth: true
    Layout.preferredHeight: column.implicitHeight + 2 * root.margins
    radius: 5
    color: Common.bg2
    border.width: 1
    border.color: Common.borderColor

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: root.margins
    }
}
