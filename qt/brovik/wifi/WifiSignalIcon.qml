// Bars for the strength of the signal; while connecting they fill up in turn.
import QtQuick

import brovik.base
import brovik.wifi

MyIcon {
    id: root

    // One for each level, which is also the name of a state.
    readonly property list<url> sources: ["qrc:/brovik/wifi/img/wifi-off.svg", "qrc:/brovik/wifi/img/wifi-1.svg", "qrc:/brovik/wifi/img/wifi-2.svg", "qrc:/brovik/wifi/img/wifi.svg"]
    readonly property alias animated: animation.running

    source: root.sources[0]

    states: [
        State {
            name: "0"

            PropertyChanges {
                root.source: root.sources[0]
            }
        },
        State {
            name: "1"

            PropertyChanges {
                root.source: root.sources[1]
            }
        },
        State {
            name: "2"

            PropertyChanges {
                root.source: root.sources[2]
            }
        },
        State {
            name: "3"

            PropertyChanges {
                root.source: root.sources[3]
            }
        }
    ]

    Timer {
        id: animation

        interval: 300
        repeat: true
        running: Wifi.state === Wifi.Connecting

        onTriggered: root.state = privat.next(root.state)
    }

    QtObject {
        id: privat

        // The highest level is followed by the lowest that has bars.
        function next(level: string): string {
            switch (level) {
            case "1":
                return "2";
            case "2":
                return "3";
            default:
                return "1";
            }
        }

        function showLevel() {
            if (!root.animated) {
                root.state = Wifi.qualityLevel;
            }
        }
    }

    Connections {
        target: Wifi

        function onQualityLevelChanged() {
            privat.showLevel();
        }
    }

    // The backend may have told of it before there was an icon.
    Component.onCompleted: privat.showLevel()
}
