// A button whose text comes from outside: shown as it stands, in several lines if need be. A plain Button takes it for
// markup.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

import brovik.base

Button {
    id: root

    Accessible.name: root.text

    contentItem: Label {
        text: Texts.shortened(root.text)
        textFormat: Text.PlainText
        font: root.font
        color: root.enabled ? root.Material.foreground : root.Material.hintTextColor
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        maximumLineCount: 4
        elide: Text.ElideRight
        Accessible.ignored: true
    }
}
