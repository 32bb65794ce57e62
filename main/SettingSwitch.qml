// A switch that shows a setting of the run to come; locked during a run.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.auto
import brovik.base

Switch {
    id: root

    required property bool stored

    Layout.alignment: Qt.AlignHCenter
    enabled: !Auto_.active

    MyStoredValue {
        target: root
        name: "checked"
        value: root.stored
    }
}
