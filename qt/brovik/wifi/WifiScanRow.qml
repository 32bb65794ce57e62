// Looks for networks, or aborts an attempt to connect; beside it the strength of the signal.
import QtQuick.Controls
import QtQuick.Layouts

import brovik.components
import brovik.wifi

RowLayout {
    id: root

    // A scan is under way.
    required property bool waiting

    signal scanRequested

    BrovikButton {
        objectName: "scan"

        enabled: !root.waiting
        text: icon.animated ? "Verbindungsversuch abbrechen" : "Suche nach WLAN-Netzen"

        onClicked: icon.animated ? Wifi.toPy(Wifi.Disconnect, null) : root.scanRequested()

        BusyIndicator {
            objectName: "busy"

            anchors.centerIn: parent
            running: root.waiting
        }
    }

    WifiSignalIcon {
        id: icon

        objectName: "signal"
    }
}
