import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.gui
import kubelor.test
import main
import "items.js" as Items

// The boxes of the baths and the header in every size of window and controls: nothing is cut off, nothing jumps.
Item {
    id: root

    width: 100
    height: 100

    Component {
        id: windowComponent

        Main {}
    }

    ScreenTestCase {
        name: "AutoFit"

        property Main window

        readonly property string longName: "Reiniger mit einem langen Namen, Kanister vom Lager im zweiten Stock"

        function initTestCase() {
            failOnWarning(/.?/);
            window = windowComponent.createObject(root);
            tryVerify(() => window.active);
        }

        function cleanupTestCase() {
            window.destroy();
        }

        function part(name) {
            return findChild(window.contentItem, name);
        }

        function sizes() {
            const at = (w, h, scale) => ({tag: `${w}x${h} ${scale}`, w, h, scale});
            return [].concat(...["1.0", "1.3", "1.6"].map(scale => [at(720, 950, scale), at(800, 1200, scale)]));
        }

        function resize(data) {
            window.width = data.w;
            window.height = data.h;
            Backend.run(`gui.Gui.apply_items_scale_to_default(${data.scale})`);
            draw(window.contentItem);
        }

        function labels(box) {
            return Items.below(box, item => item instanceof Label && item.visible && item.text);
        }

        function test_boxes_data() {
            return [].concat(...sizes().map(size => [["kurz", "kurz"], [longName, "kurz"], ["kurz", longName], [longName, longName.repeat(2)]].map((names, i) => Object.assign({}, size, {tag: `${size.tag} ${i}`, names: names}))));
        }

        function test_boxes(data) {
            resize(data);
            const names = data.names.map(name => JSON.stringify(name));
            Backend.run(`settings.SettingsValues.lw_saure_name, settings.SettingsValues.lw_lauge_name = ${names}\nauto.Auto.lw_saure_max = 123.45\nauto.Auto.lw_saure_active = auto.Auto.lw_sp_reached = True`);
            draw(window.contentItem);
            const boxes = ["saure", "lauge"].map(part);
            for (const box of boxes) {
                for (const label of labels(box)) {
                    const tooSmall = Items.tooSmallFor(label, box.parent);
                    verify(!tooSmall, `${label.text}: ${tooSmall}`);
                }
                const button = box.btnStart;
                const end = button.mapToItem(box, button.width, button.height);
                fuzzyCompare(end.x, box.width - box.margins, 1);
                fuzzyCompare(end.y, box.height - box.margins, 1);
            }
            const [acid, lye] = boxes;
            compare([acid.y, acid.height], [lye.y, lye.height]);
            const rows = box => labels(box).map(label => label.mapToItem(box, 0, label.height).y);
            compare(rows(acid), rows(lye));
        }

        // The longest text, and every other in the same letters.
        function test_button_texts_data() {
            return sizes();
        }

        function test_button_texts(data) {
            resize(data);
            const button = part("saure").btnStart;
            const textSizes = [[false, false], [true, false], [true, true]].map(([active, reached]) => {
                Backend.run(`auto.Auto.lw_saure_active, auto.Auto.lw_sp_reached = ${active ? "True" : "False"}, ${reached ? "True" : "False"}`);
                verify(button.implicitContentWidth <= button.availableWidth, `${button.text} ${button.implicitContentWidth} ${button.availableWidth}`);
                return button.font.pointSize;
            });
            compare(textSizes, [textSizes[0], textSizes[0], textSizes[0]]);
        }

        function test_header_data() {
            return sizes();
        }

        function test_header(data) {
            resize(data);
            const boxes = ["pressure", "conductivity"].map(part);
            const seen = [0, 9.99, 10, 99.99, 100, 999.99].map(value => {
                Backend.run(`sensor.Sensor.set_lw_without_offset(${value})\nsensor.Sensor.set_p_without_offset(${value / 11})`);
                draw(window.contentItem);
                boxes.forEach(box => verify(box.contentWidth <= box.width - box.leftPadding - box.rightPadding && !box.truncated, box.text));
                return boxes.map(box => box.fontInfo.pixelSize);
            });
            verify(seen[0][0] >= 15 * Number(data.scale), seen[0][0]);
            seen.forEach(pair => compare(pair, [seen[0][0], seen[0][0]]));
        }

        function test_progress_text_data() {
            return [].concat(...sizes().map(size => ["35 %", "Abgebrochen", "Fehler beim Vorspannen des Fasses", "Wort ".repeat(39)].map(text => Object.assign({}, size, {tag: `${size.tag} ${text}`, text: text}))));
        }

        // It takes what its letters take.
        function test_progress_text(data) {
            resize(data);
            Backend.run(`auto.Auto.progress_str = ${JSON.stringify(data.text)}`);
            draw(window.contentItem);
            const label = part("progressText");
            fuzzyCompare(label.height, label.contentHeight, 1);
            verify(label.contentWidth <= label.width, `${label.contentWidth} ${label.width}`);
            verify(label.height >= label.fontInfo.pixelSize && label.height < 1.5 * label.lineCount * label.fontInfo.pixelSize, `${label.height} ${label.fontInfo.pixelSize}`);
            compare(label.font.pointSize, 100);
            Backend.run("auto.Auto.progress_str = ''");
        }
    }
}
