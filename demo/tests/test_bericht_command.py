"""`kubelor-bericht` on the command line: what it says, what it writes, and with which code it ends."""

import csv
import json
import os
import resource
import shutil
import stat
import subprocess
import sys
from collections.abc import Callable
from io import StringIO
from pathlib import Path

from bericht.arguments import parser
from bericht.output import OutputError, write_file
from logbook import place
from logbook.chain import START, row_hash
from logbook.reader import open_logbook
from logbook.records import JournalEntry

from .bericht_rig import PROGRAM, ReportCase
from .logbook_rig import STEPS, LogbookCase, clock, curves, run
from .test_logbook_reader import without_rights


def read_csv(text: str) -> list[list[str]]:
    """The rows of a CSV text."""
    return list(csv.reader(StringIO(text, newline=""), delimiter=";"))


def number(text: str) -> float:
    """A number as a German spreadsheet has it."""
    return float(text.replace(",", "."))


class ListTest(ReportCase):
    """Lists of runs, journal, counters."""

    def setUp(self) -> None:
        super().setUp()
        entry = JournalEntry("run", "ended", "Automatikbetrieb", '=1+1;"\n\x1b[31m', '{"a":1}', clock(9))
        self.writer.append_run(run(), curves(), (entry,), {"Fässer": (1.0, ""), "Pumpe": (1.25, "h")})
        self.writer.append_run(run(result="error", begun="2026-12-01T08:00:00+01:00", reason="Undicht"), {})
        self.writer.append_run(run(ended="", result="later"), {})

    def test_list(self) -> None:
        """The newest first."""
        lines = self.said("list").splitlines()
        self.assertEqual(lines[0].split(), ["Nr.", "Beginn", "Dauer", "Ergebnis", "Grund"])
        self.assertEqual([line.split()[0] for line in lines[1:]], ["3", "2", "1"])
        self.assertIn("1  21.11.2026 14:00:00  5:30 min  erfolgreich", lines[3])
        self.assertIn("later", lines[1])

    def test_filters(self) -> None:
        """Times of both kinds, to the end of what is told; results."""

        def numbers(*arguments: str) -> list[int]:
            return [each["number"] for each in json.loads(self.said("list", "--json", *arguments))]

        self.assertEqual(numbers(), [3, 2, 1])
        self.assertEqual(numbers("--since", "2026-12"), [2])
        self.assertEqual(numbers("--until", "21.11.2026"), [3, 1])
        self.assertEqual(numbers("--until", "2026-12-01T08:00"), [3, 2, 1])
        self.assertEqual(numbers("--since", "2026-11-22", "--until", "2026-11-30"), [])
        self.assertEqual(numbers("--result", "error", "--result", "success"), [2, 1])
        self.assertIn("keine solchen", self.said("list", "--since", "2027"))

    def test_formats(self) -> None:
        """JSON and CSV have what the file has."""
        found = json.loads(self.said("list", "--json"))
        self.assertEqual(
            found[1],
            {
                "number": 2,
                "begun": "2026-12-01T08:00:00+01:00",
                "ended": run().ended,
                "result": "error",
                "reason": "Undicht",
            },
        )
        rows = read_csv(self.said("list", "--csv"))
        self.assertEqual(rows[0], ["Nr.", "Beginn", "Ende", "Ergebnis", "Grund"])
        self.assertEqual(rows[1:], [list(map(str, each.values())) for each in found])

    def test_journal(self) -> None:
        """A table in which no text moves the terminal, CSV in which none is a formula, exact JSON."""
        self.assertIn('Lauf  beendet   Automatikbetrieb  =1+1;" [31m\n', self.said("journal"))
        (entry,) = json.loads(self.said("journal", "--json", "--kind", "run", "--since", "2026"))
        self.assertEqual(entry["text"], '=1+1;"\n\x1b[31m')
        row = read_csv(self.said("journal", "--csv"))[1]
        self.assertEqual(
            row, ["1", clock(9), "run", "ended", "Automatikbetrieb", "'=1+1;\"\n[31m", '{"a":1}']
        )
        self.assertIn("keine solchen", self.said("journal", "--kind", "login"))

    def test_counters(self) -> None:
        """By both names of the command."""
        self.assertRegex(self.said("counters"), r"Fässer +1\nPumpe +1,25  h\n")
        rows = read_csv(self.said("zaehler", "--csv"))
        self.assertEqual(rows, [["Zähler", "Stand", "Einheit"], ["Fässer", "1", ""], ["Pumpe", "1,25", "h"]])

    def test_show(self) -> None:
        """A report as text."""
        text = self.said("show", 1)
        for expected in ("Reinigungsbericht Nr. 1", "Erfolgreich.", *STEPS, "0,40–41,25", "SANAL®-SA 3"):
            self.assertIn(expected, text)
        self.assertIn("Es wurden keine Kurven aufgezeichnet.", self.said("show", 2))

    def test_empty(self) -> None:
        """A logbook without anything."""
        other = self.directory / "empty.sqlite3"
        connection = type(self.connection)(other)
        self.addCleanup(connection.close)
        type(self.writer)(connection).prepare()
        for command, words in (
            ("list", "noch keine Berichte"),
            ("verify", "noch keine Berichte"),
            ("counters", "noch keine Zähler"),
            ("journal", "keine solchen"),
        ):
            self.assertIn(words, self.said(command, file=other))
        self.assertEqual(json.loads(self.said("list", "--json", file=other)), [])


