"""The one file in which the machine keeps what has to survive: an SQLite database.

It has sections of keys with values, the saved charts and the logbook. A change that has been applied
survives the sudden end of the process; one that has not is lost as a whole.
"""

import json
import sqlite3
import threading
from collections.abc import Callable, Iterable, Iterator, Mapping
from contextlib import contextmanager, suppress
from dataclasses import dataclass
from datetime import datetime
from pathlib import Path
from queue import Empty, SimpleQueue
from typing import Final, TypeAlias, TypeVar

from logbook.place import FILE_NAME
from logbook.tables import run_script
from logbook.writer import LogbookWriter

from . import saved_charts

PRIVATE: Final = 0o600
SETTINGS: Final = "settings"
MACHINE: Final = "machine"
RUN: Final = "run"
PACKAGES: Final = "packages"
NETWORK: Final = "network"
MAINTENANCE: Final = "maintenance"
CHARTS: Final = "charts"

_COMPANIONS: Final = ("", "-wal", "-shm")
_SCHEMA: Final = """
CREATE TABLE IF NOT EXISTS entry (
    section TEXT NOT NULL,
    key TEXT NOT NULL,
    value TEXT NOT NULL,  -- JSON
    PRIMARY KEY (section, key)
) WITHOUT ROWID
"""
#: What gets ever longer. To look through it takes seconds after some years, which the start has not got.
_GROWING: Final = frozenset({"run_record", "run_curve", "journal"})
#: Errors that say that the file is not, or no longer, what this module has written.
_DAMAGE: Final = frozenset({sqlite3.SQLITE_CORRUPT, sqlite3.SQLITE_NOTADB, sqlite3.SQLITE_ERROR})


@dataclass(frozen=True)
class Change:
    """New values of a section. With `replace` they take the place of all that it holds."""

    section: str
    values: Mapping[str, object]
    replace: bool = False


T = TypeVar("T")
#: Something else that is done with the storage, on its thread.
Task: TypeAlias = Callable[["Storage"], None]


class Storage:
    """An open database. May be handed from thread to thread, but not shared between them."""

    def __init__(self, path: Path | str) -> None:
        """Opens the file, or makes it. Raises sqlite3.Error if it cannot be used."""
        #: The file; None for a storage that lives in memory.
        self.path = path if isinstance(path, Path) else None
        self._connection = sqlite3.connect(path, check_same_thread=False)
        self.charts = saved_charts.ChartTables(self._connection)
        self.logbook = LogbookWriter(self._connection)
        try:
            self._prepare()
        except BaseException:
            self._connection.close()
            raise

    def _prepare(self) -> None:
        # All checks come before the first change: a file that is not ours stays as it is.
        for table in self._tables() - _GROWING:
            (verdict,) = self._connection.execute("SELECT * FROM pragma_quick_check(?)", (table,)).fetchone()
            if verdict != "ok":
                raise _damage(str(verdict))
        with self._connection:
            self._connection.execute(_SCHEMA)
        self._connection.execute("SELECT section, key, value FROM entry LIMIT 1").fetchone()
        run_script(self._connection, saved_charts.SCHEMA)
        self.charts.check()
        self.logbook.prepare()
        self._connection.execute("PRAGMA journal_mode = WAL")
        self._connection.execute("PRAGMA synchronous = FULL")
        self._connection.execute("PRAGMA foreign_keys = ON")

    def _tables(self) -> set[str]:
        rows = self._connection.execute("SELECT name FROM sqlite_schema WHERE type = 'table'")
        return {str(name) for (name,) in rows}

    def read(self, section: str) -> dict[str, object]:
        """All values of a section. One that is no JSON comes as the text that it is."""
        rows = self._connection.execute(
            "SELECT key, value FROM entry WHERE section = ? ORDER BY key", (section,)
        )
        return {str(key): _parsed(value) for key, value in rows}

    def apply(self, changes: Iterable[Change | Task]) -> None:
        """Makes all changes in one transaction, whether they say what to change or do it."""
        with self.transaction():
            for change in changes:
                if isinstance(change, Change):
                    self.put(change)
                else:
                    change(self)

    def put(self, change: Change) -> None:
        """Makes a change, inside a transaction."""
        if change.replace:
            self._connection.execute("DELETE FROM entry WHERE section = ?", (change.section,))
        self._connection.executemany(
            "INSERT OR REPLACE INTO entry VALUES (?, ?, ?)",
            [(change.section, key, json.dumps(v)) for key, v in change.values.items()],
        )

    @contextmanager
    def transaction(self) -> Iterator[None]:
        """All that is done in the block, or nothing of it."""
        self._connection.execute("BEGIN IMMEDIATE")
        with self._connection:
            yield

    def close(self) -> None:
        """Closes the file."""
        self._connection.close()


def _parsed(value: object) -> object:
    try:
        return json.loads(str(value))
    except ValueError:
        return value


def _damage(text: str) -> sqlite3.DatabaseError:
    error = sqlite3.DatabaseError(text)
    error.sqlite_errorcode = sqlite3.SQLITE_CORRUPT
    return error


