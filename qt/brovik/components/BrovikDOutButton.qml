// Shows a digital output and asks the backend to switch it.
import brovik.actuator
import brovik.auto
import brovik.components

BrovikGreenCheckButton {
    id: root

    required property DOut dOut

    enabled: !Auto_.active
    active: root.dOut.state
    contentItem: PlainCheckContent {
        button: root
    }

    onClicked: root.dOut.toggle()
}
