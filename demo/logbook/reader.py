"""Reads the logbook of a file that somebody else may be writing, or of a copy of it. Changes nothing."""

import shutil
import sqlite3
import tempfile
from collections.abc import Iterator, Sequence
from contextlib import contextmanager
from dataclasses import dataclass
from pathlib import Path
from typing import Final

from . import chain, curves, tables
from .document import DocumentError
from .records import CounterRecord, JournalEntry, RunRecord

#: A writer holds up readers only while it begins or ends.
_WAIT_SECS: Final = 5.0
#: Errors of a place where SQLite may not make the files that it wants beside a database.
_CANNOT_WRITE: Final = frozenset(
    {sqlite3.SQLITE_CANTOPEN, sqlite3.SQLITE_READONLY, sqlite3.SQLITE_IOERR, sqlite3.SQLITE_PERM}
)


class LogbookError(Exception):
    """What cannot be read, and why: one German sentence."""


@dataclass(frozen=True)
class RunSummary:
    """What a list shows of a run."""

    number: int
    begun: str
    ended: str
    result: str
    reason: str


@dataclass(frozen=True)
class StoredRun:
    """A record as it stands in the file."""

    record: RunRecord
    document: str
    hash: str
    #: Why it is not as it was written: a German sentence; "" if it is.
    broken: str = ""


@dataclass(frozen=True)
class StoredCurves:
    """The curves of a run, and why there are none."""

    lines: dict[str, list[curves.Point]]
    removed: str = ""  # when they were, for their age
    damaged: bool = False


class Logbook:
    """An open logbook: all calls see the same state of it. Belongs to one thread.

    Each call raises LogbookError if the file is damaged.
    """

    def __init__(self, connection: sqlite3.Connection, path: Path) -> None:
        """To be made by `open_logbook`."""
        self._connection = connection
        self._path = path

    def runs(
        self, since: str = "", until: str = "", results: Sequence[str] = (), limit: int = -1
    ) -> list[RunSummary]:
        """The runs that began from `since` to before `until`, the newest first; "" is no bound.

        The bounds are the beginnings of local times: "2026", "2026-11-21", "2026-11-21T14:30".
        """
        where, values = _conditions("begun", since, until, "result", results)
        with self._told():
            rows = self._connection.execute(
                f"SELECT number, begun, ended, result, reason FROM run_record INDEXED BY run_overview "
                f"WHERE {where} ORDER BY number DESC LIMIT ?",
                (*values, limit),
            )
            return [RunSummary(*row) for row in rows]

    def run(self, number: int) -> StoredRun:
        """The run of this number. Raises LogbookError if there is none or it cannot be read."""
        with self._told():
            row = self._connection.execute(
                "SELECT document, hash FROM run_record WHERE number = ?", (number,)
            ).fetchone()
            if row is None:
                raise LogbookError(f"Es gibt keinen Bericht Nr. {number}.")
            found = chain.verify_run(self._connection, number)
        document, hash_ = map(str, row)
        try:
            return StoredRun(
                RunRecord.from_document(document), document, hash_, found.text if found is not None else ""
            )
        except DocumentError as error:
            raise LogbookError(f"Der Bericht Nr. {number} ist nicht lesbar: {error}") from error

    def curves(self, number: int) -> StoredCurves:
        """The curves of a run."""
        with self._told():
            rows = self._connection.execute(
                "SELECT line, points FROM run_curve WHERE run = ? ORDER BY line", (number,)
            ).fetchall()
            removed = self._connection.execute(
                "SELECT time FROM curve_removed WHERE run = ?", (number,)
            ).fetchone()
        if removed is not None:
            return StoredCurves({}, removed=str(removed[0]))
        try:
            lines = {str(line): curves.unpacked(curves.decompressed(data)) for line, data in rows}
        except (ValueError, TypeError):
            return StoredCurves({}, damaged=True)
        return StoredCurves(lines)

    def journal(self, since: str = "", until: str = "", kinds: Sequence[str] = ()) -> Iterator[JournalEntry]:
        """The lines of the journal, the oldest first."""
        where, values = _conditions("time", since, until, "kind", kinds)
        with self._told():
            rows = self._connection.execute(
                f"SELECT kind, event, subject, text, details, time, number FROM journal "
                f"WHERE {where} ORDER BY number",
                values,
            )
            for row in rows:
                yield JournalEntry(*row)

    def counters(self) -> list[CounterRecord]:
        """All counters by name."""
        with self._told():
            rows = self._connection.execute("SELECT name, value, unit FROM counter ORDER BY name")
            return [CounterRecord(*row) for row in rows]

    def verify(self) -> chain.Break | None:
        """The first break of the chain; None if all is as it was written."""
        with self._told():
            return chain.verify(self._connection)

    def last(self) -> tuple[int, str] | None:
        """Number and hash of the last run; None if there is none."""
        with self._told():
            row = self._connection.execute(
                "SELECT number, hash FROM run_record ORDER BY number DESC LIMIT 1"
            ).fetchone()
        return None if row is None else (int(row[0]), str(row[1]))

    @contextmanager
    def _told(self) -> Iterator[None]:
        """Turns an error of SQLite into a sentence."""
        try:
            yield
        except (sqlite3.Error, UnicodeError) as error:
            raise _sentence(self._path, error) from error


