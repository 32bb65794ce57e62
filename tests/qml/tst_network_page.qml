import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtTest

import brovik.base
import brovik.gui
import brovik.wifi
import kubelor.test
import "items.js" as Items

// The network page: its frame, the connected network, the scan, the interfaces and the signal.
Item {
    id: root

    width: 720
    height: 700

    Component {
        id: spyComponent

        SignalSpy {}
    }

    SignalSpy {
        id: levelChanged

        target: Wifi
        signalName: "qualityLevelChanged"
    }

    NetworkPageTestCase {
        name: "NetworkPage"

        readonly property url firstIcon: "qrc:/brovik/wifi/img/wifi-off.svg"

        function test_position_and_report() {
            compare([Common.settingsNetworkIndex, SettingsNetworkData.settingsNetworkIndex], [1, 1]);
            verify(page.isCurrent);
            compare([stack.currentPage, Gui.page], [Gui.PageSettingsNetwork, Gui.PageSettingsNetwork]);
            stack.currentIndex = 0;
            verify(!page.isCurrent);
        }

        function test_line_on_its_own() {
            const line = createTemporaryQmlObject("import brovik.wifi; WifiLine {}", root);
            compare([line.ssid, line.quality, line.is5GHz, line.btn.text], ["essid", "quality", false, "dis/connect"]);
            compare([line.implicitHeight, line.color, line.btn.topInset, line.btn.bottomInset], [40, Common.bg1, 0, 0]);
            const name = Items.below(line, item => item instanceof Label && item.text === "essid")[0];
            compare(name.font.pointSize, 12);
        }

        // What stands in it, from left to right.
        function test_columns_of_a_line() {
            const line = createTemporaryQmlObject("import brovik.wifi; WifiLine { width: 500; is5GHz: true; quality: '5%' }", root);
            draw(line);
            const [name, quality, band] = Items.below(line, item => item instanceof Label && item.parent !== line.btn);
            compare([name.text, quality.text, band.text], ["essid", "5%", "5GHz"]);
            compare([name.x, quality.width, band.width, line.btn.width, line.btn.height], [5, 40, 40, 100, 40]);
            compare([quality, band].map(label => label.font.pointSize), [12, 12]);
            verify(name.x + name.width <= quality.x && quality.x + quality.width <= band.x && band.x + band.width <= line.btn.x);
            compare(line.btn.x + line.btn.width, line.width);
            compare(band.horizontalAlignment, Text.AlignLeft);
            fuzzyCompare(band.y + band.height / 2, 20, 1);
            // All that is left belongs to the name.
            fuzzyCompare(name.width, quality.x - name.x - name.parent.spacing, 1);
        }

        function test_order_of_the_page() {
            show({Halle: {}});
            showAddresses([{name: "lo"}]);
            const parts = ["current", "scan", "addresses", "networks"].map(name => part(name));
            draw(page);
            const tops = parts.map(item => item.mapToItem(page, 0, 0).y);
            compare(tops[0], 0);
            for (let i = 1; i < parts.length; ++i) {
                verify(tops[i] >= tops[i - 1] + parts[i - 1].height, parts[i].objectName);
            }
            compare(parts.slice(2).map(column => column.width), [page.width, page.width]);
        }

        // What the backend has told while the program was starting.
        function test_page_made_later() {
            Backend.run("wifi.Wifi.ssid, wifi.Wifi.ip_map_list = 'Halle', [{'name': 'lo', 'ip4': '127.0.0.1'}]\nwifi.Wifi.state = wifi.WifiStateEnum.Connected\nwifi.Wifi.quality_percantage = 90");
            const later = createTemporaryObject(stackComponent, root).page;
            compare([findChild(later, "current").ssid, findChild(later, "signal").state], ["Halle", "3"]);
            compare(Array.from(later.ipsList, row => row.name), ["lo"]);
            Backend.run("wifi.Wifi.state = wifi.WifiStateEnum.Connecting");
            compare(findChild(createTemporaryObject(stackComponent, root), "signal").animated, true);
        }

        // The connected network.

        function test_current_line() {
            const line = part("current");
            compare([line.ssid, ...cells(line), line.btn.text], ["", "", "", "Trennen"]);
            compare([line.width, line.height, line.color], [root.width, 40, Common.bg1]);
            Backend.runOnThread("wifi.Wifi.ssid, wifi.Wifi.quality_percantage, wifi.Wifi.is_5_ghz = '<b>Halle</b>', 67, True");
            tryCompare(line, "is5GHz", true);
            compare([line.ssid, ...cells(line)], ["<b>Halle</b>", "67%", "5GHz"]);
        }

        function test_quality_0_of_the_current_line_is_empty() {
            Backend.run("wifi.Wifi.quality_percantage = 5");
            compare(part("current").quality, "5%");
            Backend.run("wifi.Wifi.quality_percantage = 0");
            compare(part("current").quality, "");
        }

        function test_disconnect_data() {
            return [{tag: "Connected", enabled: true}, {tag: "Connecting"}, {tag: "Disconnected"}, {tag: "Aborted"}];
        }

        function test_disconnect(data) {
            Backend.run(`wifi.Wifi.state = wifi.WifiStateEnum.${data.tag}`);
            const button = part("current").btn;
            compare(button.enabled, data.enabled ?? false);
            press(button);
            compareSent(data.enabled ? [[Wifi, Wifi.Disconnect, null]] : []);
        }

        // Scan

        function test_scan() {
            const button = part("scan");
            compare([button.text, button.enabled, part("busy").running], ["Suche nach WLAN-Netzen", true, false]);
            press(button);
            compareSent([[Wifi, Wifi.Scan, null]]);
            compare([page.waitingForWifiScan, button.enabled, part("busy").running], [true, false, true]);
            // Nothing ends the wait but the backend; a second press asks for nothing.
            press(button);
            compareSent([]);
            Backend.runOnThread("wifi.Wifi.set_scan_results({})");
            tryCompare(page, "waitingForWifiScan", false);
            compare([button.enabled, part("busy").running], [true, false]);
        }

        function test_scan_button_fills_the_row() {
            const button = part("scan");
            compare(button.x, 0);
            compare(button.width + button.parent.spacing + part("signal").width, root.width);
            const busy = part("busy");
            const middle = busy.mapToItem(button, busy.width / 2, busy.height / 2);
            fuzzyCompare(middle.x, button.width / 2, 1);
            fuzzyCompare(middle.y, button.height / 2, 1);
        }

        function test_scan_that_never_ends() {
            show({Halle: {quality: 50}});
            press(part("scan"));
            press(page.wifiList[0].btn);
            compareSent([[Wifi, Wifi.Scan, null], [Wifi, Wifi.Login, "Halle"]]);
            stack.currentIndex = 0;
            compare(page.isCurrent, false);
        }

        function test_scan_button_while_connecting_aborts() {
            const button = part("scan");
            Backend.runOnThread("wifi.Wifi.state = wifi.WifiStateEnum.Connecting");
            tryCompare(button, "text", "Verbindungsversuch abbrechen");
            press(button);
            compareSent([[Wifi, Wifi.Disconnect, null]]);
            compare([page.waitingForWifiScan, button.enabled], [false, true]);
            Backend.runOnThread("wifi.Wifi.state = wifi.WifiStateEnum.Aborted");
            tryCompare(button, "text", "Suche nach WLAN-Netzen");
        }

        function test_scan_without_results_keeps_the_list() {
            show({Halle: {quality: 50}});
            const before = page.wifiList[0];
            press(part("scan"));
            Backend.runOnThread("wifi.Wifi.abort_wifi_scan()");
            tryCompare(page, "waitingForWifiScan", false);
            compare([page.wifiList.length, page.wifiList[0]], [1, before]);
        }

        // Interfaces

        function test_addresses() {
            showAddresses([{name: "lo", ip4: "127.0.0.1", type_: "loopback", is_wg: false}, {name: "eth0", ip4: "10.0.0.2", type_: ""}]);
            const rows = Array.from(page.ipsList);
            compare(rows.map(row => [row.ip, row.name, row.type, row.isWireguard]), [["127.0.0.1", "lo", "loopback", false], ["10.0.0.2", "eth0", "", false]]);
            const labels = rows.map(row => findChild(row, "address"));
            compare(labels.map(label => label.text), ["<b>lo</b> (loopback): 127.0.0.1", "<b>eth0</b>: 10.0.0.2"]);
            tryVerify(() => rows.every((row, i) => row.width === root.width && labels[i].x === 5));
            tryVerify(() => rows[1].y > rows[0].y);
        }

        function test_restart_data() {
            return [{tag: "type and WireGuard", type: "wireguard", isWireguard: true, name: "tunnel", shown: true}, {tag: "type, not WireGuard", type: "ethernet", isWireguard: false, name: "wg0", shown: false}, {tag: "no type, wg0", type: "", isWireguard: false, name: "wg0", shown: true}, {tag: "no type, wg0, WireGuard", type: "", isWireguard: true, name: "wg0", shown: true}, {tag: "no type, other name", type: "", isWireguard: true, name: "eth0", shown: false}, {tag: "no type, wg inside", type: "", isWireguard: true, name: "awg0", shown: false}];
        }

        // A type that is empty and one that is absent.
        function test_restart(data) {
            const record = {name: data.name, ip4: "10.0.0.1", is_wg: data.isWireguard};
            const absent = data.type ? [] : [record];
            showAddresses([Object.assign({type_: data.type}, record), ...absent]);
            for (const row of Array.from(page.ipsList)) {
                const button = findChild(row, "restart");
                compare([button.visible, button.text], [data.shown, `Schnittstelle ${data.name} neu starten`]);
            }
            press(findChild(page.ipsList[0], "restart"));
            compareSent(data.shown ? [[Wifi, Wifi.RestartWireguard, data.name]] : []);
        }

        function test_interface_records_of_other_types() {
            showAddresses([{}, {name: null, ip4: null, type_: null, is_wg: null}, {name: 5, ip4: 1.5, type_: true, is_wg: "x"}, {name: [1], ip4: {a: 1}, type_: [], is_wg: []}]);
            compare(Array.from(page.ipsList, row => [row.name, row.ip, row.type, row.isWireguard]), [["", "", "", false], ["", "", "", false], ["5", "1.5", "", true], ["", "", "", true]]);
        }

        // All of them at once: the rows are those of the last one.
        function test_many_lists_of_addresses_are_shown_once() {
            const column = part("addresses");
            const made = createTemporaryObject(spyComponent, root, {target: column, signalName: "childrenChanged"});
            Backend.runOnThread("for n in range(200):\n    wifi.Wifi.ip_map_list = [{'ip4': str(n), 'name': 'eth0'}]");
            tryCompare(page.ipsList, "length", 1);
            compare(page.ipsList[0].ip, "199");
            compare(made.count, 1);
        }

        // The signal

        function test_icons() {
            const icon = part("signal");
            compare(Array.from(icon.sources, String), ["wifi-off", "wifi-1", "wifi-2", "wifi"].map(name => `qrc:/brovik/wifi/img/${name}.svg`));
            compare(Array.from(icon.states, state => state.name), ["0", "1", "2", "3"]);
            icon.state = "";
            compare(icon.source, firstIcon);
            for (const level of [0, 1, 2, 3]) {
                icon.state = level;
                compare(icon.source, icon.sources[level]);
                const image = Items.below(icon, item => item instanceof Image)[0];
                compare(image.status, Image.Ready);
            }
            icon.state = "-1";
            compare(icon.source, firstIcon);
        }

        function test_icon_follows_the_level_data() {
            return [[20, 1], [50, 2], [80, 3], [0, 1]].map(([quality, level]) => ({tag: quality, quality: quality, level: level}));
        }

        function test_icon_follows_the_level(data) {
            Backend.runOnThread(`wifi.Wifi.state = wifi.WifiStateEnum.Connected\nwifi.Wifi.quality_percantage = 99\nwifi.Wifi.quality_percantage = ${data.quality}`);
            tryCompare(part("signal"), "state", String(data.level));
            compare(part("signal").source, part("signal").sources[data.level]);
        }

        function test_animation() {
            levelChanged.clear();
            const icon = part("signal");
            compare(Array.from(icon.resources).filter(item => item instanceof Timer).map(timer => timer.interval), [300]);
            const seen = [];
            icon.stateChanged.connect(state => seen.push(state));
            Backend.runOnThread("wifi.Wifi.state = wifi.WifiStateEnum.Connecting");
            tryVerify(() => seen.length >= 5);
            compare(seen.slice(0, 5), ["1", "2", "3", "1", "2"]);
            // The level does not touch it meanwhile.
            Backend.runOnThread("wifi.Wifi.quality_percantage = 80");
            tryCompare(levelChanged, "count", 1);
            compare(seen[seen.length - 1], icon.state);
            verify(icon.state !== "0");
        }

        function test_icon_keeps_its_last_frame_until_the_level_comes() {
            levelChanged.clear();
            const icon = part("signal");
            Backend.runOnThread("wifi.Wifi.state = wifi.WifiStateEnum.Connecting");
            tryCompare(icon, "state", "2");
            Backend.runOnThread("wifi.Wifi.state = wifi.WifiStateEnum.Connected");
            tryCompare(icon, "animated", false);
            verify(["1", "2", "3"].includes(icon.state));
            compare([icon.source, Wifi.qualityLevel], [icon.sources[icon.state], -1]);
            Backend.runOnThread("wifi.Wifi.quality_percantage = 10");
            tryCompare(icon, "state", "1");
            compare(levelChanged.count, 1);
        }
    }
}
