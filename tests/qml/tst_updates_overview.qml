import QtQuick

import brovik.components
import brovik.gui
import brovik.shell
import kubelor.test

// The frame of the update pages: actions, tabs, and what they report.
Item {
    id: root

    width: 720
    height: 900

    Component {
        id: settingsComponent

        PageStack {
            readonly property alias updates: updates

            anchors.fill: parent
            shown: true

            Item {}

            UpdatesOverview {
                id: updates
            }
        }
    }

    Component {
        id: aloneComponent

        UpdatesOverview {
            anchors.fill: parent
        }
    }

    ScreenTestCase {
        name: "UpdatesOverview"

        property PageStack settings
        property UpdatesOverview page

        readonly property var tabTexts: ["Übersicht", "Verfügbar", "Installiert", "Ausgabekonsole"]
        readonly property var tabPages: [Gui.PageUpdatesOverview, Gui.PageUpdatesAvailable, Gui.PageUpdatesInstalled, Gui.PageUpdatesConsole]

        function prepare() {
            Backend.run("shell.Shell.upgradables = [{'name': 'kubelor', 'changelogAvailable': 'log'}]\nshell.Shell.installed = [{'name': 'kubelor', 'name2': 'log'}]");
            settings = createTemporaryObject(settingsComponent, root);
            page = settings.updates;
            settings.currentIndex = 1;
        }

        function part(name) {
            return findChild(page, name);
        }

        function tab(index) {
            return part("bar").itemAt(index);
        }

        // A tab stands in its place once the pages have slid there.
        function open(index) {
            mouseClick(tab(index));
            tryVerify(() => part("tabs").itemAt(index).mapToItem(page, 0, 0).x === 0);
        }

        function test_actions_data() {
            return [{tag: "update", text: "Suche nach Updates", icon: "arrow-repeat", action: Shell.Update}, {tag: "upgrade", text: "Upgrade durchführen", icon: "download", action: Shell.Upgrade}];
        }

        function test_actions(data) {
            const button = part(data.tag);
            compare([button.text, button.icon.source], [data.text, `qrc:/brovik/shell/img/${data.icon}.svg`]);
            mouseClick(button);
            compareSentThrough(Shell, [[data.action, null]]);
        }

        function test_actions_share_the_width() {
            const [update, upgrade] = [part("update"), part("upgrade")];
            tryCompare(part("actions"), "width", page.width);
            fuzzyCompare(update.width, upgrade.width, 1);
            compare(upgrade.x + upgrade.width, page.width);
        }

        function test_upgrade_needs_updates_and_no_run_data() {
            return [{tag: "both", updates: 1, run: false, enabled: true}, {tag: "no updates", updates: 0, run: false, enabled: false}, {tag: "a run", updates: 1, run: true, enabled: false}];
        }

        function test_upgrade_needs_updates_and_no_run(data) {
            Backend.run(`shell.Shell.upgradables = [{}] * ${data.updates}\nauto.Auto.active = ${data.run ? "True" : "False"}`);
            compare(part("upgrade").enabled, data.enabled);
            verify(part("update").enabled);
            mouseClick(part("upgrade"));
            compareSentThrough(Shell, data.enabled ? [[Shell.Upgrade, null]] : []);
        }

        function test_order() {
            const parts = ["actions", "bar", "tabs"].map(name => part(name));
            tryVerify(() => parts[2].y > 0);
            compare(parts[0].y, 0);
            verify(parts[1].y >= parts[0].height);
            verify(parts[2].y >= parts[1].y + parts[1].height);
            verify(part("update").x < part("upgrade").x);
        }

        function test_tabs() {
            compare(part("bar").count, 4);
            compare([0, 1, 2, 3].map(index => tab(index).text), tabTexts);
            compare(part("tabs").count, 4);
            verify(part("tabs").clip);
            verify(!part("tabs").interactive);
            tryVerify(() => part("tabs").y + part("tabs").height === page.height);
            compare(part("tabs").width, page.width);
        }

        function test_tab_shares_the_width() {
            tryCompare(part("bar"), "width", page.width);
            for (let index = 0; index < 4; ++index) {
                compare(tab(index).width, page.width / 4);
            }
        }

        function test_tab_is_as_wide_as_its_text() {
            settings.anchors.fill = undefined;
            settings.width = 200;
            tryCompare(page, "width", 200);
            for (let index = 0; index < 4; ++index) {
                compare(tab(index).width, Math.max(tab(index).implicitWidth, 50));
            }
            verify(tab(3).width > 50);
        }

        function test_positions() {
            compare(ShellData.updatesOverviewIndex, 1);
            compare([ShellData.updatesTabOverviewIndex, ShellData.updatesTabAvailableIndex, ShellData.updatesTabInstalledIndex, ShellData.updatesTabConsoleOutputIndex], [0, 1, 2, 3]);
        }

        function test_operator_chooses_a_tab_data() {
            return tabTexts.map((text, index) => ({tag: text, index: index, page: tabPages[index]}));
        }

        function test_operator_chooses_a_tab(data) {
            page.currentIndex = data.index === 0 ? 1 : 0;
            mouseClick(tab(data.index));
            compare(page.currentIndex, data.index);
            compare(part("tabs").currentIndex, data.index);
            compare(part("tabs").currentPage, data.page);
            compare(settings.currentPage, data.page);
            compare(Gui.page, data.page);
        }

        function test_available_prints() {
            Backend.startRecordingPrints();
            page.currentIndex = 1;
            page.currentIndex = 2;
            page.currentIndex = 1;
            compare(Backend.takePrints().filter(line => line.includes("tab available")).length, 2);
        }

        function test_page_reports_its_tab_when_it_turns_current() {
            compare(Gui.page, Gui.PageUpdatesOverview);
            mouseClick(tab(2));
            settings.currentIndex = 0;
            verify(!page.isCurrent);
            Gui.changePage(Gui.PageSettingsAuto);
            settings.currentIndex = 1;
            verify(page.isCurrent);
            compare(settings.currentPage, Gui.PageUpdatesInstalled);
            compare(Gui.page, Gui.PageUpdatesInstalled);
        }

        function test_page_that_is_not_current_reports_nothing() {
            settings.currentIndex = 0;
            settings.setCurrentPage(Gui.PageSettingsAuto);
            page.currentIndex = 3;
            compare(part("tabs").currentPage, Gui.PageUpdatesConsole);
            compare([settings.currentPage, Gui.page], [Gui.PageSettingsAuto, Gui.PageSettingsAuto]);
        }

        function test_page_without_a_frame() {
            const alone = createTemporaryObject(aloneComponent, root);
            Gui.changePage(Gui.PageAuto);
            alone.currentIndex = 1;
            compare(findChild(alone, "tabs").currentPage, Gui.PageUpdatesAvailable);
            compare(Gui.page, Gui.PageAuto);
        }

        function test_leaving_a_table_while_a_changelog_is_open_data() {
            return [{tag: "available", index: 1}, {tag: "installed", index: 2}];
        }

        function test_leaving_a_table_while_a_changelog_is_open(data) {
            const tablePage = part(data.tag);
            open(data.index);
            tablePage.currentIndex = 1;
            open(3);
            compare(tablePage.currentIndex, 0);
            open(data.index);
            compare(tablePage.currentIndex, 0);
        }

        function test_changelog_stays_open_while_only_the_settings_page_changes() {
            open(1);
            part("available").currentIndex = 1;
            settings.currentIndex = 0;
            settings.currentIndex = 1;
            compare(part("available").currentIndex, 1);
        }

        // A row is laid out for the width that its table has by then.
        function test_table_is_laid_out_anew_data() {
            return [{tag: "available", index: 1}, {tag: "installed", index: 2}];
        }

        function test_table_is_laid_out_anew(data) {
            const table = part(data.tag).table;
            tryVerify(() => table.rows === 1);
            let heights = 0;
            const provider = () => {
                ++heights;
                return 77;
            };
            table.rowHeightProvider = provider;
            const before = heights;
            page.currentIndex = data.index;
            verify(heights > before);
            compare(table.itemAtCell(0, 0).height, 77);
        }

        function test_locked_data() {
            return ["update", "upgrade", "testing", "clearCache"].map(name => ({tag: name}));
        }

        function test_locked(data) {
            verify(part(data.tag).enabled);
            Backend.run("shell.Shell.locked = True");
            verify(!part(data.tag).enabled);
            mouseClick(part(data.tag));
            compareSentThrough(Shell, []);
            Backend.run("shell.Shell.locked = False");
            verify(part(data.tag).enabled);
        }

        function test_tabs_and_changelogs_stay_usable_while_locked() {
            Backend.run("shell.Shell.locked = True");
            const expected = [[Shell.Changelog, "log", 1, 5], [Shell.LocalChangelog, "log", 2, 4]];
            for (const [action, value, index, column] of expected) {
                open(index);
                const tablePage = part("tabs").itemAt(index);
                mouseClick(tablePage.table.itemAtCell(column, 0).btn);
                compare(tablePage.currentIndex, 1);
                compareSentThrough(Shell, [[action, value]]);
                const changelog = tablePage.itemAt(1);
                tryVerify(() => changelog.mapToItem(tablePage, 0, 0).x === 0);
                mouseClick(changelog.backBtn);
                compare(tablePage.currentIndex, 0);
            }
        }

        function test_text_of_the_console_stays_usable_while_locked() {
            Backend.runOnThread("shell.Shell.locked = True\nshell.Shell.append_stdout('eins')");
            open(3);
            const output = part("output");
            tryVerify(() => output.length > 0);
            output.selectAll();
            ["select", "copy", "clear"].forEach(name => verify(part(name).enabled, name));
        }
    }
}
