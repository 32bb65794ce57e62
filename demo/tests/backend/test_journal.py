"""The journal of the demo machine: what the operator was told and asked, and what has been changed."""

import subprocess
import unittest
from unittest.mock import patch

from brovik.auto import Auto, AutoEnum
from brovik.gui import GuiEnum
from brovik.settings import SettingsEnum
from brovik.shell import Shell, ShellActionEnum

from demo_logbook import details, journal
from demo_support import RunningCase
import controller
from controller.journal import Event, Kind
from logbook.place import FILE_NAME
from logbook.records import EVENTS, KINDS, JournalEntry

PASSWORD = "vorab-2026"


class JournalCase(RunningCase):
    """Reads the journal of a program that has ended."""

    def journal(self, *kinds: str) -> list[JournalEntry]:
        """The lines of these kinds."""
        self.stop()
        return journal(self.directory / FILE_NAME, *kinds)

    def report(self, value: object) -> None:
        """The screens tell of a dialog."""
        controller.gui_value_from_cpp(GuiEnum.DialogData, value)


class KindTest(JournalCase):
    """Each kind of line."""

    def test_names(self) -> None:
        """Those that the file has."""
        self.assertEqual((tuple(Kind), tuple(Event)), (KINDS, EVENTS))

    def test_program(self) -> None:
        """Its beginning and its end; there is no end of one that was killed."""
        self.start()
        first = self.journal("program")
        self.assertEqual([line.event for line in first], ["begun", "ended"])
        self.assertIn("brovik-bedienung", details(first[0]))

    def test_run(self) -> None:
        """Begun, and ended with the number of its record."""
        self.start()
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(lambda: Auto.active)
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(lambda: not Auto.active)
        begun, ended = self.journal("run")
        self.assertEqual((begun.event, details(begun)), ("begun", {"step": ""}))
        self.assertEqual((ended.event, ended.text), ("ended", "abgebrochen"))
        self.assertEqual(details(ended), {"number": 1, "result": "neutral"})

    def test_message(self) -> None:
        """Of a run that fails: came, and closed by the operator."""
        self.start(fault="leak")
        controller.gui_value_from_cpp(GuiEnum.Ready, None)
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(lambda: self.signals("message"))
        self.report({"current": [-1.0, None]})
        self.report({"-1": {"a": False}, "current": None})
        self.handled()
        came, acknowledged = self.journal("message")
        self.assertEqual(
            (came.event, came.subject, acknowledged.event), ("came", "Automatikbetrieb", "acknowledged")
        )
        self.assertRegex(came.text, "^Undicht")
        self.assertEqual((acknowledged.text, details(came)), (came.text, {"category": "error"}))

    def test_exception(self) -> None:
        """With its type and its place."""
        self.start()
        with patch.object(controller.backend().settings, "wish", side_effect=ValueError("<schlecht>")):
            controller.settings_from_cpp(SettingsEnum.secs_pump, 5.0)
        (line,) = self.journal("exception")
        self.assertEqual((line.subject, line.text), ("ValueError", "ValueError: <schlecht>"))
        self.assertRegex(details(line)["place"], r"mock\.py:\d+$")

    def test_warning(self) -> None:
        """A short one, which goes by itself."""
        self.start()
        controller.auto_value_from_cpp(AutoEnum.ToggleLwTestLauge, None)
        controller.auto_value_from_cpp(AutoEnum.ToggleLwTestSaure, None)
        self.until(lambda: self.signals("toastWarn"))
        (line,) = self.journal("toast")
        self.assertEqual(line.subject, "Leitwertprüfung läuft bereits")

    def test_setting(self) -> None:
        """Through the entry function, with the old value and the new one."""
        self.start()
        controller.settings_from_cpp(SettingsEnum.vorspannen_p, 1.2)
        (line,) = self.journal("setting")
        self.assertEqual(details(line), {"key": "vorspannen_p", "old": 0.7, "new": 1.2, "source": "screen"})

    def test_login(self) -> None:
        """Whether the password was right, and never what it was."""
        self.start()
        for password in (PASSWORD + "x", PASSWORD):
            controller.shell_action_from_cpp(ShellActionEnum.ToggleTesting, password)
            self.services_handled()
            self.until(lambda: not Shell.locked)
            self.services_handled()
        self.until(lambda: Shell.testing_repo_enabled and not Shell.locked)
        lines = self.journal("login", "update")
        logins = [line for line in lines if line.kind == "login"]
        self.assertEqual([details(line) for line in logins], [{"accepted": False}, {"accepted": True}])
        (switched,) = (line for line in lines if line.kind == "update")
        self.assertEqual(details(switched), {"old": False, "new": True})
        found = subprocess.run(["grep", "-r", PASSWORD, self.directory], capture_output=True, check=False)
        self.assertEqual((found.returncode, found.stdout), (1, b""))

    def test_upgrade(self) -> None:
        """What is to be installed, and what has been."""
        self.start()
        controller.shell_action_from_cpp(ShellActionEnum.Update, None)
        self.until(lambda: Shell.upgradables and not Shell.locked)
        controller.shell_action_from_cpp(ShellActionEnum.Upgrade, None)
        self.until(lambda: self.signals("message"))
        begun, ended = self.journal("update")
        self.assertEqual((begun.event, ended.event), ("begun", "ended"))
        wanted, installed = details(begun), details(ended)
        self.assertIn("brovik-waage", wanted)
        del wanted["brovik-waage"]  # It cannot be set up.
        self.assertEqual(installed, wanted)

    def test_early_message(self) -> None:
        """One that comes before there is a file is in it all the same."""
        (self.directory / FILE_NAME).write_bytes(b"This is no database, and never was one." * 100)
        self.start()
        (line,) = self.journal("message")
        self.assertEqual(line.subject, "Einstellungen")


if __name__ == "__main__":
    unittest.main()
