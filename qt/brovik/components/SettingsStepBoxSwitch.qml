// A setting that is on or off, marked if it differs from its default.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.base

RowLayout {
    id: root

    required property bool defaultValue
    required property string description
    property alias text: label.text
    property alias switch_: switch_
    property alias checked: switch_.checked
    property int switchWidth: 150
    property int precision: 0
    readonly property string suffix: root.defaultValue !== root.checked ? Common.defaultSuffixBool(root.defaultValue, Material.accent) : ""

    Label {
        id: label

        // Not its own height: as long as it is less than that of the control, its changes would pass the layout by.
        Layout.fillHeight: true
        Layout.fillWidth: true
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        textFormat: Text.StyledText
        text: root.description + root.suffix
    }

    Switch {
        id: switch_

        Layout.preferredWidth: root.switchWidth
        Layout.alignment: Qt.AlignHCenter
        Accessible.name: root.description
    }
}
