"""Adds to the logbook."""

import sqlite3
from collections.abc import Iterable, Iterator, Mapping
from contextlib import contextmanager

from . import curves, tables
from .chain import START, row_hash
from .curves import Curves
from .document import clean
from .records import JournalEntry, RunRecord, timestamp


class LogbookWriter:
    """The logbook in an open database. Belongs to the thread of the database.

    Each call is one transaction, or a part of that which is open; each may raise sqlite3.Error, and has then
    done nothing.
    """

    def __init__(self, connection: sqlite3.Connection) -> None:
        self._connection = connection

    def prepare(self) -> None:
        """Makes the tables that are missing. Raises sqlite3.Error if those there are not ours."""
        tables.make(self._connection)

    def next_number(self) -> int:
        """The number that the next run will have."""
        return self._head()[0] + 1

    def append_run(
        self,
        record: RunRecord,
        lines: Curves,
        entries: Iterable[JournalEntry] = (),
        counts: Mapping[str, tuple[float, str]] | None = None,
    ) -> RunRecord:
        """Adds a run with its curves, lines of the journal and what is counted, and takes the draft away.

        `counts` has the amounts by which counters rise, with their units. Returns the record as it was
        written: with its number and the digest of its curves.
        """
        packed = {clean(name): curves.packed(points) for name, points in lines.items()}
        with self._transaction():
            last, previous = self._head()
            written = record.numbered(last + 1, curves.digest(packed))
            document = written.document()
            self._connection.execute(
                "INSERT INTO run_record VALUES (?, ?, ?, ?, ?, ?, ?)",
                (
                    written.number,
                    *map(clean, (written.begun, written.ended, written.result, written.reason)),
                    document,
                    row_hash(previous, document),
                ),
            )
            self._connection.executemany(
                "INSERT INTO run_curve VALUES (?, ?, ?)",
                [(written.number, name, curves.compressed(data)) for name, data in packed.items()],
            )
            self._add(entries)
            for name, (amount, unit) in (counts or {}).items():
                self._count(name, amount, unit)
            self._clear_draft()
        return written

    def _head(self) -> tuple[int, str]:
        number, hash_ = self._connection.execute("SELECT number, hash FROM run_head").fetchone()
        return int(number), str(hash_) or START

    # The run in progress.

    def save_draft(self, record: RunRecord, lines: Curves) -> None:
        """Keeps what there is so far of a run, in place of an earlier draft."""
        packed = [(clean(name), curves.compressed(curves.packed(points))) for name, points in lines.items()]
        with self._transaction():
            self._clear_draft()
            self._connection.execute("INSERT INTO run_draft VALUES (1, ?)", (record.document(),))
            self._connection.executemany("INSERT INTO draft_curve VALUES (?, ?)", packed)

    def draft(self) -> tuple[RunRecord, dict[str, list[curves.Point]]] | None:
        """The run that was in progress, with its curves; None if there was none.

        Raises ValueError if the draft cannot be read.
        """
        row = self._connection.execute("SELECT document FROM run_draft").fetchone()
        if row is None:
            return None
        rows = self._connection.execute("SELECT line, points FROM draft_curve")
        return RunRecord.from_document(row[0]), {
            line: curves.unpacked(curves.decompressed(points)) for line, points in rows
        }

    def discard_draft(self) -> None:
        """Takes the draft away."""
        with self._transaction():
            self._clear_draft()

    def _clear_draft(self) -> None:
        self._connection.execute("DELETE FROM run_draft")
        self._connection.execute("DELETE FROM draft_curve")

    # Journal and counters.

    def add(self, *entries: JournalEntry) -> None:
        """Adds lines to the journal."""
        with self._transaction():
            self._add(entries)

    def _add(self, entries: Iterable[JournalEntry]) -> None:
        rows = [
            (e.time or timestamp(), *map(clean, (e.kind, e.event, e.subject, e.text, e.details)))
            for e in entries
        ]
        self._connection.executemany(
            "INSERT INTO journal (time, kind, event, subject, text, details) VALUES (?, ?, ?, ?, ?, ?)", rows
        )

    def count(self, name: str, amount: float, unit: str = "") -> None:
        """Adds to a counter, which is made if there is none of this name."""
        with self._transaction():
            self._count(name, amount, unit)

    def _count(self, name: str, amount: float, unit: str) -> None:
        self._connection.execute(
            "INSERT INTO counter VALUES (?, ?, ?) "
            "ON CONFLICT (name) DO UPDATE SET value = value + excluded.value, unit = excluded.unit",
            (clean(name), amount, clean(unit)),
        )

    def set_counters(self, readings: Mapping[str, tuple[float, str]]) -> None:
        """Sets counters to readings with their units."""
        with self._transaction():
            self._connection.executemany(
                "INSERT OR REPLACE INTO counter VALUES (?, ?, ?)",
                [(clean(name), value, clean(unit)) for name, (value, unit) in readings.items()],
            )

    def counters(self) -> dict[str, float]:
        """The readings of all counters."""
        return dict(self._connection.execute("SELECT name, value FROM counter").fetchall())

    # Retention.

    def remove_curves(self, up_to: int, time: str = "") -> int:
        """Removes the curves of all runs up to this number, and notes that. Returns of how many runs.

        The records themselves stay.
        """
        with self._transaction():
            runs = self._connection.execute(
                "SELECT DISTINCT run FROM run_curve WHERE run <= ? ORDER BY run", (up_to,)
            ).fetchall()
            self._connection.executemany(
                "INSERT INTO curve_removed VALUES (?, ?)", [(run, time or timestamp()) for (run,) in runs]
            )
            self._connection.executemany("DELETE FROM run_curve WHERE run = ?", runs)
        return len(runs)

    @contextmanager
    def _transaction(self) -> Iterator[None]:
        if self._connection.in_transaction:
            yield
            return
        self._connection.execute("BEGIN IMMEDIATE")
        with self._connection:
            yield
