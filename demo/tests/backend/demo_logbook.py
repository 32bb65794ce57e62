"""What the tests of the demo machine's logbook have in common."""

# pylint: disable=protected-access  # tests look inside

import json
import threading
from pathlib import Path
from typing import Any

from brovik.auto import Auto, AutoEnum
from brovik.gui import Gui

from demo_support import DEADLINE_SECS, SteppedCase
from logbook.place import FILE_NAME
from logbook.reader import StoredCurves, open_logbook
from logbook.records import JournalEntry, RunRecord


def records(file: Path) -> list[RunRecord]:
    """All records, the oldest first. The chain has to hold."""
    with open_logbook(file) as logbook:
        broken = logbook.verify()
        assert broken is None, broken
        return [logbook.run(run.number).record for run in reversed(logbook.runs())]


def curves(file: Path, number: int) -> StoredCurves:
    """The curves of a run."""
    with open_logbook(file) as logbook:
        return logbook.curves(number)


def journal(file: Path, *kinds: str) -> list[JournalEntry]:
    """The journal, the oldest line first."""
    with open_logbook(file) as logbook:
        return list(logbook.journal(kinds=kinds))


def counters(file: Path) -> dict[str, float]:
    """The readings of the counters."""
    with open_logbook(file) as logbook:
        return {counter.name: counter.value for counter in logbook.counters()}


def details(entry: JournalEntry) -> dict[str, Any]:
    """The details of a line."""
    result: dict[str, Any] = json.loads(entry.details)
    return result


class RecordCase(SteppedCase):
    """Looks into the file once the backend has stopped, or while it runs."""

    def begin(self) -> None:
        """The operator's press."""
        self.operation.toggle(AutoEnum.Toggle)
        self.assertTrue(Auto.active)

    def run_whole(self) -> None:
        """A run from start to end."""
        self.begin()
        self.run_until(lambda: not Auto.active)

    def run_to(self, step: str) -> None:
        """A run that has come to this step."""
        self.begin()
        self.run_until(lambda: Gui.status.endswith(step))

    def settle(self) -> None:
        """Waits until the storage's thread has done all that it was given."""
        done = threading.Event()
        self.backend._writer.perform(lambda _: done.set())
        self.assertTrue(done.wait(DEADLINE_SECS))

    def written(self) -> list[RunRecord]:
        """The records, once the backend has written all of them."""
        self.backend.stop()
        return records(self.directory / FILE_NAME)

    def journal(self, *kinds: str) -> list[JournalEntry]:
        """The journal of a stopped backend."""
        return journal(self.directory / FILE_NAME, *kinds)

    def answer(self, id_: int, yes: bool) -> None:
        """The operator presses a button, and the dialog closes."""
        self.operation.take_report({str(id_): {"a": yes}})
        self.operation.take_report({str(id_): {"a": yes}, "current": None})
