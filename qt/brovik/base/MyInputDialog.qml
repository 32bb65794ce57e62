// Asks the operator for a text. Covers the window down to the on-screen keyboard.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base

Rectangle {
    id: root

    property alias above: popup.above
    readonly property alias covered: popup.covered
    readonly property alias closing: popup.closing
    property alias title: popup.title
    property alias text: popup.text
    property alias input: field
    property alias value: field.text
    property alias errorText: errorLabel.text
    property string yes: stdYes
    property string no: stdNo
    property bool required: true
    property int popupWidth: Dialogs.dialogMaxWidth
    property bool password: false
    readonly property string stdYes: "OK"
    readonly property string stdNo: "Abbrechen"
    readonly property color stdColor: Common.colorDialog

    signal accepted(text: string)
    signal rejected
    signal opened
    signal closed

    function open() {
        popup.open();
    }

    function close() {
        popup.close();
    }

    function accept() {
        if (popup.closing) {
            return;
        }
        errorText = privat.missingText();
        if (errorText) {
            field.forceActiveFocus();
            return;
        }
        accepted(field.text);
        close();
    }

    function reject() {
        if (popup.closing) {
            return;
        }
        errorText = "";
        rejected();
        close();
    }

    function reset() {
        console.log("input dialog resetted");
        password = false;
        value = "";
        errorText = "";
        title = "";
        text = "";
        color = stdColor;
        yes = stdYes;
        no = stdNo;
    }

    parent: Dialogs.overlay
    width: parent ? parent.width : 0
    height: Common.mainHeight
    // The colour of the title bar. The rectangle itself is a grey veil in every category.
    color: stdColor
    gradient: Gradient {
        GradientStop {
            color: root.stdColor
        }
    }
    opacity: covered ? 0 : 0.5
    visible: popup.visible

    // The popup is not modal, since that would lock the on-screen keyboard too. So the clicks end here.
    MouseArea {
        anchors.fill: parent
        preventStealing: true
    }

    MyDialogFrame {
        id: popup

        parent: root
        width: root.popupWidth
        modal: false
        color: root.color
        textMinimumHeight: Dialogs.textHeight - field.height

        onEnterPressed: root.accept()
        onEscapePressed: root.reject()

        // What is typed before it is open is meant for the field as well.
        onAboutToShow: field.focus = true
        onOpened: {
            field.forceActiveFocus();
            root.opened();
        }
        onClosed: root.closed()

        // The id ends the deferring: the field is there before the dialog opens.
        contentItem: MyDialogColumn { // qmllint disable deferred-property-id
            id: column

            dialog: popup

            // Tab goes round within the dialog; it would leave a popup that is not modal.
            TextField {
                id: field

                Layout.fillWidth: true
                Accessible.name: root.title
                KeyNavigation.tab: eyeButton
                KeyNavigation.backtab: yesButton
                inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoAutoUppercase
                echoMode: root.password && !eyeButton.checked ? TextInput.Password : TextInput.Normal

                onTextEdited: root.errorText = privat.missingText()
            }

            Label {
                id: errorLabel

                Layout.fillWidth: true
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                // It may quote what was typed, however long.
                maximumLineCount: privat.errorLines
                elide: Text.ElideRight
                color: Common.colorError
                visible: text
            }

            RowLayout {
                Layout.alignment: Qt.AlignRight
                spacing: Common.spacing

                Button {
                    id: eyeButton

                    Accessible.name: "Passwort anzeigen"
                    KeyNavigation.tab: noButton
                    KeyNavigation.backtab: field
                    checkable: true
                    display: AbstractButton.IconOnly
                    icon.source: checked ? "qrc:/brovik/base/img/eye-slash.svg" : "qrc:/brovik/base/img/eye.svg"
                    visible: root.password
                }

                MyTextButton {
                    id: noButton

                    KeyNavigation.tab: yesButton
                    KeyNavigation.backtab: eyeButton
                    text: root.no
                    visible: text
                    onClicked: root.reject()
                }

                MyTextButton {
                    id: yesButton

                    KeyNavigation.tab: field
                    KeyNavigation.backtab: noButton
                    text: root.yes
                    enabled: !root.errorText
                    onClicked: root.accept()
                }
            }
        }
    }

    QtObject {
        id: privat

        readonly property int errorLines: 3

        function missingText() {
            return root.required && !field.text ? "Es ist eine Eingabe erforderlich" : "";
        }
    }
}
