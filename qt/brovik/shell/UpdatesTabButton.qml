// A tab that is as wide as its text needs, or as its share of the bar.
import QtQuick.Controls

TabButton {
    id: root

    required property real room

    width: Math.max(root.implicitWidth, root.room)
}
