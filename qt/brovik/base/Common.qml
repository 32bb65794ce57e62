// What all screens share: layout constants, colours, helper functions.
pragma Singleton

import QtQuick
import QtQuick.Controls.Material
// For the attached margins that printLayoutInfo() reads, which the linter does not see.
import QtQuick.Layouts // qmllint disable unused-imports

import brovik.gui

Item {
    id: root

    enum WindowSize {
        Sm = 1,
        Md = 2,
        Lg = 3,
        Xl = 4
    }

    // Nothing assigns it; only notify() would use it.
    property ApplicationWindow window

    // Height that the on-screen keyboard leaves free.
    property int mainHeight
    readonly property int minColWidth: 300 / Gui.scaleFactor
    readonly property int windowSize: privat.windowSize
    property int breakpoint: 1000 / Gui.scaleFactor
    property int maxLeftColWidth: 300 / Gui.scaleFactor
    property int minRightColWidth: breakpoint - maxLeftColWidth
    property int spacing: 5

    // Height and width of the window, and the width inside its margins.
    property int h
    property int w1
    property int w2: w1 - 2 * spacing

    // Milliseconds.
    property int delayButtonDelay: 1500
    property int toolTipDuration: 500

    // Position of each page in its stack; the page writes its own.
    property int autoOverviewIndex
    property int chartsOverviewIndex
    property int settingsOverviewIndex
    property int settingsAutoIndex
    property int settingsElecrolyteIndex
    property int settingsMiscIndex
    property int settingsNetworkIndex
    property int settingsAppearanceIndex
    property int handOpIndex

    property string nameSaure: "SANAL®-SA 3"
    property string nameLauge: "RIMALKAN®-HAT 26"

    readonly property color accentColor: "#6fa4ce"
    property int theme: Material.Dark
    property bool isDarkTheme: theme === Material.Dark

    // The attached Material values of a singleton are those of the light theme, so the shade is named.
    property color colorWarning: Material.color(isDarkTheme ? Material.DeepOrange : Material.Orange, Material.Shade500)
    property color colorWarningAlpha: Qt.alpha(colorWarning, 0.75)
    property color colorActive: isDarkTheme ? Qt.darker("grey", 1.5) : "lightgrey"
    property color colorHovered: Qt.lighter(colorActive, isDarkTheme ? 1.2 : 1.1)
    // Over the page below a dialog. That of the style is nearly white in the dark theme.
    readonly property color colorVeil: Qt.rgba(0, 0, 0, 0.6)
    readonly property color colorOn: "green"
    readonly property color colorOff: "lightgrey"
    readonly property color colorError: "red"
    readonly property color colorDialog: "grey"
    // Of the title bar of a dialog, as the names that Dialogs hands out.
    readonly property string infoBarColor: "blue"
    readonly property string errorBarColor: "red"
    readonly property string successBarColor: "green"
    readonly property string otherBarColor: "gray"
    // Texts on a coloured bar, and hints on a green one.
    readonly property color fgOnBar: "white"
    readonly property color fgOnGreen: "lightgrey"
    property color bg1Dark: "#355269"
    property color bg1Light: "#b4c7dc"
    property color bg2Dark: Qt.darker("grey", 2)
    property color bg2Light: Qt.lighter("lightgrey", 1.5)
    property color borderColorDark: "grey"
    property color borderColorLight: "lightgrey"
    readonly property color bg1: isDarkTheme ? bg1Dark : bg1Light
    readonly property color bg2: isDarkTheme ? bg2Dark : bg2Light
    readonly property color borderColor: isDarkTheme ? borderColorDark : borderColorLight
    readonly property color bgHeader: isDarkTheme ? Qt.lighter(bg1, 1.5) : Qt.darker(bg1, 1.1)
    readonly property color fg1: isDarkTheme ? "white" : "black"
    readonly property color fg2: isDarkTheme ? Qt.lighter("grey", 1.2) : "grey"

    // Text behind the name of a switch that does not stand on its default.
    function defaultSuffixBool(defaultValue: bool, color: var): string {
        return defaultSuffixNumber(defaultValue ? "ein" : "aus", color);
    }

    // Text behind the name of a value that is not its default. Each is asked for its text: compiled, a template would make
    // one of a colour that the garbage collector may take meanwhile.
    function defaultSuffixNumber(defaultValue: var, color: var): string {
        return ` <i><font color="${color.toString()}">(Default: ${String(defaultValue)})</font></i>`;
    }

    // Index of the item in a container with itemAt(), -1 if it is not there.
    function findItemIndex(container: var, item: var): int {
        if (!container || !item) {
            console.log(`[findItemIndex(container=${container}, item=${item})] falsche/s Argument/e`);
            return -1;
        }
        for (let i = 0; i < container.count; ++i) {
            if (container.itemAt(i) === item) {
                return i;
            }
        }
        return -1;
    }

    // Sets `windowSize` for this width of the window.
    function calcWindowSize(width: real) {
        const columns = Math.floor(width / minColWidth);
        privat.windowSize = Math.max(Common.WindowSize.Sm, Math.min(columns, Common.WindowSize.Xl));
    }

    // 65 gives "1:05".
    function timeFromSecsShort(seconds: real): string {
        const mins = Math.floor(seconds / 60);
        const secs = seconds % 60;
        return `${mins}:${secs < 10 ? "0" : ""}${secs}`;
    }

    // 61 gives "1 Minute und 1 Sekunde".
    function timeFromSecsLong(seconds: real): string {
        const mins = Math.floor(seconds / 60);
        const secs = seconds % 60;
        const minsText = privat.counted(mins, "Minute");
        const secsText = privat.counted(secs, "Sekunde");
        if (mins && secs) {
            return `${minsText} und ${secsText}`;
        }
        return mins ? minsText : secsText;
    }

    function notify(msg: string, options = {}) {
        window["toast"].notify(msg, "qrc:/brovik/base/img/info-circle.svg", options);
    }

    // For debugging: sizes of a control, margins of a layout's child, geometry of an item.
    function printControlInfo(control: var, txt: string) {
        privat.printValues(control, txt, ["topInset", "rightInset", "bottomInset", "leftInset", "topPadding", "rightPadding", "bottomPadding", "leftPadding"]);
    }

    function printLayoutInfo(elem: Item, txt: string) {
        privat.printValues(elem.Layout, txt, ["topMargin", "rightMargin", "bottomMargin", "leftMargin"]);
    }

    function printItemInfo(elem: var, txt: string) {
        privat.printValues(elem, txt, ["x", "y", "width", "height"]);
    }

    QtObject {
        id: privat

        property int windowSize: Common.WindowSize.Sm

        function counted(number: real, unit: string): string {
            return `${number} ${unit}${number > 1 ? "n" : ""}`;
        }

        function printValues(object: var, txt: string, names: list<string>) {
            console.log(`${txt}: ` + names.map(name => `${name}=${object[name]}`).join(" "));
        }
    }
}
