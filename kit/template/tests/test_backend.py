"""The backend with the objects of the program, without its screens."""

import json
import os
import subprocess
import sys
import unittest
from pathlib import Path
from tempfile import TemporaryDirectory
from unittest.mock import patch

import controller
from brovik import testing
from brovik.actuator import Actuator, ActuatorEnum
from brovik.auto import Auto, AutoEnum
from brovik.gui import Gui
from brovik.settings import SettingsEnum, SettingsValues
from controller import machine
from controller.store import Store


def setUpModule() -> None:  # pylint: disable=invalid-name  # unittest's name
    """The backend starts once, as in the program."""
    testing.start()


class BackendTest(unittest.TestCase):
    """Each test begins with the objects as they are at the start of the program."""

    def setUp(self) -> None:
        testing.reset()

    def tearDown(self) -> None:
        if Auto.active:
            testing.press("auto", AutoEnum.Toggle)
            testing.wait_until(lambda: not Auto.active)

    def test_run(self) -> None:
        """The run pumps, shows how far it is, and ends by itself."""
        SettingsValues.secs_pump = SettingsValues.secs_pump_min
        with patch.object(machine, "PERIOD_SECS", 0.001), testing.signals(Auto, Actuator.pumpe) as changes:
            testing.press("auto", AutoEnum.Toggle)
            testing.wait_until(lambda: Gui.status == "Fertig", timeout=60)
        self.assertEqual([change.value for change in changes.named("Pumpe.state")], [True, False])
        self.assertEqual([change.value for change in changes.named("Auto.active")], [True, False])
        self.assertEqual({change.thread for change in changes.all}, {"machine"})
        self.assertEqual((Auto.progress, testing.outputs()), (100, set()))

    def test_abort(self) -> None:
        """A second press aborts."""
        testing.press("auto", AutoEnum.Toggle)
        testing.wait_until(lambda: testing.outputs() == {"Pumpe"})
        testing.press("auto", AutoEnum.Toggle)
        testing.wait_until(lambda: Gui.status == "Abgebrochen")
        self.assertEqual(testing.outputs(), set())

    def test_by_hand(self) -> None:
        """Outputs are switched by hand, but for those that are blocked."""
        Actuator.mv_kalt.blocked = True
        for output in (ActuatorEnum.MvKalt, ActuatorEnum.MvLuft, ActuatorEnum.ToggleManualHeating):
            testing.press("actuator", output)
        testing.wait_until(lambda: testing.outputs() == {"MvLuft"})
        testing.press("actuator", ActuatorEnum.MvLuft)
        testing.wait_until(lambda: testing.outputs() == set())

    def test_setting(self) -> None:
        """A parameter is stored and kept; one out of its bounds is clamped."""
        testing.press("settings", SettingsEnum.secs_pump, 7)
        testing.press("settings", SettingsEnum.lw_lauge_name, "NaOH")
        self.assertEqual((SettingsValues.secs_pump, SettingsValues.lw_lauge_name), (7, "NaOH"))
        testing.press("settings", SettingsEnum.secs_pump, 100_000)
        self.assertEqual(SettingsValues.secs_pump, SettingsValues.secs_pump_max)
        file = Path(os.environ["BROVIK_CONFIG_DIR"], "controller.json")
        kept = {"secs_pump": SettingsValues.secs_pump_max, "lw_lauge_name": "NaOH"}
        testing.wait_until(lambda: file.exists() and json.loads(file.read_text("utf-8")) == kept)

    def test_fault_is_shown_once(self) -> None:
        """The machine fails in every tick: one dialog, and the run has ended. Afterwards it goes on."""
        with patch.object(controller.backend().process, "advance", side_effect=OSError("Ventil")) as advance:
            testing.press("auto", AutoEnum.Toggle)
            testing.wait_until(lambda: advance.call_count > 5)
        self.assertEqual([dialog.text for dialog in testing.exceptions()], ["Ventil"])
        self.assertEqual((Auto.active, testing.outputs()), (False, set()))
        testing.press("auto", AutoEnum.Toggle)
        testing.wait_until(lambda: testing.outputs() == {"Pumpe"})

    def test_error_in_an_entry_function(self) -> None:
        """It becomes a dialog and does not leave the function."""
        with patch.object(controller.backend().settings, "wish", side_effect=KeyError("Wunsch")):
            testing.press("settings", SettingsEnum.secs_pump, 5)
        self.assertEqual([dialog.title for dialog in testing.exceptions()], ["KeyError"])


class StoreTest(unittest.TestCase):
    """What is kept at the next start, in a process of its own."""

    def setUp(self) -> None:
        testing.reset()
        # Until the end of the test.
        directory = TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        self.folder = Path(directory.name)
        self.file = self.folder / "controller.json"

    def start(self, code: str) -> subprocess.CompletedProcess[str]:
        """Starts the backend and ends it."""
        program = f"from brovik import testing\ntesting.start()\n{code}"
        return subprocess.run(
            [sys.executable, "-c", program],
            env=os.environ | {"BROVIK_CONFIG_DIR": str(self.folder)},
            capture_output=True,
            text=True,
            timeout=60,
            check=False,
        )

    def test_next_start(self) -> None:
        """Has the values; what does not fit keeps its default."""
        self.file.write_text('{"secs_pump": 9, "none": 1, "secs_heiss": "viel"}', "utf-8")
        ended = self.start("from brovik.settings import SettingsValues\nprint(SettingsValues.secs_pump)")
        self.assertEqual((ended.returncode, ended.stdout), (0, "9\n"), ended.stderr)

    def test_damaged_file(self) -> None:
        """Is moved aside, and the operator is told."""
        for text in ("{", "[]", ""):
            with self.subTest(text):
                self.file.write_text(text, "utf-8")
                self.assertEqual(Store(self.file).read(), {})
                self.assertEqual(self.file.with_suffix(".damaged").read_text("utf-8"), text)
                self.assertEqual(testing.messages()[-1].title, "Einstellungen")

    def test_orderly_end(self) -> None:
        """In the middle of a run, with a parameter just changed: outputs go off, the file is written."""
        ended = self.start(
            "from brovik.auto import AutoEnum\n"
            "from brovik.settings import SettingsEnum\n"
            "testing.press('auto', AutoEnum.Toggle)\n"
            "testing.wait_until(lambda: testing.outputs() == {'Pumpe'})\n"
            "testing.press('settings', SettingsEnum.secs_pump, 8)\n"
        )
        self.assertEqual(ended.returncode, 0, ended.stderr)
        self.assertIn("Alle Ausgänge sind aus", ended.stderr)
        self.assertEqual(json.loads(self.file.read_text("utf-8")), {"secs_pump": 8})


if __name__ == "__main__":
    unittest.main()
