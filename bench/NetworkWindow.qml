// The network page alone.
import QtQuick.Controls
import brovik.components
import brovik.gui
import brovik.wifi

ApplicationWindow {
    id: root

    width: 720
    height: 950
    visible: true
    font.pointSize: Gui.fSizeS
    font.capitalization: Font.MixedCase

    PageStack {
        anchors.fill: parent
        shown: true

        SettingsNetwork {}
    }
}
