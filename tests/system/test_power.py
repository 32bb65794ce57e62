"""Switching the machine off and restarting it, with stand-ins for the two commands."""

import os
import tempfile
import unittest
from pathlib import Path

from support import desktop, panel
from support.automatic import START
from support.panel import Panel

POWER_BUTTON = "Herunterfahren oder neu starten"
POWEROFF_QUESTION = "Soll die Maschine wirklich heruntergefahren werden?"
REBOOT_QUESTION = "Soll die Maschine wirklich neu gestartet werden?"


class PowerTest(unittest.TestCase):
    """From the power button to the command and back."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self._folder = Path(self.enterContext(folder))

    def _program(self, command: str, code: int) -> Panel:
        """The program, with a stand-in of the command that notes its arguments and ends with the code."""
        stand_in = self._folder / command
        stand_in.write_text(
            f'#!/bin/sh\necho "arguments:$*" >>"{self._ran(command)}"\nexit {code}\n', "utf-8"
        )
        stand_in.chmod(0o755)
        return panel.remote(PATH=f"{self._folder}:{os.environ['PATH']}")

    def _ran(self, command: str) -> Path:
        return self._folder / f"{command}.ran"

    @staticmethod
    def _ask_for(program: Panel, button: str, question: str) -> None:
        program.click(POWER_BUTTON)
        program.click(button)
        program.wait_until_shown(question)

    def test_poweroff_fails(self) -> None:
        """An error code is shown, and the program runs on without its backend."""
        with self._program("poweroff", 1) as program:
            self._ask_for(program, "Herunterfahren", POWEROFF_QUESTION)
            program.click("OK")
            program.wait_until_shown("'poweroff' hat den Fehlercode 1 zurückgegeben")
            program.wait_until_shown("Poweroff")
            self.assertEqual(self._ran("poweroff").read_text("utf-8"), "arguments:\n")
            program.click("OK")
            program.wait_until_gone("Poweroff")
            program.press_and_hold(START)
            self.assertIsNone(program.process.poll())
            self.assertEqual(program.close(), 0)

    def test_poweroff_succeeds(self) -> None:
        """The program ends with 0. Enter confirms the popup as well as the question."""
        with self._program("poweroff", 0) as program:
            program.wait_until_shown(panel.READY)
            program.backend("from brovik.gui import Gui; Gui.show_poweroff_dialog()")
            program.wait_until_shown("Herunterfahren")
            desktop.press_key("Return")
            program.wait_until_shown(POWEROFF_QUESTION)
            desktop.press_key("Return")
            self.assertEqual(program.wait_for_end(), 0)
            self.assertEqual(self._ran("poweroff").read_text("utf-8"), "arguments:\n")

    def test_poweroff_cancelled(self) -> None:
        """Abbrechen runs nothing."""
        with self._program("poweroff", 0) as program:
            self._ask_for(program, "Herunterfahren", POWEROFF_QUESTION)
            program.click("Abbrechen")
            program.wait_until_gone(POWEROFF_QUESTION)
            program.wait_until_shown(panel.READY)
            self.assertFalse(self._ran("poweroff").exists())

    def test_reboot_fails_and_missing_command(self) -> None:
        """The same for the restart."""
        with self._program("reboot", 3) as program:
            self._ask_for(program, "Neu starten", REBOOT_QUESTION)
            program.click("OK")
            program.wait_until_shown("'reboot' hat den Fehlercode 3 zurückgegeben")
            program.wait_until_shown("Reboot")
