// The packages with an update.
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

    headerModel: ["Paketname", "Version", "installiert", "Priorität", "Änderungen", "Changelog einsehen"]
    headerFillWidths: [0, 0, 0, 0, 1]
    headerMinWidths: [120, 0, 0, 0, 200]
    headerMaxWidths: [null, null, null, null, null, root.buttonWidth]
    headerWantedWidths: [null, root.widestOf(records.rows, "versionNew"), root.widestOf(records.rows, "versionOld")]
    model: TableModel {
        id: records

        TableModelColumn {
            display: "name"
        }

        TableModelColumn {
            display: "versionNew"
        }

        TableModelColumn {
            display: "versionOld"
        }

        TableModelColumn {
            display: "urgency"
        }

        TableModelColumn {
            display: "lastChange"
        }

        // Of any type, other than by the name of a key.
        TableModelColumn {
            display: index => records.getRow(index.row).changelogAvailable
        }
    }
    delegate: DelegateChooser {
        DelegateChoice {
            column: 3

            MyTableUrgencyDelegate {
                table: root.packages
            }
        }

        DelegateChoice {
            column: 4

            MyTableTextListDelegate {
                table: root.packages
            }
        }

        DelegateChoice {
            column: 5

            MyTableChangelogBtnDelegate {
                table: root.packages

                btn.onClicked: root.showChangelog(Shell.Changelog, model.display)
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
        pageEnum: Gui.PageUpdatesAvailable

        onIsCurrentChanged: {
            if (isCurrent) {
                console.log("tab available");
            }
        }
    }

    Connections {
        target: Shell

        // Once for all lists that wait: each time all rows are made anew.
        // The linter does not know that callLater() takes a function.
        function onUpgradablesChanged() {
            Qt.callLater(privat.showRecords); // qmllint disable type
        }
    }

    QtObject {
        id: privat

        function showRecords() {
            records.rows = Array.from(Shell.upgradables, record => ({
                name: root.asText(record.name),
                versionNew: root.asText(record.versionNew),
                versionOld: root.asText(record.versionOld),
                urgency: root.asText(record.urgency),
                lastChange: root.asTexts(record.lastChange),
                changelogAvailable: record.changelogAvailable || ""
            }));
        }
    }

    Component.onCompleted: {
        ShellData.updatesTabAvailableIndex = SwipeView.index;
        privat.showRecords();
    }
}
