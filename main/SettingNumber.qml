// Ties a spin box to a setting: its range, what it shows, and what is sent.
//
// The operator's wishes are sent. So is, once, what the backend has changed by itself, but not what it has stored
// because it was asked to: a backend that takes its time would be asked again and again.
import QtQml

import brovik.base
import brovik.settings

MyStoredNumber {
    id: root

    required property string key
    // Sends what the operator changes, and nothing else.
    property bool operatorOnly: false
    readonly property real defaultValue: setting.defaultValue
    // The range, in the units of the spin box.
    readonly property int lowest: Math.round(setting.lowest * root.spinBox.factor)
    readonly property int highest: Math.round(setting.highest * root.spinBox.factor)
    // How long the backend may take to store what it was asked for, in milliseconds.
    readonly property int memory: 10000

    readonly property QtObject sending: QtObject {
        id: privat

        // What the backend was asked for and has not stored yet, by this box or another one of the setting.
        property var wishes: []
        // All that was sent lately. What the backend has changed by itself is stored already; it is stored again only
        // if there was another change meanwhile, so it is not waited for longer than an answer may take.
        property var latest: []
        property bool givingBack: false

        readonly property Setting setting: Setting {
            id: setting

            key: root.key
        }

        readonly property Connections operator: Connections {
            target: root.spinBox

            function onValueModified() {
                setting.send(root.spinBox.realValue);
            }
        }

        readonly property Connections sent: Connections {
            target: BrovikSettings

            function onToPy(number, value) {
                if (number === setting.number) {
                    privat.remember(Math.round(value * root.spinBox.factor));
                }
            }
        }

        readonly property Timer wishesFade: Timer {
            interval: root.memory

            onTriggered: privat.wishes = []
        }

        readonly property Timer latestFade: Timer {
            interval: root.patience

            onTriggered: privat.latest = []
        }

        function remember(value) {
            privat.latest.push(value);
            privat.latestFade.restart();
            if (!privat.givingBack) {
                privat.wishes.push(value);
                privat.wishesFade.restart();
            }
        }

        function wasAskedFor(value) {
            const wish = privat.wishes.indexOf(value);
            if (wish >= 0) {
                privat.wishes.splice(wish, 1);
            }
            return wish >= 0 || privat.latest.includes(value);
        }

        // What is stored, and not what the box makes of it.
        function giveBack() {
            if (!privat.wasAskedFor(root.stored)) {
                privat.givingBack = true;
                setting.send(setting.value);
                privat.givingBack = false;
            }
        }
    }

    stored: Math.round(setting.value * root.spinBox.factor)

    // Connected late, so that the first value is not sent.
    Component.onCompleted: {
        if (!root.operatorOnly) {
            root.storedChanged.connect(privat.giveBack);
        }
    }
}
