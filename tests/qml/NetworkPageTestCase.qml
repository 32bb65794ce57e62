// A test of the network page, which stands alone in its stack.
import QtQuick

import brovik.components
import brovik.wifi
import kubelor.test

ScreenTestCase {
    id: root

    readonly property Component stackComponent: Component {
        PageStack {
            readonly property alias page: page

            anchors.fill: parent
            shown: true

            Item {}

            SettingsNetwork {
                id: page
            }
        }
    }

    property PageStack stack
    property SettingsNetwork page

    // Names that strangers give to their networks.
    readonly property var hostileNames: ["<img src=\"qrc:/missing.png\">", "<img src='http://127.0.0.1:9/x.png'>", "<a href=\"x\">Klick</a>", "<b>fett</b>", "&lt;b&gt; &amp;", "%1 %s ${1}", "a\u0000b", "Halle\n2", "Halle\t\u0007\u001b[31m", "\u202eabgedreht\u202c", "\u200f", "\u{1F600}".repeat(8), "Halle", "Halle ", "halle", "Halle\u200b", "", " ", "__proto__", "constructor", "W".repeat(32)]

    function prepare() {
        stack = createTemporaryObject(stackComponent, parent);
        page = stack.page;
        stack.currentIndex = 1;
        draw(page);
    }

    function part(name) {
        return findChild(page, name);
    }

    function text(value) {
        return JSON.stringify(value);
    }

    // Lets the backend end a scan with these networks.
    function show(results) {
        Backend.runOnThread(`import json\nwifi.Wifi.set_scan_results(json.loads(${text(text(results))}))`);
        // The signal comes as an event.
        page.waitingForWifiScan = true;
        tryCompare(page, "waitingForWifiScan", false);
    }

    // So many networks.
    function numbered(count) {
        return Array.from({length: count}).reduce((all, _, i) => Object.assign(all, {[`Netz ${i}`]: {quality: i}}), {});
    }

    function names() {
        return Array.from(page.wifiList, line => line.ssid);
    }

    function showAddresses(records) {
        Backend.runOnThread(`import json\nwifi.Wifi.ip_map_list = json.loads(${text(text(records))})`);
        tryCompare(page.ipsList, "length", records.length);
    }

    // What a line shows beside its name.
    function cells(line) {
        return [findChild(line, "quality").text, findChild(line, "band").text];
    }

    // Nothing is where it belongs before the first frame.
    function press(button) {
        draw(page);
        mouseClick(button);
    }
}
