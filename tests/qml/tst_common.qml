import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.base
import kubelor.test

ScreenTestCase {
    id: root

    name: "Common"

    function test_constants_data() {
        return [
            {tag: "minColWidth", value: 300},
            {tag: "breakpoint", value: 1000},
            {tag: "maxLeftColWidth", value: 300},
            {tag: "minRightColWidth", value: 700},
            {tag: "spacing", value: 5},
            {tag: "delayButtonDelay", value: 1500},
            {tag: "toolTipDuration", value: 500},
            {tag: "nameSaure", value: "SANAL®-SA 3"},
            {tag: "nameLauge", value: "RIMALKAN®-HAT 26"},
            {tag: "theme", value: Material.Dark},
            {tag: "isDarkTheme", value: true},
            {tag: "window", value: null}
        ];
    }

    function test_constants(data) {
        compare(Common[data.tag], data.value);
    }

    function test_width_inside_the_margins() {
        Common.w1 = 800;
        compare(Common.w2, 790);
    }

    // The class is kept until a width is told for the first time.
    function test_1_window_size_starts_small() {
        compare(Common.windowSize, Common.WindowSize.Sm);
    }

    function test_2_window_size_data() {
        return [
            {tag: "below two columns", width: 599, size: Common.WindowSize.Sm, number: 1},
            {tag: "two columns", width: 600, size: Common.WindowSize.Md, number: 2},
            {tag: "below three columns", width: 899, size: Common.WindowSize.Md, number: 2},
            {tag: "three columns", width: 900, size: Common.WindowSize.Lg, number: 3},
            {tag: "below four columns", width: 1199, size: Common.WindowSize.Lg, number: 3},
            {tag: "four columns", width: 1200, size: Common.WindowSize.Xl, number: 4},
            {tag: "nothing", width: 0, size: Common.WindowSize.Sm, number: 1},
            {tag: "very wide", width: 5000, size: Common.WindowSize.Xl, number: 4}
        ];
    }

    function test_2_window_size(data) {
        Common.calcWindowSize(data.width);
        compare(Common.windowSize, data.size);
        compare(data.size, data.number);
    }

    function test_colors_data() {
        return [
            {tag: "colorWarning", dark: "#ff5722", light: "#ff9800"},
            {tag: "colorWarningAlpha", dark: "#bfff5722", light: "#bfff9800"},
            {tag: "colorActive", dark: "#555555", light: "#d3d3d3"},
            {tag: "colorHovered", dark: "#666666", light: "#e8e8e8"},
            {tag: "bg1", dark: "#355269", light: "#b4c7dc"},
            {tag: "bg2", dark: "#404040", light: "#ffffff"},
            {tag: "borderColor", dark: "#808080", light: "#d3d3d3"},
            {tag: "bgHeader", dark: "#507b9d", light: "#a4b5c8"},
            {tag: "fg1", dark: "#ffffff", light: "#000000"},
            {tag: "fg2", dark: "#9a9a9a", light: "#808080"}
        ];
    }

    function test_colors(data) {
        compare(Common[data.tag].toString(), data.dark);
        Common.theme = Material.Light;
        compare(Common.isDarkTheme, false);
        compare(Common[data.tag].toString(), data.light);
        Common.theme = Material.Dark;
        compare(Common[data.tag].toString(), data.dark);
    }

    function test_page_indexes_data() {
        return [
            {tag: "autoOverviewIndex"}, {tag: "chartsOverviewIndex"}, {tag: "settingsOverviewIndex"},
            {tag: "settingsAutoIndex"}, {tag: "settingsElecrolyteIndex"}, {tag: "settingsMiscIndex"},
            {tag: "settingsNetworkIndex"}, {tag: "settingsAppearanceIndex"}, {tag: "handOpIndex"}, {tag: "mainHeight"}
        ];
    }

    function test_page_indexes(data) {
        Common[data.tag] = 3;
        compare(Common[data.tag], 3);
        Common[data.tag] = 0;
    }

    function test_read_only_properties_data() {
        return [
            {tag: "windowSize"}, {tag: "minColWidth"}, {tag: "bg1"}, {tag: "bg2"}, {tag: "borderColor"},
            {tag: "bgHeader"}, {tag: "fg1"}, {tag: "fg2"}
        ];
    }

    function test_read_only_properties(data) {
        const before = String(Common[data.tag]);
        let message = "";
        try {
            Common[data.tag] = Common[data.tag];
        } catch (error) {
            message = error.message;
        }
        verify(message.includes("read-only"), message);
        compare(String(Common[data.tag]), before);
    }

    function test_time_short_data() {
        return [
            {tag: "0", text: "0:00"},
            {tag: "5", text: "0:05"},
            {tag: "59", text: "0:59"},
            {tag: "60", text: "1:00"},
            {tag: "65", text: "1:05"},
            {tag: "600", text: "10:00"},
            {tag: "3661", text: "61:01"}
        ];
    }

    function test_time_short(data) {
        compare(Common.timeFromSecsShort(Number(data.tag)), data.text);
    }

    function test_time_long_data() {
        return [
            {tag: "0", text: "0 Sekunde"},
            {tag: "1", text: "1 Sekunde"},
            {tag: "2", text: "2 Sekunden"},
            {tag: "60", text: "1 Minute"},
            {tag: "61", text: "1 Minute und 1 Sekunde"},
            {tag: "62", text: "1 Minute und 2 Sekunden"},
            {tag: "120", text: "2 Minuten"},
            {tag: "121", text: "2 Minuten und 1 Sekunde"},
            {tag: "3725", text: "62 Minuten und 5 Sekunden"}
        ];
    }

    function test_time_long(data) {
        compare(Common.timeFromSecsLong(Number(data.tag)), data.text);
    }

    function test_default_suffixes() {
        compare(Common.defaultSuffixBool(true, "red"), ' <i><font color="red">(Default: ein)</font></i>');
        compare(Common.defaultSuffixBool(false, "red"), ' <i><font color="red">(Default: aus)</font></i>');
        compare(Common.defaultSuffixNumber(1.5, "red"), ' <i><font color="red">(Default: 1.5)</font></i>');
        compare(Common.defaultSuffixNumber(3, Qt.color("#6fa4ce")), ' <i><font color="#6fa4ce">(Default: 3)</font></i>');
    }

    function test_find_item_index() {
        compare(Common.findItemIndex(repeater, repeater.itemAt(0)), 0);
        compare(Common.findItemIndex(repeater, repeater.itemAt(2)), 2);
        compare(Common.findItemIndex(repeater, root), -1);
    }

    function test_find_item_index_without_an_argument_data() {
        return [
            {tag: "container", container: null, item: root, text: /^\[findItemIndex\(container=null, item=.+\)\] falsche\/s Argument\/e$/},
            {tag: "item", container: repeater, item: undefined, text: /^\[findItemIndex\(container=.+, item=undefined\)\] falsche\/s Argument\/e$/}
        ];
    }

    function test_find_item_index_without_an_argument(data) {
        Backend.startRecordingPrints();
        compare(Common.findItemIndex(data.container, data.item), -1);
        const prints = Backend.takePrints();
        compare(prints.length, 1);
        verify(data.text.test(prints[0]), prints[0]);
    }

    function test_prints() {
        Backend.startRecordingPrints();
        Common.printItemInfo(item, "a");
        Common.printLayoutInfo(item, "b");
        Common.printControlInfo(control, "c");
        compare(Backend.takePrints(), [
            "a: x=1 y=2 width=3 height=4",
            "b: topMargin=5 rightMargin=6 bottomMargin=7 leftMargin=8",
            "c: topInset=1 rightInset=2 bottomInset=3 leftInset=4 topPadding=5 rightPadding=6 bottomPadding=7 leftPadding=8"
        ]);
    }

    function test_notify_forwards_to_the_toast_of_the_window() {
        Common.window = toastWindow;
        Common.notify("Text", {duration: 5});
        Common.window = null;
        compare(toastWindow.toast.calls, [["Text", "qrc:/brovik/base/img/info-circle.svg", {duration: 5}]]);
    }

    Repeater {
        id: repeater
        model: 3

        Item {}
    }

    Item {
        id: item

        x: 1
        y: 2
        width: 3
        height: 4
        Layout.topMargin: 5
        Layout.rightMargin: 6
        Layout.bottomMargin: 7
        Layout.leftMargin: 8
    }

    Control {
        id: control

        topInset: 1
        rightInset: 2
        bottomInset: 3
        leftInset: 4
        topPadding: 5
        rightPadding: 6
        bottomPadding: 7
        leftPadding: 8
    }

    ApplicationWindow {
        id: toastWindow

        readonly property QtObject toast: QtObject {
            property var calls: []

            function notify(text, iconUrl, options) {
                calls.push([text, iconUrl, options]);
            }
        }
    }
}
