import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtTest

import brovik.components
import brovik.gui
import brovik.wifi
import kubelor.test
import main
import "items.js" as Items

// Fonts and heights follow the factor that the backend gives to a display.
Item {
    id: root

    width: 100
    height: 100

    Component {
        id: windowComponent

        Main {}
    }

    TestCase {
        name: "ScaledPages"
        when: windowShown

        property Main window

        // Everything that is there only if there is something to show.
        readonly property string content: `
shell.Shell.upgradables = [{'name': 'kubelor', 'versionNew': '1.2', 'versionOld': '1.1', 'urgency': 'high', 'lastChange': ['eins'], 'changelogAvailable': 'log'}]
shell.Shell.installed = [{'name': 'kubelor', 'version': '1.1', 'arch': 'arm64', 'description': 'Bedienung', 'name2': 'kubelor'}]
config.Config.has_steam_valve = config.Config.has_level_switch = True
settings.SettingsValues.do_steam_step = settings.SettingsValues.test_lauge_level = True
sensor.Sensor.lw_type = sensor.SensorLwEnum.Seli_SLI_03
gui.Gui.status3 = 'Zeile'
actuator.Actuator.set_dout_model(actuator.Actuator.all_douts)`

        readonly property var factors: [{tag: "smaller", factor: 0.8, controlHeight: 52, boxLeftMargin: 28}, {tag: "larger", factor: 1.5, controlHeight: 98, boxLeftMargin: 53}]

        function initTestCase() {
            failOnWarning(/.?/);
            Backend.run(content);
            window = windowComponent.createObject(root);
            tryVerify(() => window.active);
            // No text makes itself smaller to fit.
            window.width = 1600;
            window.height = 2000;
            draw();
        }

        function init() {
            failOnWarning(/.?/);
            scale(1.0);
        }

        function cleanupTestCase() {
            window.destroy();
        }

        // Also if nothing asks for a frame.
        function draw() {
            window.update();
            verify(waitForRendering(window.contentItem));
        }

        function scale(factor) {
            Backend.run(`gui.Gui.apply_items_scale_to_default(${factor})`);
        }

        function part(name) {
            return findChild(window.contentItem, name);
        }

        // What all that has text looks like once it is drawn.
        function look() {
            draw();
            return all(item => item.font !== undefined).map(item => [item.text, item.font.pointSize, item.visible, item.width, item.height].join()).join("\n");
        }

        function test_another_display_changes_no_screen() {
            const before = look();
            Backend.run("config.Config.display_type = config.DisplayType._7_WSSKU_14628");
            const after = look();
            Backend.run("config.Config.display_type = config.Config.display_type_default");
            compare(after, before);
            compare(Gui.fSizeS, 14);
        }

        // All of a kind, on whichever page.
        function all(wanted) {
            const found = Items.below(window.contentItem, wanted);
            verify(found.length > 0);
            return found;
        }

        function labelled(text) {
            return all(item => item instanceof Label && item.text === text);
        }

        function compareSizes(items, size) {
            for (const item of items) {
                fuzzyCompare(item.font.pointSize, size, 0.01, item.text);
            }
        }

        function test_named_sizes_data() {
            return factors;
        }

        function test_named_sizes(data) {
            scale(data.factor);
            compareSizes([window], 14 * data.factor);
            compareSizes([part("tabs"), part("selection"), part("manualHeating"), part("upgradableCount"), part("installedCount"), part("back")], 16 * data.factor);
            compareSizes(all(item => item instanceof BrovikButton), 16 * data.factor);
            compareSizes(all(item => item instanceof BrovikDOutButton), 16 * data.factor);
            compareSizes(all(item => item instanceof BrovikDelayButton && item.objectName !== "start"), 16 * data.factor);
            compareSizes(all(item => item instanceof Label && item.text.startsWith("Aktuelle Auflösung")), 16 * data.factor);
            compareSizes([...labelled("Vorspanndruck:"), ...labelled("Säure"), ...labelled("Lauge")], 18 * data.factor);
        }

        function test_fixed_sizes_data() {
            return factors;
        }

        // The two that have to be seen from afar, and the rows of networks, which are of one height.
        function test_fixed_sizes(data) {
            scale(data.factor);
            compareSizes([part("start")], 20);
            tryCompare(part("start"), "height", 75);
            compareSizes([part("progressText")], 100);
            compareSizes(["ssid", "quality", "band"].map(part), 12);
        }

        // Also what fits its room, which does not grow.
        function isFixed(item) {
            return item !== null && (item instanceof WifiLine || ["start", "progressText", "inputPanel", "pressure", "conductivity"].includes(item.objectName) || isFixed(item.parent));
        }

        function test_every_other_text_data() {
            return factors;
        }

        function test_every_other_text(data) {
            const texts = all(item => item.font !== undefined && !isFixed(item));
            const before = texts.map(item => item.font.pointSize);
            scale(data.factor);
            texts.forEach((item, i) => fuzzyCompare(item.font.pointSize, before[i] * data.factor, 0.01, `${item} ${item.text}`));
        }

        function test_controls_data() {
            return factors;
        }

        function test_controls(data) {
            scale(data.factor);
            const pages = part("settingsPages");
            part("tabs").currentIndex = 2;
            tryCompare(part("selection"), "height", data.controlHeight);
            for (const [index, count] of [[2, 4], [5, 4], [6, 13]]) {
                pages.currentIndex = index;
                const controls = Items.below(pages.children[index], item => item.checkable !== undefined && item.visible && item.position === undefined);
                compare(controls.length, count);
                for (const control of controls) {
                    tryCompare(control, "height", data.controlHeight, 20000, control.text);
                }
            }
            tryCompare(part("manualHeating"), "height", data.controlHeight);
            part("tabs").currentIndex = 0;
            for (const box of ["saure", "lauge"]) {
                tryCompare(part(box).btnStart, "height", data.controlHeight);
            }
            part("tabs").currentIndex = 1;
            part("charts").currentIndex = 1;
            tryCompare(part("back"), "height", data.controlHeight);
            part("charts").currentIndex = 0;
        }

        function test_margin_of_the_boxes_data() {
            return factors;
        }

        function test_margin_of_the_boxes(data) {
            scale(data.factor);
            part("tabs").currentIndex = 2;
            part("settingsPages").currentIndex = 0;
            const [number] = labelled("1:");
            tryCompare(number, "width", data.boxLeftMargin);
        }
    }
}
