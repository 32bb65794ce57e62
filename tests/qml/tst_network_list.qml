import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtTest

import brovik.base
import brovik.wifi
import kubelor.test
import "items.js" as Items

// The networks that a scan has found, and what strangers call them.
Item {
    id: root

    width: 720
    height: 700

    Component {
        id: spyComponent

        SignalSpy {}
    }

    NetworkPageTestCase {
        name: "NetworkList"

        // The networks found

        function test_lines() {
            show({Halle: {quality: 78, is5GHz: true}, Lager: {quality: 41, is5GHz: false}});
            compare(names(), ["Halle", "Lager"]);
            const lines = Array.from(page.wifiList);
            compare(lines.map(line => line.btn.text), ["Verbinden", "Verbinden"]);
            compare(lines.map(line => [line.width, line.height]), [[root.width, 40], [root.width, 40]]);
            tryVerify(() => lines[1].y - lines[0].y === 45);
            verify(lines.every(line => line.parent === part("networks") && line.btn.width === 100 && line.btn.height === 40));
        }

        // The order of the map, not that of a script's object.
        function test_order_is_that_of_the_names() {
            show({b: {quality: 1}, Z: {quality: 2}, "10": {}, "9": {}, "ä": {}, a: {quality: 99}, "4294967294": {}});
            compare(names(), ["10", "4294967294", "9", "Z", "a", "b", "ä"]);
        }

        function test_connected_network_has_no_line() {
            Backend.run("wifi.Wifi.ssid = 'Halle'");
            show({Halle: {quality: 50}, "Halle ": {}, halle: {}});
            compare(names(), ["Halle ", "halle"]);
        }

        function test_network_without_a_name_is_not_taken_for_the_connected_one() {
            show({"": {quality: 50}});
            compare(names(), [""]);
        }

        function test_quality_of_a_line_data() {
            return [{tag: "0", quality: 0, shown: "?"}, {tag: "absent", shown: "?"}, {tag: "None", quality: null, shown: "?"}, {tag: "empty", quality: "", shown: "?"}, {tag: "list", quality: [50], shown: "?"}, {tag: "map", quality: {toString: 5, valueOf: 6}, shown: "?"}, {tag: "truth", quality: true, shown: "?"}, {tag: "1", quality: 1, shown: "1%"}, {tag: "100", quality: 100, shown: "100%"}, {tag: "text", quality: "<b>50</b>", shown: "<b>50</b>%"}];
        }

        function test_quality_of_a_line(data) {
            show({Halle: {quality: data.quality}});
            compare(page.wifiList[0].quality, data.shown);
        }

        function test_band_of_a_line_data() {
            return [{tag: "true", is5GHz: true, shown: "5GHz"}, {tag: "false", is5GHz: false, shown: ""}, {tag: "absent", shown: ""}, {tag: "None", is5GHz: null, shown: ""}];
        }

        function test_band_of_a_line(data) {
            show({Halle: {quality: 5, is5GHz: data.is5GHz}});
            compare(cells(page.wifiList[0]), ["5%", data.shown]);
        }

        function test_records_that_are_none() {
            show({a: null, b: 5, c: "Text", d: [], e: {}});
            compare(names(), ["a", "b", "c", "d", "e"]);
            verify(Array.from(page.wifiList).every(line => text(cells(line)) === text(["?", ""])));
        }

        function test_login() {
            show({Halle: {quality: 50}, Lager: {quality: 60}});
            press(page.wifiList[1].btn);
            compareSent([[Wifi, Wifi.Login, "Lager"]]);
        }

        function test_each_scan_replaces_the_list() {
            show({Halle: {}, Lager: {}});
            show({Keller: {}});
            compare(names(), ["Keller"]);
            tryCompare(part("networks").children, "length", 1);
            page.emptyWifiList();
            compare(names(), []);
            tryCompare(part("networks").children, "length", 0);
        }

        function test_line_that_cannot_be_made() {
            const broken = Qt.createComponent("qrc:/missing.qml");
            Backend.startRecordingPrints();
            page.create(page.wifiLine, "Halle", {quality: 5});
            ignoreWarning(/Component is not ready/);
            page.create(broken, "<b>Lager</b>", {quality: 5});
            page.create(page.wifiLine, "Keller", {quality: 5});
            const prints = Backend.takePrints();
            compare(prints, [`Konnte Element WifiLine für <b>Lager</b> nicht erstellen (${broken.errorString()}).`]);
            verify(broken.errorString().includes("missing.qml"));
            compare(names(), ["Halle", "Keller"]);
        }

        // Names of strangers

        function test_hostile_names_data() {
            return hostileNames.map(name => ({tag: JSON.stringify(name), name: name}));
        }

        function test_hostile_names(data) {
            show({[data.name]: {quality: 50}});
            compare(names(), [data.name]);
            const line = page.wifiList[0];
            const label = findChild(line, "ssid");
            compare([label.text, label.textFormat, label.lineCount], [data.name.replace("\n", "\u2424"), Text.PlainText, 1]);
            verify(label.height <= line.height);
            press(line.btn);
            compareSent([[Wifi, Wifi.Login, data.name]]);
        }

        function test_hostile_name_of_the_connection_data() {
            return hostileNames.map(name => ({tag: JSON.stringify(name), name: name}));
        }

        function test_hostile_name_of_the_connection(data) {
            Backend.run(`import json\nwifi.Wifi.ssid = json.loads(${text(text(data.name))})`);
            compare(part("current").ssid, data.name);
            const label = findChild(part("current"), "ssid");
            compare([label.text, label.textFormat], [data.name.replace("\n", "\u2424"), Text.PlainText]);
        }

        function test_hostile_name_of_an_interface_data() {
            return hostileNames.map(name => ({tag: JSON.stringify(name), name: name}));
        }

        // Markup in it would be drawn: the label has the width of the text itself.
        function test_hostile_name_of_an_interface(data) {
            showAddresses([{name: data.name, ip4: data.name, type_: data.name + "x", is_wg: true}]);
            const row = page.ipsList[0];
            const label = findChild(row, "address");
            compare(label.Accessible.name, `${data.name} (${data.name}x): ${data.name}`);
            const name = Texts.escaped(data.name);
            verify(!/<(?!\/?b>|br>)/.test(label.text), label.text);
            verify(label.text.startsWith(`<b>${name}</b>`));
            const button = findChild(row, "restart");
            compare(button.text, `Schnittstelle ${data.name} neu starten`);
            compare(button.contentItem.textFormat, Text.PlainText);
            press(button);
            compareSent([[Wifi, Wifi.RestartWireguard, data.name]]);
        }

        // No network has such a name; a backend may.
        function test_huge_names_are_cut() {
            const cut = "lang ".repeat(40) + "…";
            Backend.runOnThread(`
name = 'lang ' * 2000000
wifi.Wifi.ssid = name
wifi.Wifi.ip_map_list = [{'name': name, 'ip4': name, 'type_': name}]
wifi.Wifi.set_scan_results({name + 'er': {'quality': name}})`);
            tryCompare(page.wifiList, "length", 1);
            compare([part("current").ssid, page.wifiList[0].ssid, page.wifiList[0].quality], [cut, cut, `${cut}%`]);
            const row = page.ipsList[0];
            compare([row.name, row.ip, row.type], [cut, cut, cut]);
            // Out of view.
            page.wifiList[0].btn.clicked();
            compare(sent.take()[0][2].length, 10000002);
        }

        function test_many_scans_are_shown_once() {
            const made = createTemporaryObject(spyComponent, root, {target: part("networks"), signalName: "childrenChanged"});
            page.waitingForWifiScan = true;
            Backend.runOnThread("for n in range(200):\n    wifi.Wifi.set_scan_results({f'Netz {n}': {'quality': 5}})");
            tryCompare(page, "waitingForWifiScan", false);
            compare(names(), ["Netz 199"]);
            compare(made.count, 1);
        }

        function test_new_addresses_leave_the_networks_alone() {
            show({Halle: {quality: 50}});
            const line = page.wifiList[0];
            showAddresses([{name: "lo"}, {name: "eth0"}]);
            const old = Array.from(page.ipsList);
            showAddresses([{name: "wlan0"}]);
            compare(Array.from(page.ipsList, row => row.name), ["wlan0"]);
            tryCompare(part("addresses").children, "length", 1);
            verify(!old.includes(page.ipsList[0]));
            compare([page.wifiList.length, page.wifiList[0]], [1, line]);
        }

        // A long list

        function test_shadows_tell_of_more() {
            const flickable = part("flickable");
            const shadows = Items.below(page, item => item instanceof MyGradientBox);
            compare(shadows.length, 2);
            compare([flickable.z, flickable.clip, flickable.width, flickable.height], [-1, true, page.width, page.height]);
            compare(shadows.map(box => box.active), [false, false]);
            show(numbered(200));
            tryCompare(shadows[1], "active", true);
            compare(shadows[0].active, false);
            flickable.contentY = 100;
            compare(shadows.map(box => box.active), [true, true]);
            flickable.contentY = flickable.contentHeight - flickable.height;
            compare(shadows.map(box => box.active), [true, false]);
            page.emptyWifiList();
            tryCompare(flickable, "contentY", 0);
            compare(shadows.map(box => box.active), [false, false]);
        }

        // Lines come and go while the window changes its size.
        function test_lists_change_with_the_width() {
            const address = "fe80:0000:0000:0000:0000:0000:0000:1234/64";
            for (const width of [720, 300, 800, 720]) {
                root.width = width;
                showAddresses([{name: "wg0", ip4: address, type_: "wireguard", is_wg: true}, {}, {name: "wg1", ip4: address + width}]);
                show(numbered(width / 10));
                draw(page);
                compare(page.wifiList[0].width, width);
                const row = page.ipsList[2];
                tryVerify(() => row.height >= findChild(row, "address").contentHeight);
            }
        }
    }
}
