// The colours of axes, grid and texts of the chart in the window's theme.
pragma Singleton

import QtQuick

import brovik.base

QtObject {
    readonly property color axisColor: Common.isDarkTheme ? "lightgrey" : "grey"
    readonly property color gridColor: Common.isDarkTheme ? "grey" : "lightgrey"
    readonly property color labelColor: Common.isDarkTheme ? "white" : "black"

    // The title of an axis has no colour that QML can set, but it is rich text.
    function axisTitle(text: string): string {
        return `<font color="${labelColor}">${text}</font>`;
    }
}
