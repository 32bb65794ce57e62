// The chart page alone, with all its lines shown.
import QtQuick.Controls
import brovik.chart

ApplicationWindow {
    id: root

    width: 800
    height: 1200
    visible: true

    ChartsOverview {
        anchors.fill: parent
    }
}
