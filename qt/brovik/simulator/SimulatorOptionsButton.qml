// Brings the simulator's window to the front.
import QtQuick
import QtQuick.Controls

import brovik.base
import brovik.simulator

ToolButton {
    id: root

    required property Window win

    anchors {
        right: parent?.right
        bottom: parent?.bottom
        rightMargin: Common.spacing
        bottomMargin: Common.spacing
    }
    visible: Simulator.enabled
    Accessible.name: "Simulator"
    icon.source: "img/gear.svg"

    onClicked: {
        root.win.visible = true;
        root.win.show();
        root.win.requestActivate();
    }
}
