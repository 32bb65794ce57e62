// What the backend's work prints.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.gui
import brovik.shell

ColumnLayout {
    id: root

    readonly property alias flick: flick

    Flickable {
        id: flick

        objectName: "flick"

        Layout.fillWidth: true
        Layout.fillHeight: true
        clip: true
        contentWidth: edit.paintedWidth
        contentHeight: edit.paintedHeight

        TextEdit {
            id: edit

            objectName: "output"

            Accessible.name: "Ausgabekonsole"
            Accessible.role: Accessible.EditableText
            Accessible.readOnly: true
            width: flick.width
            color: Common.fg1
            font.pointSize: Texts.drawableSize(Gui.fSizeS)
            readOnly: true
            textFormat: TextEdit.RichText
            persistentSelection: true
            selectByMouse: false
            wrapMode: TextEdit.Wrap

            onSelectedTextChanged: writer.redraw()
        }

        ScrollBar.vertical: ScrollBar {}

        BusyIndicator {
            objectName: "busy"

            // Over the text, and not over the content that scrolls.
            parent: flick
            anchors.fill: parent
            // Fingers reach the text below it.
            enabled: false
            opacity: 0.5
            running: Shell.locked
        }

        onContentHeightChanged: privat.showEnd()
        onContentYChanged: privat.atEnd = contentY + height > contentHeight - 1
        onHeightChanged: {
            if (privat.atEnd) {
                privat.showEnd();
            }
        }
    }

    RowLayout {
        MyGreenCheckButton {
            objectName: "select"

            Layout.fillWidth: true
            Layout.minimumWidth: privat.minimumWidth
            Layout.maximumWidth: Math.ceil(implicitWidth)
            active: edit.selectByMouse
            text: "Text selektieren"

            onClicked: edit.selectByMouse = !edit.selectByMouse
        }

        Button {
            objectName: "copy"

            Layout.fillWidth: true
            Layout.minimumWidth: privat.minimumWidth
            Layout.maximumWidth: Math.ceil(implicitWidth)
            enabled: edit.selectionStart !== edit.selectionEnd
            text: "Selektion kopieren"

            onClicked: privat.copy()
        }

        Button {
            objectName: "clear"

            Layout.fillWidth: true
            Layout.minimumWidth: privat.minimumWidth
            enabled: edit.length > 0
            text: "Ausgabe löschen"
            icon.source: "qrc:/brovik/shell/img/trash3.svg"

            onClicked: {
                writer.clear();
                memory.giveBack();
            }
        }

        Button {
            objectName: "test"

            Layout.minimumWidth: privat.minimumWidth
            visible: Gui.debug
            text: "Test"

            onClicked: Shell.toPy(Shell.TestConsole, null)
        }
    }

    ConsoleWriter {
        id: writer

        output: edit
    }

    MemoryReturn {
        id: memory
    }

    UpdatesPageSight {
        page: root
    }

    PageReporter {
        page: root
        pageEnum: Gui.PageUpdatesConsole
    }

    QtObject {
        id: privat

        readonly property int minimumWidth: 50
        // Milliseconds.
        readonly property int toastDuration: 1000

        // As of the last time that the text has moved. The height of the view alone does not change it.
        property bool atEnd: true

        // The latest lines stay in sight.
        function showEnd() {
            if (flick.contentHeight > flick.height) {
                flick.contentY = flick.contentHeight - flick.height;
            }
        }

        function copy() {
            edit.copy();
            Gui.toastNotify("Text in die Zwischenablage kopiert", "qrc:/brovik/base/img/info-circle.svg", Gui.ColorTransparent, privat.toastDuration);
        }
    }

    Component.onCompleted: ShellData.updatesTabConsoleOutputIndex = SwipeView.index
}
