"""A backend that stores what the operator wishes some time later, on a thread of its own."""

import unittest

from support import desktop, panel
from support.controls import spin_box
from support.panel import Panel

WATER = "Leitwert in mS/cm, ab dem das Medium als Wasser erkannt wird"
ELECTROLYTE = "Leitwert in mS/cm, ab dem das Medium als Lauge/Säure erkannt wird"
PRESTRESS = "Vorspanndruck"

# Each wish waits until it is due, so that they are stored in their order and as far apart as they came.
LATE = """
import queue
import threading
import time
import controller
from brovik.settings import SettingsValues

wishes = controller.wishes = queue.Queue()
never = threading.Event()

def store():
    while True:
        due, name, value = wishes.get()
        never.wait(max(0.0, due - time.monotonic()))
        setattr(SettingsValues, name, value)
        wishes.task_done()

def settings_from_cpp(enum, value):
    wishes.put((time.monotonic() + 0.3, enum.name, value))

threading.Thread(target=store, daemon=True).start()
controller.answers["settings_from_cpp"] = settings_from_cpp
"""

# Once all wishes are stored: whatever the boxes do about that is done before the text shows.
MARK = """
import controller
from brovik.gui import Gui

controller.wishes.join()
Gui.status = "Runde {}"
"""

IMPORT = "from brovik.settings import SettingsValues\n"
ROUNDS = 5


class LateBackendTest(unittest.TestCase):
    """Number boxes of a setting, with 0.3 s between wish and answer."""

    def setUp(self) -> None:
        self.program: Panel = self.enterContext(panel.remote())
        self.program.wait_until_shown(panel.READY)
        self.program.backend(LATE)
        self._marks = 0

    def _wishes(self) -> list[str]:
        return self.program.calls("settings_from_cpp")

    def _press(self, name: str, steps: str) -> None:
        """Presses + and - in that order, at once."""
        box = spin_box(self.program, name).box
        places = {"+": box.plus, "-": box.minus}
        clicks: list[str | int] = []
        for step in steps:
            clicks += ["mousemove", *places[step], "click", 1]
        desktop.xdotool(*clicks)
        self.program.wait_for("the wishes", lambda: len(self._wishes()) >= len(steps))

    def _settle(self) -> None:
        """Waits until everything is stored and nothing more is wished because of that."""
        for _ in range(ROUNDS):
            before = len(self._wishes())
            # None that shows already.
            self._marks += 1
            self.program.backend(MARK.format(self._marks))
            self.program.wait_until_shown(f"Runde {self._marks}")
            self._read_log()
            if len(self._wishes()) == before:
                return
        self.fail(f"no end of it: {self._wishes()}")

    def _read_log(self) -> None:
        """Waits until all that was printed by now has been read."""
        text = f"Gelesen {self._marks}"
        self.program.backend(f"print({text!r})")
        self.program.wait_for_log(text)

    def _value(self, name: str) -> float:
        return spin_box(self.program, name).value

    def _stored(self, key: str) -> float:
        return float(self.program.backend(f"{IMPORT}result = SettingsValues.{key}"))

    def test_four_steps(self) -> None:
        """Each goes on from the one before, is sent once, and is there at the end."""
        self.program.open_settings("Reinigungsprozess")
        self._press(WATER, "++++")
        self._settle()
        key = "SettingsEnum.threshold_lw_water"
        self.assertEqual(self._wishes(), [f"{key} {value}" for value in (0.15, 0.2, 0.25, 0.3)])
        self.assertEqual(self._stored("threshold_lw_water"), 0.3)
        self.assertEqual(self._value(WATER), 30)

    def test_up_and_down(self) -> None:
        """The two answers are not wishes again."""
        self.program.open_settings("Reinigungsprozess")
        self._press(WATER, "+-")
        self._settle()
        key = "SettingsEnum.threshold_lw_water"
        self.assertEqual(self._wishes(), [f"{key} 0.15", f"{key} 0.1"])
        self.assertEqual(self._stored("threshold_lw_water"), 0.1)
        self.assertEqual(self._value(WATER), 10)

    def test_two_boxes_of_one_setting(self) -> None:
        """That on the first page and that among the settings do not wish against each other."""
        self._press(PRESTRESS, "+-++")
        self._settle()
        key = "SettingsEnum.vorspannen_p"
        self.assertEqual(self._wishes(), [f"{key} {value}" for value in (0.8, 0.7, 0.8, 0.9)])
        self.assertEqual(self._stored("vorspannen_p"), 0.9)
        self.assertEqual(self._value(PRESTRESS), 9)

    def test_pair_of_thresholds(self) -> None:
        """What the backend writes comes back once and stays, though one box limits the other."""
        self.program.open_settings("Reinigungsprozess")
        water, electrolyte = "threshold_lw_water", "threshold_lw_electrolyte"
        for pair in ((0.1, 0.9), (1.2, 4.0), (0.1, 0.3)):
            self.program.backend(f"{IMPORT}SettingsValues.{water}, SettingsValues.{electrolyte} = {pair}")
            self._settle()
            self.assertEqual((self._stored(water), self._stored(electrolyte)), pair)
        self.assertEqual((self._value(WATER), self._value(ELECTROLYTE)), (10, 30))
        sent = {key: [call for call in self._wishes() if f".{key} " in call] for key in (water, electrolyte)}
        self.assertEqual(sent[water], [f"SettingsEnum.{water} {value}" for value in (1.2, 0.1)])
        self.assertEqual(
            sent[electrolyte], [f"SettingsEnum.{electrolyte} {value}" for value in (0.9, 4.0, 0.3)]
        )


if __name__ == "__main__":
    unittest.main()
