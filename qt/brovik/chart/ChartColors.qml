// The colours of the chart in the window's theme, and those of the list of charts.
pragma Singleton

import QtQuick

import brovik.base

QtObject {
    readonly property color axisColor: Common.isDarkTheme ? "lightgrey" : "grey"
    readonly property color gridColor: Common.isDarkTheme ? "grey" : "lightgrey"
    readonly property color labelColor: Common.isDarkTheme ? "white" : "black"

    // Behind the heading of what has no colour of its own.
    readonly property color headingColor: "black"

    // Behind the name of a saved chart, by the result of its run, and the name itself.
    readonly property color success: "lightgreen"
    readonly property color warning: Qt.lighter("orange")
    readonly property color error: "lightcoral"
    readonly property color unknown: "lightblue"
    readonly property color name: "black"

    // The title of an axis has no colour that QML can set, but it is rich text. For the call of toString() see
    // Common.defaultSuffixNumber().
    function axisTitle(text: string): string {
        return `<font color="${labelColor.toString()}">${text}</font>`;
    }
}
