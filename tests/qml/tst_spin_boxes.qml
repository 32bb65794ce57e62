import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtTest

import brovik.base
import "items.js" as Items

Item {
    id: root

    width: 1200
    height: 600

    Component {
        id: floatingComponent

        MyFloatingPointSpinBox {
            editable: true
            from: 0
            to: 1000
        }
    }

    Component {
        id: spinBoxComponent

        MySpinBox {
            width: 1200
            text: "Zeit"
            from: 0
            to: 10
        }
    }

    SignalSpy {
        id: spy
    }

    ScreenTestCase {
        name: "SpinBoxes"

        function watch(target, name) {
            spy.target = null;
            spy.signalName = name;
            spy.target = target;
            spy.clear();
        }

        function floating(properties) {
            return createTemporaryObject(floatingComponent, root, properties);
        }

        function type(spinBox, text) {
            spinBox.contentItem.forceActiveFocus();
            spinBox.contentItem.selectAll();
            for (const key of text) {
                keyClick(key);
            }
            if (text === "") {
                keyClick(Qt.Key_Delete);
            }
            keyClick(Qt.Key_Return);
        }

        function test_shows_the_value_in_the_locale_data() {
            return [
                {tag: "125 with 2 decimals", locale: "C", precision: 2, value: 125, text: "1.25", real: 1.25},
                {tag: "125 with 2 decimals, German", locale: "de_DE", precision: 2, value: 125, text: "1,25", real: 1.25},
                {tag: "trailing zero", locale: "C", precision: 2, value: 120, text: "1.20", real: 1.2},
                {tag: "no decimals", locale: "de_DE", precision: 0, value: 125, text: "125", real: 125},
                {tag: "one decimal", locale: "C", precision: 1, value: 7, text: "0.7", real: 0.7},
                {tag: "prefix and suffix", locale: "de_DE", precision: 1, value: 7, prefix: "ca. ", suffix: " bar", text: "ca. 0,7 bar", real: 0.7}
            ];
        }

        function test_shows_the_value_in_the_locale(data) {
            const spinBox = floating({precision: data.precision, prefix: data.prefix ?? "", suffix: data.suffix ?? "", locale: Qt.locale(data.locale)});
            spinBox.value = data.value;
            compare(spinBox.displayText, data.text);
            compare(spinBox.realValue, data.real);
            compare(spinBox.factor, Math.pow(10, data.precision));
        }

        function test_typing_data() {
            return [
                {tag: "1.2", locale: "C", precision: 1, keys: "1.2", value: 12, text: "1.2"},
                {tag: "1,2 in German", locale: "de_DE", precision: 1, keys: "1,2", value: 12, text: "1,2"},
                {tag: "1.15, no binary fraction", locale: "C", precision: 2, keys: "1.15", value: 115, text: "1.15"},
                {tag: "0.29, no binary fraction", locale: "C", precision: 2, keys: "0.29", value: 29, text: "0.29"},
                {tag: "no decimals typed", locale: "de_DE", precision: 2, keys: "3", value: 300, text: "3,00"},
                {tag: "one decimal too many", locale: "C", precision: 1, keys: "1.25", value: 12, text: "1.2"},
                {tag: "letters", locale: "C", precision: 1, keys: "1x2", value: 120, text: "12.0"},
                {tag: "foreign decimal point", locale: "de_DE", precision: 1, keys: "x5", value: 50, text: "5,0"},
                {tag: "nothing", locale: "C", precision: 1, keys: "", value: 5, text: "0.5"},
                {tag: "a lone decimal point", locale: "C", precision: 1, keys: ".", value: 5, text: "0.5"},
                {tag: "above the range", locale: "C", precision: 1, keys: "999", value: 1000, text: "100.0"},
                {tag: "leading zeros", locale: "C", precision: 0, keys: "0007", value: 7, text: "7"},
                {tag: "with its suffix", locale: "C", precision: 1, suffix: " bar", keys: "1.2 bar", value: 12, text: "1.2 bar"},
                {tag: "without its suffix", locale: "de_DE", precision: 1, suffix: " bar", keys: "1,2", value: 12, text: "1,2 bar"},
                {tag: "with prefix and suffix", locale: "C", precision: 1, prefix: "(", suffix: ")", keys: "(1.2)", value: 12, text: "(1.2)"},
                {tag: "suffix, above the range", locale: "C", precision: 1, suffix: "%", keys: "999", value: 1000, text: "100.0%"}
            ];
        }

        function test_typing(data) {
            const spinBox = floating({precision: data.precision, prefix: data.prefix ?? "", suffix: data.suffix ?? "", locale: Qt.locale(data.locale)});
            spinBox.value = 5;
            type(spinBox, data.keys);
            compare(spinBox.value, data.value);
            compare(spinBox.contentItem.text, data.text);
        }

        function test_thousands_data() {
            return [{tag: "C", keys: "1234.5"}, {tag: "de_DE", keys: "1234,5"}];
        }

        function test_thousands(data) {
            const spinBox = floating({locale: Qt.locale(data.tag), to: 99999});
            type(spinBox, data.keys);
            compare(spinBox.value, 12345);
            // What it shows is accepted again.
            verify(spinBox.contentItem.acceptableInput);
            keyClick(Qt.Key_Return);
            compare(spinBox.value, 12345);
        }

        function test_negative_numbers() {
            const spinBox = floating({from: -100});
            type(spinBox, "-1.5");
            compare(spinBox.value, -15);
            compare(spinBox.realValue, -1.5);
        }

        function test_steps_by_button_and_key() {
            const spinBox = floating({value: 5});
            watch(spinBox, "valueModified");
            mouseClick(spinBox.up.indicator);
            compare(spinBox.value, 6);
            mouseClick(spinBox.down.indicator);
            compare(spinBox.value, 5);
            spinBox.forceActiveFocus();
            keyClick(Qt.Key_Up);
            compare(spinBox.realValue, 0.6);
            keyClick(Qt.Key_Down);
            compare(spinBox.realValue, 0.5);
            compare(spy.count, 4);
            compare(spinBox.stepSize, 1);
        }

        function test_stays_in_its_range() {
            const spinBox = floating({to: 6, value: 5});
            for (let i = 0; i < 3; ++i) {
                mouseClick(spinBox.up.indicator);
            }
            compare(spinBox.value, 6);
        }

        function test_the_keyboard_offers_a_decimal_point() {
            compare(floating({}).inputMethodHints & Qt.ImhFormattedNumbersOnly, Qt.ImhFormattedNumbersOnly);
        }

        function labels(item) {
            let found = [];
            for (let i = 0; i < item.children.length; ++i) {
                const child = item.children[i];
                if (child instanceof Label && child.visible) {
                    found.push(child.text);
                }
                if (!(child instanceof SpinBox)) {
                    found = found.concat(labels(child));
                }
            }
            return found;
        }

        function test_value_12_in_0_to_10() {
            const box = createTemporaryObject(spinBoxComponent, root, {value: 12});
            verify(box.valueError);
            verify(box.error);
            compare(box.color, Common.colorWarning);
            compare(labels(box), ["Der Wert 12 liegt nicht im Bereich 0...10", "Zeit"]);
            compare(box.spinBox.value, 10);
            compare(box.value, 12);
        }

        function test_value_12_in_0_to_10_without_errors() {
            const box = createTemporaryObject(spinBoxComponent, root, {value: 12, showError: false});
            verify(box.valueError);
            verify(!box.error);
            compare(box.color, Common.bg1);
            compare(labels(box), ["Zeit"]);
            box.warnMsg = "Achtung";
            verify(box.error);
            compare(box.color, Common.colorWarning);
        }

        function test_both_kinds_of_error() {
            const box = createTemporaryObject(spinBoxComponent, root, {value: -1, warnMsg: "Achtung"});
            compare(labels(box)[0], "Achtung<br>Der Wert -1 liegt nicht im Bereich 0...10");
            box.value = 1;
            compare(labels(box)[0], "Achtung");
            box.warnMsg = "";
            compare(labels(box), ["Zeit"]);
            compare(box.color, Common.bg1);
        }

        function test_information() {
            const box = createTemporaryObject(spinBoxComponent, root, {infoMsg: "in Sekunden"});
            compare(labels(box), ["Zeit", "in Sekunden"]);
        }

        function test_texts_from_outside_are_plain() {
            const markup = "<b>fett</b>";
            const box = createTemporaryObject(spinBoxComponent, root, {text: markup, infoMsg: markup});
            const found = Items.below(box, item => item instanceof Label && item.visible && item.text === markup);
            compare(found.map(label => label.textFormat), [Text.PlainText, Text.PlainText]);
        }

        function test_label() {
            const box = createTemporaryObject(spinBoxComponent, root);
            const label = Items.below(box, item => item instanceof Label && item.text === "Zeit")[0];
            compare([label.Layout.maximumWidth, label.Layout.topMargin, label.wrapMode], [Common.maxLeftColWidth, 0, Text.WordWrap]);
            box.wrap = true;
            compare([label.Layout.maximumWidth, label.Layout.topMargin], [1200 - 5, 5]);
        }

        function test_no_label_without_text() {
            const box = createTemporaryObject(spinBoxComponent, root, {text: ""});
            compare(labels(box), []);
        }

        function test_modified_by_the_operator_alone() {
            const box = createTemporaryObject(spinBoxComponent, root);
            watch(box, "modified");
            box.value = 3;
            compare(box.spinBox.value, 3);
            compare(spy.count, 0);
            mouseClick(box.spinBox.up.indicator);
            compare(spy.count, 1);
            compare(spy.signalArguments[0][0], 4);
            tryCompare(box.spinBox, "value", 3);
            type(box.spinBox, "9");
            compare(spy.signalArguments[1][0], 9);
        }

        function test_goes_back_to_its_value() {
            const box = createTemporaryObject(spinBoxComponent, root, {value: 3});
            mouseClick(box.spinBox.up.indicator);
            compare(box.spinBox.value, 4);
            tryCompare(box.spinBox, "value", 3);
            box.modified.connect(value => box.value = value);
            mouseClick(box.spinBox.up.indicator);
            draw(box);
            compare(box.spinBox.value, 4);
        }

        // Answers that come late, the last one not at all.
        function test_wishes_that_are_stored_late() {
            const box = createTemporaryObject(spinBoxComponent, root, {value: 3});
            for (let presses = 0; presses < 3; ++presses) {
                mouseClick(box.spinBox.up.indicator);
            }
            compare(box.spinBox.value, 6);
            box.value = 4;
            compare(box.spinBox.value, 6);
            box.value = 5;
            compare(box.spinBox.value, 6);
            tryCompare(box.spinBox, "value", 5);
            box.value = 6;
            compare(box.spinBox.value, 6);
        }

        function test_wish_that_is_answered_by_another_value() {
            const box = createTemporaryObject(spinBoxComponent, root, {value: 3});
            mouseClick(box.spinBox.up.indicator);
            mouseClick(box.spinBox.up.indicator);
            box.value = 8;
            compare(box.spinBox.value, 8);
        }

        function test_ends_of_the_range() {
            const box = createTemporaryObject(spinBoxComponent, root, {value: 9});
            let states = [];
            box.upEnabledChanged.connect(state => states.push(["up", state]));
            box.downEnabledChanged.connect(state => states.push(["down", state]));
            box.value = 10;
            box.value = 9;
            box.value = 0;
            compare(states, [["up", false], ["up", true], ["down", false]]);
        }

        function test_flow_follows_the_width() {
            const box = createTemporaryObject(spinBoxComponent, root, {text: "Ein längerer Text"});
            verify(!box.wrapped);
            verify(!box.shoulWrap);
            box.wrap = true;
            verify(box.wrapped);
            verify(!box.shoulWrap);
            compare(box.grid.flow, GridLayout.TopToBottom);
            box.wrap = false;
            box.width = 200;
            tryVerify(() => box.shoulWrap);
            verify(box.wrapped);
            // The spin box then has the full width.
            tryVerify(() => box.spinBox.width === box.grid.width);
        }

        function test_height_follows_the_content() {
            const box = createTemporaryObject(spinBoxComponent, root, {width: 1200});
            tryCompare(box, "implicitHeight", box.spinBox.implicitHeight);
            box.warnMsg = "Achtung";
            tryVerify(() => box.implicitHeight > box.spinBox.implicitHeight);
        }

        function test_editable() {
            const box = createTemporaryObject(spinBoxComponent, root);
            verify(box.editable);
            compare(box.stepSize, 1);
        }
    }
}
