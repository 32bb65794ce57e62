// A cell with the button that asks for a changelog.
import QtQuick
import QtQuick.Controls

import brovik.base

MyTableDelegateContainer {
    id: root

    // Untyped: the roles of the row, made by the view.
    required property var model
    property alias btn: button
    // Pixels that a finger hits.
    readonly property int touchHeight: 44

    implicitHeight: root.touchHeight + topPadding + bottomPadding

    Button {
        id: button

        readonly property int gap: 5
        readonly property int leastHeight: 10

        // The row gives the button its height.
        implicitHeight: leastHeight
        padding: 0
        topInset: 0
        bottomInset: 0
        leftInset: 0
        rightInset: gap
        enabled: !privat.isEmpty(root.model.display)
        text: "Changelog"

        QtObject {
            id: privat

            // As Python sees it, also of lists, bytes and records.
            function isEmpty(value: var): bool {
                const size = value?.constructor === Object ? Object.keys(value).length : value?.length ?? value?.byteLength;
                return !value || size === 0;
            }
        }
    }
}
