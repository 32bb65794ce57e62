import QtQuick
import QtQuick.Controls
import QtTest

import brovik.auto
import brovik.base
import brovik.settings
import kubelor.test

Item {
    id: root

    // What the backend makes of a wish.
    property var answer: () => {}
    property int highest: 50

    width: 400
    height: 400

    Switch {
        id: toggle

        MyStoredValue {
            target: toggle
            name: "checked"
            value: BrovikSettings.intenseCleaning
        }

        onToggled: root.answer(checked)
    }

    MyFloatingPointSpinBox {
        id: spinBox

        y: 100
        precision: 0
        editable: true
        to: root.highest

        MyStoredValue {
            target: spinBox
            name: "value"
            value: Auto_.active ? Auto_.lwSaureMin : BrovikSettings.lwSaureMin
        }

        onValueModified: root.answer(value)
    }

    Slider {
        id: slider

        y: 200
        width: 400
        to: 20

        MyStoredValue {
            target: slider
            name: "value"
            value: BrovikSettings.vorspannenP
        }
    }

    SignalSpy {
        id: valueChanged

        target: spinBox
        signalName: "valueChanged"
    }

    ScreenTestCase {
        name: "StoredValue"

        function prepare() {
            root.answer = () => {};
            root.highest = 50;
            tryCompare(spinBox, "value", 10);
            valueChanged.clear();
        }

        function test_first_value() {
            compare(toggle.checked, false);
            compare(slider.value, BrovikSettings.vorspannenP);
        }

        function test_refused_switch_goes_back() {
            mouseClick(toggle);
            tryCompare(toggle, "checked", false);
            compare(BrovikSettings.intenseCleaning, false);
        }

        function test_refused_number_goes_back() {
            mouseClick(spinBox.up.indicator);
            compare(spinBox.value, 11);
            tryCompare(spinBox, "value", 10);
            compare(valueChanged.count, 2);
            compare(spinBox.contentItem.text, "10");
        }

        function test_refused_typed_number_goes_back() {
            spinBox.contentItem.forceActiveFocus();
            spinBox.contentItem.selectAll();
            keyClick("3");
            keyClick("7");
            keyClick(Qt.Key_Return);
            compare(spinBox.value, 37);
            tryCompare(spinBox, "value", 10);
            compare(spinBox.contentItem.text, "10");
        }

        function test_binding_lives_on_after_a_refusal() {
            mouseClick(toggle);
            tryCompare(toggle, "checked", false);
            Backend.run("settings.SettingsValues.intense_cleaning = True");
            tryCompare(toggle, "checked", true);
        }

        // The value never returns to the old one in between.
        function test_taken_wish_stays_data() {
            return [{tag: "written on this thread", run: code => Backend.run(code)}, {tag: "written on another thread", run: code => Backend.runOnThread(code)}];
        }

        function test_taken_wish_stays(data) {
            root.answer = value => data.run(`settings.SettingsValues.lw_saure_min = ${value}`);
            mouseClick(spinBox.up.indicator);
            compare(spinBox.value, 11);
            draw(spinBox);
            compare(valueChanged.count, 1);
            compare(spinBox.value, 11);
            Backend.run("settings.SettingsValues.lw_saure_min = 12");
            tryCompare(spinBox, "value", 12);
        }

        function test_wish_that_is_clamped() {
            root.answer = value => Backend.runOnThread("settings.SettingsValues.lw_saure_min = 20");
            mouseClick(spinBox.up.indicator);
            tryCompare(spinBox, "value", 20);
        }

        function test_wish_that_is_taken_late() {
            mouseClick(spinBox.up.indicator);
            tryCompare(spinBox, "value", 10);
            Backend.runOnThread("settings.SettingsValues.lw_saure_min = 11");
            tryCompare(spinBox, "value", 11);
        }

        function test_range_that_grows_lets_the_stored_value_through() {
            root.highest = 5;
            compare(spinBox.value, 5);
            root.answer = () => {};
            root.highest = 50;
            tryCompare(spinBox, "value", 10);
        }

        function test_value_that_changes_its_source() {
            Backend.run("auto.Auto.lw_saure_min = 7\nauto.Auto.active = True");
            tryCompare(spinBox, "value", 7);
            mouseClick(spinBox.up.indicator);
            tryCompare(spinBox, "value", 7);
            Backend.run("auto.Auto.active = False");
            tryCompare(spinBox, "value", 10);
        }

        function test_slider_that_is_moved_goes_back() {
            mouseClick(slider, slider.width - 5, slider.height / 2);
            tryCompare(slider, "value", BrovikSettings.vorspannenP);
        }
    }
}
