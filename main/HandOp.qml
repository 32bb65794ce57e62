// Operation of single outputs by hand.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.actuator
import brovik.auto
import brovik.base
import brovik.components
import brovik.config
import brovik.gui
import brovik.sensor
import brovik.settings

BrovikFlickable {
    id: root

    spacing: 0

    Repeater {
        model: Actuator.doutModel

        BrovikDOutButton {
            required property DOut modelData

            dOut: modelData
            text: modelData.name
            enabled: modelData !== Actuator.heat1 || (Actuator.manualHeatingEnabled && !Auto_.active)
        }
    }

    Switch {
        id: heating

        objectName: "manualHeating"

        Layout.alignment: Qt.AlignHCenter
        Layout.preferredHeight: Gui.controlHeight
        enabled: !Auto_.active
        font.pointSize: Texts.drawableSize(Gui.fSizeM)
        text: "Heizungs-Handbetrieb"

        MyStoredValue {
            target: heating
            name: "checked"
            value: Actuator.manualHeatingEnabled
        }

        MouseArea {
            anchors.fill: parent

            onClicked: Actuator.toggleManualHeating()
        }

        // By keyboard or assistive technology, which make no click.
        onToggled: Actuator.toggleManualHeating()
    }

    Label {
        objectName: "level"

        Layout.fillWidth: true
        visible: BrovikSettings.testLaugeLevel && Config.hasLevelSwitch
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
        color: Sensor.level.state ? Material.foreground : Common.colorError
        text: `Füllstand Laugebecken ${Sensor.level.state ? "erreicht" : "unterschritten"}`
    }

    PageReporter {
        page: root
        pageEnum: Gui.PageHandOp
    }

    Component.onCompleted: Common.handOpIndex = StackLayout.index
}
