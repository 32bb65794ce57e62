// A cell with the button that asks for a changelog.
import QtQuick
import QtQuick.Controls

import brovik.base

MyTableDelegateContainer {
    id: root

    required property var model
    property alias btn: button

    Button {
        id: button

        readonly property int gap: 5

        // The row gives the button its height.
        implicitHeight: 10
        padding: 0
        topInset: 0
        bottomInset: 0
        leftInset: 0
        rightInset: gap
        // Empty is what Python takes for false, too.
        enabled: Boolean(root.model.display) && root.model.display.length !== 0
        text: "Changelog"
    }
}
