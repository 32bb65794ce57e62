import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts
import QtTest

import brovik.base
import brovik.components
import brovik.gui
import kubelor.test
import main
import "items.js" as Items

// Nothing is cut off or overlaps, in the window's own size and in a larger one.
Item {
    id: root

    width: 100
    height: 100

    Component {
        id: windowComponent

        Main {}
    }

    TestCase {
        name: "SettingsFit"
        when: windowShown

        property Main window

        function init() {
            failOnWarning(/.?/);
            Gui.changePage(Gui.PageAuto);
            window = createTemporaryObject(windowComponent, root);
            tryVerify(() => window.active);
        }

        function isInside(item) {
            const room = item.parent.mapToItem(null, item.parent.width, item.parent.height);
            const end = item.mapToItem(null, item.width, item.height);
            // To the fraction of a pixel that layouts round.
            return end.x <= room.x + 0.5 && end.y <= room.y + 0.5;
        }

        function verifyFits(label, page) {
            verify(label.height >= label.contentHeight && label.width >= label.contentWidth, label.text);
            for (let item = label; item !== page && !(item.parent instanceof Flickable); item = item.parent) {
                verify(isInside(item), `${label.text}: ${item}`);
            }
        }

        function test_fit_data() {
            const pages = [[0, "SettingsAuto"], [1, "SettingsElectrolyte"], [2, "SettingsMisc"], [5, "SettingsAppearance"], [6, "HandOp"]];
            const at = (w, h) => pages.map(([index, name]) => ({tag: `${name} ${w}x${h}`, index, w, h}));
            return at(720, 950).concat(at(800, 1200));
        }

        function test_fit(data) {
            window.width = data.w;
            window.height = data.h;
            findChild(window.contentItem, "tabs").currentIndex = 2;
            waitForRendering(window.contentItem);
            const pages = findChild(window.contentItem, "settingsPages");
            pages.currentIndex = data.index;
            const page = pages.children[data.index];
            waitForRendering(page);
            const labels = Items.below(page, item => item instanceof Label && item.visible);
            verify(labels.length > 0);
            for (const label of labels) {
                verifyFits(label, page);
            }
        }
    }
}
