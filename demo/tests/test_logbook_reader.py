"""Reading the logbook: while somebody writes, where nothing can be written, and what cannot be read."""

import os
import shutil
import sqlite3
import stat
import subprocess
import sys
import tempfile
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path

from logbook.reader import LogbookError, open_logbook
from logbook.records import JournalEntry

from .logbook_rig import LogbookCase, clock, curves, run

ROOT = Path(__file__).resolve().parents[1]
NOBODY = 65534
#: Adds runs until it is told to end, and says how many there are.
WRITER = """
import sqlite3, sys
sys.path.insert(0, {root!r})
from tests.logbook_rig import LogbookWriter, curves, run
connection = sqlite3.connect({path!r})
connection.execute("PRAGMA journal_mode = WAL")
connection.execute("PRAGMA synchronous = OFF")
connection.execute("PRAGMA wal_autocheckpoint = 20")
writer = LogbookWriter(connection)
writer.prepare()
while True:
    print(writer.append_run(run(), curves()).number, flush=True)
"""


@contextmanager
def without_rights() -> Iterator[None]:
    """As a user whom the rights of files concern."""
    if os.geteuid() != 0:
        yield
        return
    os.seteuid(NOBODY)
    try:
        yield
    finally:
        os.seteuid(0)


class LiveTest(LogbookCase):
    """A file that is in use."""

    def test_sees_what_is_committed(self) -> None:
        """And not what may still be taken back; and stays with what it has seen."""
        self.writer.append_run(run(), {})
        self.connection.execute("BEGIN IMMEDIATE")
        self.writer.append_run(run(), {})
        with open_logbook(self.path) as book:
            self.assertEqual(len(book.runs()), 1)
            self.connection.commit()
            self.writer.append_run(run(), {})
            self.assertEqual((len(book.runs()), book.verify()), (1, None))
        with open_logbook(self.path) as book:
            self.assertEqual(len(book.runs()), 3)

    def test_while_another_process_writes(self) -> None:
        """Whole runs, an unbroken chain, and the writer is not held up."""
        self.connection.close()
        program = WRITER.format(root=str(ROOT), path=str(self.path))
        command = [sys.executable, "-B", "-c", program]
        with subprocess.Popen(command, stdout=subprocess.PIPE, text=True) as process:
            self.addCleanup(process.kill)
            assert process.stdout is not None
            for _ in range(25):
                said = int(process.stdout.readline())
                with open_logbook(self.path) as book:
                    last = book.runs(limit=1)[0].number
                    self.assertGreaterEqual(last, said)
                    self.assertIsNone(book.verify())
                    self.assertEqual(len(book.curves(last).lines), len(curves()))
            self.assertIsNone(process.poll())
            process.kill()

    def test_leaves_the_file_alone(self) -> None:
        """Not a byte of it changes."""
        self.writer.append_run(run(), curves())
        self.connection.close()
        before = self.path.read_bytes()
        with open_logbook(self.path) as book:
            book.verify()
        self.assertEqual(self.path.read_bytes(), before)


