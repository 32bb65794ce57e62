// Asks for the password of a wireless network, and keeps none.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.gui
import brovik.wifi

ColumnLayout {
    id: root

    property string essid: "[SSID]"
    property alias psk: field.text
    readonly property bool isCurrent: StackLayout.isCurrentItem

    signal goBack
    signal connect

    // Prepares the page for this network, with this password in its field.
    function init(ssid: string, psk: string) {
        show.checked = false;
        root.essid = ssid;
        root.psk = psk;
    }

    Label {
        Layout.fillWidth: true
        text: `Passwort für: ${Texts.shortened(root.essid)}`
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
    }

    TextField {
        id: field

        objectName: "psk"

        Layout.fillWidth: true
        Accessible.name: "Passwort"
        echoMode: show.checked ? TextInput.Normal : TextInput.Password
        inputMethodHints: Qt.ImhNoAutoUppercase | Qt.ImhPreferLowercase | Qt.ImhSensitiveData | Qt.ImhNoPredictiveText
    }

    CheckBox {
        id: show

        objectName: "show"

        text: "Passwort anzeigen"
    }

    RowLayout {
        BrovikButton {
            objectName: "connect"

            Layout.preferredWidth: privat.equalWidth
            text: "Verbinden"

            onClicked: root.connect()
        }

        BrovikButton {
            objectName: "back"

            Layout.preferredWidth: privat.equalWidth
            text: "zurück"

            onClicked: root.goBack()
        }
    }

    Item {
        Layout.fillHeight: true
    }

    PageReporter {
        page: root
        pageEnum: Gui.PageWifiLogin
    }

    QtObject {
        id: privat

        // The same preference for both buttons; both fill the row.
        readonly property int equalWidth: 1

        // The field forgets what undo would bring back when it is given another text; clear() leaves that. And a
        // hidden field that kept the focus would still take keys.
        function forget() {
            field.text = "-";
            field.text = "";
            field.focus = false;
            show.checked = false;
        }
    }

    onIsCurrentChanged: {
        if (!root.isCurrent) {
            privat.forget();
        }
    }
    // Another tab hides the whole frame.
    onVisibleChanged: {
        if (!root.visible) {
            privat.forget();
        }
    }

    Component.onCompleted: SettingsNetworkData.wifiLoginPageIndex = StackLayout.index
}
