// Records what the screens send to the backend through Gui.
import QtTest

import brovik.gui

SignalSpy {
    id: root

    target: Gui
    signalName: "toPy"

    // All that was sent since the last call, as pairs of enum and value.
    function take() {
        const sent = signalArguments.map(call => [call[0], call[1]]);
        clear();
        return sent;
    }
}
