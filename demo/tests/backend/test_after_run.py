"""What the operator is asked after a run, and at no other time: maintenance, and the report on a stick."""

# pylint: disable=protected-access  # tests look inside

import os
import stat
import tempfile
import unittest
from pathlib import Path
from unittest.mock import patch

import watching
from brovik.auto import Auto, AutoEnum
from brovik.gui import GuiEnum

from demo_logbook import RecordCase, details, journal, records
from demo_support import RunningCase
import controller
from controller import reports
from controller.dialogs import DialogId
from controller.maintenance_plans import PLANS
from controller.simulation.faults import PlantFault
from controller.storage import MAINTENANCE
from logbook.place import FILE_NAME

#: Plans whose counters a run moves, and the readings of all so that these are due.
SENSOR = next(plan for plan in PLANS if plan.key == "sensor")
VALVE = next(plan for plan in PLANS if plan.key == "lye_valve")
SENSOR_ID = DialogId.MAINTENANCE + PLANS.index(SENSOR)
VALVE_ID = DialogId.MAINTENANCE + PLANS.index(VALVE)


class MaintenanceTest(RecordCase):
    """Plans that are due."""

    def make_due(self, *keys: str) -> None:
        """A backend to which these plans were worked off long ago."""
        due = {plan.key: -plan.every for plan in PLANS if plan.key in keys}
        self.put_into_file(MAINTENANCE, due)
        self.make()

    def questions(self) -> list[int]:
        """Ids of the questions that were asked."""
        return [options["id"] for _, _, options in self.signals("question")]

    def test_asked_after_a_run(self) -> None:
        """Neither before it nor during it, whatever the run comes to."""
        self.make_due("sensor")
        self.operation.advance(0.1)
        self.run_to("Vorspannen mit CO2")
        self.assertEqual(self.questions(), [])
        self.run_until(lambda: not Auto.active)
        ((title, text, options),) = self.signals("question")
        self.assertEqual((title, text), ("Wartung", SENSOR.text))
        self.assertEqual(options, {"id": SENSOR_ID, "yes": "Erledigt", "no": "Später", "category": "info"})

    def test_not_due(self) -> None:
        """Nothing is asked by default."""
        self.make()
        self.run_whole()
        self.begin()
        self.operation.toggle(AutoEnum.Toggle)
        self.assertEqual(self.questions(), [])

    def test_done(self) -> None:
        """Is not asked again, nor at the next start."""
        self.make_due("sensor")
        self.run_whole()
        self.answer(SENSOR_ID, True)
        self.run_whole()
        self.backend.stop()
        self.assertEqual(self.in_file(MAINTENANCE)["sensor"], 1.0)
        self.make()
        self.run_whole()
        self.assertEqual(self.questions(), [SENSOR_ID])
        self.backend.stop()
        (line,) = self.journal("maintenance")
        self.assertEqual((line.subject, line.text), (SENSOR.text, "Erledigt"))
        self.assertEqual(details(line)["reading"], 1.0)

    def test_later(self) -> None:
        """Is asked again after the next run."""
        self.make_due("sensor")
        for number in (1, 2, 3):
            self.run_whole()
            self.assertEqual(self.questions(), [SENSOR_ID] * number)
            self.answer(SENSOR_ID, False)

    def test_one_after_the_other(self) -> None:
        """The next one when the one before has been answered."""
        self.make_due("sensor", "lye_valve")
        self.run_whole()
        self.assertEqual(self.questions(), [VALVE_ID])
        self.answer(VALVE_ID, True)
        self.assertEqual(self.questions(), [VALVE_ID, SENSOR_ID])
        self.answer(SENSOR_ID, False)
        self.assertEqual(len(self.questions()), 2)

    def test_withdrawn_by_the_next_run(self) -> None:
        """An answer that comes too late does nothing; after the run it is asked again."""
        self.make_due("sensor")
        log = watching.SignalLog("Gui", ["closeDialog"])
        self.run_whole()
        self.begin()
        self.assertIn([SENSOR_ID, False], [values for _, _, values in log.emissions])
        self.answer(SENSOR_ID, True)
        self.run_until(lambda: not Auto.active)
        self.assertEqual(self.questions(), [SENSOR_ID] * 2)

    def test_every_end(self) -> None:
        """After a run that has failed or was aborted as well, but not after the test of a bath."""
        self.put_into_file(MAINTENANCE, {"sensor": -SENSOR.every})
        self.make(PlantFault.LEAK)
        self.operation.toggle(AutoEnum.ToggleLwTestLauge)
        self.operation.toggle(AutoEnum.ToggleLwTestLauge)
        self.assertEqual(self.questions(), [])
        self.run_whole()
        self.assertEqual(self.questions(), [SENSOR_ID])
        self.begin()
        self.operation.toggle(AutoEnum.Toggle)
        self.assertEqual(self.questions(), [SENSOR_ID] * 2)