class ExportTest(ReportCase):
    """CSV and JSON of one run."""

    def setUp(self) -> None:
        super().setUp()
        self.writer.append_run(run(reason="=cmd|'x'"), curves(samples=50))

    def test_csv(self) -> None:
        """All steps, measured values, parameters and points come back."""
        data = self.export(form="csv").read_bytes()
        self.assertTrue(data.startswith(b"\xef\xbb\xbf"))
        blocks: dict[str, list[list[str]]] = {}
        rows = read_csv(data.decode("utf-8-sig"))
        for index, row in enumerate(rows):
            if index == 0 or not rows[index - 1]:
                block = blocks.setdefault(row[0], [])
            elif row:
                block.append(row)
        self.assertEqual(list(blocks), ["Lauf", "Schritte", "Messwerte", "Parameter", "Kurven"])
        self.assertIn(["Grund", "'=cmd|'x'"], blocks["Lauf"])
        self.assertEqual([row[2] for row in blocks["Schritte"][1:]], list(STEPS))
        self.assertEqual(
            [number(row[6]) for row in blocks["Schritte"][1:]], [s.ended_secs for s in run().steps]
        )
        self.assertIn(
            ["1", "Prüfung", "Druckverlust", "bar", "0,03", "0,03", "0,1", "höchstens"], blocks["Messwerte"]
        )
        self.assertEqual([row[0] for row in blocks["Parameter"][1:]], [p.key for p in run().parameters])
        lines: dict[str, list[tuple[float, float]]] = {}
        for name, x, y in blocks["Kurven"][1:]:
            lines.setdefault(name, []).append((number(x), number(y)))
        self.assertEqual(lines, {name: list(points) for name, points in curves(samples=50).items()})

    def test_json(self) -> None:
        """The document to the byte, so that its hash can be computed."""
        data = self.export(form="json").read_bytes()
        document, hash_ = self.connection.execute("SELECT document, hash FROM run_record").fetchone()
        self.assertEqual(data.decode("utf-8"), document)
        self.assertEqual(row_hash(START, data.decode("utf-8")), hash_)

    def test_places(self) -> None:
        """A name of its own in the working directory, or the standard output."""
        self.assertIn("Reinigungsbericht-1.pdf", self.said("export", 1))
        self.assertTrue((self.directory / "Reinigungsbericht-1.pdf").read_bytes().startswith(b"%PDF-"))
        piped = self.said("export", 1, "--format", "json", "-o", "-")
        self.assertEqual(json.loads(piped)["number"], 1)

    def test_none(self) -> None:
        """There is no such report, and no file."""
        self.assertIn("keinen Bericht Nr. 7", self.refused(3, "export", 7))
        self.assertIn("keinen Bericht", self.refused(3, "show", 2**63 - 1))
        self.assertEqual(list(self.directory.glob("Reinigung*")), [])


