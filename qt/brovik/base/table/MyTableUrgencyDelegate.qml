// A cell that shows how urgent an available package is.
import QtQuick
import QtQuick.Controls

import brovik.base
import brovik.shell

MyTableDelegateContainer {
    id: root

    Label {
        id: label

        readonly property string urgency: {
            const word = Shell.upgradables[root.row]?.urgency;
            return typeof word === "string" ? word : "?";
        }
        readonly property string urgencyText: {
            switch (label.urgency) {
            case "low":
                return "Niedrig";
            case "medium":
                return "Mittel";
            case "high":
                return "Hoch";
            default:
                return Texts.shortened(label.urgency, Texts.longLimit);
            }
        }

        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        text: label.urgencyText
        color: Shell.getUrgencyColor(label.urgency)
    }
}
