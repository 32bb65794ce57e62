// Records what the screens send to the backend, whatever it concerns: singleton, enum and value, in order.
import QtQml

import brovik.auto
import brovik.chart
import brovik.gui
import brovik.settings
import brovik.shell
import brovik.simulator
import brovik.wifi

QtObject {
    id: root

    // All messages that were not taken yet, each as [singleton, enum, value].
    property var messages: []
    property int count: 0

    // After the message has been recorded.
    signal sent(family: QtObject, action: int, value: var)

    function clear() {
        messages = [];
        count = 0;
    }

    // All messages, or those through one singleton; they are forgotten then.
    function take(family = null) {
        const wanted = message => family === null || message[0] === family;
        const taken = messages.filter(wanted);
        messages = messages.filter(message => !wanted(message));
        count = messages.length;
        return taken;
    }

    // An object may change after it has been sent.
    function snapshot(value) {
        return typeof value === "object" ? JSON.parse(JSON.stringify(value)) : value;
    }

    readonly property Instantiator listeners: Instantiator {
        model: [Auto_, BrovikSettings, Chart, Gui, Shell, Simulator, Wifi]

        delegate: Connections {
            required property QtObject modelData

            target: modelData

            function onToPy(action, value) {
                root.messages.push([modelData, action, root.snapshot(value)]);
                ++root.count;
                root.sent(modelData, action, value);
            }
        }
    }
}
