// The frame of all dialogs: title bar, main text, and below them what the derived type adds.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base

Popup {
    id: root

    property alias title: titleBar.title
    property alias color: titleBar.barColor
    property alias text: mainText.text
    property alias plainText: mainText.plain
    property alias textMinimumHeight: mainText.minimumHeight
    // The dialogs that show above this one, as far as they matter.
    property int above: 0
    // It is not drawn: drawing hundreds would take all the time there is.
    readonly property bool covered: above >= Common.drawnDialogs
    // The dialog is fading out: it has its answer already.
    readonly property bool closing: privat.closing
    default property alias content: column.data

    signal enterPressed
    signal escapePressed

    parent: Dialogs.overlay
    x: parent ? (parent.width - width) / 2 : 0
    y: parent ? (parent.height - height) / 2 : 0
    width: Common.dialogWidth
    height: Math.min(column.implicitHeight + topPadding + bottomPadding, parent ? parent.height : Infinity)
    margins: 0
    modal: true
    // One veil is enough; more would hide all that is below.
    dim: modal && above === 0
    Overlay.modal: Rectangle {
        color: Common.colorVeil
    }
    focus: true
    closePolicy: Popup.NoAutoClose

    // The id ends the deferring: the style has no content of its own that would be made in vain.
    contentItem: ColumnLayout { // qmllint disable deferred-property-id
        id: column

        spacing: Common.spacing
        focus: true
        visible: !root.covered

        Keys.onEnterPressed: root.enterPressed()
        Keys.onReturnPressed: root.enterPressed()
        Keys.onEscapePressed: root.escapePressed()

        MyDialogTitle {
            id: titleBar
            Layout.fillWidth: true
        }

        MyDialogText {
            id: mainText
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: 0
            Layout.preferredHeight: implicitHeight
        }
    }

    // Opened anew while it fades out, it has no answer yet.
    onAboutToShow: privat.close(false)
    onAboutToHide: privat.close(true)
    onOpened: column.forceActiveFocus()
    onClosed: privat.close(false)
    Component.onDestruction: privat.close(false)

    Binding {
        target: root.background
        property: "visible"
        value: !root.covered
    }

    // What fades out is drawn into a picture of its own. Of hundreds that close at once few do that; the others just go.
    Binding {
        target: root
        property: "exit"
        value: null
        when: root.covered || Dialogs.fading - privat.closing >= Common.drawnDialogs
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