class VerifyTest(ReportCase):
    """The chain."""

    def setUp(self) -> None:
        super().setUp()
        for _ in range(4):
            self.writer.append_run(run(), curves(samples=20))
        for (name,) in self.connection.execute(
            "SELECT name FROM sqlite_schema WHERE type = 'trigger'"
        ).fetchall():
            self.connection.execute(f"DROP TRIGGER {name}")

    def broken(self, statement: str) -> str:
        """What is said after this change."""
        self.connection.execute(statement)
        self.connection.commit()
        code, out, complaint = self.call("verify")
        self.assertEqual((code, complaint), (1, ""))
        return out

    def test_unbroken(self) -> None:
        """With the hash that a report on paper has."""
        (hash_,) = self.connection.execute("SELECT hash FROM run_record WHERE number = 4").fetchone()
        self.assertEqual(
            self.said("verify"),
            f"Alle Berichte von Nr. 1 bis Nr. 4 sind unversehrt.\nLetzter SHA-256: {hash_}\n",
        )

    def test_changed_byte(self) -> None:
        """The first record that was changed."""
        out = self.broken(
            "UPDATE run_record SET document = replace(document, 'dicht?', 'dichT?') WHERE number > 1"
        )
        self.assertIn("Bericht Nr. 2 wurde geändert", out)
        self.assertIn("davor sind unversehrt", out)

    def test_removed(self) -> None:
        """In the middle, and the last one."""
        self.assertIn("Nr. 4 fehlt", self.broken("DELETE FROM run_record WHERE number = 4"))
        self.assertIn("Nr. 2 fehlt", self.broken("DELETE FROM run_record WHERE number = 2"))

    def test_exchanged(self) -> None:
        """Rows in each other's places."""
        self.connection.execute("UPDATE run_record SET number = 5 - number + 100 WHERE number IN (2, 3)")
        out = self.broken("UPDATE run_record SET number = number - 100 WHERE number > 100")
        self.assertIn("Nr. 2", out)

    def test_curves(self) -> None:
        """They belong to the record."""
        out = self.broken("UPDATE run_curve SET points = zeroblob(length(points)) WHERE run = 3")
        self.assertIn("Kurven des Berichts Nr. 3 wurden geändert", out)


class PlaceOfFileTest(ReportCase):
    """Where the file is."""

    def test_from_the_environment(self) -> None:
        """The directory that the host tells, else the usual place."""
        self.writer.append_run(run(), {})
        self.connection.close()
        self.assertEqual(self.path.name, place.FILE_NAME)
        usual = self.directory / ".config/kubelor-demo/BrovikGmbH"
        usual.mkdir(parents=True)
        shutil.copy(self.path, usual)
        environment = {
            k: v for k, v in os.environ.items() if k not in ("BROVIK_CONFIG_DIR", "XDG_CONFIG_HOME")
        }
        for more in (
            {"BROVIK_CONFIG_DIR": str(self.directory)},
            {"HOME": str(self.directory), "BROVIK_CONFIG_DIR": ""},
            {"HOME": "/nowhere", "XDG_CONFIG_HOME": str(self.directory / ".config")},
        ):
            with self.subTest(more):
                done = subprocess.run(
                    [sys.executable, "-B", str(PROGRAM), "verify"],
                    env=environment | more,
                    check=False,
                    capture_output=True,
                    text=True,
                )
                self.assertIn("Nr. 1 bis Nr. 1", done.stdout, done.stderr)

    def test_unreadable(self) -> None:
        """One sentence each, whichever command it was."""
        other = self.directory / "other"
        self.assertIn("gibt es nicht", self.refused(3, "list", file=other))
        other.write_bytes(b"no database at all" * 999)
        for command in (("list",), ("show", 1), ("export", 1), ("journal",), ("counters",), ("verify",)):
            self.assertIn("keine Datenbank", self.refused(3, *command, file=other))
        self.assertIn("Verzeichnis", self.refused(3, "verify", file=self.directory))
        self.assertIn("Zeile zwei", self.refused(3, "list", file=self.directory / "Zeile\nzwei"))

    def test_before_and_after_the_command(self) -> None:
        """The file may be told on either side."""
        options = parser().parse_args(["--file", "a", "list"])
        self.assertEqual(options.file, Path("a"))
        self.assertEqual(parser().parse_args(["list", "--file", "b"]).file, Path("b"))
        self.assertIsNone(parser().parse_args(["list"]).file)


