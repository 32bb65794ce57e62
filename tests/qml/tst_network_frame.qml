import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.gui
import brovik.wifi
import kubelor.test
import main

// The network pages in the frame of the settings: which asks for addresses when, and the way through a login.
Item {
    id: root

    width: 100
    height: 100

    BaseTemplate {
        id: window

        width: 800
        height: 1200

        StackLayout {
            id: tabs

            anchors.fill: parent

            Item {}

            SettingsOverview {
                id: frame
            }
        }

        ScreenTestCase {
            name: "NetworkFrame"

            readonly property StackLayout stack: findChild(frame, "settingsPages")
            readonly property ComboBox selection: findChild(frame, "selection")
            readonly property Item page: stack.children[3]
            readonly property Item login: stack.children[7]
            readonly property TextField field: findChild(login, "psk")

            function initTestCase() {
                window.requestActivate();
                tryVerify(() => window.contentItem.activeFocus);
            }

            function prepare() {
                tabs.currentIndex = 1;
                frame.changeIndex(3);
                SettingsNetworkData.settingsOverviewSelected = true;
                page.emptyWifiList();
            }

            // The question for addresses comes of itself.
            function compareWishes(expected) {
                compare(sent.take(Wifi).filter(([, action]) => action !== Wifi.IPData).map(([, action, value]) => [action, value]), expected);
            }

            // The backend answers the choice of a network.
            function openLogin(name = "Halle", psk = "") {
                Backend.runOnThread(`wifi.Wifi.set_login_data(${JSON.stringify(name)}, ${JSON.stringify(psk)})`);
                tryCompare(stack, "currentIndex", 7);
                draw(login);
            }

            function type(text) {
                mouseClick(field);
                for (const letter of text) {
                    keyClick(letter);
                }
            }

            function test_positions() {
                verify(page instanceof SettingsNetwork && login instanceof WifiLoginPage);
                compare([Common.settingsNetworkIndex, SettingsNetworkData.settingsNetworkIndex, SettingsNetworkData.wifiLoginPageIndex], [3, 3, 7]);
            }

            // Polling

            function test_addresses_are_asked_for_on_the_page() {
                verify(SettingsNetworkData.wifiWorkerEnabled);
                compare(findChild(page, "poll").interval, 1000);
                tryVerify(() => sent.count >= 2);
                verify(sent.messages.every(([family, action, value]) => family === Wifi && action === Wifi.IPData && value === null));
            }

            function test_leaving_the_page_stops_the_question_data() {
                return [0, 1, 2, 4, 5, 6, 7].map(index => ({tag: `page ${index}`, index: index}));
            }

            function test_leaving_the_page_stops_the_question(data) {
                const poll = findChild(page, "poll");
                verify(poll.running);
                frame.changeIndex(data.index);
                compare([SettingsNetworkData.settingsNetworkSelected, SettingsNetworkData.wifiWorkerEnabled, poll.running], [false, false, false]);
                frame.changeIndex(3);
                verify(poll.running);
            }

            function test_another_tab_stops_the_question() {
                SettingsNetworkData.settingsOverviewSelected = false;
                compare([SettingsNetworkData.wifiWorkerEnabled, findChild(page, "poll").running], [false, false]);
            }

            // Login

            function test_login() {
                Backend.runOnThread("wifi.Wifi.set_scan_results({'Halle': {'quality': 50}, 'Lager': {}})");
                tryCompare(page.wifiList, "length", 2);
                draw(page);
                mouseClick(page.wifiList[0].btn);
                compareWishes([[Wifi.Login, "Halle"]]);
                openLogin("Halle", "alt");
                compare([login.essid, login.psk], ["Halle", "alt"]);
                compare([selection.displayText, Gui.page], ["", Gui.PageWifiLogin]);
                field.clear();
                type("geheim");
                sent.clear();
                mouseClick(findChild(login, "connect"));
                compareWishes([[Wifi.Connect, ["Halle", "geheim"]]]);
                compare([stack.currentIndex, selection.displayText, Gui.page], [3, "Netzwerk", Gui.PageSettingsNetwork]);
                compare([page.wifiList.length, login.psk], [0, ""]);
            }

            function test_back() {
                Backend.runOnThread("wifi.Wifi.set_scan_results({'Halle': {'quality': 50}})");
                tryCompare(page.wifiList, "length", 1);
                openLogin();
                mouseClick(findChild(login, "back"));
                compare([stack.currentIndex, selection.displayText, page.wifiList.length], [3, "Netzwerk", 1]);
                compareWishes([]);
            }

            // The page isn't one of the box's entries.
            function test_selection_shows_no_entry_on_the_login_page() {
                openLogin();
                compare([selection.currentIndex, selection.displayText, selection.count], [7, "", 7]);
            }

            function test_login_of_another_network_meanwhile() {
                openLogin("Halle", "eins");
                Backend.runOnThread("wifi.Wifi.set_login_data('Lager', 'zwei')");
                tryCompare(login, "essid", "Lager");
                compare([login.psk, stack.currentIndex], ["zwei", 7]);
            }

            function test_login_while_another_tab_shows() {
                tabs.currentIndex = 0;
                Gui.changePage(Gui.PageAuto);
                Backend.runOnThread("wifi.Wifi.set_login_data('Halle', 'alt')");
                tryCompare(stack, "currentIndex", 7);
                compare([tabs.currentIndex, Gui.page], [0, Gui.PageAuto]);
                tabs.currentIndex = 1;
                compare([login.essid, login.psk, Gui.page], ["Halle", "alt", Gui.PageWifiLogin]);
            }

            function test_password_is_gone_after_the_page_data() {
                const ways = {
                    "connect": () => mouseClick(findChild(login, "connect")),
                    "back": () => mouseClick(findChild(login, "back")),
                    "selection": () => {
                        mouseClick(selection);
                        tryVerify(() => selection.popup.opened);
                        mouseClick(selection.popup.contentItem.itemAtIndex(0));
                        tryVerify(() => !selection.popup.visible);
                    },
                    "another page": () => frame.changeIndex(6),
                    "updates": () => frame.showUpdatePage(),
                    "another tab": () => tabs.currentIndex = 0
                };
                return Object.keys(ways).map(way => ({tag: way, leave: ways[way]}));
            }

            function test_password_is_gone_after_the_page(data) {
                openLogin();
                type("geheim");
                compare(login.psk, "geheim");
                data.leave();
                compare([login.psk, field.activeFocus], ["", false]);
            }
        }
    }
}
