// The large button of a page.
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.gui

Button {
    id: root

    Layout.fillWidth: true
    Layout.preferredHeight: Gui.controlHeight
    font.bold: true
    font.pointSize: Texts.drawableSize(Gui.fSizeM)
}
