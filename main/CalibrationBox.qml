// Takes the present value of a sensor as its zero.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.components

SettingsStepBox {
    id: root

    // The present offset, in `unit`.
    required property real offset
    required property string unit

    signal calibrate
    signal reset

    RowLayout {
        spacing: Common.spacing

        BrovikButton {
            Layout.preferredWidth: privat.equalWidth
            text: "Kalibrieren"

            onClicked: root.calibrate()
        }

        BrovikButton {
            Layout.preferredWidth: privat.equalWidth
            text: "Offset zurücksetzen"

            onClicked: root.reset()
        }
    }

    Label {
        Layout.alignment: Qt.AlignHCenter
        text: `Aktueller Offset: ${root.offset} ${root.unit}`
    }

    QtObject {
        id: privat

        // The same preference for both buttons; both fill the row.
        readonly property int equalWidth: 1
    }
}
