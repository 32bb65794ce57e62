// Warns of what the steam makes hot.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base

Rectangle {
    id: root

    readonly property int margin: 10

    Layout.fillWidth: true
    Layout.preferredHeight: row.implicitHeight + 2 * root.margin
    color: Common.colorWarning

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.margins: root.margin
        spacing: root.margin

        MyIcon {
            source: "qrc:/brovik/base/img/exclamation-triangle.svg"
        }

        Label {
            objectName: "text"

            Layout.fillWidth: true
            wrapMode: Text.WordWrap
            text: "Das Fass und Teile der Maschine werden durch die Dampfsterilisation sehr heiß! Persönliche Schutzausrüstung tragen!"
        }
    }
}
