// Gives a setting back to the backend, once, when the backend has changed it by itself.
//
// What it has stored because it was asked to is not given back: a backend that takes its time would be asked again and
// again.
import QtQml

import brovik.gui
import brovik.settings

QtObject {
    id: root

    required property NumberSetting setting
    // What is stored and what is sent are compared in steps, and this is how many of them make one unit.
    required property real factor
    // In steps.
    required property int stored
    property bool enabled: true
    // How long the backend usually takes to store what it was asked for, in milliseconds.
    required property int patience
    // How long it may take at most, in milliseconds.
    readonly property int memory: 60000
    // So many values are remembered at most, the newest ones: a backend that changes a setting without a pause has each
    // of them given back, and the list would get longer than anybody can look through.
    readonly property int mostRemembered: 100

    readonly property QtObject inner: QtObject {
        id: privat

        // What the backend was asked for and has not stored yet, by whatever box of the setting.
        property list<int> requested: []
        // All that was sent lately. Most of what is given back changes nothing, so it is not waited for any longer.
        property list<int> latest: []
        property int last
        // A value of the latest came again: it was stored once more, or the backend has changed it back by itself.
        property bool doubtful: false
        property bool givingBack: false
        property bool waits: false

        readonly property Connections sending: Connections {
            target: root.setting
            enabled: root.enabled

            function onAsked(value: real) {
                privat.remember(Math.round(value * root.factor));
            }
        }

        readonly property Timer requestedFade: Timer {
            interval: root.memory

            onTriggered: privat.requested = []
        }

        readonly property Timer latestFade: Timer {
            interval: root.patience

            onTriggered: privat.forgetLatest()
        }

        function remember(value: int) {
            privat.last = value;
            privat.latest = privat.withNewest(privat.latest, value);
            privat.latestFade.restart();
            if (!privat.givingBack) {
                privat.requested = privat.withNewest(privat.requested, value);
                privat.requestedFade.restart();
            }
        }

        function withNewest(values: list<int>, value: int): list<int> {
            return [...values, value].slice(-root.mostRemembered);
        }

        function wasAskedFor(value: int): bool {
            const found = Array.from(privat.requested).indexOf(value);
            if (found >= 0) {
                privat.requested = Array.from(privat.requested).filter((_, i) => i !== found);
                return true;
            }
            privat.doubtful = Array.from(privat.latest).includes(value);
            if (privat.doubtful) {
                privat.latestFade.restart();
            }
            return privat.doubtful;
        }

        function forgetLatest() {
            privat.latest = [];
            if (privat.doubtful && privat.last !== root.stored) {
                privat.giveBack();
            }
        }

        // Each is a call of the backend: with one that changes settings without a pause, the screens would do nothing
        // else. What counts is what is stored when its turn has come.
        function giveBack() {
            if (root.enabled && !privat.wasAskedFor(root.stored) && !privat.waits) {
                privat.waits = true;
                InTurn.run(privat.send);
            }
        }

        // Exactly what is stored: the box may have rounded it or cut it off.
        function send() {
            // The box may be gone by then.
            if (privat) {
                privat.waits = false;
                privat.givingBack = true;
                root.setting.send(root.setting.value);
                privat.givingBack = false;
            }
        }
    }

    // Connected late, so that the first value is not given back.
    Component.onCompleted: root.storedChanged.connect(privat.giveBack)
}
