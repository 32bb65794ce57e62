// The installed packages.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import Qt.labs.qmlmodels

import brovik.base
import brovik.components
import brovik.gui
import brovik.shell

UpdatesTabTable {
    id: root

    headerModel: ["Paketname", "Version", "Architektur", "Beschreibung", "Changelog einsehen"]
    headerFillWidths: [0, 0, 0, 1]
    headerMinWidths: [120, 0, 0, 200]
    headerMaxWidths: [null, null, null, null, root.buttonWidth]
    headerWantedWidths: [null, root.widestOf(records.rows, "version")]
    model: TableModel {
        id: records

        TableModelColumn {
            display: "name"
        }

        TableModelColumn {
            display: "version"
        }

        TableModelColumn {
            display: "arch"
        }

        TableModelColumn {
            display: "description"
        }

        // Of any type, other than by the name of a key.
        TableModelColumn {
            display: index => records.getRow(index.row).name2
        }
    }
    delegate: DelegateChooser {
        DelegateChoice {
            column: 4

            MyTableChangelogBtnDelegate {
                table: root.packages

                btn.onClicked: root.showChangelog(Shell.LocalChangelog, model.display)
            }
        }

        DelegateChoice {
            MyTableDefaultDelegate {
                table: root.packages
            }
        }
    }

    UpdatesPageSight {
        page: root
    }

    PageReporter {
        page: root
        pageEnum: Gui.PageUpdatesInstalled
    }

    Connections {
        target: Shell

        // Once for all lists that wait: each time all rows are made anew.
        // The linter does not know that callLater() takes a function.
        function onInstalledChanged() {
            Qt.callLater(privat.showRecords); // qmllint disable type
        }
    }

    QtObject {
        id: privat

        function showRecords() {
            records.rows = Array.from(Shell.installed, record => ({
                name: root.asText(record.name),
                version: root.asText(record.version),
                arch: root.asText(record.arch),
                description: root.asText(record.description),
                name2: record.name2 || ""
            }));
        }
    }

    Component.onCompleted: {
        ShellData.updatesTabInstalledIndex = SwipeView.index;
        privat.showRecords();
    }
}
