import QtQuick
import QtQuick.Controls.Material
import QtTest

import brovik.base
import brovik.gui
import brovik.wifi
import kubelor.test
import main
import "items.js" as Items

Item {
    id: root

    width: 100
    height: 100

    Component {
        id: windowComponent

        Main {}
    }

    SignalSpy {
        id: pageChanged

        target: Gui
        signalName: "pageChanged"
    }

    ScreenTestCase {
        name: "MainWindow"

        property Main window

        function initTestCase() {
            failOnWarning(/.?/);
            window = windowComponent.createObject(root);
            window.requestActivate();
            tryVerify(() => window.active);
        }

        function prepare() {
            pageChanged.clear();
        }

        function cleanupTestCase() {
            window.destroy();
        }

        function cleanup() {
            window.setTheme(Material.Dark);
        }

        function part(name) {
            return findChild(window.contentItem, name);
        }

        function test_window() {
            // Not x: this platform leaves room for a frame.
            compare([window.y, window.width, window.height], [70, 720, 950]);
            compare(window.font.pointSize, Gui.fSizeS);
            compare(window.font.capitalization, Font.MixedCase);
            compare([Common.autoOverviewIndex, Common.chartsOverviewIndex, Common.settingsOverviewIndex], [0, 1, 2]);
        }

        // What stands on the screen is not written to the log as well.
        function test_huge_status() {
            Backend.startRecordingPrints();
            Backend.runOnThread("gui.Gui.status = gui.Gui.status2 = gui.Gui.status3 = 'lang ' * 2000000");
            for (const name of ["status", "status2", "status3"]) {
                tryVerify(() => part(name).text.length === Texts.statusLimit + 1);
            }
            Backend.runOnThread("gui.Gui.status3 = ''");
            tryVerify(() => !part("status3").text);
            compare(Backend.takePrints().filter(line => line.includes("lang lang")), []);
        }

        function test_header_texts() {
            Backend.runOnThread("sensor.Sensor.set_p_without_offset(1.239)\nsensor.Sensor.set_lw_without_offset(42)\ngui.Gui.status, gui.Gui.status2 = '<b>Schritt</b>', 'Zwei\\nZeilen'");
            tryCompare(part("pressure"), "text", "Druck:\n1.24 bar");
            compare(part("conductivity").text, "Leitwert:\n42.00 mS/cm");
            compare(part("status2").text, "Zwei\nZeilen");
            compare(part("status").text, "<b>Schritt</b>");
            for (const name of ["status", "status2"]) {
                compare(part(name).textFormat, Text.PlainText);
                compare(part(name).leftPadding, 5);
            }
        }

        function test_header_sizes_data() {
            return [{tag: "1.0"}, {tag: "1.5"}];
        }

        function test_header_sizes(data) {
            const factor = Number(data.tag);
            Backend.run(`gui.Gui.apply_items_scale_to_default(${data.tag})`);
            tryCompare(part("pressure"), "width", 95 * factor);
            tryCompare(part("conductivity"), "width", 125 * factor);
            tryCompare(part("pressure"), "height", 80 * factor);
            tryCompare(part("status"), "height", 40 * factor);
            compare(part("status").width, window.width);
            compare(part("toast").height, 80 * factor);
            for (const name of ["pressure", "conductivity", "status2", "status"]) {
                compare(part(name).background.color, Common.bg1);
            }
        }

        function test_header_layout() {
            const boxes = ["pressure", "conductivity", "status2", "status"].map(part);
            compare(boxes.map(box => box.horizontalAlignment), [Text.AlignHCenter, Text.AlignHCenter, Text.AlignLeft, Text.AlignLeft]);
            verify(boxes.every(box => box.verticalAlignment === Text.AlignVCenter));
            compare(boxes[2].wrapMode, Text.WordWrap);
            const [pressure, conductivity, status2, status] = boxes;
            compare(pressure.mapToItem(null, 0, 0), Qt.point(0, 0));
            verify(pressure.x + pressure.width <= conductivity.x && conductivity.x + conductivity.width <= status2.x);
            compare(status2.x + status2.width, window.width);
            compare(status.x, 0);
            const tops = [pressure, status, part("tabs"), part("pages")].map(item => item.mapToItem(null, 0, 0).y);
            compare(tops.slice().sort((a, b) => a - b), tops);
        }

        function test_tabs_between_the_tool_buttons() {
            const [power, tabs, theme] = ["power", "tabs", "theme"].map(part);
            compare(power.x, 0);
            compare(tabs.x, power.width);
            compare(theme.x, tabs.x + tabs.width);
            compare(theme.x + theme.width, window.width);
        }

        // What is later lies above.
        function test_order_of_the_children() {
            const items = [part("pages").parent, part("simulatorButton"), part("inputPanel")];
            const places = items.map(item => Array.from(window.contentItem.children).indexOf(item));
            verify(places[0] >= 0 && places[0] < places[1] && places[1] < places[2], places);
            compare(part("simulatorButton").win.objectName, "simulator");
        }

        function test_tabs() {
            const tabs = part("tabs");
            compare([0, 1, 2].map(i => tabs.itemAt(i).text), ["Automatik", "Chart", "Settings"]);
            compare(tabs.font.pointSize, Gui.fSizeM);
            for (let i = 0; i < 3; ++i) {
                mouseClick(tabs.itemAt(i));
                compare(part("pages").currentIndex, i);
            }
        }

        function test_page_stack_has_its_margins() {
            const pages = part("pages");
            compare(pages.x, 5);
            compare(pages.width, window.width - 2 * 5);
            compare(pages.mapToItem(null, 0, pages.height).y, window.height);
        }

        // Where the backend's page leads to, from each of the tabs.
        function test_following_the_page_data() {
            const leads = [["PageAuto", 0], ["PageChart", 1], ["PageSettingsAuto", 2, 0], ["PageHandOp", 2, 6], ["PageUpdatesOverview", 2, 4, 0], ["PageUpdatesShell", 2, 4, 3]];
            return leads.map(([name, tab, settings, updates]) => ({tag: name, page: Gui[name], tab: tab, settings: settings, updates: updates}));
        }

        function test_following_the_page(data) {
            const tabs = part("tabs");
            for (const from of [0, 1, 2]) {
                tabs.currentIndex = from;
                Gui.changePage(Gui.PageSettingsMisc);
                Gui.changePage(data.page);
                compare(tabs.currentIndex, data.tab);
                if (data.settings !== undefined) {
                    compare(part("settingsPages").currentIndex, data.settings);
                }
                if (data.updates !== undefined) {
                    compare(part("updates").currentIndex, data.updates);
                }
            }
        }

        function test_network_is_watched_on_its_own_page_alone() {
            const settings = part("settingsPages");
            const tabs = part("tabs");
            tabs.currentIndex = 2;
            settings.currentIndex = 3;
            verify(SettingsNetworkData.wifiWorkerEnabled);
            for (const other of [0, 1]) {
                mouseClick(tabs.itemAt(other));
                compare([SettingsNetworkData.settingsOverviewSelected, SettingsNetworkData.wifiWorkerEnabled], [false, false]);
                mouseClick(tabs.itemAt(2));
                compare([SettingsNetworkData.settingsOverviewSelected, SettingsNetworkData.wifiWorkerEnabled], [true, true]);
            }
            settings.currentIndex = 0;
            compare([SettingsNetworkData.settingsOverviewSelected, SettingsNetworkData.wifiWorkerEnabled], [true, false]);
        }

        function test_chart_page_shows_the_chart_itself() {
            const charts = part("charts");
            charts.currentIndex = 1;
            Backend.runOnThread("gui.Gui.page = gui.PageEnum.Chart");
            tryCompare(part("tabs"), "currentIndex", 1);
            compare(charts.currentIndex, 0);
        }

        function test_other_pages_move_nothing_data() {
            return ["PageSettingsElectrolyte", "PageSettingsMisc", "PageSettingsNetwork", "PageSettingsAppearance", "PageWifiLogin", "PageChartsList", "PageUpdatesAvailable", "PageUpdatesInstalled", "PageUpdatesConsole"].map(name => ({tag: name, page: Gui[name]}));
        }

        function test_other_pages_move_nothing(data) {
            const tabs = part("tabs");
            const places = () => [tabs, part("settingsPages"), part("updates"), part("charts")].map(item => item.currentIndex);
            for (const from of [0, 1, 2]) {
                tabs.currentIndex = from;
                const before = places();
                // The tab has reported its page.
                pageChanged.clear();
                Backend.runOnThread(`gui.Gui.page = gui.PageEnum(${data.page})`);
                tryCompare(pageChanged, "count", 1);
                Backend.settle();
                compare(places(), before);
                compare(Gui.page, data.page);
                compare(pageChanged.count, 1);
                Gui.changePage(Gui.PageAuto);
                pageChanged.clear();
            }
        }

        function test_report_of_a_page_moves_nothing() {
            const tabs = part("tabs");
            mouseClick(tabs.itemAt(1));
            compare(Gui.page, Gui.PageChart);
            compare(tabs.currentIndex, 1);
            mouseClick(tabs.itemAt(0));
            compare(Gui.page, Gui.PageAuto);
            compare(tabs.currentIndex, 0);
            compare(pageChanged.count, 2);
        }

        function test_theme_button_data() {
            return [{tag: "dark", from: Material.Dark, to: Material.Light, icon: "sun", name: "Helles Design"}, {tag: "light", from: Material.Light, to: Material.Dark, icon: "moon", name: "Dunkles Design"}];
        }

        function test_theme_button(data) {
            const button = part("theme");
            window.setTheme(data.from);
            compare(button.icon.source, `img/${data.icon}.svg`);
            compare(button.Accessible.name, data.name);
            mouseClick(button);
            compare(window.Material.theme, data.to);
        }

        function test_tool_buttons() {
            compare(part("power").icon.source, "img/power.svg");
            verify(part("power").Accessible.name !== "");
            for (const name of ["power", "theme"]) {
                compare(part(name).height, part("tabs").height);
                compare(part(name).padding, 0);
                compare(part(name).display, AbstractButton.IconOnly);
            }
        }

        function test_toast_of_the_backend() {
            Backend.runOnThread("gui.Gui.toast_notify('Gespeichert', gui.IconEnum.Saved, gui.ColorEnum.Green, 60000)");
            tryVerify(() => part("toast").opened);
            part("toast").close();
            tryVerify(() => !part("toast").visible);
        }

        function test_toast_of_the_console() {
            Gui.changePage(Gui.PageUpdatesShell);
            Backend.runOnThread("shell.Shell.append_stdout('eins')");
            const output = part("output");
            tryCompare(output, "length", 4);
            output.selectAll();
            // The tab slides to its place.
            tryVerify(() => part("copy").mapToItem(null, 0, 0).x < window.width);
            mouseClick(part("copy"));
            tryVerify(() => part("toast").opened);
            const texts = Items.below(part("toast").contentItem, item => item instanceof Label).map(label => label.text);
            compare(texts, ["Text in die Zwischenablage kopiert"]);
            compare(part("toast").imgUrl, "qrc:/brovik/base/img/info-circle.svg");
            part("toast").close();
            tryVerify(() => !part("toast").visible);
        }

        function test_power_button_opens_the_popup() {
            verify(!part("powerPopup").visible);
            mouseClick(part("power"));
            tryVerify(() => part("powerPopup").opened);
            part("powerPopup").close();
            tryVerify(() => !part("powerPopup").visible);
        }

        function test_backend_opens_the_popup() {
            Backend.runOnThread("gui.Gui.show_poweroff_dialog()");
            tryVerify(() => part("powerPopup").opened);
            part("powerPopup").close();
            tryVerify(() => !part("powerPopup").visible);
        }

        function test_simulator() {
            const button = part("simulatorButton");
            compare(button.win.title, "Simulator");
            verify(!button.visible && !button.win.visible);
            Backend.runOnThread("simulator.Simulator.enabled = True");
            tryVerify(() => button.visible && button.win.visible);
            const corner = button.mapToItem(null, button.width, button.height);
            compare([corner.x, corner.y], [window.width - 5, window.height - 5]);
            button.win.close();
            mouseClick(button);
            tryVerify(() => button.win.active);
            button.win.close();
            Backend.runOnThread("simulator.Simulator.enabled = False");
            tryVerify(() => !button.visible);
            window.requestActivate();
            tryVerify(() => window.active);
        }

        function test_keyboard_rests_below_the_window() {
            const panel = part("inputPanel");
            compare([panel.x, panel.y, panel.z, panel.width], [0, window.height, 99, window.width]);
            compare(Common.mainHeight, window.height);
            verify(panel.externalLanguageSwitchEnabled);
        }

        function test_keyboard_raised() {
            const panel = part("inputPanel");
            const pages = part("pages");
            // Where the field stands depends on the texts above it.
            part("saure").sbMinimum.contentItem.forceActiveFocus();
            Qt.inputMethod.show();
            tryVerify(() => panel.active);
            tryCompare(panel, "y", window.height - panel.height);
            verify(panel.height > 0);
            compare(panel.state, "visible");
            // The animations of a transition are made when it first runs.
            const slide = panel.transitions[0];
            const animation = slide.animations[0];
            compare([slide.to, slide.reversible], ["visible", true]);
            compare([animation.properties, animation.duration, animation.easing.type], ["y", 250, Easing.InOutQuad]);
            compare(Common.mainHeight, panel.y);
            compare(pages.mapToItem(null, 0, pages.height).y, panel.y);
            Qt.inputMethod.hide();
            tryCompare(panel, "y", window.height);
            tryCompare(pages.parent, "height", window.height);
        }

        function test_keyboard_speaks_german() {
            tryCompare(Qt.inputMethod.locale, "name", "de_DE");
        }
    }
}
