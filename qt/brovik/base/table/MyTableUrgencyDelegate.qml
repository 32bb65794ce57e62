// A cell that shows how urgent an available package is.
import QtQuick
import QtQuick.Controls

import brovik.base
import brovik.shell

MyTableDelegateContainer {
    id: root

    Label {
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        text: privat.names[privat.urgency] ?? privat.urgency
        color: Shell.getUrgencyColor(privat.urgency)
    }

    QtObject {
        id: privat

        readonly property string urgency: Shell.upgradables[root.row]?.urgency ?? "?"
        readonly property var names: ({
                low: "Niedrig",
                medium: "Mittel",
                high: "Hoch"
            })
    }
}
