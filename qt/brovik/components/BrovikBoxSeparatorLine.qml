// A line between the parts of a box.
import QtQuick
import QtQuick.Layouts

import brovik.base

Rectangle {
    id: root

    readonly property int margin: 5
    property bool noMargins: false

    Layout.fillWidth: true
    Layout.topMargin: root.noMargins ? 0 : root.margin
    Layout.bottomMargin: root.noMargins ? 0 : root.margin
    implicitHeight: 1
    color: Common.borderColor
}
