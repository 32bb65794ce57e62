// Takes the present value of a sensor as its zero.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.gui

SettingsStepBox {
    id: root

    // The present offset, in `unit`.
    required property real offset
    required property string unit

    signal calibrate
    signal reset

    RowLayout {
        spacing: Common.spacing

        component Action: Button {
            // The same preference for both; both fill the row.
            Layout.preferredWidth: 1
            Layout.fillWidth: true
            Layout.preferredHeight: Gui.controlHeight
            font.bold: true
            font.pointSize: Gui.fSizeM
        }

        Action {
            text: "Kalibrieren"

            onClicked: root.calibrate()
        }

        Action {
            text: "Offset zurücksetzen"

            onClicked: root.reset()
        }
    }

    Label {
        Layout.alignment: Qt.AlignHCenter
        text: `Aktueller Offset: ${root.offset} ${root.unit}`
    }
}
