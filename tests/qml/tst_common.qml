import QtQuick
import QtQuick.Controls.Material
import QtTest

import brovik.base
import brovik.gui
import kubelor.test

TestCase {
    id: root

    name: "Common"

    function init() {
        failOnWarning(/.?/);
    }

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
}
