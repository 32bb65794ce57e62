"""The update pages on the real window, with a backend that does what the test says."""

import unittest

from support import desktop, panel
from support.complaints import complaints

UPDATE, UPGRADE = "Suche nach Updates", "Upgrade durchführen"
OVERVIEW, AVAILABLE, INSTALLED, CONSOLE = "Übersicht", "Verfügbar", "Installiert", "Ausgabekonsole"
BACK = "Zurück zur Tabelle"
LINES = 2_000

IMPORT = "from brovik.shell import ChangelogEntry, ChangelogEntryVector, Shell\n"

PACKAGES = (
    IMPORT
    + """
Shell.upgradables = [
    {"name": "kubelor", "versionNew": "1.2", "versionOld": "1.1", "urgency": "high", "changelogAvailable": "k.log"},
    {"name": "<b>fett</b>", "lastChange": None, "urgency": 3},
]
Shell.installed = [{"name": "controller", "version": "0.9", "name2": "controller"}]
"""
)

#: Lets the backend answer the request for a changelog.
ANSWER = (
    IMPORT
    + """
import controller

def answer(action, value):
    if "Changelog" in str(action):
        entries = ChangelogEntryVector()
        entry = ChangelogEntry(Shell)
        entry.name, entry.version, entry.changes = str(value), "1.2", ["<img src='http://127.0.0.1:9/x.png'>"]
        entries.append(entry)
        Shell.changelogs = entries

controller.answers["shell_action_from_cpp"] = answer
"""
)

#: An upgrade whose thread dies between a tag and its end, and lets go of nothing.
DYING = (
    IMPORT
    + """
import threading

def upgrade():
    Shell.locked = True
    Shell.upgrade_in_progress_or_finished = True
    for number in range(200):
        Shell.append_stdout(f"Entpacken von Paket {number}")
    Shell.append_stdout("<b><font color='blue'>Abbruch in der Mitte")
    raise RuntimeError("das Ende des Threads")

thread = threading.Thread(target=upgrade)
thread.start()
thread.join()
"""
)


