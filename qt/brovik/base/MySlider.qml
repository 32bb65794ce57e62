// A labelled slider between a minus and a plus button.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base

Rectangle {
    id: root

    property alias value: slider.value
    property alias text: label.text
    property alias slider: slider
    property alias label: label
    property alias from: slider.from
    property alias to: slider.to
    property alias stepSize: slider.stepSize

    implicitWidth: column.implicitWidth
    implicitHeight: column.implicitHeight
    color: Common.bg1

    ColumnLayout {
        id: column

        width: parent.width
        spacing: Common.spacing

        Label {
            id: label

            Layout.leftMargin: Common.spacing
            Layout.topMargin: Common.spacing
            textFormat: Text.PlainText
        }

        RowLayout {
            // The steps of the control itself: an assignment would end the binding of its value.
            ToolButton {
                Accessible.name: "Verringern"
                icon.source: "qrc:/brovik/base/img/dash-lg.svg"

                onClicked: slider.decrease()
            }

            Slider {
                id: slider

                Layout.fillWidth: true
                Accessible.name: root.text
                snapMode: Slider.SnapOnRelease
            }

            ToolButton {
                Accessible.name: "Erhöhen"
                icon.source: "qrc:/brovik/base/img/plus-lg.svg"

                onClicked: slider.increase()
            }
        }
    }
}
