// The large button of a page that is green while what it stands for is active.
import QtQuick.Layouts

import brovik.base
import brovik.gui

MyGreenCheckButton {
    id: root

    Layout.fillWidth: true
    Layout.preferredHeight: Gui.controlHeight
    font.pointSize: Texts.drawableSize(Gui.fSizeM)
}
