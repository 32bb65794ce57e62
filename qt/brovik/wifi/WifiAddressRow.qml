// A network interface and its address.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.wifi

RowLayout {
    id: root

    property string ip
    property string name
    // Empty if the backend does not report it.
    property string type
    property bool isWireguard: false

    Label {
        objectName: "address"

        Layout.fillWidth: true
        Layout.leftMargin: Common.spacing
        Accessible.name: privat.described(root.name, root.type, root.ip)
        text: privat.described(`<b>${Texts.escaped(root.name)}</b>`, Texts.escaped(root.type), Texts.escaped(root.ip))
        textFormat: Text.RichText
        wrapMode: Text.Wrap
    }

    MyTextButton {
        objectName: "restart"

        Layout.maximumWidth: root.width / 2
        visible: root.type ? root.isWireguard : root.name.startsWith("wg")
        text: `Schnittstelle ${root.name} neu starten`

        onClicked: Wifi.toPy(Wifi.RestartWireguard, root.name)
    }

    QtObject {
        id: privat

        function described(name: string, type: string, ip: string): string {
            const prefix = type ? ` (${type})` : "";
            return `${name}${prefix}: ${ip}`;
        }
    }
}
