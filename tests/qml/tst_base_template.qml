// The window: what it does when it starts, and what it makes of the backend's signals.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

import brovik.base
import brovik.gui
import kubelor.test

Item {
    id: top

    // What stood at the moment of Ready.
    property var atReady: null

    Component {
        id: windowComponent

        BaseTemplate {
            width: 640
            height: 480
        }
    }

    Connections {
        target: Gui

        function onToPy(what, value) {
            if (what === Gui.Ready) {
                top.atReady = {
                    value: value,
                    theme: Common.theme,
                    w1: Common.w1,
                    h: Common.h,
                    overlay: String(Dialogs.overlay)
                };
            }
        }
    }

    BaseTemplate {
        id: window

        width: 800
        height: 1200

        DialogTestCase {
            id: testCase

            name: "BaseTemplate"

            function test_start_in_the_light_theme() {
                compareReady(createTemporaryObject(windowComponent, top), Material.Light);
            }

            function test_start_in_the_dark_theme() {
                Backend.setDarkTheme(true);
                compareReady(createTemporaryObject(windowComponent, top), Material.Dark);
                Backend.setDarkTheme(false);
            }

            function compareReady(other, theme) {
                verify(other.visible);
                compare(other.Material.theme, theme);
                compare(other.Material.accent, "#6fa4ce");
                compareSent([[Gui, Gui.Ready, null]]);
                compare(top.atReady.value, null);
                compare(top.atReady.theme, theme);
                compare(top.atReady.w1, 640);
                compare(top.atReady.h, 480);
                compare(top.atReady.overlay, String(other.Overlay.overlay));
            }

            function test_start_full_screen() {
                Gui.fullscreen = true;
                const other = createTemporaryObject(windowComponent, top);
                compare(other.visibility, Window.FullScreen);
                Gui.fullscreen = false;
            }

            function test_title_follows_gui() {
                Gui.title = "Brovik Kubelor";
                compare(window.title, "Brovik Kubelor");
                Gui.title = "anders";
                compare(window.title, "anders");
            }

            function test_theme_and_accent() {
                window.setTheme(Material.Dark);
                compare(window.Material.theme, Material.Dark);
                window.setAccent("#ff0000");
                compare(window.Material.accent, "#ff0000");
                window.setAccent("#6fa4ce");
                window.setTheme(Material.Light);
            }

            function test_common_follows_the_window() {
                const other = createTemporaryObject(windowComponent, top);
                other.width = 500;
                other.height = 400;
                tryCompare(Common, "w1", 500);
                tryCompare(Common, "h", 400);
                other.setTheme(Material.Dark);
                compare(Common.theme, Material.Dark);
                verify(Common.isDarkTheme);
            }

            function test_window_size_follows_the_width_data() {
                return [
                    {tag: "Sm", width: 599, size: Common.WindowSize.Sm},
                    {tag: "Md", width: 600, size: Common.WindowSize.Md},
                    {tag: "Lg", width: 900, size: Common.WindowSize.Lg},
                    {tag: "Xl", width: 1200, size: Common.WindowSize.Xl}
                ];
            }

            function test_window_size_follows_the_width(data) {
                const other = createTemporaryObject(windowComponent, top);
                other.width = data.width;
                tryCompare(Common, "windowSize", data.size);
            }

            function test_fullscreen_signal() {
                const other = createTemporaryObject(windowComponent, top);
                Gui.fullscreen = true;
                compare(other.visibility, Window.FullScreen);
                Gui.fullscreen = false;
                compare(other.visibility, Window.Windowed);
            }

            function cleanup() {
                // Common and Dialogs belong to the window that has come last.
                Dialogs.overlay = window.Overlay.overlay;
                Common.w1 = Qt.binding(() => window.width);
                Common.h = Qt.binding(() => window.height);
                Common.theme = Qt.binding(() => window.Material.theme);
            }
        }
    }
}
