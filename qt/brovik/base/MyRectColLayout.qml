// A coloured surface of full width with a column for its content.
import QtQuick
import QtQuick.Layouts

import brovik.base

Rectangle {
    id: root

    default property alias content: column.data
    property color defaultColor: Common.bg1

    Layout.fillWidth: true
    implicitHeight: column.implicitHeight + 2 * Common.spacing
    color: root.defaultColor

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: Common.spacing
    }
}
