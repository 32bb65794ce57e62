// A table of packages, and behind it the changelog of one of them.
import QtQuick

import brovik.base
import brovik.gui
import brovik.shell

MySwipeView {
    id: root

    property alias headerModel: packages.headerModel
    property alias headerMinWidths: packages.headerMinWidths
    property alias headerMaxWidths: packages.headerMaxWidths
    property alias headerFillWidths: packages.headerFillWidths
    property alias headerWantedWidths: packages.headerWantedWidths
    property alias model: packages.model
    property alias delegate: packages.delegate
    // Of the column with the buttons: its header takes two lines, or a small window could not show all columns.
    readonly property int buttonWidth: Math.ceil(buttonText.advanceWidth)
    readonly property alias packages: packages
    readonly property alias table: packages.tableView

    // Asks for the changelog of that value of a record. Until it comes, the last one shows.
    function showChangelog(action: int, value: var) {
        Shell.toPy(action, value);
        root.currentIndex = 1;
    }

    // What the widest of the records' texts under this key takes on one line.
    function widestOf(records: var, key: string): real {
        // The binding that calls this follows the font only if it sees it read.
        if (cellMetrics.font.pointSize <= 0) {
            return 0;
        }
        return records.reduce((widest, record) => Math.max(widest, privat.widthOf(record[key])), 0);
    }

    // What a column of texts shows of a value. One that is no text would keep the model from taking any row.
    function asText(value: var): string {
        return typeof value === "string" ? Texts.shortened(value, Texts.longLimit) : "";
    }

    // The same for a column of lists of texts.
    function asTexts(value: var): list<string> {
        return Array.isArray(value) ? value.map(root.asText) : [];
    }

    font.pointSize: Texts.drawableSize(Gui.fSizeXs * privat.fontScale)

    MyTable {
        id: packages
    }

    UpdatesChangelogFlick {
        id: changelog

        backBtn.onClicked: root.currentIndex = 0
    }

    UpdatesPageSight {
        page: changelog
    }

    FontMetrics {
        id: cellMetrics

        font.pointSize: root.font.pointSize
    }

    TextMetrics {
        id: buttonText

        text: "Changelog"
        font.pointSize: root.font.pointSize
        font.bold: true
    }

    QtObject {
        id: privat

        // All columns fit into a small window.
        readonly property real fontScale: 0.95
        // Characters. For more there is no room.
        readonly property int measuredLength: 100

        function widthOf(text: string): real {
            return Math.ceil(cellMetrics.advanceWidth(text.slice(0, privat.measuredLength)));
        }
    }
}
