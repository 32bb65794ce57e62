import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.components
import brovik.gui
import kubelor.test

Item {
    id: root

    width: 600
    height: 600

    Component {
        id: boxComponent

        ElectrolyteBox {
            width: 360
            height: 400
            what: "Säure"
            product: "SANAL®-SA <b>3</b>"
            minimum: 10
            setpoint: 20
            sbMinimum.from: 1
            sbMinimum.to: 50
            sbSetpoint.to: 100
        }
    }

    Component {
        id: freshComponent

        ElectrolyteBox {}
    }

    ScreenTestCase {
        name: "ElectrolyteBox"

        property ElectrolyteBox box

        function prepare() {
            box = createTemporaryObject(boxComponent, root);
        }

        function labels(item) {
            let found = [];
            for (let i = 0; i < item.children.length; ++i) {
                const child = item.children[i];
                found = found.concat(child instanceof Label ? [child] : child instanceof Control ? [] : labels(child));
            }
            return found;
        }

        function test_texts_data() {
            return [{tag: "Säure"}, {tag: "Lauge"}];
        }

        function test_texts(data) {
            box.what = data.tag;
            compare(labels(box).map(label => label.text), [data.tag, "SANAL®-SA <b>3</b>", "Aktueller Höchstwert: ", "0.00 mS/cm", `Sollwert ${data.tag}: `, "20 mS/cm", `Mindestwert ${data.tag}: `, "10 mS/cm", "Minimum", "Sollwert"]);
        }

        function test_name_and_product() {
            const [what, product] = labels(box);
            verify(what.font.bold);
            compare(what.font.pointSize, Gui.fSizeL);
            compare(product.textFormat, Text.PlainText);
        }

        function test_order() {
            const column = labels(box)[0].parent;
            const kinds = [Label, Label, BrovikBoxSeparatorLine, RowLayout, BrovikBoxSeparatorLine, GridLayout, BrovikBoxSeparatorLine, BrovikDelayButton];
            compare(column.children.length, kinds.length);
            kinds.forEach((kind, i) => verify(column.children[i] instanceof kind, i));
            for (let i = 1; i < kinds.length; ++i) {
                verify(column.children[i].y >= column.children[i - 1].y + column.children[i - 1].height);
            }
        }

        // Name and product, values beside their names, headings above their spin boxes.
        function test_layout() {
            draw(box);
            const all = labels(box);
            for (const label of all.slice(0, 2)) {
                compare([label.horizontalAlignment, label.width], [Text.AlignHCenter, label.parent.width]);
            }
            const names = [2, 4, 6].map(i => all[i]);
            const values = [3, 5, 7].map(i => all[i]);
            compare(names.map(label => label.x + label.width), values.map(label => label.x));
            compare(values.map(label => label.x), values.map(() => values[0].x));
            const grid = names[0].parent;
            const content = grid.parent;
            verify(Math.abs(2 * grid.x + grid.width - content.width) <= 1);
            fuzzyCompare(content.children[0].width, content.children[2].width, 1);
            compare(content.width, all[0].width);
            [box.sbMinimum, box.sbSetpoint].forEach((spinBox, i) => {
                const heading = all[8 + i];
                verify(Math.abs(2 * (spinBox.x - heading.x) + spinBox.width - heading.width) <= 1);
                verify(heading.y + heading.height <= spinBox.y);
            });
            compare([box.sbMinimum.x, box.sbSetpoint.x + box.sbSetpoint.width], [0, content.width]);
            verify(Math.abs(box.sbMinimum.width - box.sbSetpoint.width) <= 1);
            compare(box.btnStart.width, content.width);
        }

        function test_defaults() {
            const fresh = createTemporaryObject(freshComponent, root);
            compare([fresh.unit, fresh.active, fresh.btnStart.enabled], ["mS/cm", false, false]);
        }

        function test_highest_value_with_two_decimals_data() {
            return [{tag: "7", value: 7, text: "7.00 mS/cm"}, {tag: "12.346", value: 12.346, text: "12.35 mS/cm"}, {tag: "0.1", value: 0.1, text: "0.10 mS/cm"}];
        }

        function test_highest_value_with_two_decimals(data) {
            box.lwActualMax = data.value;
            compare(labels(box)[3].text, data.text);
        }

        function test_setpoint_stays_above_the_minimum() {
            compare(box.sbSetpoint.from, 11);
            box.minimum = 15;
            compare(box.sbSetpoint.from, 16);
            compare(box.sbSetpoint.value, 20);
        }

        function test_minimum_raised_to_the_setpoint() {
            let modified = 0;
            box.sbSetpoint.valueModified.connect(() => ++modified);
            box.minimum = 20;
            compare(box.sbSetpoint.from, 21);
            compare(box.sbSetpoint.value, 21);
            compare(labels(box)[5].text, "21 mS/cm");
            compare(modified, 0);
            // With its range the stored value comes back.
            box.minimum = 19;
            tryCompare(box.sbSetpoint, "value", 20);
        }

        function test_refused_minimum_lets_go_of_the_setpoint() {
            box.minimum = 19;
            mouseClick(box.sbMinimum.up.indicator);
            compare([box.sbMinimum.value, box.sbSetpoint.value], [20, 21]);
            tryCompare(box.sbMinimum, "value", 19);
            tryCompare(box.sbSetpoint, "value", 20);
        }

        // Answers that come late.
        function test_each_press_goes_on_from_the_last_wish() {
            for (let presses = 0; presses < 3; ++presses) {
                mouseClick(box.sbMinimum.up.indicator);
                mouseClick(box.sbSetpoint.down.indicator);
            }
            compare([box.sbMinimum.value, box.sbSetpoint.value], [13, 17]);
            box.minimum = 11;
            box.setpoint = 19;
            compare([box.sbMinimum.value, box.sbSetpoint.value], [13, 17]);
            box.minimum = 13;
            box.setpoint = 17;
            compare([box.sbMinimum.value, box.sbSetpoint.value], [13, 17]);
            // Nobody has wished any more.
            box.minimum = 12;
            box.setpoint = 18;
            compare([box.sbMinimum.value, box.sbSetpoint.value], [12, 18]);
        }

        function test_editable_by_keyboard() {
            verify(box.sbMinimum.editable && box.sbSetpoint.editable);
            compare([box.sbMinimum.Accessible.name, box.sbSetpoint.Accessible.name], ["Minimum Säure", "Sollwert Säure"]);
        }

        function test_locked_during_a_run() {
            verify(box.sbMinimum.enabled && box.sbSetpoint.enabled);
            Backend.run("auto.Auto.active = True");
            verify(!box.sbMinimum.enabled && !box.sbSetpoint.enabled);
        }

        function test_button_texts_data() {
            return [
                {tag: "outside a test", active: false, reached: false, text: "Überprüfung starten"},
                {tag: "during a test", active: true, reached: false, text: "Überprüfung abbrechen"},
                {tag: "set point reached", active: true, reached: true, text: "Überprüfung abschließen"},
                {tag: "the other bath has reached it", active: false, reached: true, text: "Überprüfung starten"}
            ];
        }

        function test_button_texts(data) {
            box.active = data.active;
            Backend.run(`auto.Auto.lw_sp_reached = ${data.reached ? "True" : "False"}`);
            compare(box.btnStart.text, data.text);
        }

        function test_button() {
            verify(!box.btnStart.enabled);
            compare(box.btnStart.delay, 1000);
        }
    }
}
