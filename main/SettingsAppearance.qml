// The window: its size, its theme, its end. Keeps both size and theme from one start of the program to the next.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import Qt.labs.settings

import brovik.base
import brovik.components
import brovik.gui

ColumnLayout {
    id: root

    readonly property BaseTemplate window: ApplicationWindow.window as BaseTemplate

    BrovikDelayButton {
        text: "App minimieren"

        onMyActivated: root.window.showMinimized()
    }

    BrovikDelayButton {
        text: "App schließen"

        onMyActivated: root.window.close()
    }

    BrovikButton {
        readonly property bool fullScreen: Window.visibility === Window.FullScreen

        text: `Fullscreen ${fullScreen ? "aus" : "an"}`

        onClicked: fullScreen ? root.window.showNormal() : root.window.showFullScreen()
    }

    BrovikButton {
        text: `Theme ändern zu: ${Common.isDarkTheme ? "hell" : "dunkel"}`
        icon.source: Common.isDarkTheme ? "img/sun.svg" : "img/moon.svg"

        onClicked: root.window.setTheme(Common.isDarkTheme ? Material.Light : Material.Dark)
    }

    Label {
        Layout.fillWidth: true
        font.pointSize: Texts.drawableSize(Gui.fSizeM)
        wrapMode: Text.WordWrap
        text: `Aktuelle Auflösung des Fensters: ${root.window?.width}x${root.window?.height}`
    }

    Item {
        Layout.fillHeight: true
    }

    PageReporter {
        page: root
        pageEnum: Gui.PageSettingsAppearance
    }

    // What an earlier run has left. It is read here, and not written.
    Settings {
        id: memory

        category: "window"
    }

    WindowMemory {
        id: windowMemory
    }

    Connections {
        target: root.window

        function onClosing() {
            privat.keepGeometry();
        }
    }

    Connections {
        target: Common

        function onIsDarkThemeChanged() {
            windowMemory.keep({dark: Common.isDarkTheme});
        }
    }

    QtObject {
        id: privat

        // Pixels. The largest coordinate that is taken for one of a screen.
        readonly property int furthest: 32767
        readonly property rect standard: Qt.rect(0, 70, 720, 950)
        readonly property list<string> sides: ["x", "y", "width", "height"]

        function keepGeometry() {
            const window = root.window;
            windowMemory.keep({x: window.x, y: window.y, width: window.width, height: window.height});
        }

        function restoreGeometry() {
            for (const name of privat.sides) {
                root.window[name] = privat.stored(name, privat.standard[name]);
            }
        }

        // The default in place of what is no number that will do.
        function stored(name: string, standard: int): int {
            const text = memory.value(name, standard);
            const number = Number(text);
            const lowest = name === "width" || name === "height" ? 1 : -privat.furthest;
            if (Number.isInteger(number) && number >= lowest && number <= privat.furthest) {
                return number;
            }
            console.warn(`Gespeicherter Wert von window/${name} wird ignoriert: ${text}`);
            return standard;
        }
    }

    Component.onCompleted: {
        Common.settingsAppearanceIndex = StackLayout.index;
        privat.restoreGeometry();
    }
}
