"""The file: what survives, and what happens to a damaged one."""

import os
import signal
import sqlite3
import stat
import subprocess
import sys
import tempfile
import threading
import unittest
from collections.abc import Iterator
from contextlib import contextmanager
from dataclasses import replace
from pathlib import Path
from typing import Any
from unittest.mock import patch

from controller.saved_charts import ChartInfo, SavedChart
from controller.storage import (
    RUN,
    SETTINGS,
    Change,
    Storage,
    StorageWriter,
    open_and_read,
    open_storage,
)
from logbook.place import FILE_NAME

from . import logbook_rig

#: Writes ever higher numbers and says which ones are in.
WRITER = """
import sys
sys.path.insert(0, {root!r})
import tests
from controller.storage import Change, Storage
storage = Storage({path!r})
number = 0
while True:
    number += 1
    storage.apply([Change("settings", {{"first": number, "second": number, "pad": "x" * 500}})])
    print(number, flush=True)
"""
ROOT = str(Path(__file__).resolve().parents[1])


class StorageCase(unittest.TestCase):
    """A directory for the file."""

    def setUp(self) -> None:
        # addCleanup() ends it with the test.
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)
        self.path = self.directory / FILE_NAME
        self.reports: list[str] = []

    def open(self) -> Storage:
        """Opens the file as the backend does."""
        storage = open_storage(self.directory, self.reports.append)
        self.addCleanup(storage.close)
        return storage

    def aside(self) -> list[Path]:
        """Files that were moved aside."""
        return sorted(self.directory.glob(f"{FILE_NAME}.damaged-*"))


class KeepingTest(StorageCase):
    """Values of sections."""

    def test_keeps_values(self) -> None:
        """All JSON types, across a reopening."""
        values = {"flag": True, "whole": 5, "real": 0.1, "text": "SANAL®-SA 3", "none": None}
        storage = self.open()
        storage.apply([Change(SETTINGS, values), Change(RUN, {"step": "lye"})])
        storage.close()
        storage = self.open()
        self.assertEqual(storage.read(SETTINGS), values)
        self.assertIs(type(storage.read(SETTINGS)["real"]), float)
        self.assertEqual(storage.read(RUN), {"step": "lye"})
        self.assertEqual(self.reports, [])

    def test_later_wins_and_others_stay(self) -> None:
        """A change touches its own keys, a replacement the whole section."""
        storage = self.open()
        storage.apply([Change(SETTINGS, {"a": 1, "b": 2}), Change(SETTINGS, {"a": 3})])
        self.assertEqual(storage.read(SETTINGS), {"a": 3, "b": 2})
        storage.apply([Change(SETTINGS, {"c": 4}, replace=True)])
        self.assertEqual(storage.read(SETTINGS), {"c": 4})

    def test_all_or_nothing(self) -> None:
        """One bad change leaves the file as it was."""
        storage = self.open()
        storage.apply([Change(SETTINGS, {"a": 1})])
        with self.assertRaises(TypeError):
            storage.apply([Change(SETTINGS, {"a": 2}), Change(SETTINGS, {"b": object()})])
        self.assertEqual(storage.read(SETTINGS), {"a": 1})

    def test_edited_by_hand(self) -> None:
        """What is no JSON comes as the text that it is."""
        storage = self.open()
        with sqlite3.connect(self.path) as connection:
            connection.execute("INSERT INTO entry VALUES ('settings', 'name', 'Säure 3')")
        connection.close()
        self.assertEqual(storage.read(SETTINGS), {"name": "Säure 3"})

    def test_two_processes(self) -> None:
        """A second one reads, and neither takes the other for damage."""
        first, second = self.open(), self.open()
        first.apply([Change(SETTINGS, {"a": 1})])
        self.assertEqual(second.read(SETTINGS), {"a": 1})
        self.assertEqual(self.reports, [])