def _conditions(
    time: str, since: str, until: str, choice: str, choices: Sequence[str]
) -> tuple[str, tuple[str, ...]]:
    conditions, values = ["1"], []
    if since:
        conditions.append(f"{time} >= ?")
        values.append(since)
    if until:
        conditions.append(f"{time} < ?")
        values.append(until)
    if choices:
        conditions.append(f"{choice} IN ({', '.join('?' * len(choices))})")
        values.extend(choices)
    return " AND ".join(conditions), tuple(values)


@contextmanager
def open_logbook(path: Path) -> Iterator[Logbook]:
    """Opens the logbook in this file for reading. Raises LogbookError if that is not possible."""
    _look_at(path)
    with tempfile.TemporaryDirectory(prefix="logbook-") as scratch:
        try:
            connection = _connected(path, Path(scratch))
        except (sqlite3.Error, OSError, UnicodeError) as error:
            raise _sentence(path, error) from error
        try:
            yield Logbook(connection, path)
        finally:
            connection.close()


def _look_at(path: Path) -> None:
    try:
        if path.is_dir():
            raise LogbookError(f"{path} ist ein Verzeichnis und keine Datei.")
        with path.open("rb") as file:
            file.read(1)
    except (FileNotFoundError, NotADirectoryError):
        raise LogbookError(f"Die Datei {path} gibt es nicht.") from None
    except (OSError, ValueError) as error:
        raise _sentence(path, error) from error


def _connected(path: Path, scratch: Path) -> sqlite3.Connection:
    try:
        return _snapshot(path, "mode=ro")
    except sqlite3.OperationalError as error:
        if error.sqlite_errorcode & 0xFF not in _CANNOT_WRITE:
            raise
    # A place where nothing can be made beside the file. Nobody who writes there has the file open, or the
    # first attempt would have found what he uses; so what lies there does not change.
    journal = path.with_name(f"{path.name}-wal")
    if not journal.exists() or not journal.stat().st_size:
        return _snapshot(path, "immutable=1")
    for file in (path, journal):
        shutil.copyfile(file, scratch / file.name)
    return _snapshot(scratch / path.name, "mode=rw")


def _snapshot(path: Path, how: str) -> sqlite3.Connection:
    connection = sqlite3.connect(
        f"{path.absolute().as_uri()}?{how}", uri=True, timeout=_WAIT_SECS, isolation_level=None
    )
    # A text that somebody has damaged is to be told by its number, not by an error.
    connection.text_factory = lambda data: data.decode("utf-8", "surrogateescape")
    try:
        connection.execute("BEGIN")
        tables.check(connection)
    except BaseException:
        connection.close()
        raise
    return connection


_REASONS: Final = {
    sqlite3.SQLITE_NOTADB: "ist keine Datenbank",
    sqlite3.SQLITE_CORRUPT: "ist beschädigt",
    sqlite3.SQLITE_IOERR: "ist beschädigt",
    sqlite3.SQLITE_ERROR: "enthält kein Logbuch dieser Maschine",
    sqlite3.SQLITE_BUSY: "ist gerade belegt",
    sqlite3.SQLITE_LOCKED: "ist gerade belegt",
}


def _sentence(path: Path, error: Exception) -> LogbookError:
    """The error in a German sentence for the reader."""
    reason = f"ist nicht lesbar: {error}"
    if isinstance(error, sqlite3.Error):
        # An error of the module and not of SQLite is that a text is none.
        code = getattr(error, "sqlite_errorcode", sqlite3.SQLITE_CORRUPT) & 0xFF
        reason = _REASONS.get(code, reason)
    elif isinstance(error, PermissionError):
        reason = "darf nicht gelesen werden"
    elif isinstance(error, UnicodeError):
        reason = "ist beschädigt"
    return LogbookError(f"Die Datei {path} {reason}.")
