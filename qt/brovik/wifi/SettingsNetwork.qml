// The network page: connection, interfaces and the wireless networks that a scan has found.
import QtQuick
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.gui
import brovik.wifi

Item {
    id: root

    readonly property bool isCurrent: StackLayout.isCurrentItem
    property bool waitingForWifiScan: false
    property list<WifiLine> wifiList
    property list<WifiAddressRow> ipsList
    readonly property Component wifiLine: Qt.createComponent("WifiLine.qml")

    // Adds the line of a network that a scan has found, unless it is the connected one.
    function create(comp: Component, ssid: string, data: var) {
        if (privat.isConnected(ssid)) {
            return;
        }
        const line = comp.createObject(networks, {
            width: Qt.binding(() => networks.width),
            ssid: Texts.shortened(ssid),
            quality: privat.percent(data?.quality) || "?",
            is5GHz: Boolean(data?.is5GHz)
        });
        if (!line) {
            console.error(`Konnte Element WifiLine für ${ssid} nicht erstellen (${comp.errorString()}).`);
            return;
        }
        line.btn.text = "Verbinden";
        line.btn.clicked.connect(() => Wifi.toPy(Wifi.Login, ssid));
        root.wifiList.push(line);
    }

    // Removes the lines of the networks found.
    function emptyWifiList() {
        privat.destroyAll(root.wifiList);
    }

    GradientBoxTop {
        active: !flickable.atYBeginning
    }

    GradientBoxBottom {
        active: !flickable.atYEnd
    }

    Flickable {
        id: flickable

        objectName: "flickable"

        anchors.fill: parent
        z: -1
        clip: true
        flickableDirection: Flickable.VerticalFlick
        interactive: flickable.contentHeight > flickable.height
        contentWidth: flickable.width
        contentHeight: column.implicitHeight

        // Columns, not layouts: nested ones keep pointers to lines that are gone.
        Column {
            id: column

            width: flickable.width
            spacing: Common.spacing

            WifiLine {
                objectName: "current"

                width: parent.width
                ssid: Texts.shortened(Wifi.ssid)
                quality: privat.percent(Wifi.qualityPercentage)
                is5GHz: Wifi.is5GHz
                btn.text: "Trennen"
                btn.enabled: Wifi.state === Wifi.Connected
                btn.onClicked: Wifi.toPy(Wifi.Disconnect, null)
            }

            WifiScanRow {
                width: parent.width
                waiting: root.waitingForWifiScan

                onScanRequested: {
                    root.waitingForWifiScan = true;
                    Wifi.toPy(Wifi.Scan, null);
                }
            }

            Column {
                id: addresses

                objectName: "addresses"

                width: parent.width
                spacing: Common.spacing
            }

            Column {
                id: networks

                objectName: "networks"

                width: parent.width
                spacing: Common.spacing
            }
        }
    }

    Component {
        id: addressRow

        WifiAddressRow {}
    }

    PageReporter {
        page: root
        pageEnum: Gui.PageSettingsNetwork
    }

    Timer {
        objectName: "poll"

        interval: 1000
        repeat: true
        running: SettingsNetworkData.wifiWorkerEnabled

        onTriggered: Wifi.toPy(Wifi.IPData, null)
    }

    Connections {
        target: Wifi

        // Once for all lists that wait: each time all rows are made anew.
        // The linter does not know that callLater() takes a function.
        function onIpMapListChanged() {
            Qt.callLater(privat.showAddresses); // qmllint disable type
        }

        function onGotScanResults() {
            Qt.callLater(privat.showNetworks); // qmllint disable type
        }

        function onAbortWifiScan() {
            root.waitingForWifiScan = false;
        }
    }

    QtObject {
        id: privat

        // Without a connection there is no name either: that is not the network without a name.
        function isConnected(ssid: string): bool {
            return ssid !== "" && ssid === Wifi.ssid;
        }

        // Empty for what is neither text nor number.
        function plain(value: var): string {
            return typeof value === "string" || typeof value === "number" ? Texts.shortened(String(value)) : "";
        }

        // Empty for 0 and for what is no quality.
        function percent(quality: var): string {
            const number = quality ? privat.plain(quality) : "";
            return number ? `${number}%` : "";
        }

        // In the order of the map: a script object puts names of digits first.
        function showNetworks() {
            root.emptyWifiList();
            const results = Wifi.scanResults;
            for (const ssid of Object.keys(results).sort()) {
                root.create(root.wifiLine, ssid, results[ssid]);
            }
            root.waitingForWifiScan = false;
        }

        function showAddresses() {
            privat.destroyAll(root.ipsList);
            for (const record of Array.from(Wifi.ipMapList)) {
                root.ipsList.push(addressRow.createObject(addresses, {
                    width: Qt.binding(() => addresses.width),
                    ip: privat.plain(record.ip4),
                    name: privat.plain(record.name),
                    type: privat.plain(record.type_),
                    isWireguard: Boolean(record.is_wg)
                }));
            }
        }

        // Assigning an empty list would do nothing in compiled QML.
        function destroyAll(items: var) {
            for (const item of Array.from(items)) {
                item.destroy();
            }
            items.length = 0;
        }
    }

    Component.onCompleted: {
        Common.settingsNetworkIndex = StackLayout.index;
        SettingsNetworkData.settingsNetworkIndex = StackLayout.index;
        // The backend may have told of them before there was a page.
        privat.showAddresses();
    }
}