class UpdatesTest(unittest.TestCase):
    """Each on a program of its own, which has nothing to complain of."""

    def setUp(self) -> None:
        #: What it may complain of.
        self.expected: tuple[str, ...] = ()
        self.program = self.enterContext(panel.remote())
        self.program.wait_until_shown(panel.READY)
        self.program.open_settings("Updates")

    def tearDown(self) -> None:
        self.assertEqual(complaints(self.program, *self.expected), [])

    def _calls(self) -> list[str]:
        return self.program.calls("shell_action_from_cpp")

    def _wait_for_calls(self, *expected: str) -> None:
        self.program.wait_for(f"{len(expected)} calls", lambda: len(self._calls()) >= len(expected))
        self.assertEqual(self._calls(), [f"ShellActionEnum.{call}" for call in expected])

    def _open(self, tab: str) -> None:
        """Opens a tab, and waits until it has slid to its place."""
        self.program.click(tab, "page tab")
        self.program.wait_until_still()

    def _output(self) -> str:
        """What stands in the console."""
        found = self.program.find(CONSOLE, "text")
        return found.text if found else ""

    def _wait_for_output(self, text: str) -> None:
        self.program.wait_for(f"{text!r} in the console", lambda: text in self._output())

    def _select(self, top: int, bottom: int) -> None:
        """Draws the mouse over these rows of the screen."""
        self.program.click("Text selektieren")
        box = self.program.wait_until_shown(CONSOLE, "text").box
        desktop.xdotool("mousemove", box.x + 1, top, "mousedown", 1)
        desktop.xdotool("mousemove", box.middle[0], (top + bottom) // 2)
        desktop.xdotool("mousemove", box.middle[0], bottom, "mouseup", 1)

    def _rows(self, top: int, bottom: int) -> bytes:
        """How these rows of the screen look."""
        self.program.wait_until_still()
        picture = desktop.pixels("root")
        row = len(picture) // int(desktop.xdotool("getdisplaygeometry").split()[1])
        return picture[top * row : bottom * row]

    def test_search_and_upgrade(self) -> None:
        """Two presses, two calls; there is nothing to install before there are updates."""
        self.program.wait_until_shown("Es sind aktuell keine Updates verfügbar")
        self.program.click(UPGRADE)
        self.program.click(UPDATE)
        self._wait_for_calls("Update None")
        self.program.backend(PACKAGES)
        self.program.wait_until_shown("Es sind Updates für 2 Brovik-Pakete verfügbar")
        self.program.wait_until_shown("Anzahl der installierten Brovik-Pakete: 1")
        self.program.click(UPGRADE)
        self._wait_for_calls("Update None", "Upgrade None")

    def test_changelogs(self) -> None:
        """Each table asks for its changelog, shows it as text, and comes back."""
        self.program.backend(PACKAGES)
        self.program.backend(ANSWER)
        self._open(AVAILABLE)
        self.program.wait_until_shown("<b>fett</b>", "label")
        self.program.wait_until_shown("Hoch", "label")
        self.program.click("Changelog", "push button")
        self.program.wait_until_shown("<img src='http://127.0.0.1:9/x.png'>", "label")
        self.program.wait_until_still()
        self.program.click(BACK)
        self.program.wait_until_gone(BACK)
        self._open(INSTALLED)
        self.program.click("Changelog", "push button")
        self.program.wait_until_shown(BACK)
        self._wait_for_calls("Changelog k.log", "LocalChangelog controller")

    def test_leaving_an_open_changelog(self) -> None:
        """Coming back shows the table."""
        self.program.backend(PACKAGES)
        self._open(INSTALLED)
        self.program.click("Changelog", "push button")
        self.program.wait_until_shown(BACK)
        self._open(CONSOLE)
        self._open(INSTALLED)
        self.program.wait_until_shown("controller", "label")
        self.assertIsNone(self.program.find(BACK))

    def test_password(self) -> None:
        """It reaches the backend as typed, and no line of the program's own log."""
        self.program.click("Testing aktivieren")
        self.program.wait_until_shown("'testing'-Komponente aktivieren")
        desktop.type_text("Geheim 42")
        desktop.press_key("Return")
        self._wait_for_calls("ToggleTesting Geheim 42")
        self.program.wait_until_gone("'testing'-Komponente aktivieren")
        own = [line for line in self.program.log if not line.startswith("CALL shell_action_from_cpp")]
        self.assertEqual([line for line in own if "Geheim" in line], [])
        self.program.backend(IMPORT + "Shell.testing_repo_enabled = True")
        self.program.wait_until_shown("Testing deaktivieren")

    def test_jumps_of_the_backend(self) -> None:
        """It brings the console to the front, and the overview, from wherever the operator is."""
        self.program.click("Automatik", "page tab")
        self.program.backend("from brovik import gui; gui.Gui.page = gui.PageEnum.UpdatesShell")
        self.program.wait_until_shown("Ausgabe löschen")
        self.program.backend("from brovik import gui; gui.Gui.page = gui.PageEnum.UpdatesOverview")
        self.program.wait_until_shown("Cache löschen")

    def test_copying(self) -> None:
        """What was selected is in the clipboard, from where it comes into a field."""
        self._open(CONSOLE)
        self.program.backend(IMPORT + "Shell.append_stderr('eins <b>zwei</b> drei')")
        self._wait_for_output("drei")
        box = self.program.wait_until_shown(CONSOLE, "text").box
        self._select(box.y + 1, box.bottom - 1)
        self.program.click("Selektion kopieren")
        self.program.click("Ausgabe löschen")
        self.program.wait_for("an empty console", lambda: self._output() == "")
        self._open(OVERVIEW)
        self.program.click("Testing aktivieren")
        self.program.wait_until_shown("'testing'-Komponente aktivieren")
        desktop.press_key("ctrl+v")
        desktop.press_key("Return")
        self._wait_for_calls("ToggleTesting eins zwei drei")

    def test_selection_in_a_long_output(self) -> None:
        """It changes nothing of the lines above."""
        self._open(CONSOLE)
        self.program.backend(IMPORT + f"for i in range({LINES}): Shell.append_stdout(f'Zeile {{i}}.')")
        self._wait_for_output(f"Zeile {LINES - 1}.")
        top = self.program.wait_until_shown(CONSOLE, "page tab").box.bottom
        bottom = self.program.wait_until_shown("Ausgabe löschen").box.y
        middle = (top + bottom) // 2
        before = self._rows(top, bottom)
        self._select(middle, bottom - 10)
        after = self._rows(top, bottom)
        # The line of the middle is still above it.
        above = len(before) * 4 // 10
        self.assertTrue(after[:above] == before[:above], "the lines above look different")
        self.assertFalse(after == before, "nothing is selected")

    def test_burst(self) -> None:
        """All lines come, and presses get through meanwhile."""
        self._open(CONSOLE)
        self.program.backend(IMPORT + f"for i in range({LINES}): Shell.append_stdout(f'Zeile {{i}}.')")
        self.program.click(UPDATE)
        self._wait_for_calls("Update None")
        self._wait_for_output(f"Zeile {LINES - 1}.")
        self.assertEqual(self._output().count("Zeile "), LINES)

    def test_dying_upgrade(self) -> None:
        """The operator goes on: tabs, changelogs, console and other pages, only not what is locked."""
        self.program.backend(PACKAGES)
        self.expected = ("(upgrade) ist gestorben",)
        self.program.backend(DYING)
        self.program.wait_until_shown("RuntimeError")
        self.program.click("OK")
        self.program.wait_until_gone("OK")
        self.program.click(CONSOLE, "page tab")
        self._wait_for_output("Abbruch in der Mitte")
        self.program.click(UPDATE)
        self.program.click("Ausgabe löschen")
        self.program.wait_for("an empty console", lambda: self._output() == "")
        self.program.backend(IMPORT + "Shell.append_stdout('danach')")
        self._wait_for_output("danach")
        self.program.click(INSTALLED, "page tab")
        self.program.click("Changelog", "push button")
        self._wait_for_calls("LocalChangelog controller")
        self.program.click("Automatik", "page tab")
        self.program.wait_until_shown(
            "Es wird/wurde ein Upgrade durchgeführt. Bitte die Maschine nach dem Upgrade neu starten."
        )
        self.program.backend(IMPORT + "Shell.locked = False")
        self.program.open_settings("Updates")
        self.program.click(UPDATE)
        self._wait_for_calls("LocalChangelog controller", "Update None")


if __name__ == "__main__":
    unittest.main()
