import QtQuick
import QtQuick.Layouts

import brovik.settings
import kubelor.test
import main
import "items.js" as Items
import "settings.js" as Names

// The number boxes and a backend that stores a wish only some time after it has got it.
Item {
    id: root

    width: 720
    height: 5700

    Component {
        id: pagesComponent

        // One below the other and as high as they are, so that every box can be clicked.
        Column {
            readonly property alias prestress: prestress

            anchors.fill: parent

            SettingsAuto {
                width: parent.width
                height: 4500
            }

            SettingsElectrolyte {
                width: parent.width
                height: 1000
            }

            // Of the same setting as a row of the first page.
            PrestressRow {
                id: prestress
            }
        }
    }

    ScreenTestCase {
        id: testCase

        name: "LateBackend"

        property Item pages
        // What has reached the backend and was not answered yet.
        property var open: []

        function prepare() {
            pages = createTemporaryObject(pagesComponent, root);
            draw(pages);
            // A busy machine may take long between two lines of a test.
            setPatience(60000);
            open = [];
            answer = (key, value) => open.push([key, value]);
        }

        function setPatience(patience) {
            for (const spinBox of [prestress(), ...rows().map(row => row.spinBox)]) {
                const stores = [...Array.from(spinBox.data), ...Array.from(spinBox.parent.data)].filter(object => object?.patience !== undefined);
                compare(stores.length, 1);
                stores[0].patience = patience;
            }
        }

        // As the boxes have it by themselves.
        function usePatience() {
            setPatience(1000);
        }

        function rows() {
            return Items.below(pages, item => item.spinBox !== undefined);
        }

        function box(key) {
            return rows().find(row => row.key === Names.keyOf(key)).spinBox;
        }

        function prestress() {
            return Items.below(pages.prestress, item => item.objectName === "prestress")[0];
        }

        function press(spinBox, ...directions) {
            for (const direction of directions) {
                mouseClick(spinBox[direction].indicator);
                // What the box does on its own happens between two presses.
                Backend.settle();
            }
        }

        function store(values) {
            Backend.runOnThread("from brovik.settings import SettingsValues\n" + Object.entries(values).map(([key, value]) => [Names.pythonName(key), value]).map(([name, value]) => `SettingsValues.${name} = type(SettingsValues.${name})(${value})`).join("\n"));
            Backend.settle();
        }

        function nameOf(number) {
            return ["thresholdLwWater", "thresholdLwElectrolyte", "secsPump", "lwSaureMin", "vorspannenP"].find(name => Names.keyOf(name) === number);
        }

        // Stores what has been asked for, the oldest first.
        function answerOne(which = 0) {
            const [[number, value]] = open.splice(which, 1);
            store({[nameOf(number)]: value});
        }

        // What the answers lead to is answered as well. An exchange without an end is cut off.
        function answerAll() {
            for (let left = 50; open.length > 0 && left > 0; --left) {
                answerOne();
            }
        }

        // All since the test began.
        function verifySent(key, ...values) {
            compare(readable(sent.messages), readable(values.map(value => [BrovikSettings, Names.keyOf(key), value])));
        }

        function test_up_and_down_settles() {
            const water = box("thresholdLwWater");
            press(water, "up", "down");
            answerAll();
            verifySent("thresholdLwWater", 0.15, 0.1);
            compare([BrovikSettings.thresholdLwWater, water.value], [0.1, 10]);
        }

        function test_each_press_goes_on_from_the_last_wish_data() {
            return [
                {tag: "settings of the run", key: "thresholdLwWater", values: [0.15, 0.2, 0.25, 0.3], shown: 30},
                {tag: "of the baths", key: "lwSaureMin", values: [11, 12, 13, 14], shown: 14}
            ];
        }

        function test_each_press_goes_on_from_the_last_wish(data) {
            const spinBox = box(data.key);
            press(spinBox, "up", "up", "up", "up");
            compare(spinBox.value, data.shown);
            for (let answers = 0; answers < 4; ++answers) {
                answerOne();
                compare(spinBox.value, data.shown);
            }
            verifySent(data.key, ...data.values);
            compare(BrovikSettings[data.key], data.values[3]);
        }

        // While the first answers come in.
        function test_press_between_the_answers() {
            const water = box("thresholdLwWater");
            press(water, "up", "up");
            answerOne();
            press(water, "up");
            answerAll();
            verifySent("thresholdLwWater", 0.15, 0.2, 0.25);
            compare([BrovikSettings.thresholdLwWater, water.value], [0.25, 25]);
        }

        function test_typed_number() {
            const water = box("thresholdLwWater");
            water.contentItem.forceActiveFocus();
            water.contentItem.selectAll();
            for (const key of "0.52") {
                keyClick(key);
            }
            keyClick(Qt.Key_Return);
            Backend.settle();
            compare(water.displayText, "0.52");
            press(water, "up");
            answerAll();
            verifySent("thresholdLwWater", 0.52, 0.57);
            compare(water.displayText, "0.57");
        }

        function test_answers_out_of_order_data() {
            return [
                {tag: "two", presses: ["up", "up"], order: [1, 0], values: [0.15, 0.2], stored: 0.15},
                {tag: "up and down", presses: ["up", "down"], order: [1, 0], values: [0.15, 0.1], stored: 0.15},
                {tag: "four", presses: ["up", "up", "up", "up"], order: [1, 0, 1, 0], values: [0.15, 0.2, 0.25, 0.3], stored: 0.25}
            ];
        }

        function test_answers_out_of_order(data) {
            usePatience();
            const water = box("thresholdLwWater");
            press(water, ...data.presses);
            data.order.forEach(which => answerOne(which));
            answerAll();
            verifySent("thresholdLwWater", ...data.values);
            compare(BrovikSettings.thresholdLwWater, data.stored);
            // What has changed nothing is no answer: the box waits for one.
            tryCompare(water, "value", Math.round(data.stored * 100));
        }

        // What is stored then shows at once, and comes back as any change of the backend does.
        function test_another_value_is_stored() {
            const water = box("thresholdLwWater");
            press(water, "up", "up");
            answerOne();
            open = [];
            store({thresholdLwWater: 0.17});
            compare(water.value, 17);
            answerAll();
            verifySent("thresholdLwWater", 0.15, 0.2, 0.17);
            press(water, "up");
            compare(water.value, 22);
        }

        function test_never_stored_goes_back() {
            usePatience();
            const water = box("thresholdLwWater");
            press(water, "up");
            compare(water.value, 15);
            open = [];
            tryCompare(water, "value", 10);
            verifySent("thresholdLwWater", 0.15);
            // The next wish begins at what is stored.
            press(water, "up");
            verifySent("thresholdLwWater", 0.15, 0.15);
        }

        // The boxes have given up meanwhile.
        function test_stored_very_late() {
            usePatience();
            const water = box("thresholdLwWater");
            press(water, "up", "down", "up");
            tryCompare(water, "value", 10);
            answerOne();
            compare(water.value, 15);
            answerOne();
            compare(water.value, 10);
            answerAll();
            verifySent("thresholdLwWater", 0.15, 0.1, 0.15);
            compare([BrovikSettings.thresholdLwWater, water.value], [0.15, 15]);
        }

        // They are two boxes on two pages, and both follow.
        function test_two_boxes_of_one_setting_data() {
            return [{tag: "on the page of the run", own: true}, {tag: "in its settings", own: false}];
        }

        function test_two_boxes_of_one_setting(data) {
            const both = [prestress(), box("vorspannenP")];
            const [used, other] = data.own ? both : both.reverse();
            press(used, "up", "down", "up");
            answerAll();
            verifySent("vorspannenP", 0.8, 0.7, 0.8);
            compare([used.value, other.value], [8, 8]);
        }

        function test_own_change_of_the_backend_comes_back_once_data() {
            return [{tag: "one box", key: "thresholdLwWater", values: [0.3, 0.5]}, {tag: "two boxes", key: "vorspannenP", values: [1.3, 1.5]}];
        }

        function test_own_change_of_the_backend_comes_back_once(data) {
            const [first, second] = data.values;
            store({[data.key]: first});
            verifySent(data.key, first);
            answerAll();
            verifySent(data.key, first);
            store({[data.key]: second});
            answerAll();
            verifySent(data.key, first, second);
        }

        // The second change comes before the first one has been stored again.
        function test_own_changes_in_a_row_settle_data() {
            return test_own_change_of_the_backend_comes_back_once_data();
        }

        function test_own_changes_in_a_row_settle(data) {
            const [first, second] = data.values;
            store({[data.key]: first});
            store({[data.key]: second});
            answerAll();
            verifySent(data.key, first, second);
            compare(BrovikSettings[data.key], second);
        }

        // It could be an answer as well, so it comes back when no other one has followed.
        function test_own_change_and_back_data() {
            return test_own_change_of_the_backend_comes_back_once_data();
        }

        function test_own_change_and_back(data) {
            usePatience();
            const [first, second] = data.values;
            for (const value of [first, second, first]) {
                store({[data.key]: value});
                answerAll();
            }
            tryVerify(() => sent.count >= 3);
            answerAll();
            verifySent(data.key, first, second, first);
        }

        function test_own_change_of_the_backend_after_a_refusal() {
            usePatience();
            const water = box("thresholdLwWater");
            press(water, "up");
            open = [];
            tryCompare(water, "value", 10);
            store({thresholdLwWater: 0.4});
            verifySent("thresholdLwWater", 0.15, 0.4);
        }

        // Both are written, and neither box may keep the other from its value.
        function test_pair_of_thresholds_data() {
            const rows = [];
            for (const order of [["thresholdLwWater", "thresholdLwElectrolyte"], ["thresholdLwElectrolyte", "thresholdLwWater"]]) {
                rows.push({tag: `${order[0]} first, together`, order: order, together: true});
                rows.push({tag: `${order[0]} first, one after the other`, order: order, together: false});
            }
            return rows;
        }

        function test_pair_of_thresholds(data) {
            const write = (water, electrolyte) => {
                const values = {thresholdLwWater: water, thresholdLwElectrolyte: electrolyte};
                const ordered = data.order.map(key => ({[key]: values[key]}));
                (data.together ? [Object.assign({}, ...ordered)] : ordered).forEach(store);
                answerAll();
                compare([BrovikSettings.thresholdLwWater, BrovikSettings.thresholdLwElectrolyte], [water, electrolyte]);
                compare([box("thresholdLwWater").value, box("thresholdLwElectrolyte").value], [Math.round(water * 100), Math.round(electrolyte * 100)]);
            };
            write(0.1, 0.9);
            write(1.2, 4.0);
            write(0.1, 0.3);
            // Each value that was written, once, and nothing else.
            const values = key => sent.messages.filter(([, number]) => number === Names.keyOf(key)).map(([, , value]) => value);
            compare(values("thresholdLwWater"), [1.2, 0.1]);
            compare(values("thresholdLwElectrolyte"), [0.9, 4.0, 0.3]);
        }

        // The box can show no more than its bounds let through.
        function test_bound_that_cuts_is_no_wish() {
            store({secsPump: 15});
            answerAll();
            sent.clear();
            Backend.runOnThread("settings.SettingsValues.secs_pump_max = 10");
            Backend.settle();
            compare([box("secsPump").value, BrovikSettings.secsPump], [10, 15]);
            compareSent([]);
            store({secsPump: 8});
            verifySent("secsPump", 8);
        }

        // The box rounds; the backend has written no round number.
        function test_number_between_the_steps() {
            store({thresholdLwWater: 0.123});
            compare(box("thresholdLwWater").value, 12);
            answerAll();
            verifySent("thresholdLwWater", 0.123);
            compare(BrovikSettings.thresholdLwWater, 0.123);
        }

        function test_own_change_of_the_backend_does_not_come_back_from_the_baths() {
            store({lwSaureMin: 15});
            compare(box("lwSaureMin").value, 15);
            compareSent([]);
        }
    }
}
