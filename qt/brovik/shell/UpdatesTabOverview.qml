// How many packages there are, and what is done seldom.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.gui
import brovik.shell

Flickable {
    id: root

    clip: true
    interactive: contentHeight > height
    contentWidth: width
    contentHeight: column.implicitHeight

    ColumnLayout {
        id: column

        width: root.width

        MyRectColLayout {
            objectName: "upgradables"

            color: privat.hasUpdates ? Material.color(Material.Green) : defaultColor

            Label {
                objectName: "upgradableCount"

                Layout.fillWidth: true
                font.pointSize: Texts.drawableSize(Gui.fSizeM)
                wrapMode: Text.WordWrap
                text: privat.upgradablesText
            }

            Label {
                objectName: "searchHint"

                Layout.fillWidth: true
                color: privat.hasUpdates ? Common.fgOnGreen : Common.fg2
                wrapMode: Text.WordWrap
                text: "Neue Suche durch tippen/klicken auf 'Suche nach Updates'"
            }

            Label {
                objectName: "upgradablesHint"

                Layout.fillWidth: true
                visible: privat.hasUpdates
                color: Common.fgOnGreen
                wrapMode: Text.WordWrap
                text: "Für mehr Infos bitte den Tab/Reiter 'verfügbar' wählen"
            }
        }

        MyRectColLayout {
            objectName: "installed"

            visible: Shell.installed.length > 0

            Label {
                objectName: "installedCount"

                Layout.fillWidth: true
                font.pointSize: Texts.drawableSize(Gui.fSizeM)
                wrapMode: Text.WordWrap
                text: `Anzahl der installierten Brovik-Pakete: ${Shell.installed.length}`
            }

            Label {
                objectName: "installedHint"

                Layout.fillWidth: true
                color: Common.fg2
                wrapMode: Text.WordWrap
                text: "Für mehr Infos bitte den Tab/Reiter 'installiert' wählen"
            }
        }

        BrovikButton {
            objectName: "testing"

            enabled: !Shell.locked
            text: `Testing ${privat.testingVerb}`
            icon.source: "qrc:/brovik/shell/img/slash-square.svg"

            onClicked: privat.askForPassword()
        }

        Label {
            objectName: "testingText"

            Layout.fillWidth: true
            color: Common.fg2
            wrapMode: Text.WordWrap
            text: "Die Testing-Komponente enthält Vorabversionen der Brovik-Pakete. Die (de)Aktivierung erfordert ein Passwort, da diese Aktion nicht ohne Absprache mit der Firma Brovik durchgeführt werden soll. Sie dient dem Testen neuer Features und ist daher fehleranfälliger und für den Produktivbetrieb nicht empfohlen."
        }

        BrovikButton {
            objectName: "clearCache"

            enabled: !Shell.locked
            text: "Cache löschen"
            icon.source: "qrc:/brovik/shell/img/trash3.svg"

            onClicked: Shell.toPy(Shell.ClearCache, null)
        }

        Label {
            objectName: "cacheText"

            Layout.fillWidth: true
            color: Common.fg2
            wrapMode: Text.WordWrap
            text: "Wenn Changelogs heruntergeladen oder Dateien geparsed werden müssen, werden dafür temporäre Dateien erstellt. Diese Dateien werden zwar durch einen Neustart gelöscht, lassen sich aber durch diesen Button auch manuell löschen."
        }
    }

    UpdatesPageSight {
        page: root
    }

    PageReporter {
        page: root
        pageEnum: Gui.PageUpdatesOverview
    }

    QtObject {
        id: privat

        readonly property int count: Shell.upgradables.length
        readonly property bool hasUpdates: count > 0
        readonly property string testingVerb: `${Shell.testingRepoEnabled ? "de" : ""}aktivieren`
        readonly property string upgradablesText: {
            switch (privat.count) {
            case 0:
                return "Es sind aktuell keine Updates verfügbar";
            case 1:
                return "Es ist ein Update für ein Brovik-Paket verfügbar";
            default:
                return `Es sind Updates für ${privat.count} Brovik-Pakete verfügbar`;
            }
        }

        function askForPassword() {
            const dialog = Dialogs.input(`'testing'-Komponente ${privat.testingVerb}`, "<i>Die Aktivierung der 'testing'-Komponente ist nicht für den Produktivbetrieb vorgesehen. Sie dient zum Testen neuer Funktionen und Bugfixes, und sollte nur bei Bedarf (de)aktiviert werden.</i><br><b>Passwort erforderlich (Kann von Fa. Brovik auch per Fernwartung [de]aktiviert werden)</b>", {password: true});
            dialog.accepted.connect(password => Shell.toPy(Shell.ToggleTesting, password));
        }
    }

    Component.onCompleted: ShellData.updatesTabOverviewIndex = SwipeView.index
}