class StickTest(unittest.TestCase):
    """Which stick there is."""

    def setUp(self) -> None:
        # Until the end of the test.
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        self.media = Path(directory.name)
        for name in ("b", "a", "user/c"):
            (self.media / name).mkdir(parents=True)
        self.mounted: set[str] = set()
        self.enterContext(patch.dict(os.environ))
        os.environ.pop(reports.STICK, None)
        self.enterContext(patch.object(Path, "is_mount", lambda path: path.name in self.mounted))

    def test_none(self) -> None:
        """Folders are no sticks, nor is there one without a folder for them."""
        self.assertIsNone(reports.find_stick(self.media))
        self.assertIsNone(reports.find_stick(self.media / "none"))

    def test_first(self) -> None:
        """Of those that are mounted, also by a desktop, one folder down."""
        self.mounted = {"c"}
        self.assertEqual(reports.find_stick(self.media), self.media / "user" / "c")
        self.mounted = {"a", "b", "c"}
        self.assertEqual(reports.find_stick(self.media), self.media / "a")

    def test_read_only(self) -> None:
        """Is passed over."""
        self.mounted = {"a", "b"}
        with patch.object(os, "access", lambda path, mode: Path(path).name != "a"):
            self.assertEqual(reports.find_stick(self.media), self.media / "b")

    def test_named(self) -> None:
        """The environment has the last word."""
        self.mounted = {"a"}
        for value, stick in (("", None), (str(self.media / "none"), None), (str(self.media), self.media)):
            with self.subTest(value):
                os.environ[reports.STICK] = value
                self.assertEqual(reports.find_stick(self.media), stick)


