import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts
import QtTest

import brovik.base
import brovik.components
import brovik.gui
import kubelor.test
import main

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

        function items(parent, wanted) {
            const children = Array.from({length: parent.children.length}, (_, i) => parent.children[i]);
            return children.reduce((found, child) => found.concat(wanted(child) ? [child] : [], items(child, wanted)), []);
        }

        function inside(item) {
            const box = item.parent.mapToItem(null, 0, 0);
            const at = item.mapToItem(null, 0, 0);
            return at.y + item.height <= box.y + item.parent.height + 0.5 && at.x + item.width <= box.x + item.parent.width + 0.5;
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
            const selection = findChild(window.contentItem, "selection");
            const pages = findChild(window.contentItem, "settingsPages");
            selection.currentIndex = data.index;
            pages.currentIndex = data.index;
            const page = pages.children[data.index];
            waitForRendering(page);
            for (const label of items(page, item => item instanceof Label && item.visible)) {
                verify(label.height >= label.contentHeight && label.width >= label.contentWidth, label.text);
                for (let item = label; item !== page && !(item.parent instanceof Flickable); item = item.parent)
                verify(inside(item), `${label.text} ${item} ${item.y} ${item.height} ${item.parent.height} ${item.parent.implicitHeight}`);
            }
        }
    }
}
