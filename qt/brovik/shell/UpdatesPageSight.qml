// Hides a page of a SwipeView while none of it is in sight: it keeps nothing busy there, and takes no focus.
import QtQml
import QtQuick
import QtQuick.Controls

Binding {
    id: root

    required property Item page
    readonly property ListView list: root.page.SwipeView.view?.contentItem as ListView

    target: root.page
    property: "visible"
    value: root.list === null || Math.abs(root.page.x - root.list.contentX) < root.list.width
}
