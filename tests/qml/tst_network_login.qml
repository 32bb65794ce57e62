import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtTest

import brovik.components
import brovik.gui
import brovik.wifi
import "items.js" as Items

// The login page alone in its stack.
Item {
    id: root

    width: 720
    height: 700

    PageStack {
        id: stack

        anchors.fill: parent
        shown: true

        Item {}

        WifiLoginPage {
            id: page
        }
    }

    SignalSpy {
        id: connectSpy

        target: page
        signalName: "connect"
    }

    SignalSpy {
        id: goBackSpy

        target: page
        signalName: "goBack"
    }

    ScreenTestCase {
        name: "NetworkLogin"

        readonly property TextField field: findChild(page, "psk")
        readonly property CheckBox show: findChild(page, "show")

        function initTestCase() {
            compare(SettingsNetworkData.wifiLoginPageIndex, 1);
        }

        function prepare() {
            stack.visible = true;
            stack.currentIndex = 0;
            stack.currentIndex = 1;
            page.init("Halle", "");
            connectSpy.clear();
            goBackSpy.clear();
            draw(page);
        }

        function label() {
            return Items.below(page, item => item instanceof Label && item.text.startsWith("Passwort für: "))[0];
        }

        function test_name_before_the_first_login() {
            const fresh = createTemporaryQmlObject("import brovik.wifi; WifiLoginPage {}", root);
            compare([fresh.essid, fresh.psk], ["[SSID]", ""]);
        }

        function test_position_and_report() {
            verify(page.isCurrent);
            compare([stack.currentPage, Gui.page], [Gui.PageWifiLogin, Gui.PageWifiLogin]);
        }

        function test_init() {
            show.checked = true;
            page.init("Lager", "geheim");
            compare([page.essid, page.psk, field.text, show.checked], ["Lager", "geheim", "geheim", false]);
            compare(label().text, "Passwort für: Lager");
        }

        function test_echo() {
            compare([show.text, show.checked, field.echoMode], ["Passwort anzeigen", false, TextInput.Password]);
            page.init("Halle", "geheim");
            compare(field.displayText, "●".repeat(6));
            mouseClick(show);
            compare([field.echoMode, field.displayText], [TextInput.Normal, "geheim"]);
            mouseClick(show);
            compare(field.echoMode, TextInput.Password);
        }

        function test_field() {
            compare(field.inputMethodHints & (Qt.ImhNoAutoUppercase | Qt.ImhPreferLowercase | Qt.ImhSensitiveData | Qt.ImhNoPredictiveText), Qt.ImhNoAutoUppercase | Qt.ImhPreferLowercase | Qt.ImhSensitiveData | Qt.ImhNoPredictiveText);
            compare(field.width, page.width);
            verify(field.Accessible.name !== "");
            mouseClick(field);
            keyClick("a");
            keyClick("B");
            compare(page.psk, "aB");
        }

        function test_order() {
            const parts = [label(), field, show, findChild(page, "connect"), findChild(page, "back")];
            const places = parts.map(item => item.mapToItem(page, 0, 0));
            for (let i = 1; i < 4; ++i) {
                verify(places[i].y >= places[i - 1].y + parts[i - 1].height, parts[i].objectName);
            }
            compare(places[3].y, places[4].y);
            verify(places[3].x < places[4].x);
        }

        function test_buttons() {
            const connect = findChild(page, "connect");
            const back = findChild(page, "back");
            compare([connect.text, back.text], ["Verbinden", "zurück"]);
            fuzzyCompare(connect.width, back.width, 1);
            mouseClick(connect);
            compare([connectSpy.count, goBackSpy.count], [1, 0]);
            mouseClick(back);
            compare([connectSpy.count, goBackSpy.count], [1, 1]);
        }

        function test_hostile_name_data() {
            return ["<img src=\"qrc:/missing.png\">", "<a href=\"x\">Klick</a>", "<b>fett</b>", "a\u0000b\n2", "\u202eabgedreht", "", "&lt;", "W".repeat(200), "\u{1F600}".repeat(8)].map(name => ({tag: JSON.stringify(name), name: name}));
        }

        function test_hostile_name(data) {
            page.init(data.name, "");
            compare(label().text, `Passwort für: ${data.name}`);
            compare(label().textFormat, Text.PlainText);
            draw(page);
            verify(label().contentWidth <= page.width);
        }

        function test_huge_name_is_cut() {
            page.init("lang ".repeat(2000000), "");
            compare(label().text, `Passwort für: ${"lang ".repeat(40)}…`);
        }

        function test_nothing_is_left_of_the_password_data() {
            const leave = {
                "other page": () => stack.currentIndex = 0,
                "page hidden": () => stack.visible = false,
                "both": () => {
                    stack.visible = false;
                    stack.currentIndex = 0;
                }
            };
            return Object.keys(leave).map(name => ({tag: name, leave: leave[name]}));
        }

        // Not the text, not what undo or a key would bring.
        function test_nothing_is_left_of_the_password(data) {
            mouseClick(field);
            for (const letter of "geheim") {
                keyClick(letter);
            }
            show.checked = true;
            compare(page.psk, "geheim");
            data.leave();
            compare([page.psk, field.canUndo, field.canRedo, field.activeFocus, show.checked], ["", false, false, false, false]);
            keyClick("x");
            compare(page.psk, "");
        }

        // Nor of one that the operator has deleted again.
        function test_nothing_is_left_of_a_deleted_password() {
            mouseClick(field);
            keyClick("g");
            keyClick(Qt.Key_Backspace);
            verify(field.canUndo);
            stack.currentIndex = 0;
            compare([page.psk, field.canUndo, field.canRedo], ["", false, false]);
        }

        // The backend may answer while the operator looks at another tab.
        function test_password_waits_for_a_hidden_page() {
            stack.visible = false;
            stack.currentIndex = 0;
            page.init("Halle", "geheim");
            stack.currentIndex = 1;
            compare(page.psk, "geheim");
            stack.visible = true;
            compare(page.psk, "geheim");
        }

        function test_password_of_a_page_never_seen_is_gone() {
            stack.visible = false;
            stack.currentIndex = 0;
            page.init("Halle", "geheim");
            stack.currentIndex = 1;
            stack.currentIndex = 0;
            compare(page.psk, "");
        }
    }
}
