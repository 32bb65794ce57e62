import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import QtTest

import brovik.base
import brovik.gui
import brovik.shell
import kubelor.test

// The output console.
Item {
    BaseTemplate {
        id: window

        width: 710
        height: 500
        font.pointSize: Gui.fSizeS

        Component {
            id: consoleComponent

            UpdatesTabConsoleOutput {
                anchors.fill: parent
            }
        }

        // What one append after the other would show.
        TextEdit {
            id: reference

            visible: false
            textFormat: TextEdit.RichText
            wrapMode: TextEdit.Wrap
        }

        // Where the copied text goes.
        TextEdit {
            id: clipboard

            visible: false
        }

        SignalSpy {
            id: toasts

            target: Gui
            signalName: "toastNotify"
        }

        ScreenTestCase {
            name: "UpdatesConsole"

            property UpdatesTabConsoleOutput page
            property TextEdit output

            function prepare() {
                window.setTheme(Material.Dark);
                window.height = 500;
                page = createTemporaryObject(consoleComponent, window.contentItem);
                output = part("output");
                draw(page);
                toasts.clear();
            }

            function part(name) {
                return findChild(page, name);
            }

            // Prints from a thread of the backend. Each piece is a call in Python.
            function send(calls) {
                Backend.runOnThread(calls.map(([stream, text]) => `shell.Shell.append_std${stream}(${JSON.stringify(text)})`).join("\n"));
            }

            function printLines(count) {
                Backend.runOnThread(`for i in range(${count}): shell.Shell.append_stdout(f'Zeile {i}')`);
                tryCompare(output, "lineCount", count);
            }

            function paragraphs() {
                return output.getText(0, output.length).split("\u2029");
            }

            // What the text looks like, whatever its font.
            function look(edit) {
                return edit.getFormattedText(0, edit.length).replace(/font-family:[^;]*;|font-size:[^;]*;/g, "");
            }

            function test_output() {
                compare(output.textFormat, TextEdit.RichText);
                verify(output.readOnly);
                verify(output.persistentSelection);
                verify(!output.selectByMouse);
                compare(output.wrapMode, TextEdit.Wrap);
                compare(output.width, page.flick.width);
                verify(page.flick.clip);
                verify(page.flick.ScrollBar.vertical !== null);
                compare(page.flick.width, page.width);
            }

            function test_form() {
                compare([page.flick.x, page.flick.y], [0, 0]);
                const buttons = ["select", "copy", "clear", "test"].map(name => part(name));
                tryVerify(() => buttons[0].mapToItem(page, 0, 0).y >= page.flick.height);
                verify(page.flick.height > page.height / 2);
                compare(buttons.map(button => button.parent), Array(4).fill(buttons[0].parent));
                const places = buttons.map(button => Array.from(buttons[0].parent.children).indexOf(button));
                compare(places, [0, 1, 2, 3]);
                compare(buttons.map(button => button.Layout.minimumWidth), [50, 50, 50, 50]);
            }

            function test_colour_follows_the_theme() {
                compare(output.color, Qt.color("white"));
                window.setTheme(Material.Light);
                compare(output.color, Qt.color("black"));
            }

            function test_streams() {
                send([["out", "eins"], ["err", "zwei"], ["out", "drei"]]);
                tryVerify(() => paragraphs().length === 3);
                compare(paragraphs(), ["eins", "zwei", "drei"]);
                const lines = look(output).split("<p ").slice(1);
                compare(lines.map(line => line.includes("color:#ff0000")), [false, true, false]);
            }

            // As TextEdit.append() shows it, whatever the markup.
            function test_looks_like_appended_data() {
                const pieces = ["eins", "<b>fett</b>", "<b>offen", "zu", "<font color=\"blue\">blau", "a &amp; b", "<p>Absatz</p>", "<ul><li>x</li></ul>", "", "<br>", "mit\nUmbruch", "<table><tr><td>1</td></tr></table>", "</font>", "Ende"];
                return [{tag: "all", pieces: pieces}, ...pieces.map(piece => ({tag: piece || "nothing", pieces: ["vor", piece, "nach"]}))];
            }

            function test_looks_like_appended(data) {
                reference.clear();
                for (const piece of data.pieces) {
                    reference.append(piece);
                    reference.append(`<font color="red">${piece}</font>`);
                }
                send(data.pieces.reduce((calls, piece) => calls.concat([["out", piece], ["err", piece]]), []));
                tryVerify(() => look(output) === look(reference), 1000);
            }

            function test_view_jumps_to_the_end() {
                printLines(100);
                const atEnd = () => Math.abs(page.flick.contentY + page.flick.height - page.flick.contentHeight) < 1;
                compare(page.flick.contentHeight, output.paintedHeight);
                verify(page.flick.contentHeight > page.flick.height);
                tryVerify(atEnd);
                page.flick.contentY = 0;
                send([["err", "noch eine"]]);
                tryVerify(() => paragraphs().length === 101);
                verify(atEnd());
                window.height = 300;
                tryVerify(() => page.flick.height < 300 && atEnd());
            }

            // Where the operator reads stays in sight, as the on-screen keyboard or the window comes and goes.
            function test_view_keeps_its_place_when_its_height_changes() {
                printLines(100);
                const flick = page.flick;
                const high = flick.height;
                tryVerify(() => flick.contentY > 0);
                flick.contentY = 200;
                window.height = 300;
                tryVerify(() => flick.height < 300);
                compare(flick.contentY, 200);
                window.height = 500;
                tryCompare(flick, "height", high);
                compare(flick.contentY, 200);
                // There is no more text below.
                flick.contentY = flick.contentHeight - flick.height - 20;
                window.height = 600;
                tryVerify(() => flick.height > high + 50);
                tryCompare(flick, "contentY", flick.contentHeight - flick.height);
                window.height = 300;
                tryVerify(() => flick.height < 300 && Math.abs(flick.contentY + flick.height - flick.contentHeight) < 1);
                send([["out", "neu"]]);
                tryVerify(() => paragraphs().length === 101);
                verify(Math.abs(flick.contentY + flick.height - flick.contentHeight) < 1);
            }

            function test_short_output_stays_at_the_top() {
                printLines(3);
                compare(page.flick.contentY, 0);
                verify(page.flick.contentHeight < page.flick.height);
            }

            function test_busy_while_locked() {
                const busy = part("busy");
                verify(!busy.running);
                compare([busy.width, busy.height], [page.flick.width, page.flick.height]);
                Backend.runOnThread("shell.Shell.locked = True");
                tryVerify(() => busy.running);
                printLines(100);
                // It does not scroll with the text, and lets the fingers through.
                compare(busy.mapToItem(page.flick, 0, 0).y, 0);
                mouseDrag(page.flick, 300, 100, 0, 200);
                tryVerify(() => page.flick.contentY + page.flick.height < page.flick.contentHeight - 50);
                Backend.runOnThread("shell.Shell.locked = False");
                tryVerify(() => !busy.running);
            }

            function test_mouse_selection() {
                const button = part("select");
                compare(button.text, "Text selektieren");
                verify(!button.active);
                printLines(1);
                mouseDrag(output, 2, 5, 200, 0);
                compare(output.selectedText, "");
                mouseClick(button);
                verify(button.active && output.selectByMouse);
                mouseDrag(output, 2, 5, 200, 0);
                verify(output.selectedText.length > 0);
                mouseClick(button);
                verify(!button.active && !output.selectByMouse);
            }

            function test_copy() {
                const button = part("copy");
                compare(button.text, "Selektion kopieren");
                send([["err", "kopiere <b>mich</b>"]]);
                tryVerify(() => output.length > 0);
                verify(!button.enabled);
                output.selectAll();
                verify(button.enabled);
                mouseClick(button);
                // The button took the focus, and the selection stays.
                compare(output.selectedText, "kopiere mich");
                clipboard.clear();
                clipboard.paste();
                compare(clipboard.text, "kopiere mich");
                compare(toasts.count, 1);
                compare(Array.from(toasts.signalArguments[0]).slice(0, 3), ["Text in die Zwischenablage kopiert", "qrc:/brovik/base/img/info-circle.svg", Gui.ColorTransparent]);
                verify(toasts.signalArguments[0][3] > 0);
                output.deselect();
                verify(!button.enabled);
            }

            function test_clear() {
                const button = part("clear");
                compare([button.text, button.icon.source], ["Ausgabe löschen", "qrc:/brovik/shell/img/trash3.svg"]);
                verify(!button.enabled);
                printLines(100);
                verify(button.enabled);
                mouseClick(button);
                compare(output.length, 0);
                tryCompare(page.flick, "contentY", 0);
                verify(!button.enabled);
                send([["out", "neu"]]);
                tryVerify(() => output.length > 0);
                compare(paragraphs(), ["neu"]);
            }

            // What was printed before the press does not come back.
            function test_clear_in_a_burst() {
                Backend.runOnThread("for i in range(5000): shell.Shell.append_stdout('alt')");
                tryVerify(() => output.length > 0);
                const partial = output.length;
                verify(partial < 5000 * 4 - 1);
                part("clear").clicked();
                compare(output.length, 0);
                send([["out", "neu"]]);
                tryVerify(() => output.length > 0);
                compare(paragraphs(), ["neu"]);
            }

            function test_burst_keeps_every_line_and_its_order() {
                Backend.runOnThread("for i in range(2000): (shell.Shell.append_stderr if i % 3 == 0 else shell.Shell.append_stdout)(str(i))");
                tryCompare(output, "lineCount", 2000);
                compare(paragraphs(), Array.from({length: 2000}, (_, i) => String(i)));
            }

            // Too long to be laid out at once.
            function test_huge_text() {
                Backend.runOnThread("shell.Shell.append_stderr('<b>' + 'lang ' * 1000000)\nshell.Shell.append_stdout('<b>kurz</b>')");
                tryVerify(() => output.length > 0);
                verify(output.length < 1000000);
                tryVerify(() => paragraphs().pop() === "kurz", 30000);
                compare(paragraphs().slice(0, -1).join(""), "<b>" + "lang ".repeat(1000000));
                verify(output.getFormattedText(0, 10).includes("color:#ff0000"));
            }

            function test_test_button() {
                const button = part("test");
                compare(button.text, "Test");
                compare(button.visible, Gui.debug);
                button.clicked();
                compareSentThrough(Shell, [[Shell.TestConsole, null]]);
            }

            function test_buttons_fit_their_row() {
                const [select, copy, clear] = ["select", "copy", "clear"].map(name => part(name));
                fuzzyCompare(select.width, select.implicitWidth, 1);
                fuzzyCompare(copy.width, copy.implicitWidth, 1);
                verify(clear.width > clear.implicitWidth);
                compare(clear.x + clear.width, page.width);
                mouseClick(select);
                tryVerify(() => Math.abs(select.width - select.implicitWidth) <= 1);
                window.width = 200;
                tryVerify(() => page.width === 200);
                [select, copy, clear].forEach(button => verify(button.width >= 50));
                tryVerify(() => clear.x + clear.width <= 200);
                window.width = 710;
            }
        }
    }
}
