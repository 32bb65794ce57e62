// The frame of all dialogs. The derived type puts a MyDialogColumn into it, at once or by a MyDialogLoader.
import QtQuick
import QtQuick.Controls

import brovik.base

Popup {
    id: root

    property string title: "Titel"
    // Of the title bar.
    property color color: Common.colorDialog
    property string text
    property bool plainText: false
    property int textMinimumHeight: Dialogs.textHeight
    // The dialogs that show above this one, as far as they matter.
    property int above: 0
    // It is not drawn: drawing hundreds would take all the time there is.
    readonly property bool covered: above >= Dialogs.drawnDialogs
    // The dialog is fading out: it has its answer already.
    readonly property bool closing: privat.closing

    signal enterPressed
    signal escapePressed

    parent: Dialogs.overlay
    x: parent ? (parent.width - width) / 2 : 0
    y: parent ? (parent.height - height) / 2 : 0
    width: Dialogs.dialogWidth
    height: Math.min(contentItem.implicitHeight + topPadding + bottomPadding, parent ? parent.height : Infinity)
    margins: 0
    modal: true
    // One dialog darkens the page; more would make it black.
    dim: modal && above === 0
    Overlay.modal: Rectangle {
        color: Common.colorVeil
    }
    focus: true
    closePolicy: Popup.NoAutoClose

    // Opened anew while it fades out, it has no answer yet.
    onAboutToShow: privat.close(false)
    onAboutToHide: privat.close(true)
    onOpened: contentItem.forceActiveFocus()
    onClosed: privat.close(false)
    Component.onDestruction: privat.close(false)

    Binding {
        target: root.background
        property: "visible"
        value: !root.covered
    }

    Binding {
        target: root.contentItem
        property: "visible"
        value: !root.covered
    }

    // A dialog that fades out is drawn into a picture of its own, which takes time. If hundreds close at once, only a few
    // fade; the others disappear.
    Binding {
        target: root
        property: "exit"
        value: null
        when: root.covered || Dialogs.fading - privat.closing >= Dialogs.drawnDialogs
    }

    QtObject {
        id: privat

        property bool closing: false

        function close(yes: bool) {
            Dialogs.fading += yes - privat.closing;
            privat.closing = yes;
        }
    }
}
