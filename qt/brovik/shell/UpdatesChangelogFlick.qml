// The changelog asked for last.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts

import brovik.components
import brovik.shell

ColumnLayout {
    id: root

    readonly property alias backBtn: back

    BrovikButton {
        id: back

        text: "Zurück zur Tabelle"
        icon.source: "qrc:/brovik/shell/img/arrow-left.svg"
    }

    // A view makes only what is in sight of a long list.
    ListView {
        id: list

        objectName: "changelog"

        Layout.fillWidth: true
        Layout.fillHeight: true
        clip: true
        interactive: contentHeight > height
        delegate: UpdatesChangelogEntry {
            width: ListView.view.width
        }
    }

    Connections {
        target: Shell

        // Once for all lists that wait: each time all entries are made anew.
        // The linter does not know that callLater() takes a function.
        function onChangelogsChanged() {
            Qt.callLater(privat.showEntries); // qmllint disable type
        }
    }

    QtObject {
        id: privat

        // Read once, since each look at an element makes a new object. An element is null if it goes meanwhile.
        function showEntries() {
            list.model = Array.from(Shell.changelogs).filter(entry => entry !== null);
        }
    }

    Component.onCompleted: privat.showEntries()
}