class PrivateTest(StorageCase):
    """Nobody else may read the file."""

    def assert_private(self) -> None:
        """Neither the file nor what SQLite puts beside it."""
        self.open().apply([Change(SETTINGS, {"key": 1})])
        files = [file for file in self.directory.iterdir() if "damaged" not in file.name]
        self.assertEqual({stat.S_IMODE(file.stat().st_mode) for file in files}, {0o600})
        self.assertGreater(len(files), 1)

    def test_new_file(self) -> None:
        """From its beginning."""
        self.assert_private()

    def test_file_that_others_could_read(self) -> None:
        """From its next opening."""
        Storage(self.path).close()
        self.path.chmod(0o644)
        self.assert_private()

    def test_file_in_place_of_a_damaged_one(self) -> None:
        """It is a new one, too."""
        self.path.write_bytes(b"x" * 5000)
        self.assert_private()
        self.assertEqual(len(self.reports), 1)


class ChartsTest(StorageCase):
    """Saved charts."""

    def chart(self, name: str) -> SavedChart:
        """A chart with a line of some length."""
        points = [(n * 0.5, n / 7.0) for n in range(2000)]
        return SavedChart(
            ChartInfo(name, "success", "ok", "21.11.2026 12:00", 1000), ["s"], ["a"], {"P": points, "Lw": []}
        )

    def test_keeps_charts(self) -> None:
        """All of it, across a reopening."""
        storage = self.open()
        storage.charts.save(self.chart("Fass '1'; --"))
        storage.close()
        storage = self.open()
        self.assertEqual(storage.charts.infos(), [self.chart("Fass '1'; --").info])
        self.assertEqual(storage.charts.load("Fass '1'; --"), self.chart("Fass '1'; --"))

    def test_odd_points(self) -> None:
        """What is no number of everyday life comes back, too."""
        chart = replace(self.chart("a"), lines={"P": [(0.0, float("inf")), (-1.0, 5e-324)]})
        storage = self.open()
        storage.charts.save(chart)
        self.assertEqual(storage.charts.load("a").lines, chart.lines)

    def test_a_name_is_taken_once(self) -> None:
        """Neither saving nor renaming overwrites; letters of another case make another name."""
        storage = self.open()
        for name in ("a", "b", "A"):
            storage.charts.save(self.chart(name))
        with self.assertRaises(sqlite3.IntegrityError):
            storage.charts.save(self.chart("a"))
        with self.assertRaises(sqlite3.IntegrityError):
            storage.charts.rename("b", "a")
        self.assertEqual(sorted(info.name for info in storage.charts.infos()), ["A", "a", "b"])

    def test_all_or_nothing(self) -> None:
        """A chart that cannot be written as a whole is not written at all."""
        storage = self.open()
        wrong: Any = ("x", 1.0)
        bad = replace(self.chart("a"), lines={"P": [(0.0, 0.0)], "Lw": [wrong]})
        with self.assertRaises(TypeError):
            storage.charts.save(bad)
        self.assertEqual(storage.charts.infos(), [])
        storage.charts.save(self.chart("a"))

    def test_delete_and_rename_take_the_lines_along(self) -> None:
        """No line is left behind."""
        storage = self.open()
        storage.charts.save(self.chart("a"))
        storage.charts.save(self.chart("b"))
        storage.charts.rename("a", "c")
        self.assertEqual(storage.charts.load("c").lines, self.chart("c").lines)
        storage.charts.delete("b")
        storage.charts.delete("c")
        self.assertRaises(KeyError, storage.charts.load, "c")
        with sqlite3.connect(self.path) as connection:
            (lines,) = connection.execute("SELECT count(*) FROM chart_line").fetchone()
        connection.close()
        self.assertEqual(lines, 0)


