"""Records on their way into the file."""

import sqlite3
from collections.abc import Callable, Mapping
from dataclasses import dataclass, replace
from typing import TypeAlias

from logbook.document import canonical
from logbook.records import JournalEntry, RunRecord

from .interrupted import NO_RUN, RunNote
from .journal import Event, Kind
from .run_log import Recorded
from .storage import Storage, StorageWriter


#: What counters show, with their units.
Readings: TypeAlias = Mapping[str, tuple[float, str]]


@dataclass(frozen=True)
class _Waiting:
    """A record that the file has not taken yet."""

    recorded: Recorded
    readings: Readings
    just_ended: bool


class RunArchive:
    """Has the writer's thread write records and drafts: packing them takes no time from the machine there.

    Methods without an underscore are for the machine's thread and return at once. All else belongs to the
    writer's.
    """

    def __init__(
        self, writer: StorageWriter, kept_curves: int, on_recorded: Callable[[RunRecord], None]
    ) -> None:
        """The newest `kept_curves` runs keep their curves. `on_recorded` hears of each that has just ended
        and has been written, on the writer's thread."""
        self._writer = writer
        self._kept_curves = kept_curves
        self._on_recorded = on_recorded
        self._waiting: list[_Waiting] = []

    def append(self, recorded: Recorded, readings: Readings, just_ended: bool) -> None:
        """Adds the record of a run that has ended, and the readings of the counters after it.

        The draft and the note of a run in progress go with it.
        """
        self._writer.perform(lambda storage: self._append(storage, _Waiting(recorded, readings, just_ended)))

    def keep_draft(self, note: RunNote, recorded: Recorded, readings: Readings) -> None:
        """Keeps what there is of the run in progress, the note to go on with it, and the counters."""
        self._writer.perform(lambda storage: self._keep_draft(storage, note, recorded, readings))

    def keep_counters(self, readings: Readings) -> None:
        """Keeps the readings of the counters; with the newest record if that still waits for the file."""
        self._writer.perform(lambda storage: self._keep_counters(storage, readings))

    def _append(self, storage: Storage, waiting: _Waiting) -> None:
        self._waiting.append(waiting)
        self._write_waiting(storage)

    def _keep_draft(self, storage: Storage, note: RunNote, recorded: Recorded, readings: Readings) -> None:
        # A record that could not be written has its draft in the file still. It must not be replaced.
        self._write_waiting(storage)
        lines = recorded.lines
        with storage.transaction():
            storage.put(note.change())
            storage.logbook.save_draft(recorded.record, lines)
            storage.logbook.set_counters(readings)

    def _keep_counters(self, storage: Storage, readings: Readings) -> None:
        if not self._waiting:
            storage.logbook.set_counters(readings)
            return
        # No barrel is counted before its run has a record.
        self._waiting[-1] = replace(self._waiting[-1], readings=readings)
        self._write_waiting(storage)

    def _write_waiting(self, storage: Storage) -> None:
        while self._waiting:
            first = self._waiting[0]
            try:
                written = self._write(storage, first)
            except sqlite3.Error:
                raise  # The next time may be a better one.
            except BaseException:
                del self._waiting[0]
                raise
            del self._waiting[0]
            if first.just_ended:
                self._on_recorded(written)

    def _write(self, storage: Storage, waiting: _Waiting) -> RunRecord:
        lines, record = waiting.recorded.lines, waiting.recorded.record
        with storage.transaction():
            storage.put(NO_RUN)
            details = canonical({"number": storage.logbook.next_number(), "result": record.result})
            ended = JournalEntry(Kind.RUN, Event.ENDED, record.program, record.reason, details, record.ended)
            written = storage.logbook.append_run(record, lines, [ended])
            storage.logbook.set_counters(waiting.readings)
            storage.logbook.remove_curves(written.number - self._kept_curves)
        return written