class UsageTest(ReportCase):
    """The command line."""

    def test_help(self) -> None:
        """German throughout, for each command."""
        for command in ("", "list", "show", "export", "journal", "counters", "verify"):
            text = self.said(*filter(None, (command, "--help")))
            self.assertTrue(text.startswith("Aufruf: kubelor-bericht"), text)
            self.assertNotRegex(text, r"(?i)usage|options|positional|show this|exit")
        self.assertIn("Rückgabewerte", self.said("--help"))

    def test_mistakes(self) -> None:
        """Told in German, with the usage before it."""
        mistakes: tuple[list[str], ...] = (
            [],
            ["unknown"],
            ["list", "--unknown"],
            ["list", "--since"],
            ["list", "--since", "gestern"],
            ["list", "--result", "bad"],
            ["list", "--json", "--csv"],
            ["list", "extra"],
            ["show"],
            ["show", "0"],
            ["show", "-1"],
            ["show", "1" * 30],
            ["show", "٣"],
            ["export", "1", "--format", "docx"],
            ["list", "--json=1"],
        )
        for arguments in mistakes:
            with self.subTest(arguments):
                code, out, complaint = self.call(*arguments)
                self.assertEqual((code, out), (2, ""))
                self.assertTrue(complaint.startswith("Aufruf: "), complaint)
                self.assertNotRegex(complaint, r"(?i)usage|error:|argument|invalid|expected|required")


class OutputTest(LogbookCase):
    """Files are there as a whole or as they were."""

    def setUp(self) -> None:
        super().setUp()
        self.directory.chmod(0o755)
        self.place = self.directory / "place"
        self.place.mkdir()
        self.target = self.place / "report.pdf"

    def refuse(self, target: Path, words: str, content: bytes = b"new") -> None:
        """The file cannot be written; an older one is what it was, and nothing lies beside it."""
        before = {file: file.read_bytes() for file in self.place.iterdir() if file.is_file()}
        with self.assertRaisesRegex(
            OutputError, rf"\ADie Datei .* kann nicht geschrieben werden: .*{words}.*\.\Z"
        ):
            write_file(target, content)
        self.assertEqual({file: file.read_bytes() for file in self.place.iterdir() if file.is_file()}, before)

    def test_new_and_old(self) -> None:
        """A new file has the rights of any, one in place of an older one has those."""
        write_file(self.target, b"new")
        plain = self.place / "plain"
        plain.touch()
        self.assertEqual(self.target.read_bytes(), b"new")
        self.assertEqual(self.target.stat().st_mode, plain.stat().st_mode)
        self.target.chmod(0o640)
        inode = self.target.stat().st_ino
        write_file(self.target, b"newer")
        self.assertEqual(self.target.read_bytes(), b"newer")
        self.assertEqual(stat.S_IMODE(self.target.stat().st_mode), 0o640)
        self.assertNotEqual(self.target.stat().st_ino, inode)

    def test_link(self) -> None:
        """What it points to is replaced, and it stays."""
        link = self.place / "link"
        link.symlink_to(self.target)
        write_file(link, b"new")
        self.assertTrue(link.is_symlink())
        self.assertEqual(self.target.read_bytes(), b"new")

    def test_full(self) -> None:
        """In the middle of the file there is no more room."""
        self.target.write_bytes(b"old")
        limits = resource.getrlimit(resource.RLIMIT_FSIZE)
        self.addCleanup(resource.setrlimit, resource.RLIMIT_FSIZE, limits)
        resource.setrlimit(resource.RLIMIT_FSIZE, (10_000, limits[1]))
        self.refuse(self.target, "größer, als erlaubt", b"x" * 20_000)
        self.refuse(Path("/dev/full"), "Datenträger ist voll", b"x" * 20_000)

    def test_places(self) -> None:
        """Each is told."""
        self.target.write_bytes(b"old")
        self.refuse(self.place, "sie ist ein Verzeichnis")
        self.refuse(self.place / "none" / "report.pdf", "das Verzeichnis gibt es nicht")
        self.refuse(self.target / "report.pdf", "das Verzeichnis gibt es nicht")
        self.refuse(self.place / ("x" * 300), "der Name ist zu lang")
        self.refuse(self.place / "a\0b", "")
        self.place.chmod(0o555)
        with without_rights():
            self.refuse(self.target, "das ist nicht erlaubt")

    def test_device(self) -> None:
        """It is written to, not replaced."""
        write_file(Path("/dev/null"), b"new")
        self.assertTrue(stat.S_ISCHR(os.stat("/dev/null").st_mode))


