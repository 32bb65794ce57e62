// Shows a short text for a short time.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.base
import brovik.gui

Popup {
    id: root

    property url imgUrl: "qrc:/brovik/base/img/save.svg"

    // Without an icon the last one stays. Options: color, duration in ms.
    function notify(text: string, iconUrl: var, options = {}) {
        if (iconUrl) {
            imgUrl = iconUrl;
        }
        privat.show(text, options.color || "transparent", options.duration || privat.stdDuration);
    }

    function warn(text: string, duration = privat.stdDuration) {
        imgUrl = "qrc:/brovik/base/img/exclamation-triangle.svg";
        privat.show(text, Common.colorWarning, duration);
    }

    width: Math.min(implicitWidth, Common.w1)
    padding: 0
    contentWidth: row.implicitWidth
    contentHeight: label.implicitHeight

    Rectangle {
        id: background
        anchors.fill: parent
    }

    RowLayout {
        id: row

        anchors.fill: parent
        spacing: Common.spacing

        MyIcon {
            Layout.leftMargin: privat.margin
            source: root.imgUrl
            size: Qt.size(root.height * 2 / 3, root.height * 2 / 3)
        }

        Label {
            id: label

            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.rightMargin: privat.margin
            verticalAlignment: Text.AlignVCenter
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            elide: Text.ElideRight
        }
    }

    Timer {
        id: timer
        onTriggered: root.close()
    }

    Connections {
        target: Gui

        function onToastNotify(text: string, iconUrl: var, colorEnum: int, duration: int) {
            root.notify(text, iconUrl, {color: privat.colorOf(colorEnum), duration: duration});
        }

        function onToastWarn(text: string, duration: int) {
            root.warn(text, duration);
        }
    }

    QtObject {
        id: privat

        readonly property int margin: 10
        // Milliseconds.
        readonly property int stdDuration: 1000

        function show(text: string, color: color, duration: int) {
            label.text = Texts.shortened(text);
            Texts.logCut(text);
            background.color = color;
            root.open();
            timer.interval = duration;
            timer.restart();
        }

        function colorOf(colorEnum: int): color {
            switch (colorEnum) {
            case Gui.ColorGreen:
                return Material.color(Material.Green, Material.Shade500);
            case Gui.ColorTransparent:
                break;
            default:
                console.error(`Unbekannten Wert für colorEnum erhalten: ${colorEnum} (Fallback: transparent)`);
            }
            return Qt.rgba(0, 0, 0, 0);
        }
    }
}
