"""Backends that behave badly: the window keeps answering and nothing is lost."""

import unittest

from support import desktop, panel
from support.automatic import START
from support.dialogs import IMPORT, dialog_data
from support.panel import Panel

DIALOGS = 200
WRITERS = 4
WRITES = 20_000
HUGE = 10_000_000
# The writers are as slow as the drawing, which two busy cores do.
FLOOD_DEADLINE_SECS = 300.0

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

CHANGELOGS = """
import threading
from brovik.shell import ChangelogEntry, ChangelogEntryVector, Shell

def publish(text):
    entry = ChangelogEntry(Shell)
    entry.name = entry.date = entry.version = entry.distribution = entry.urgency_str = text
    changelogs = ChangelogEntryVector()
    changelogs.append(entry)
    Shell.changelogs = changelogs

def flood(writer):
    for number in range(5000):
        publish(f"{writer}.{number}")

threads = [threading.Thread(target=flood, args=(writer,)) for writer in range(4)]
for thread in threads:
    thread.start()
for thread in threads:
    thread.join()
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
        self.program.wait_until_shown(panel.READY)

    def _wait_for_reports(self, count: int) -> None:
        self.program.wait_for(f"{count} reports", lambda: len(dialog_data(self.program)) >= count)

    def _ends(self) -> set[str]:
        """The titles of the messages that the writers end with, as far as they show."""
        return {name for name in self.program.names() if name.startswith("Ende ")}

    def _answers(self) -> None:
        """A press still reaches the backend. One that is handled late may be too short, and comes again."""
        calls = len(self.program.calls("auto_value_from_cpp"))

        def pressed() -> bool:
            self.program.press_and_hold(START)
            return len(self.program.calls("auto_value_from_cpp")) > calls

        self.program.wait_for("the press", pressed)

    def test_status_flood(self) -> None:
        """Four threads write the status: the window answers meanwhile, and then shows the last text."""
        self.program.backend(FLOOD)
        self.program.click("Settings", "page tab")
        self.program.wait_until_gone(START)
        self.program.click("Automatik", "page tab")
        self._answers()
        self.program.backend(EBB, FLOOD_DEADLINE_SECS)
        self.program.wait_until_shown("Ebbe")
        self._wait_for_reports(WRITERS)
        # The uppermost one is among them.
        shown = self.program.wait_for(
            "the upper ends", lambda: ends if len(ends := self._ends()) == WRITERS - 1 else None
        )
        desktop.press_key("Return")
        self.program.wait_for("all ends", lambda: len(shown | self._ends()) == WRITERS)
        self.assertEqual(
            [data["current"][0] for data in dialog_data(self.program)[:WRITERS]], [-1, -2, -3, -4]
        )

    def test_changelogs_without_a_pause(self) -> None:
        """The page that shows one never shows what has gone meanwhile."""
        self.program.backend(CHANGELOGS, FLOOD_DEADLINE_SECS)
        self._answers()
        self.assertEqual([line for line in self.program.log if " of null" in line], [])

    def test_many_dialogs(self) -> None:
        """200 messages are 200 dialogs, of which the last ones show; operator and backend close them all."""
        self.program.backend(
            IMPORT + f"\nfor i in range({DIALOGS}): gui.Gui.message(f'Nummer {{i}}', 'Text', 'info')"
        )
        self._wait_for_reports(DIALOGS)
        opened = [data["current"][0] for data in dialog_data(self.program)]
        self.assertEqual(opened, [-number for number in range(1, DIALOGS + 1)])
        self.program.wait_until_shown(f"Nummer {DIALOGS - 1}")
        self.assertIsNone(self.program.find("Nummer 0"))
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

    def test_scale_of_the_simulator(self) -> None:
        """Any number is a scale: its window is drawn, and the program answers."""
        self.program.backend("from brovik.simulator import Simulator\nSimulator.enabled = True")
        self.program.window_titled("Simulator")
        for scale in ("0.0", "1e-6", "-1.0", "1e9", "float('inf')", "float('nan')"):
            with self.subTest(scale):
                self.program.backend(
                    f"from brovik.simulator import Simulator\nSimulator.scale_factor = {scale}"
                )
                self._shows_in_the_simulator("Taster grün")
                self.program.backend(f"from brovik.gui import Gui\nGui.status = {scale!r}")
                self.program.wait_until_shown(scale)
        self.assertEqual(self.program.close(), 0)

    def _shows_in_the_simulator(self, name: str) -> None:
        """Something with that name has a place in a window that the screen can take."""
        box = self.program.wait_until_shown(name).box
        self.assertTrue(0 < box.width < 4096 and 0 < box.height < 4096, box)


class RaisingBackendTest(unittest.TestCase):
    """Every entry function fails, and says so, even when it is told of the dialog that shows the failure."""

    def test_every_failure_is_shown(self) -> None:
        """An action that fails is one dialog, a report that fails a log line; neither is endless."""
        with panel.remote(KUBELOR_TEST_RAISING="1") as program:
            self._dismiss(program, "gui_value_from_cpp(GuiEnum.Ready, None)", 1)
            program.press_and_hold(START)
            self._dismiss(program, "auto_value_from_cpp(AutoEnum.Toggle, None)", 2)
            program.click("Intensivreinigung durchführen")
            self._dismiss(program, "settings_from_cpp(SettingsEnum.intense_cleaning, True)", 3)
            # The program tells of a failure after Python has.
            program.wait_for("the failures", lambda: len(self._failures(program)) >= 9)
            self.assertEqual(len(self._failures(program)), 9)
            self.assertEqual(program.close(), 0)

    def _dismiss(self, program: Panel, failure: str, number: int) -> None:
        """Reads and closes that dialog, the only one. The reports that it opens and closes fail."""
        program.wait_until_shown("ValueError")
        program.wait_until_shown(failure)
        program.wait_for_log(f"{{'current': [-{number}.0, None]}})")
        program.click("OK")
        program.wait_until_gone("ValueError")
        program.wait_for_log(f"{{'-{number}': {{'a': False}}, 'current': None}})")

    @staticmethod
    def _failures(program: Panel) -> list[str]:
        return [line for line in program.log if "onException: " in line]
