"""The sudden end of the program around the end of a run; and a file that is full."""

# pylint: disable=protected-access  # tests look inside

import os
import signal
import sqlite3
import subprocess
import sys
import unittest
from unittest.mock import patch

from brovik.auto import Auto

from demo_logbook import RecordCase, counters, records
from demo_support import DEADLINE_SECS
from logbook.place import FILE_NAME
from logbook.writer import LogbookWriter

#: A process that runs the machine until one moment.
CHILD = "demo_run_child"


class KillTest(RecordCase):
    """The sudden end of the program around the end of a run, and the next start."""

    def killed(self, moment: str) -> None:
        """Has a process run the machine until this moment."""
        with subprocess.Popen(
            [sys.executable, "-m", "unittest", CHILD],
            env={**os.environ, "BROVIK_CONFIG_DIR": str(self.directory), "KUBELOR_TEST_MOMENT": moment},
            stderr=subprocess.DEVNULL,
        ) as child:
            self.assertEqual(child.wait(DEADLINE_SECS), -signal.SIGKILL)

    def test_before_the_end(self) -> None:
        """Whoever goes on with the run, and whoever does not, gets one record."""
        for moment in (
            "in step 5",
            "while the draft is written",
            "before the record",
            "while the record is written",
        ):
            for goes_on in (True, False):
                with self.subTest(moment, goes_on=goes_on):
                    for file in self.directory.iterdir():
                        file.unlink()
                    self.killed(moment)
                    self.make()
                    # The type is silenced: there is a note.
                    self.operation.offer_to_continue(self.backend._note)  # type: ignore[arg-type]
                    self.answer(1, goes_on)
                    self.run_until(lambda: not Auto.active)
                    self.backend.stop()
                    self.make()
                    (record,) = self.written()
                    self.assertEqual(record.result, "success" if goes_on else "error")
                    self.assertEqual([bool(i.went_on) for i in record.interruptions], [goes_on])
                    self.assertEqual(counters(self.directory / FILE_NAME)["Fässer"], float(goes_on))

    def test_after_the_end(self) -> None:
        """The record is there, and nothing to go on with."""
        self.killed("after the record")
        self.make()
        self.assertIsNone(self.backend._note)
        (record,) = self.written()
        self.assertEqual((record.result, record.interruptions), ("success", ()))
        self.assertEqual(counters(self.directory / FILE_NAME)["Fässer"], 1.0)


class FullDiskTest(RecordCase):
    """A file that does not take the record."""

    FULL = sqlite3.OperationalError("database or disk is full")

    def test_never_again(self) -> None:
        """The program ends before there is room: the run's draft is still there, not that of the next one."""
        self.make()
        with patch.object(LogbookWriter, "append_run", side_effect=self.FULL):
            self.run_whole()
            self.run_to("Reinigen mit Lauge")
            self.backend.stop()
        self.make()
        self.operation.offer_to_continue(self.backend._note)  # type: ignore[arg-type]  # there is one
        self.answer(1, False)
        (record,) = self.written()
        self.assertEqual([step.number for step in record.steps], list(range(1, 12)))

    def test_a_barrel_counts_with_its_record(self) -> None:
        """The counters wait with the record, which nobody writes after the end of the program."""
        self.make()
        with patch.object(LogbookWriter, "append_run", side_effect=self.FULL):
            self.run_whole()
            self.backend.stop()
        before = counters(self.directory / FILE_NAME)
        self.assertEqual((before["Fässer"], records(self.directory / FILE_NAME)), (0.0, []))
        self.assertGreater(before["PUMPE, Betriebsstunden"], 0.0)

    def test_room_at_the_end(self) -> None:
        """The end of the program is one more chance for the record, and for what has been counted since."""
        self.make()
        with patch.object(LogbookWriter, "append_run", side_effect=self.FULL):
            self.run_whole()
            self.until(lambda: self.signals("exception"), "exception")
            self.settle()
        hours = self.backend._books.counters["PUMPE, Betriebsstunden"]
        (record,) = self.written()
        after = counters(self.directory / FILE_NAME)
        self.assertEqual((record.result, after["Fässer"]), ("success", 1.0))
        self.assertEqual(after["PUMPE, Betriebsstunden"], hours)

    def test_later(self) -> None:
        """It is written as soon as that is possible; a draft of the next run does not replace it."""
        self.make()
        with patch.object(LogbookWriter, "append_run", side_effect=self.FULL):
            self.run_whole()
            self.run_to("Reinigen mit Lauge")
            self.until(lambda: self.signals("exception"), "exception")
            self.settle()
        self.run_until(lambda: not Auto.active)
        first, second = self.written()
        self.assertEqual((first.result, second.result), ("success", "success"))
        self.assertEqual(counters(self.directory / FILE_NAME)["Fässer"], 2.0)


if __name__ == "__main__":
    unittest.main()