class ReportTest(RunningCase):
    """The question, and what is on the stick then."""

    def setUp(self) -> None:
        super().setUp()
        self.notes = watching.SignalLog("Gui", ["toastNotify"])
        # Until the end of the test.
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        self.stick = Path(directory.name)
        os.environ[reports.STICK] = str(self.stick)

    def run_aborted(self) -> None:
        """The shortest run there is."""
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(lambda: Auto.active)
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(lambda: not Auto.active)

    def asked(self) -> bool:
        """Whether the question is open."""
        return any(options["id"] == DialogId.SAVE_REPORT for _, _, options in self.signals("question"))

    def answer_question(self, yes: bool) -> None:
        """A run, and the answer."""
        self.start(factor=100)
        self.run_aborted()
        self.until(self.asked, "question")
        controller.gui_value_from_cpp(GuiEnum.DialogData, {"2": {"a": yes}})

    def saved(self) -> list[str]:
        """What is on the stick."""
        return sorted(path.name for path in self.stick.iterdir())

    def failure(self) -> str:
        """The text of the one message, once it is there. Nothing is lost."""
        self.until(lambda: self.signals("message"), "message")
        ((title, text, category, _),) = self.signals("message")
        self.assertEqual((title, category), ("Bericht", "error"))
        self.stop()
        self.assertEqual(len(records(self.directory / FILE_NAME)), 1)
        return str(text)

    def test_saved(self) -> None:
        """A whole PDF under the name of its run, and nothing besides."""
        self.answer_question(True)
        self.until(lambda: self.notes.emissions or self.signals("message"), "end")
        self.assertEqual(self.signals("message"), [])
        (name,) = self.saved()
        self.assertRegex(name, r"^Reinigung 1 vom \d{4}-\d\d-\d\d \d\d\.\d\d\.pdf$")
        content = (self.stick / name).read_bytes()
        self.assertTrue(content.startswith(b"%PDF"))
        self.assertIn(b"%%EOF", content[-32:])

    def test_declined(self) -> None:
        """Leaves the stick as it is."""
        self.answer_question(False)
        self.handled()
        self.services_handled()
        self.assertEqual(self.saved(), [])
        self.stop()
        (line,) = (
            line for line in journal(self.directory / FILE_NAME, "question") if line.event == "acknowledged"
        )
        self.assertEqual(details(line)["answer"], "Nein")

    def test_no_stick(self) -> None:
        """Nothing is asked."""
        os.environ[reports.STICK] = str(self.stick / "none")
        self.start(factor=100)
        self.run_aborted()
        self.until(lambda: self.recorded() == 1, "record")
        for _ in range(2):
            self.services_handled()
            self.handled()
        self.assertFalse(self.asked())

    def recorded(self) -> int:
        """How many records there are just now."""
        return len(records(self.directory / FILE_NAME))

    def test_stick_pulled_out(self) -> None:
        """Before the answer: a message."""
        self.start(factor=100)
        self.run_aborted()
        self.until(self.asked, "question")
        self.stick.rmdir()
        self.addCleanup(self.stick.mkdir)
        controller.gui_value_from_cpp(GuiEnum.DialogData, {"2": {"a": True}})
        self.assertIn("ließ sich nicht auf den USB-Stick speichern", self.failure())

    def test_full_stick(self) -> None:
        """What the tool says is told."""
        command = ("/usr/bin/python3", "-c", 'import sys; sys.exit("kubelor-bericht: Kein Platz & mehr")')
        with patch.object(reports.ReportOffer, "_command", lambda *_: command):
            self.answer_question(True)
            self.assertIn("speichern: Kein Platz &amp; mehr<br>", self.failure())

    def test_no_tool(self) -> None:
        """It is not installed, or there is no interpreter for it."""
        with patch.object(reports, "TOOL", self.directory / "bericht"):
            self.answer_question(True)
            self.assertIn("No such file or directory", self.failure())

    def test_no_interpreter(self) -> None:
        """There is none where it should be."""
        with patch.object(reports, "PYTHON", str(self.directory / "python3")):
            self.answer_question(True)
            self.assertIn("python3", self.failure())

    def test_tool_that_hangs(self) -> None:
        """Is ended."""
        command = ("/usr/bin/sleep", "1000")
        with (
            patch.object(reports.ReportOffer, "_command", lambda *_: command),
            patch.object(reports, "LIMIT_SECS", 0.2),
        ):
            self.answer_question(True)
            self.assertIn("abgebrochen", self.failure())

    def test_end_of_the_program(self) -> None:
        """Does not wait for a tool that hangs."""
        started = self.directory / "started"
        script = self.directory / "hangs"
        script.write_text(
            f"#!/bin/sh\necho $$ > {started}.new\nmv {started}.new {started}\nexec sleep 1000\n"
        )
        script.chmod(stat.S_IRWXU)
        with patch.object(reports.ReportOffer, "_command", lambda *_: (str(script),)):
            self.answer_question(True)
            self.until(started.exists, "tool")
            self.stop()
        with self.assertRaises(ProcessLookupError):
            os.kill(int(started.read_text(encoding="ascii")), 0)

    def test_withdrawn_by_the_next_run(self) -> None:
        """The report of the run before is no question any more."""
        self.start(factor=100)
        self.run_aborted()
        self.until(self.asked, "question")
        log = watching.SignalLog("Gui", ["closeDialog"])
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(lambda: Auto.active)
        self.assertIn([int(DialogId.SAVE_REPORT), False], [values for _, _, values in log.emissions])


if __name__ == "__main__":
    unittest.main()