class DamageTest(StorageCase):
    """A damaged file is moved aside and reported."""

    def damage(self, content: bytes) -> None:
        """Opening this content reports it, moves it aside unchanged, and begins anew."""
        self.path.write_bytes(content)
        storage = self.open()
        self.assertEqual(storage.read(SETTINGS), {})
        storage.apply([Change(SETTINGS, {"a": 1})])
        self.assertEqual(len(self.reports), 1)
        moved = [path for path in self.aside() if path.suffix not in ("-wal", "-shm")]
        self.assertEqual([path.read_bytes() for path in moved], [content])
        self.assertIn(moved[0].name, self.reports[0])

    def test_no_database(self) -> None:
        """Another file of that name."""
        self.damage(b"[settings]\nsecs_pump=5\n" * 100)

    def test_overwritten_page(self) -> None:
        """A database with a hole in it."""
        storage = Storage(self.path)
        storage.apply([Change(SETTINGS, {str(n): "x" * 200 for n in range(200)})])
        storage.close()
        content = bytearray(self.path.read_bytes())
        content[4096:12288] = b"\xff" * 8192
        self.damage(bytes(content))

    def test_truncated(self) -> None:
        """A database that is shorter than it says."""
        storage = Storage(self.path)
        storage.apply([Change(SETTINGS, {str(n): "x" * 200 for n in range(200)})])
        storage.close()
        self.damage(self.path.read_bytes()[:10000])

    def test_other_tables(self) -> None:
        """A database of something else."""
        with sqlite3.connect(self.path) as connection:
            connection.execute("CREATE TABLE entry (name TEXT)")
        connection.close()
        self.damage(self.path.read_bytes())

    def test_damaged_record(self) -> None:
        """Costs neither the settings nor a look through all records at the start."""
        storage = self.open()
        storage.apply([Change(SETTINGS, {"a": 1})])
        for number in range(20):
            storage.logbook.append_run(logbook_rig.run(reason=f"Grund {number} " * 500), {})
        storage.close()
        content = bytearray(self.path.read_bytes())
        page = content.index(b"Grund 10") // 4096
        content[page * 4096 : (page + 1) * 4096] = b"\xff" * 4096
        self.path.write_bytes(content)
        storage = self.open()
        self.assertEqual(storage.read(SETTINGS), {"a": 1})
        self.assertEqual((self.reports, self.aside()), ([], []))

    def test_twice(self) -> None:
        """A second damaged file does not take the place of the first."""
        for _ in range(2):
            self.path.write_bytes(b"no database at all, but long enough" * 10)
            self.open().close()
        self.assertEqual(len(self.aside()), 2)

    def test_unusable_place(self) -> None:
        """Nothing is moved where nothing can be kept; the values live in memory."""
        self.path.mkdir()
        storage = self.open()
        storage.apply([Change(SETTINGS, {"a": 1})])
        self.assertEqual(storage.read(SETTINGS), {"a": 1})
        self.assertEqual((len(self.reports), self.aside()), (1, []))
        self.assertTrue(self.path.is_dir())

    def test_no_directory(self) -> None:
        """Without a place, too."""
        storage = open_storage(None, self.reports.append)
        self.addCleanup(storage.close)
        storage.apply([Change(SETTINGS, {"a": 1})])
        self.assertEqual(len(self.reports), 1)


class FailingDiskTest(StorageCase):
    """A disk that fails to read, for a moment or for good. The file stays where it is."""

    DAMAGE = sqlite3.DatabaseError("database disk image is malformed")
    DAMAGE.sqlite_errorcode = sqlite3.SQLITE_CORRUPT
    FAILURE = sqlite3.OperationalError("disk I/O error")
    FAILURE.sqlite_errorcode = sqlite3.SQLITE_IOERR

    def setUp(self) -> None:
        super().setUp()
        storage = self.open()
        storage.apply([Change(SETTINGS, {"a": 1})])
        storage.close()

    def read(self, *outcomes: sqlite3.Error | None) -> dict[str, object]:
        """Opens and reads, which fails so as often as there are errors."""
        failures = iter(outcomes)

        def read(storage: Storage) -> dict[str, object]:
            if error := next(failures, None):
                raise error
            self.addCleanup(storage.close)
            return storage.read(SETTINGS)

        return open_and_read(self.directory, self.reports.append, read)

    def test_for_a_moment(self) -> None:
        """Is not told, and costs nothing, even if it looks like damage."""
        for error in (self.FAILURE, self.DAMAGE):
            with self.subTest(error):
                self.assertEqual(self.read(error), {"a": 1})
                with patch.object(Storage, "_prepare", side_effect=[error, None]):
                    self.assertEqual(self.read(), {"a": 1})
                self.assertEqual((self.reports, self.aside()), ([], []))

    def test_for_good(self) -> None:
        """Is told once, and the values live in memory."""
        self.assertEqual(self.read(self.FAILURE, self.FAILURE), {})
        self.assertEqual((len(self.reports), self.aside()), (1, []))
        self.assertEqual(self.open().read(SETTINGS), {"a": 1})

    def test_damage_that_only_reading_finds(self) -> None:
        """Is damage all the same."""
        self.assertEqual(self.read(self.DAMAGE, self.DAMAGE), {})
        self.assertEqual(len(self.reports), 1)
        self.assertIn(FILE_NAME, [path.name.partition(".damaged")[0] for path in self.aside()])


