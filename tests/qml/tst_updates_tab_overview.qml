import QtQuick
import QtQuick.Controls.Material

import brovik.base
import brovik.gui
import brovik.shell
import kubelor.test

// The overview of the updates.
Item {
    BaseTemplate {
        id: window

        width: 720
        height: 700
        font.pointSize: Gui.fSizeS

        Component {
            id: tabComponent

            UpdatesTabOverview {
                anchors.fill: parent
            }
        }

        DialogTestCase {
            id: testCase

            name: "UpdatesTabOverview"

            property UpdatesTabOverview tab

            readonly property string testingText: "Die Testing-Komponente enthält Vorabversionen der Brovik-Pakete. Die (de)Aktivierung erfordert ein Passwort, da diese Aktion nicht ohne Absprache mit der Firma Brovik durchgeführt werden soll. Sie dient dem Testen neuer Features und ist daher fehleranfälliger und für den Produktivbetrieb nicht empfohlen."
            readonly property string cacheText: "Wenn Changelogs heruntergeladen oder Dateien geparsed werden müssen, werden dafür temporäre Dateien erstellt. Diese Dateien werden zwar durch einen Neustart gelöscht, lassen sich aber durch diesen Button auch manuell löschen."
            readonly property string passwordText: "<i>Die Aktivierung der 'testing'-Komponente ist nicht für den Produktivbetrieb vorgesehen. Sie dient zum Testen neuer Funktionen und Bugfixes, und sollte nur bei Bedarf (de)aktiviert werden.</i><br><b>Passwort erforderlich (Kann von Fa. Brovik auch per Fernwartung [de]aktiviert werden)</b>"

            function prepare() {
                window.width = 720;
                window.height = 700;
                Common.mainHeight = 700;
                tab = createTemporaryObject(tabComponent, window.contentItem);
                draw(tab);
            }

            function part(name) {
                return findChild(tab, name);
            }

            function test_upgradables_data() {
                return [
                    {tag: "none", count: 0, text: "Es sind aktuell keine Updates verfügbar"},
                    {tag: "one", count: 1, text: "Es ist ein Update für ein Brovik-Paket verfügbar"},
                    {tag: "two", count: 2, text: "Es sind Updates für 2 Brovik-Pakete verfügbar"}
                ];
            }

            function test_upgradables(data) {
                Backend.runOnThread(`shell.Shell.upgradables = [{'name': str(i)} for i in range(${data.count})]`);
                tryCompare(part("upgradableCount"), "text", data.text);
                compare(part("upgradableCount").font.pointSize, Gui.fSizeM);
                compare(part("upgradables").color, data.count ? Qt.color("#4caf50") : Common.bg1);
                compare(part("upgradablesHint").visible, data.count > 0);
                compare(part("searchHint").color, data.count ? Qt.color("lightgrey") : Common.fg2);
            }

            function test_hints() {
                Backend.run("shell.Shell.upgradables = [{}]\nshell.Shell.installed = [{}]");
                compare(part("searchHint").text, "Neue Suche durch tippen/klicken auf 'Suche nach Updates'");
                compare(part("upgradablesHint").text, "Für mehr Infos bitte den Tab/Reiter 'verfügbar' wählen");
                compare(part("upgradablesHint").color, Qt.color("lightgrey"));
                compare(part("installedHint").text, "Für mehr Infos bitte den Tab/Reiter 'installiert' wählen");
                compare(part("installedHint").color, Common.fg2);
            }

            function test_installed_data() {
                return [{tag: "none", count: 0}, {tag: "three", count: 3}];
            }

            function test_installed(data) {
                Backend.runOnThread(`shell.Shell.installed = [{'name': str(i)} for i in range(${data.count})]`);
                tryCompare(part("installedCount"), "text", `Anzahl der installierten Brovik-Pakete: ${data.count}`);
                compare(part("installed").visible, data.count > 0);
                compare(part("installedCount").font.pointSize, Gui.fSizeM);
            }

            function test_order() {
                Backend.run("shell.Shell.installed = [{}]");
                const rows = ["upgradables", "installed", "testing", "testingText", "clearCache", "cacheText"].map(name => part(name));
                for (let i = 1; i < rows.length; ++i) {
                    tryVerify(() => rows[i].y >= rows[i - 1].y + rows[i - 1].height, 1000, rows[i].objectName);
                }
                compare([rows[3].text, rows[5].text], [testingText, cacheText]);
                compare([rows[3].color, rows[5].color], [Common.fg2, Common.fg2]);
                rows.forEach(row => compare(row.width, tab.width));
            }

            function test_order_in_the_boxes() {
                Backend.run("shell.Shell.upgradables = shell.Shell.installed = [{}]");
                for (const names of [["upgradableCount", "searchHint", "upgradablesHint"], ["installedCount", "installedHint"]]) {
                    const labels = names.map(name => part(name));
                    for (let i = 1; i < labels.length; ++i) {
                        tryVerify(() => labels[i].y >= labels[i - 1].y + labels[i - 1].height, 1000, names[i]);
                    }
                }
            }

            function test_long_texts_wrap() {
                Backend.run("shell.Shell.upgradables = shell.Shell.installed = [{}]");
                window.width = 300;
                tryCompare(tab, "contentWidth", 300);
                for (const name of ["upgradableCount", "searchHint", "upgradablesHint", "installedCount", "installedHint", "testingText", "cacheText"]) {
                    const label = part(name);
                    tryVerify(() => label.width <= 300 && label.contentWidth <= label.width, 1000, name);
                }
            }

            function test_scrolls_only_if_need_be() {
                verify(tab.clip);
                tryVerify(() => tab.contentHeight > 0 && tab.contentHeight <= tab.height);
                verify(!tab.interactive);
                window.height = 200;
                tryVerify(() => tab.interactive);
            }

            function test_clear_cache() {
                compare([part("clearCache").text, part("clearCache").icon.source], ["Cache löschen", "qrc:/brovik/shell/img/trash3.svg"]);
                mouseClick(part("clearCache"));
                compareSentThrough(Shell, [[Shell.ClearCache, null]]);
            }

            function askForPassword() {
                mouseClick(part("testing"));
                const dialog = latestDialog();
                tryVerify(() => dialog.input.activeFocus);
                return dialog;
            }

            function test_testing_data() {
                return [{tag: "off", enabled: false, text: "aktivieren"}, {tag: "on", enabled: true, text: "deaktivieren"}];
            }

            function test_testing(data) {
                Backend.runOnThread(`shell.Shell.testing_repo_enabled = ${data.enabled ? "True" : "False"}`);
                tryCompare(part("testing"), "text", `Testing ${data.text}`);
                compare(part("testing").icon.source, "qrc:/brovik/shell/img/slash-square.svg");
                const dialog = askForPassword();
                compare([dialog.title, dialog.text], [`'testing'-Komponente ${data.text}`, passwordText]);
                verify(dialog.password);
                compare(dialog.input.echoMode, TextInput.Password);
                dialog.value = " geheim ";
                keyClick(Qt.Key_Return);
                compareSentThrough(Shell, [[Shell.ToggleTesting, " geheim "]]);
                // The backend alone decides.
                compare(part("testing").text, `Testing ${data.text}`);
            }

            function test_no_password() {
                const dialog = askForPassword();
                keyClick(Qt.Key_Return);
                compare(dialog.errorText, "Es ist eine Eingabe erforderlich");
                dialog.value = "geheim";
                keyClick(Qt.Key_Escape);
                compareSentThrough(Shell, []);
            }

            function test_password_is_not_printed() {
                Backend.startRecordingPrints();
                askForPassword().value = "geheim";
                keyClick(Qt.Key_Return);
                compareSentThrough(Shell, [[Shell.ToggleTesting, "geheim"]]);
                compare(Backend.takePrints().filter(line => line.includes("geheim")), []);
            }
        }
    }
}
