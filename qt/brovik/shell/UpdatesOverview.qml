// The update pages: what can be done, and a tab for each view of the packages and for the output of the work.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.auto
import brovik.components
import brovik.shell

ColumnLayout {
    id: root

    property alias currentIndex: bar.currentIndex
    readonly property alias tabCount: bar.count
    readonly property bool isCurrent: StackLayout.isCurrentItem

    RowLayout {
        objectName: "actions"

        Layout.fillWidth: true
        enabled: !Shell.locked

        BrovikButton {
            objectName: "update"

            // Both take the same share.
            Layout.preferredWidth: 1
            text: "Suche nach Updates"
            icon.source: "qrc:/brovik/shell/img/arrow-repeat.svg"

            onClicked: Shell.toPy(Shell.Update, null)
        }

        BrovikButton {
            objectName: "upgrade"

            Layout.preferredWidth: 1
            enabled: Shell.upgradables.length > 0 && !Auto_.active
            text: "Upgrade durchführen"
            icon.source: "qrc:/brovik/shell/img/download.svg"

            onClicked: Shell.toPy(Shell.Upgrade, null)
        }
    }

    TabBar {
        id: bar

        objectName: "bar"

        Layout.fillWidth: true

        UpdatesTabButton {
            room: root.width / bar.count
            text: "Übersicht"
        }

        UpdatesTabButton {
            room: root.width / bar.count
            text: "Verfügbar"
        }

        UpdatesTabButton {
            room: root.width / bar.count
            text: "Installiert"
        }

        UpdatesTabButton {
            room: root.width / bar.count
            text: "Ausgabekonsole"
        }
    }

    PageSwipeView {
        id: pages

        objectName: "tabs"

        Layout.fillWidth: true
        Layout.fillHeight: true
        frame: root.isCurrent ? root.parent as PageStack : null
        currentIndex: bar.currentIndex

        UpdatesTabOverview {
            objectName: "overview"
        }

        UpdatesTabAvailable {
            id: available

            objectName: "available"
        }

        UpdatesTabInstalled {
            id: installed

            objectName: "installed"
        }

        UpdatesTabConsoleOutput {
            objectName: "console"
        }

        onCurrentIndexChanged: privat.showTables()
    }

    QtObject {
        id: privat

        // A table that was not in view may have missed changes of its width.
        function showTables() {
            for (const tab of [available, installed]) {
                tab.currentIndex = 0;
                if (tab.SwipeView.index === pages.currentIndex) {
                    tab.table.forceLayout();
                }
            }
        }
    }

    Component.onCompleted: ShellData.updatesOverviewIndex = StackLayout.index
}
