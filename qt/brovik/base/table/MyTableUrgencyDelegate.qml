// A cell that shows how urgent an available package is.
import QtQuick
import QtQuick.Controls

import brovik.base
import brovik.shell

MyTableDelegateContainer {
    id: root

    Label {
        id: label

        readonly property string urgency: Shell.upgradables[root.row]?.urgency ?? "?"
        readonly property var names: ({
                low: "Niedrig",
                medium: "Mittel",
                high: "Hoch"
            })

        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        text: label.names[label.urgency] ?? label.urgency
        color: Shell.getUrgencyColor(label.urgency)
    }
}