def open_storage(directory: Path | None, report: Callable[[str], None]) -> Storage:
    """Opens the file in this directory.

    A damaged file is moved aside and a new one begun. If there is no way to keep anything, the
    storage lives in memory. Both is told through `report`, in words for the operator.
    """
    return open_and_read(directory, report, lambda storage: storage)


def open_and_read(directory: Path | None, report: Callable[[str], None], read: Callable[[Storage], T]) -> T:
    """As `open_storage`, and reads what the start needs: a file that cannot be read is not usable, either.

    `read` may be called more than once.
    """
    if directory is None:
        report("Es ist kein Verzeichnis für die Einstellungen bekannt. Sie gelten bis zum Beenden.")
        return read(Storage(":memory:"))
    path = directory / FILE_NAME
    try:
        directory.mkdir(parents=True, exist_ok=True)
        return _read_or_renew(path, report, read)
    except (sqlite3.Error, OSError) as error:
        report(f"Die Datei {path} ist nicht benutzbar: {error}. Einstellungen gelten bis zum Beenden.")
        return read(Storage(":memory:"))


def _read_or_renew(path: Path, report: Callable[[str], None], read: Callable[[Storage], T]) -> T:
    with suppress(sqlite3.Error):
        return _opened_and_read(path, read)
    # A disk that has failed to read once looks like damage. What another look finds is none of that.
    try:
        return _opened_and_read(path, read)
    except sqlite3.DatabaseError as error:
        if error.sqlite_errorcode & 0xFF not in _DAMAGE:
            raise
        moved = _move_aside(path)
        report(
            f"Die Datei {path} war beschädigt ({error}) und liegt jetzt als {moved.name} daneben. "
            "Es gelten die Vorgaben."
        )
        return _opened_and_read(path, read)


def _opened_and_read(path: Path, read: Callable[[Storage], T]) -> T:
    storage = _open_private(path)
    try:
        return read(storage)
    except BaseException:
        storage.close()
        raise


def _open_private(path: Path) -> Storage:
    """Opens or makes a file that nobody else may read: it has passwords of networks in it."""
    with suppress(OSError):  # What is wrong with it, opening it will tell.
        path.touch(PRIVATE)
        path.chmod(PRIVATE)
    return Storage(path)


def _move_aside(path: Path) -> Path:
    stamp = datetime.now().strftime("%Y%m%d-%H%M%S-%f")
    target = path.with_name(f"{path.name}.damaged-{stamp}")
    for companion in _COMPANIONS:
        source = path.with_name(path.name + companion)
        if source.exists():
            source.rename(target.with_name(target.name + companion))
    return target


@dataclass(frozen=True)
class _Alone:
    """A task that makes transactions of its own."""

    task: Task


class StorageWriter:
    """Applies changes on the thread "demo-storage", as many as are waiting in one transaction.

    `submit` and `perform` may be called from any thread and return at once; the order is kept.
    The storage belongs to the writer.
    """

    def __init__(self, storage: Storage, on_error: Callable[[], None]) -> None:
        """`on_error` is called inside the `except` block of a transaction that failed."""
        self._storage = storage
        self._on_error = on_error
        self._queue: SimpleQueue[Change | Task | _Alone | None] = SimpleQueue()
        self._thread = threading.Thread(target=self._run, name="demo-storage", daemon=True)
        self._thread.start()

    def submit(self, change: Change | Task) -> None:
        """Takes a change on, or a task that has its part in the transaction of the others."""
        self._queue.put(change)

    def perform(self, task: Task) -> None:
        """Has something else done with the storage, which makes transactions of its own."""
        self._queue.put(_Alone(task))

    def stop(self) -> None:
        """Writes what is waiting and closes the file."""
        self._queue.put(None)
        self._thread.join()

    def _run(self) -> None:
        open_ = True
        while open_:
            changes: list[Change | Task] = []
            for item in self._waiting():
                if item is not None and not isinstance(item, _Alone):
                    changes.append(item)
                    continue
                self._apply(changes)
                changes = []
                if item is None:
                    open_ = False
                else:
                    self._guarded(item.task)
            self._apply(changes)
        self._storage.close()

    def _waiting(self) -> list[Change | Task | _Alone | None]:
        items = [self._queue.get()]
        try:
            while True:
                items.append(self._queue.get_nowait())
        except Empty:
            return items

    def _apply(self, changes: list[Change | Task]) -> None:
        if not changes:
            return
        try:
            self._storage.apply(changes)
        except Exception:  # pylint: disable=broad-exception-caught  # whatever it is, the rest goes on
            # Each for itself: one that cannot be made takes none of the others along, and a disk that has
            # failed for a moment none at all.
            for change in changes:
                self._guarded(lambda storage: storage.apply([change]))

    def _guarded(self, task: Task) -> None:
        try:
            task(self._storage)
        except Exception:  # pylint: disable=broad-exception-caught  # whatever it is, the rest goes on
            self._on_error()