class PlaceTest(LogbookCase):
    """Copies, and places where nothing can be written."""

    def setUp(self) -> None:
        super().setUp()
        self.directory.chmod(0o755)
        scratch = self.directory / "scratch"
        scratch.mkdir()
        scratch.chmod(0o777)
        kept, tempfile.tempdir = tempfile.tempdir, str(scratch)
        self.addCleanup(setattr, tempfile, "tempdir", kept)
        self.place = self.directory / "place"
        self.place.mkdir()
        self.addCleanup(self.place.chmod, 0o755)

    def read(self, path: Path, runs: int) -> None:
        """As somebody who may not write beside the file. Nothing is left behind."""
        for file in path.parent.iterdir():
            file.chmod(0o444)
        path.parent.chmod(0o555)
        before = sorted(path.parent.iterdir())
        with without_rights(), open_logbook(path) as book:
            self.assertEqual((len(book.runs()), book.verify()), (runs, None))
        self.assertEqual(sorted(path.parent.iterdir()), before)
        self.assertEqual(list((self.directory / "scratch").iterdir()), [])

    def test_copy(self) -> None:
        """Of a file that was closed."""
        self.writer.append_run(run(), curves())
        self.connection.close()
        shutil.copy(self.path, self.place)
        self.read(self.place / self.path.name, 1)

    def test_copy_with_what_waits(self) -> None:
        """Of a file in use, with what is not yet in it."""
        self.writer.append_run(run(), curves())
        for end in ("", "-wal"):
            shutil.copy(f"{self.path}{end}", self.place)
        self.assertGreater((self.place / f"{self.path.name}-wal").stat().st_size, 0)
        self.read(self.place / self.path.name, 1)

    def test_in_use(self) -> None:
        """The writer may write there, the reader not."""
        path = self.place / "used.sqlite3"
        connection = sqlite3.connect(path)
        self.addCleanup(connection.close)
        connection.execute("PRAGMA journal_mode = WAL")
        writer = type(self.writer)(connection)
        writer.prepare()
        for count in range(1, 4):
            writer.append_run(run(), curves())
            self.read(path, count)

    def test_strange_names(self) -> None:
        """Letters that mean something in an address."""
        self.writer.append_run(run(), {})
        self.connection.close()
        for name in ("mit Leerzeichen.sqlite3", "a?mode=rwc#b.sqlite3", "100%41.sqlite3", "Säure ü.sqlite3"):
            with self.subTest(name):
                shutil.copy(self.path, self.place / name)
                with open_logbook(self.place / name) as book:
                    self.assertEqual(len(book.runs()), 1)


