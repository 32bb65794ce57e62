// A setting that is a text: its control, tied to what is stored. It is sent when nobody has typed for a while.
import QtQuick

import brovik.base
import brovik.components
import brovik.settings

SettingsStepBoxTextField {
    id: root

    // One of BrovikSettings.
    required property int key

    TextSetting {
        id: setting

        key: root.key
    }

    Timer {
        id: pause

        interval: 3000

        onTriggered: {
            setting.send(root.product);
            privat.typing = false;
        }
    }

    MyStoredValue {
        target: root.field
        name: "text"
        value: privat.typing ? root.product : setting.value
    }

    QtObject {
        id: privat

        // What is typed has not been sent yet.
        property bool typing: false
    }

    // The operator has typed or pasted something. A stored text that comes in is not sent back.
    field.onTextChanged: {
        if (privat.typing || root.product !== setting.value) {
            privat.typing = true;
            pause.restart();
        }
    }
}
