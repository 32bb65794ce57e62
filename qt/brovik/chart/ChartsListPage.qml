// The list of saved charts.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.chart
import brovik.components
import brovik.gui

// Not itself a layout: in a StackLayout that would miss some changes of its content.
Item {
    id: root

    signal backRequested

    ColumnLayout {
        anchors.fill: parent
        spacing: Common.spacing

        Button {
            objectName: "back"

            Layout.fillWidth: true
            Layout.topMargin: privat.topMargin
            Layout.preferredHeight: Gui.controlHeight
            font.pointSize: Texts.drawableSize(Gui.fSizeM)
            text: "Zurück zum Chart"
            icon.source: "img/arrow-left-circle.svg"

            onClicked: root.backRequested()
        }

        ListView {
            id: list

            objectName: "list"

            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            reuseItems: true
            delegate: ChartMetaDelegate {}

            ScrollBar.vertical: ScrollBar {}
        }
    }

    PageReporter {
        page: root
        pageEnum: Gui.PageChartsList
    }

    QtObject {
        id: privat

        readonly property int topMargin: 10

        // A view starts at the top of each new list, and the operator would have to find the place again.
        function showList() {
            const first = list.indexAt(0, list.contentY);
            // To the view the same property is the same list.
            list.model = null;
            list.model = Chart.metaDataList;
            list.positionViewAtIndex(Math.min(first, list.count - 1), ListView.Beginning);
        }
    }

    Connections {
        target: Chart

        // Once for all changes that wait: each time all visible entries are made anew.
        // The linter does not know that callLater() takes a function.
        function onMetaDataListChanged() {
            Qt.callLater(privat.showList); // qmllint disable type
        }
    }

    Component.onCompleted: privat.showList()
}
