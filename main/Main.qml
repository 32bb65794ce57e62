import QtQuick
import QtQuick.Controls

import brovik.gui

ApplicationWindow {
    id: root

    visible: true
    title: Gui.title
    width: 800
    height: 1200

    Component.onCompleted: Gui.toPy(Gui.Ready, null)

    Label {
        anchors.centerIn: parent
        text: Gui.status
    }
}
