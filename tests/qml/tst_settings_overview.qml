import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts
import Qt.labs.settings

import brovik.base
import brovik.gui
import brovik.shell
import kubelor.test
import main
import "items.js" as Items

// The frame of the settings pages, and the page of the window itself.
Item {
    id: root

    width: 100
    height: 100

    Component {
        id: windowComponent

        BaseTemplate {
            readonly property alias tabs: tabs
            readonly property alias frame: frame

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
        }
    }

    // Another eye on the settings file.
    Settings {
        id: memory

        category: "window"
    }

    ScreenTestCase {
        name: "SettingsOverview"

        property var window

        // Position, text in the selection, and what the page reports, if there is a page.
        readonly property var pages: [
            {index: 0, text: "Reinigungsprozess", page: Gui.PageSettingsAuto},
            {index: 1, text: "Leitwertprüfung", page: Gui.PageSettingsElectrolyte},
            {index: 2, text: "Sonstige Einstellungen", page: Gui.PageSettingsMisc},
            {index: 3, text: "Netzwerk", page: Gui.PageSettingsNetwork},
            {index: 4, text: "Updates", page: Gui.PageUpdatesOverview},
            {index: 5, text: "Erscheinungsbild", page: Gui.PageSettingsAppearance},
            {index: 6, text: "Handbetrieb", page: Gui.PageHandOp}
        ]

        function prepare() {
            Backend.forgetSettings();
            Backend.setDarkTheme(true);
            open();
        }

        // A window of its own, as after a start of the program.
        function open() {
            Gui.changePage(Gui.PageAuto);
            window = createTemporaryObject(windowComponent, root);
            tryVerify(() => window.active);
        }

        function selection() {
            return findChild(window.frame, "selection");
        }

        function stack() {
            return findChild(window.frame, "settingsPages");
        }

        function button(text) {
            window.tabs.currentIndex = 1;
            window.frame.changeIndex(5);
            const found = Items.below(stack(), item => item.text === text)[0];
            tryVerify(() => found.width === window.width || found instanceof Label);
            return found;
        }

        function test_selection() {
            compare(selection().model, pages.map(page => page.text));
            compare(selection().font.pointSize, Gui.fSizeM);
            verify(selection().Accessible.name !== "");
            window.tabs.currentIndex = 1;
            tryCompare(selection(), "height", Gui.controlHeight);
            compare(selection().width, window.width);
            compare(stack().y + stack().height, window.height);
        }

        function test_indices() {
            compare([Common.settingsAutoIndex, Common.settingsElecrolyteIndex, Common.settingsMiscIndex, Common.settingsNetworkIndex, Common.settingsAppearanceIndex, Common.handOpIndex], [0, 1, 2, 3, 5, 6]);
            compare(Common.settingsOverviewIndex, 1);
            compare(stack().count, 8);
        }

        function test_operator_selects_data() {
            return pages.map(page => Object.assign({tag: page.text}, page));
        }

        function test_operator_selects(data) {
            window.tabs.currentIndex = 1;
            const box = selection();
            // From another page.
            window.frame.changeIndex(data.index === 0 ? 1 : 0);
            mouseClick(box);
            tryVerify(() => box.popup.opened);
            mouseClick(box.popup.contentItem.itemAtIndex(data.index));
            compare(box.currentIndex, data.index);
            compare(stack().currentIndex, data.index);
            if (data.page !== undefined) {
                compare(Gui.page, data.page);
                compare(stack().currentPage, data.page);
            }
        }

        function test_change_index_data() {
            return pages.map(page => Object.assign({tag: page.text}, page));
        }

        function test_change_index(data) {
            window.tabs.currentIndex = 1;
            window.frame.changeIndex(data.index);
            compare([stack().currentIndex, selection().currentIndex], [data.index, data.index]);
            compare(selection().displayText, data.text);
            if (data.page !== undefined) {
                compare(Gui.page, data.page);
            }
        }

        // After the operator has chosen, too.
        function test_page_without_an_entry() {
            window.tabs.currentIndex = 1;
            const box = selection();
            mouseClick(box);
            tryVerify(() => box.popup.opened);
            mouseClick(box.popup.contentItem.itemAtIndex(2));
            window.frame.changeIndex(7);
            compare(stack().currentIndex, 7);
            compare(box.displayText, "");
            window.frame.changeIndex(3);
            compare(box.displayText, "Netzwerk");
        }

        function test_update_page_data() {
            return [
                {tag: "by itself", index: undefined, tab: 0, page: Gui.PageUpdatesOverview},
                {tag: "console", index: ShellData.updatesTabConsoleOutputIndex, tab: 3, page: Gui.PageUpdatesConsole},
                {tag: "installed", index: ShellData.updatesTabInstalledIndex, tab: 2, page: Gui.PageUpdatesInstalled},
                {tag: "position of the page itself", index: ShellData.updatesOverviewIndex, tab: 0, page: Gui.PageUpdatesOverview},
                {tag: "none", index: -1, tab: 0, page: Gui.PageUpdatesOverview},
                {tag: "far", index: 99, tab: 0, page: Gui.PageUpdatesOverview}
            ];
        }

        // From each tab of theirs.
        function test_update_page(data) {
            const updates = findChild(window.frame, "updates");
            compare(ShellData.updatesOverviewIndex, 4);
            window.tabs.currentIndex = 1;
            for (let from = 0; from < 4; ++from) {
                updates.currentIndex = from;
                window.frame.changeIndex(0);
                window.frame.showUpdatePage(data.index);
                compare([stack().currentIndex, selection().displayText], [4, "Updates"]);
                compare(updates.currentIndex, data.tab);
                compare([stack().currentPage, Gui.page], [data.page, data.page]);
            }
        }

        function test_hidden_frame_reports_nothing() {
            compare(stack().currentPage, Gui.PageSettingsAuto);
            window.frame.changeIndex(2);
            compare(stack().currentPage, Gui.PageSettingsMisc);
            compare(Gui.page, Gui.PageAuto);
        }

        function test_returning_reports_the_same_page() {
            window.tabs.currentIndex = 1;
            compare(Gui.page, Gui.PageSettingsAuto);
            window.frame.changeIndex(6);
            window.tabs.currentIndex = 0;
            Gui.changePage(Gui.PageChart);
            window.tabs.currentIndex = 1;
            compare(Gui.page, Gui.PageHandOp);
        }

        function test_geometry_without_a_file() {
            compare([window.y, window.width, window.height], [70, 720, 950]);
        }

        function test_geometry_is_kept_and_restored() {
            [window.x, window.y, window.width, window.height] = [40, 90, 640, 800];
            tryVerify(() => window.x === 40 && window.y === 90 && window.width === 640 && window.height === 800);
            compare(memory.value("width"), undefined);
            window.close();
            memory.sync();
            compare(["x", "y", "width", "height"].map(key => Number(memory.value(key))), [40, 90, 640, 800]);
            // In the file itself, and at once.
            for (const line of ["[window]", "x=40", "y=90", "width=640", "height=800"]) {
                verify(Backend.settingsFile().split("\n").includes(line), line);
            }
            open();
            tryVerify(() => window.x === 40 && window.y === 90 && window.width === 640 && window.height === 800);
        }

        function test_stored_nonsense_is_replaced_data() {
            return ["breit", "-5", "0", "1e9", "12.5", "NaN", ""].map(text => ({tag: text}));
        }

        function test_stored_nonsense_is_replaced(data) {
            memory.setValue("width", data.tag);
            memory.setValue("height", "700");
            ignoreWarning(`Gespeicherter Wert von window/width wird ignoriert: ${data.tag}`);
            open();
            compare([window.width, window.height], [720, 700]);
        }

        function test_theme_is_stored_at_each_change() {
            for (const [theme, dark] of [[Material.Light, "false"], [Material.Dark, "true"]]) {
                window.setTheme(theme);
                memory.sync();
                compare(String(memory.value("dark")), dark);
            }
        }

        function test_theme_button_data() {
            return [{tag: "dark", from: Material.Dark, to: Material.Light, text: "Theme ändern zu: hell", icon: "sun"}, {tag: "light", from: Material.Light, to: Material.Dark, text: "Theme ändern zu: dunkel", icon: "moon"}];
        }

        function test_theme_button(data) {
            window.setTheme(data.from);
            const pressed = button(data.text);
            verify(pressed.icon.source.toString().endsWith(`img/${data.icon}.svg`));
            mouseClick(pressed);
            compare(window.Material.theme, data.to);
        }

        function test_buttons() {
            for (const text of ["App minimieren", "App schließen", "Fullscreen an", "Theme ändern zu: hell"]) {
                const found = button(text);
                compare([found.height, found.width, found.font.bold, found.font.pointSize], [Gui.controlHeight, window.width, true, Gui.fSizeM], text);
            }
        }

        function test_order_of_the_window_page() {
            const texts = ["App minimieren", "App schließen", "Fullscreen an", "Theme ändern zu: hell", `Aktuelle Auflösung des Fensters: ${window.width}x${window.height}`];
            const found = texts.map(button);
            for (let i = 1; i < found.length; ++i) {
                verify(found[i].y >= found[i - 1].y + found[i - 1].height, texts[i]);
            }
        }

        function test_fullscreen() {
            mouseClick(button("Fullscreen an"));
            compare(window.visibility, Window.FullScreen);
            mouseClick(button("Fullscreen aus"));
            compare(window.visibility, Window.Windowed);
            verify(button("Fullscreen an"));
        }

        function hold(pressed) {
            mousePress(pressed);
            tryCompare(pressed, "progress", 1);
            mouseRelease(pressed);
        }

        function test_minimise() {
            hold(button("App minimieren"));
            compare(window.visibility, Window.Minimized);
        }

        function test_close() {
            const pressed = button("App schließen");
            mouseClick(pressed);
            verify(window.visible);
            hold(pressed);
            verify(!window.visible);
        }

        function test_resolution() {
            const label = button("Aktuelle Auflösung des Fensters: 720x950");
            compare(label.font.pointSize, Gui.fSizeM);
            window.width = 800;
            window.height = 1200;
            tryCompare(label, "text", "Aktuelle Auflösung des Fensters: 800x1200");
        }
    }
}
