import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtTest

import brovik.gui
import kubelor.test
import main
import "items.js" as Items

// A page that has been through other factors, in view or not, is laid out like one that was made with the present one.
Item {
    id: root

    width: 100
    height: 100

    Component {
        id: windowComponent

        Main {}
    }

    TestCase {
        name: "RescaledPages"
        when: windowShown

        property Main window
        // By page and factor, see key().
        property var fresh: ({})

        // Everything that is there only if there is something to show.
        readonly property string content: `
shell.Shell.upgradables = [{'name': 'kubelor', 'versionNew': '1.2', 'versionOld': '1.1', 'urgency': 'high', 'lastChange': ['eins'], 'changelogAvailable': 'log'}]
shell.Shell.installed = [{'name': 'kubelor', 'version': '1.1', 'arch': 'arm64', 'description': 'Bedienung', 'name2': 'kubelor'}]
config.Config.has_steam_valve = config.Config.has_level_switch = True
settings.SettingsValues.do_steam_step = settings.SettingsValues.test_lauge_level = True
sensor.Sensor.lw_type = sensor.SensorLwEnum.Seli_SLI_03
gui.Gui.status3 = 'Zeile'
actuator.Actuator.set_dout_model(actuator.Actuator.all_douts)`

        // Each as the indices that lead to it: of the tab, of the page in it, of the tab of the updates.
        readonly property var pages: ({
                automatic: [0],
                chart: [1, 0],
                charts: [1, 1],
                cleaning: [2, 0],
                conductivity: [2, 1],
                misc: [2, 2],
                network: [2, 3],
                updates: [2, 4, 0],
                available: [2, 4, 1],
                installed: [2, 4, 2],
                console: [2, 4, 3],
                appearance: [2, 5],
                handOperation: [2, 6],
                login: [2, 7]
            })
        readonly property var factors: [0.8, 1.0, 1.5, 1.6]

        function initTestCase() {
            failOnWarning(/.?/);
            Backend.run(content);
            for (const factor of factors) {
                Backend.run(`gui.Gui.apply_items_scale_to_default(${factor})`);
                open();
                for (const name in pages) {
                    show(name);
                    draw();
                    fresh[key(name, factor)] = heights();
                }
                close();
            }
            Backend.run(`gui.Gui.apply_items_scale_to_default(1.0)`);
            open();
        }

        function init() {
            failOnWarning(/.?/);
        }

        function cleanupTestCase() {
            close();
        }

        function open() {
            window = windowComponent.createObject(root);
            tryVerify(() => window.active);
            window.width = 800;
            window.height = 1200;
            // The tabs of the updates change without sliding.
            for (const view of Items.below(part("updates"), item => item instanceof ListView)) {
                view.highlightMoveDuration = 0;
            }
            draw();
        }

        // Also if nothing asks for a frame.
        function draw() {
            window.update();
            verify(waitForRendering(window.contentItem));
        }

        function close() {
            window.destroy();
            tryVerify(() => window === null);
        }

        function key(name, factor) {
            return `${name} ${factor}`;
        }

        function part(name) {
            return findChild(window.contentItem, name);
        }

        // The signals arrive one by one, as those of the backend do.
        function scale(factor) {
            Backend.runOnThread(`gui.Gui.apply_items_scale_to_default(${factor})`);
            tryCompare(part("status"), "height", 40 * factor);
        }

        function show(name) {
            const [tab, page, updatesTab] = pages[name];
            part("tabs").currentIndex = tab;
            if (tab === 1) {
                part("charts").currentIndex = page;
            } else if (tab === 2) {
                part("settingsPages").currentIndex = page;
            }
            if (updatesTab !== undefined) {
                part("bar").currentIndex = updatesTab;
            }
        }

        // Of every text and control in sight.
        function heights() {
            return Items.below(part("pages"), item => item.visible && item.font !== undefined).map(item => `${item.objectName || item.text}: ${item.height.toFixed(1)}`);
        }

        function differences(name, factor) {
            const present = heights();
            const wanted = fresh[key(name, factor)];
            if (present.length !== wanted.length) {
                return [`${present.length} in sight, not ${wanted.length}`];
            }
            return present.map((height, i) => `${height}, not ${wanted[i]}`).filter((_, i) => present[i] !== wanted[i]);
        }

        function compareWithFresh(name, factor) {
            for (let left = 100; left > 0 && differences(name, factor).length > 0; --left) {
                wait(20);
            }
            compare(differences(name, factor).join("\n"), "", key(name, factor));
        }

        function steps() {
            const rows = [];
            for (const name in pages) {
                for (const [before, after] of [[1.0, 1.6], [1.6, 1.0], [0.8, 1.5], [1.5, 0.8]]) {
                    rows.push({tag: `${name} ${before} ${after}`, page: name, before: before, after: after});
                }
            }
            return rows;
        }

        function test_page_in_view_data() {
            return steps();
        }

        function test_page_in_view(data) {
            show(data.page);
            scale(data.before);
            compareWithFresh(data.page, data.before);
            scale(data.after);
            compareWithFresh(data.page, data.after);
        }

        function test_page_out_of_view_data() {
            return steps();
        }

        // Behind another tab, and behind another page of its own tab.
        function test_page_out_of_view(data) {
            for (const other of ["automatic", "charts", "login"].filter(name => name !== data.page)) {
                show(data.page);
                scale(data.before);
                compareWithFresh(data.page, data.before);
                show(other);
                scale(data.after);
                show(data.page);
                compareWithFresh(data.page, data.after);
            }
        }
    }
}
