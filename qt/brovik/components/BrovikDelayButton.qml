// The large button of a page that is held and let go.
import QtQuick.Layouts

import brovik.base
import brovik.gui

MyDelayButton {
    id: root

    Layout.fillWidth: true
    Layout.preferredHeight: Gui.controlHeight
    font.bold: true
    font.pointSize: Texts.drawableSize(Gui.fSizeM)
    delay: 750
}
