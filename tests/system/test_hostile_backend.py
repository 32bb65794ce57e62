"""Backends that behave badly: the window keeps answering and nothing is lost."""

import unittest

import desktop
import panel
from panel import Panel
from test_dialogs import IMPORT, dialog_data
from waiting import wait_for

DIALOGS = 200
WRITERS = 4
WRITES = 20_000
HUGE = 10_000_000

FLOOD = f"""
import threading
from brovik.gui import Gui

def flood(writer):
    for number in range({WRITES}):
        Gui.status = f"Flut {{writer}} {{number}}"
    Gui.message(f"Ende {{writer}}", "Die Flut ist vorbei.", "info")

threads = [threading.Thread(target=flood, args=(writer,)) for writer in range({WRITERS})]
for thread in threads:
    thread.start()
"""

JOIN = """
import threading
for thread in threading.enumerate():
    if thread.name.endswith("(flood)"):
        thread.join()
"""


class HostileBackendTest(unittest.TestCase):
    """What no backend should do."""

    def setUp(self) -> None:
        self.program = self.enterContext(panel.remote())
        self.program.wait_until_shown("Testbackend bereit")

    def _answers(self) -> None:
        """A press still reaches the backend."""
        calls = len(self.program.calls("auto_value_from_cpp"))
        self.program.press_and_hold("Automatikbetrieb starten")
        wait_for("the press", lambda: len(self.program.calls("auto_value_from_cpp")) > calls)

    def test_status_flood(self) -> None:
        """Four threads write the status: the window answers meanwhile, and then shows the last text."""
        self.program.backend(FLOOD)
        self._answers_in_flood()
        self.program.backend(JOIN)
        self.program.backend(IMPORT + "gui.Gui.status = 'Ebbe'")
        self.program.wait_until_shown("Ebbe")
        for writer in range(WRITERS):
            self.program.wait_until_shown(f"Ende {writer}")
        wait_for("all dialogs", lambda: len(dialog_data(self.program)) == WRITERS)

    def _answers_in_flood(self) -> None:
        self.program.wait_until_shown("Automatik", "page tab")
        self.program.click("Settings", "page tab")
        self.program.wait_until_gone("Automatikbetrieb starten")
        self.program.click("Automatik", "page tab")
        self.program.wait_until_shown("Automatikbetrieb starten")

    def test_many_dialogs(self) -> None:
        """200 messages are 200 dialogs, each of which the operator closes."""
        self.program.backend(
            IMPORT + f"\nfor i in range({DIALOGS}): gui.Gui.message(f'Nummer {{i}}', 'Text', 'info')"
        )
        wait_for("all dialogs", lambda: len(dialog_data(self.program)) == DIALOGS)
        opened = [data["current"][0] for data in dialog_data(self.program)]
        self.assertEqual(opened, [-number for number in range(1, DIALOGS + 1)])
        for closed in range(1, DIALOGS + 1):
            desktop.press_key("Return")
            wait_for("the next dialog", lambda: len(dialog_data(self.program)) >= DIALOGS + closed)
        self.assertIsNone(dialog_data(self.program)[-1]["current"])
        self._answers()

    def test_huge_texts(self) -> None:
        """Texts of 10 MB everywhere: nothing ends, and shorter texts follow."""
        self.program.backend(
            IMPORT
            + f"text = 'lang ' * ({HUGE} // 5); gui.Gui.status = text; gui.Gui.status2 = text;"
            + "gui.Gui.status3 = text; gui.Gui.message('Groß', text, 'info')"
        )
        wait_for("the dialog", lambda: len(dialog_data(self.program)) == 1)
        self.program.backend(
            IMPORT + "gui.Gui.status = gui.Gui.status2 = 'kurz'; gui.Gui.status3 = ''; "
            "gui.Gui.close_current_dialog(True)"
        )
        wait_for("the end of the dialog", lambda: len(dialog_data(self.program)) == 2)
        self.program.wait_until_shown("kurz")
        self._answers()


class RaisingBackendTest(unittest.TestCase):
    """Every entry function fails."""

    def test_every_failure_is_shown(self) -> None:
        """Each forwarded exception is a dialog, and the program runs on."""
        with Panel(panel.CONTROLLERS / "raising") as program:
            program.wait_until_shown("ValueError")
            program.wait_until_shown("gui_value_from_cpp(GuiEnum.Ready, None)")
