"""Backends that behave badly: the window keeps answering and nothing is lost."""

import unittest

import desktop
import panel
from panel import Panel
from test_dialogs import IMPORT, dialog_data

DIALOGS = 200
WRITERS = 4
WRITES = 20_000
HUGE = 10_000_000

# Drawing 200 dialogs one over the other takes a slow machine its time.
PATIENCE_SECS = 180.0

FLOOD = f"""
import threading
from brovik.gui import Gui

threading.flood_ends = threading.Event()

def flood(writer):
    number = 0
    while not threading.flood_ends.is_set() or number < {WRITES}:
        Gui.status = f"Flut {{writer}} {{number}}"
        number += 1
    Gui.message(f"Ende {{writer}}", "Die Flut ist vorbei.", "info")

threading.flood_threads = [threading.Thread(target=flood, args=(writer,)) for writer in range({WRITERS})]
for thread in threading.flood_threads:
    thread.start()
"""

EBB = """
import threading
from brovik.gui import Gui

threading.flood_ends.set()
for thread in threading.flood_threads:
    thread.join()
Gui.status = "Ebbe"
"""


class HostileBackendTest(unittest.TestCase):
    """What no backend should do."""

    def setUp(self) -> None:
        self.program = self.enterContext(panel.remote())
        self.program.wait_until_shown("Testbackend bereit")

    def _wait_for_reports(self, count: int) -> None:
        self.program.wait_for(
            f"{count} reports", lambda: len(dialog_data(self.program)) >= count, PATIENCE_SECS
        )

    def _answers(self) -> None:
        """A press still reaches the backend."""
        calls = len(self.program.calls("auto_value_from_cpp"))
        self.program.press_and_hold("Automatikbetrieb starten")
        self.program.wait_for("the press", lambda: len(self.program.calls("auto_value_from_cpp")) > calls)

    def test_status_flood(self) -> None:
        """Four threads write the status: the window answers meanwhile, and then shows the last text."""
        self.program.backend(FLOOD)
        self.program.click("Settings", "page tab")
        self.program.wait_until_gone("Automatikbetrieb starten")
        self.program.click("Automatik", "page tab")
        self._answers()
        self.program.backend(EBB)
        self.program.wait_until_shown("Ebbe")
        for writer in range(WRITERS):
            self.program.wait_until_shown(f"Ende {writer}")
        self.assertEqual([data["current"][0] for data in dialog_data(self.program)], [-1, -2, -3, -4])

    def test_many_dialogs(self) -> None:
        """200 messages are 200 dialogs, one on the other; the operator and the backend close them all."""
        self.program.backend(
            IMPORT + f"\nfor i in range({DIALOGS}): gui.Gui.message(f'Nummer {{i}}', 'Text', 'info')"
        )
        self._wait_for_reports(DIALOGS)
        opened = [data["current"][0] for data in dialog_data(self.program)]
        self.assertEqual(opened, [-number for number in range(1, DIALOGS + 1)])
        desktop.press_key("Return")
        self._wait_for_reports(DIALOGS + 1)
        closed = dialog_data(self.program)[-1]
        self.assertEqual(closed, {str(-DIALOGS): {"a": False}, "current": [1 - DIALOGS, None]})
        self.program.backend(IMPORT + f"\nfor i in range(1, {DIALOGS}): gui.Gui.close_dialog(-i, True)")
        self._wait_for_reports(2 * DIALOGS)
        self.assertIsNone(dialog_data(self.program)[-1]["current"])
        self._answers()

    def test_huge_texts(self) -> None:
        """Texts of 10 MB everywhere: nothing ends, and shorter texts follow."""
        self.program.backend(
            IMPORT
            + f"text = 'lang ' * ({HUGE} // 5); gui.Gui.status = text; gui.Gui.status2 = text;"
            + "gui.Gui.status3 = text; gui.Gui.message('Groß', text, 'info')"
        )
        self._wait_for_reports(1)
        self.program.backend(
            IMPORT + "gui.Gui.status = gui.Gui.status2 = 'kurz'; gui.Gui.status3 = ''; "
            "gui.Gui.close_current_dialog(True)"
        )
        self._wait_for_reports(2)
        self.program.wait_until_shown("kurz")
        self._answers()


class RaisingBackendTest(unittest.TestCase):
    """Every entry function fails, and says so."""

    def test_every_failure_is_shown(self) -> None:
        """Each forwarded exception is a dialog, and the program runs on."""
        with panel.remote(KUBELOR_TEST_RAISING="1") as program:
            self._dismiss(program)
            program.press_and_hold("Automatikbetrieb starten")
            self._dismiss(program)
            program.click("Intensivreinigung durchführen")
            self._dismiss(program)
            self.assertEqual(program.close(), 0)

    @staticmethod
    def _dismiss(program: Panel) -> None:
        program.wait_until_shown("ValueError")
        program.click("OK")
        program.wait_until_gone("ValueError")