class KillTest(StorageCase):
    """The sudden end of the process."""

    def test_kill_9(self) -> None:
        """What was said to be in is in, and both keys of a change are."""
        for _ in range(5):
            said = self._write_and_kill(lines=40)
            storage = self.open()
            values = storage.read(SETTINGS)
            storage.close()
            self.assertEqual(values["first"], values["second"])
            # The line of the last change may be lost with the process.
            self.assertIn(values["first"], (said, said + 1))
        self.assertEqual(self.reports, [])

    def _write_and_kill(self, lines: int) -> int:
        program = WRITER.format(root=ROOT, path=str(self.path))
        with subprocess.Popen([sys.executable, "-c", program], stdout=subprocess.PIPE, text=True) as process:
            assert process.stdout is not None
            for _ in range(lines):
                process.stdout.readline()
            os.kill(process.pid, signal.SIGKILL)
            return max([lines, *(int(line) for line in process.stdout if line.endswith("\n"))])


class WriterTest(StorageCase):
    """The thread that writes."""

    def test_writes_all_in_order(self) -> None:
        """Everything submitted before the end, the last value last."""
        writer = StorageWriter(self.open(), self.fail)
        for number in range(200):
            writer.submit(Change(SETTINGS, {"number": number}))
        writer.stop()
        self.assertEqual(self.open().read(SETTINGS), {"number": 199})

    def test_tasks_keep_their_place(self) -> None:
        """A task sees what was submitted before it, and not what comes after it."""
        seen: list[dict[str, object]] = []
        writer = StorageWriter(self.open(), self.fail)
        for number in range(50):
            writer.submit(Change(SETTINGS, {"number": number}))
            writer.perform(lambda storage: seen.append(storage.read(SETTINGS)))
        writer.stop()
        self.assertEqual(seen, [{"number": number} for number in range(50)])

    def test_error_is_reported_and_the_next_change_goes_on(self) -> None:
        """Inside the except block, so that the exception can be shown."""
        errors: list[type[BaseException] | None] = []
        reported = threading.Event()

        def report() -> None:
            errors.append(sys.exc_info()[0])
            reported.set()

        writer = StorageWriter(self.open(), report)
        writer.submit(Change(SETTINGS, {"bad": object()}))
        self.assertTrue(reported.wait(30))
        writer.submit(Change(SETTINGS, {"good": 1}))
        writer.stop()
        self.assertEqual(errors, [TypeError])
        self.assertEqual(self.open().read(SETTINGS), {"good": 1})

    def test_disk_that_fails_for_a_moment(self) -> None:
        """No change is lost, and there is nothing to tell."""
        storage = self.open()
        failures = iter([sqlite3.OperationalError("disk I/O error")])
        really = storage.transaction

        @contextmanager
        def transaction() -> Iterator[None]:
            with really():
                yield
                if error := next(failures, None):
                    raise error

        with patch.object(storage, "transaction", transaction):
            writer = StorageWriter(storage, self.fail)
            writer.submit(Change(SETTINGS, {"number": 1}))
            writer.stop()
        self.assertEqual(next(failures, None), None)
        self.assertEqual(self.open().read(SETTINGS), {"number": 1})


if __name__ == "__main__":
    unittest.main()
