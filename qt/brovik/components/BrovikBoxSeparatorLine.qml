// A line between the parts of a box.
import QtQuick
import QtQuick.Layouts

Rectangle {
    id: root

    property bool noMargins: false

    Layout.fillWidth: true
    implicitHeight: 1
}