class UnreadableTest(LogbookCase):
    """Each is one sentence, and nothing is made or changed."""

    def refuse(self, path: Path, words: str) -> None:
        """Opening, or reading all of it, fails with this sentence."""
        with self.assertRaises(LogbookError) as caught, open_logbook(path) as book:
            book.runs()
            book.verify()
            list(book.journal())
        text = str(caught.exception)
        self.assertIn(words, text)
        self.assertTrue(text.endswith("."), text)
        self.assertNotIn("\n", text)

    def test_none(self) -> None:
        """It is not made either."""
        self.refuse(self.directory / "other.sqlite3", "gibt es nicht")
        self.refuse(self.path / "below", "gibt es nicht")
        self.assertFalse((self.directory / "other.sqlite3").exists())

    def test_directory(self) -> None:
        """A directory is no file."""
        self.refuse(self.directory, "ist ein Verzeichnis")

    def test_not_allowed(self) -> None:
        """Nor one of somebody else's."""
        self.path.chmod(0o000)
        self.directory.chmod(0o755)
        with without_rights():
            self.refuse(self.path, "darf nicht gelesen werden")

    def test_no_database(self) -> None:
        """Empty, short, long."""
        other = self.directory / "other"
        for content, words in (
            (b"", "kein Logbuch"),
            (b"x", "kein Logbuch"),
            (b"no database at all" * 999, "keine Datenbank"),
        ):
            other.write_bytes(content)
            self.refuse(other, words)
            self.assertEqual(other.read_bytes(), content)

    def test_other_tables(self) -> None:
        """A database of something else, and one that has another table of this name."""
        for number, schema in enumerate(("a (b)", "run_record (number)", "entry (section, key, value)")):
            other = self.directory / f"other{number}"
            with sqlite3.connect(other) as connection:
                connection.execute(f"CREATE TABLE {schema}")
            connection.close()
            self.refuse(other, "kein Logbuch")

    def test_damaged(self) -> None:
        """Pages that were overwritten, and a file that is too short."""
        for _ in range(5):
            self.writer.append_run(run(), curves())
        self.connection.close()
        whole = self.path.read_bytes()
        other = self.directory / "other"
        other.write_bytes(whole[:4096] + b"\xff" * (len(whole) - 4096))
        self.refuse(other, "beschädigt")
        other.write_bytes(whole[: len(whole) // 2])
        self.refuse(other, "beschädigt")

    def test_every_page(self) -> None:
        """Whichever page is overwritten, it is told or it is not needed; never anything else."""
        self.writer.append_run(run(), curves())
        self.connection.close()
        whole = self.path.read_bytes()
        other = self.directory / "other"
        for start in range(0, len(whole), 4096):
            other.write_bytes(whole[:start] + b"\x5a" * 4096 + whole[start + 4096 :])
            try:
                with open_logbook(other) as book:
                    book.runs()
                    book.verify()
                    list(book.journal())
                    book.counters()
                    book.run(1)
                    book.curves(1)
            except LogbookError as error:
                self.assertNotIn("\n", str(error))

    def test_record_of_another_format(self) -> None:
        """The others can be read all the same."""
        self.writer.append_run(run(), {})
        self.writer.append_run(run(), {})
        self.connection.execute("DROP TRIGGER run_record_no_update")
        self.connection.execute(
            "UPDATE run_record SET document = replace(document, 'format\":1', 'format\":9') WHERE number = 1"
        )
        self.connection.commit()
        with open_logbook(self.path) as book:
            with self.assertRaisesRegex(LogbookError, "Bericht Nr. 1 ist nicht lesbar: .*Format 9"):
                book.run(1)
            self.assertEqual(book.run(2).broken, "")
            with self.assertRaisesRegex(LogbookError, "keinen Bericht Nr. 3"):
                book.run(3)

    def test_text_that_is_none(self) -> None:
        """Damaged letters are found by verify, and do not keep others from being read."""
        self.writer.append_run(run(), {})
        self.writer.append_run(run(), {})
        self.connection.execute("DROP TRIGGER run_record_no_update")
        for column in ("reason", "document"):
            self.connection.execute(
                f"UPDATE run_record SET {column} = CAST(x'c3ff' || {column} AS TEXT) WHERE number = 1"
            )
        self.connection.commit()
        with open_logbook(self.path) as book:
            self.assertEqual(len(book.runs()), 2)
            found = book.verify()
            self.assertEqual(found.number if found else None, 1)
            self.assertEqual(book.run(2).record.number, 2)


class FilterTest(LogbookCase):
    """What a list has of all runs."""

    def test_times_and_results(self) -> None:
        """Bounds are beginnings of local times; the newest is first."""
        for begun, result in (
            ("2026-10-31T23:59:59+01:00", "success"),
            ("2026-11-01T00:00:00+01:00", "error"),
            ("2026-11-30T12:00:00+01:00", "success"),
            ("2026-12-01T00:00:00+01:00", "warning"),
        ):
            self.writer.append_run(run(begun=begun, result=result), {})
        with open_logbook(self.path) as book:

            def numbers(
                since: str = "", until: str = "", results: tuple[str, ...] = (), limit: int = -1
            ) -> list[int]:
                return [each.number for each in book.runs(since, until, results, limit)]

            self.assertEqual(numbers(), [4, 3, 2, 1])
            self.assertEqual(numbers("2026-11", "2026-12"), [3, 2])
            self.assertEqual(numbers("2026-11-30T12"), [4, 3])
            self.assertEqual(numbers("", "2026-11-01"), [1])
            self.assertEqual(numbers(results=("success",)), [3, 1])
            self.assertEqual(numbers("2026-11", results=("success", "warning")), [4, 3])
            self.assertEqual(numbers(limit=2), [4, 3])

    def test_a_list_reads_no_documents(self) -> None:
        """All that it shows stands in the index."""
        plan = self.connection.execute(
            "EXPLAIN QUERY PLAN SELECT number, begun, ended, result, reason "
            "FROM run_record INDEXED BY run_overview ORDER BY number DESC"
        ).fetchall()
        self.assertEqual(len(plan), 1)
        self.assertIn("COVERING INDEX run_overview", plan[0][-1])

    def test_journal(self) -> None:
        """By time and kind, the oldest first; a line without a time has the present one."""
        entries = [
            JournalEntry(kind, "came", "x", time=clock(60.0 * n)) for n, kind in enumerate(("toast", "run"))
        ]
        self.writer.add(*entries, JournalEntry("run", "ended", "x"))
        with open_logbook(self.path) as book:
            self.assertEqual([each.number for each in book.journal(kinds=("run",))], [2, 3])
            self.assertEqual(
                [each.kind for each in book.journal("2026-11-21T14:01", "2026-11-21T14:02")], ["run"]
            )
            self.assertRegex(list(book.journal())[2].time, r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d[+-]\d\d:\d\d")

    def test_rights_of_the_test(self) -> None:
        """The tests above mean something: a closed file is closed."""
        self.path.chmod(0o000)
        with without_rights(), self.assertRaises(PermissionError):
            self.path.read_bytes()
        self.assertEqual(stat.S_IMODE(self.path.stat().st_mode), 0)