class OutputCodeTest(ReportCase):
    """What the program says of it."""

    def setUp(self) -> None:
        super().setUp()
        self.writer.append_run(run(), curves())

    def test_file(self) -> None:
        """A sentence and a code, and the older file stays."""
        target = self.directory / "old.pdf"
        target.write_bytes(b"old")

        def limit() -> None:
            resource.setrlimit(resource.RLIMIT_FSIZE, (20_000, 20_000))

        before: Callable[[], None] = limit
        self.assertIn("größer", self.refused(4, "export", 1, "-o", target, preexec_fn=before))
        self.assertEqual(target.read_bytes(), b"old")
        self.assertIn("gibt es nicht", self.refused(4, "export", 1, "-o", "none/a.pdf"))

    def test_standard_output(self) -> None:
        """Full, or closed by who has read enough."""
        command = [sys.executable, "-B", str(PROGRAM), "--file", str(self.path), "export", "1", "-o", "-"]
        with open("/dev/full", "wb") as full:
            done = subprocess.run(command, stdout=full, stderr=subprocess.PIPE, check=False)
        self.assertEqual(done.returncode, 4)
        self.assertIn("Datenträger ist voll", done.stderr.decode())
        reading, writing = os.pipe()
        os.close(reading)
        done = subprocess.run(command, stdout=writing, stderr=subprocess.PIPE, check=False)
        os.close(writing)
        self.assertEqual((done.returncode, done.stderr), (0, b""))

    def test_other_letters(self) -> None:
        """A terminal that has no umlauts gets what it has."""
        out = self.said("list", env={"PYTHONUTF8": "0", "PYTHONIOENCODING": "ascii"})
        self.assertIn("Das Fass", out)
        self.assertIn("Spülen mit Heißwasser", self.said("show", 1, env={"LC_ALL": "C"}))

    def test_installed(self) -> None:
        """The program finds its packages where they are installed, and says so if it does not."""
        prefix = self.directory / "prefix"
        demo = prefix / "share/kubelor/demo"
        (prefix / "bin").mkdir(parents=True)
        program = Path(shutil.copy(PROGRAM, prefix / "bin"))
        command = [sys.executable, str(program), "--file", str(self.path), "verify"]
        done = subprocess.run(command, capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stderr.count("\n")), (1, 1))
        for package in ("bericht", "logbook"):
            shutil.copytree(PROGRAM.parents[1] / package, demo / package)
        done = subprocess.run(command, capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_reads_what_is_written_meanwhile(self) -> None:
        """Each report is that of the moment."""
        self.connection.execute("BEGIN IMMEDIATE")
        self.writer.append_run(run(), {})
        self.assertIn("Nr. 1 bis Nr. 1", self.said("verify"))
        self.connection.commit()
        self.assertIn("Nr. 1 bis Nr. 2", self.said("verify"))
        with open_logbook(self.path) as book:
            self.assertIsNone(book.verify())
