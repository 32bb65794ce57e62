"""A machine of one's own, as the demo's README tells how to make it: a hardware, and no simulation."""

import shutil
import tempfile
import unittest
from pathlib import Path

from support.automatic import START
from support.panel import DEMO_MACHINE, Panel

HARDWARE = DEMO_MACHINE / "tests" / "backend" / "recording_hardware.py"
CHOSEN = "    return _simulation()\n"
OWN = """\
    from .recording_hardware import RecordingHardware

    return HardwareChoice(RecordingHardware())
"""
#: A whole cleaning takes a second or two.
TIME_FACTOR = "300"
RUN_DEADLINE_SECS = 120.0


class OwnHardwareTest(unittest.TestCase):
    """The real program with a copy of the demo's backend, whose simulation is deleted."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.copy = Path(self.enterContext(folder))
        for name in ("controller", "logbook", "package_source"):
            ignored = shutil.ignore_patterns("simulation", "__pycache__")
            shutil.copytree(DEMO_MACHINE / name, self.copy / name, ignore=ignored)
        shutil.copy(DEMO_MACHINE / "networks.json", self.copy)

    def program(self) -> Panel:
        """The running program."""
        program: Panel = self.enterContext(Panel(self.copy, BROVIK_DEMO_TIME_FACTOR=TIME_FACTOR))
        return program

    def test_cleaning(self) -> None:
        """One file more and one place changed: a barrel gets clean, and the program ends as it should."""
        shutil.copy(HARDWARE, self.copy / "controller")
        choice = self.copy / "controller" / "hardware_choice.py"
        text = choice.read_text("utf-8")
        self.assertEqual(text.count(CHOSEN), 1)
        choice.write_text(text.replace(CHOSEN, OWN), "utf-8")
        program = self.program()
        program.press_and_hold(START)
        program.wait_until_shown("100 %", deadline=RUN_DEADLINE_SECS)
        program.wait_until_shown("Das Fass ist gereinigt und vorgespannt.")
        self.assertEqual(program.close(), 0)

    def test_no_hardware(self) -> None:
        """The operator reads what is missing and where it belongs."""
        program = self.program()
        program.wait_for(
            "the error",
            lambda: [name for name in program.names() if "controller/hardware_choice.py" in name],
        )
        self.assertEqual([line for line in program.log if "initialisiert" in line], [])


if __name__ == "__main__":
    unittest.main()
