// Turns one of the checks on or off, under a line.
import QtQuick.Layouts

import brovik.components
import main

ColumnLayout {
    id: root

    required property string key
    required property string text
    required property int switchWidth

    BrovikBoxSeparatorLine {
        noMargins: true
    }

    SwitchRow {
        key: root.key
        description: root.text
        switchWidth: root.switchWidth
    }
}
