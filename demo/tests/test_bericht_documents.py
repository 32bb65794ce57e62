"""What people get, to the letter and to the hundredth of a point: reports, lists and help.

Each difference from what `documents` keeps is a failure. KUBELOR_KEEP_DOCUMENTS=1 keeps what there is now.
"""

import base64
import math
import os
import re
import zlib
from contextlib import redirect_stderr, redirect_stdout
from dataclasses import replace
from io import BytesIO, StringIO, TextIOWrapper
from pathlib import Path
from typing import Final
from unittest import mock

from bericht.command import main
from logbook import records
from logbook.curves import Curves
from logbook.records import (
    CheckRecord,
    CounterRecord,
    Interruption,
    JournalEntry,
    MessageRecord,
    ParameterRecord,
    QuestionRecord,
    RunRecord,
    StepRecord,
)

from .bericht_rig import ReportCase
from .logbook_rig import STEPS, clock, curves, run, step

_KEPT: Final = Path(__file__).parent / "documents"
_KEEP: Final = "KUBELOR_KEEP_DOCUMENTS" in os.environ
_URGENCIES: Final = ("info", "notify", "success", "warn", "warning", "error", "exception", "question", "?")
_COMMANDS: Final = ("list", "show", "export", "journal", "counters", "verify")


def _steps() -> tuple[StepRecord, ...]:
    """One for each end that a step can have, and one that is not known."""
    results = (*records.STEP_RESULTS, "later")
    first, second, *others, last = (
        step(n, STEPS[n - 1], result) for n, result in enumerate(results, start=1)
    )
    checks = (
        CheckRecord("Druck", 0.4, "bar", 1.0, "mindestens"),
        CheckRecord("Leitwert", 3.0, "mS/cm"),
    )
    second = replace(second, reason="Das Fass ist undicht.", checks=checks)
    return (first, second, *others, replace(last, ranges=()))


def _everything() -> RunRecord:
    """A run in which all went wrong that can, over midnight."""
    return replace(
        run(result="error", reason="Das Fass ist undicht."),
        secs=3725.0,
        ended="2026-11-22T15:02:05+01:00",
        machine="Anlage 3",
        barrel="Fass 7",
        steps=_steps(),
        parameters=(
            ParameterRecord("steam", "Dampf", True, False),
            ParameterRecord("factor", "Faktor", 2.5, 3.0, "x"),
            ParameterRecord("secs", "Dauer", 5, 5, "s"),
            ParameterRecord("more", "Dauer danach", 5, 5, "s"),
        ),
        questions=(
            QuestionRecord(clock(3), "Dichtheit", "Ist das Fass dicht?", clock(9), "Ja"),
            QuestionRecord(clock(30), "Weiter", "Soll es weitergehen?"),
        ),
        messages=tuple(
            MessageRecord(clock(60 + n), "Lauge", f"Meldung {n}", word) for n, word in enumerate(_URGENCIES)
        ),
        interruptions=(Interruption(clock(100), 3, clock(160)), Interruption(clock(200), 5)),
        counters=(CounterRecord("Gereinigte Fässer", 1234.0), CounterRecord("Lauge", 12.25, "l")),
    )


def _nothing() -> RunRecord:
    """A run of which there is nothing to tell."""
    return RunRecord(clock(0), "", 0.0, "neutral", "", "", "", "", "")


def _curves_with_a_gap() -> Curves:
    found = dict(curves(samples=24, secs=180.0))
    found["Lw"] = [(x, math.nan if 60 < x < 70 else y) for x, y in found["Lw"]]
    return found


def _drawn(pdf: bytes) -> bytes:
    """What is on the pages of a PDF: the operators that draw it."""
    streams = re.findall(rb"/ASCII85Decode [^>]*>>\s*stream\r?\n(.*?)endstream", pdf, re.DOTALL)
    assert streams
    return b"\n".join(zlib.decompress(base64.a85decode(stream.strip(), adobe=True)) for stream in streams)


class DocumentsTest(ReportCase):
    """Each document, on a file of three runs."""

    def setUp(self) -> None:
        super().setUp()
        self.writer.append_run(run(), curves(samples=24))
        self.writer.append_run(_everything(), _curves_with_a_gap())
        self.writer.append_run(_nothing(), {})
        self.writer.add(
            *(
                JournalEntry(kind, event, f"Gegenstand {n}", "Text", time=clock(n))
                for n, kind in enumerate((*records.KINDS, "later"))
                for event in (*records.EVENTS, "later")
            )
        )
        self.writer.set_counters({"Gereinigte Fässer": (1234.0, ""), "Lauge": (12.25, "l")})

    def told(self, *arguments: object, code: int = 0) -> bytes:
        """What the program writes to its standard output."""
        with TextIOWrapper(BytesIO(), "utf-8") as out:
            with redirect_stdout(out), redirect_stderr(StringIO()):
                try:
                    found = main(["--file", str(self.path), *map(str, arguments)])
                except SystemExit as end:  # as after the help
                    found = int(end.code or 0)
            self.assertEqual(found, code)
            out.flush()
            buffer = out.buffer
            assert isinstance(buffer, BytesIO)
            return buffer.getvalue()

    def compare(self, name: str, document: bytes) -> None:
        """Compares with what is kept under that name."""
        with self.subTest(name):
            if _KEEP:
                _KEPT.mkdir(exist_ok=True)
                (_KEPT / name).write_bytes(document)
            self.assertEqual(document.decode(), (_KEPT / name).read_bytes().decode())

    def test_reports(self) -> None:
        """As text, page, table and drawing."""
        for number, name in enumerate(("gelungen", "misslungen", "leer"), start=1):
            self.compare(f"{name}.txt", self.told("show", number))
            for form in ("html", "csv"):
                self.compare(f"{name}.{form}", self.told("export", number, "--format", form, "-o", "-"))
            self.compare(f"{name}.pdf.txt", _drawn(self.told("export", number, "-o", "-")))

    def test_reports_without_their_curves(self) -> None:
        """They say since when, or that they cannot be read."""
        self.writer.remove_curves(1, clock(0))
        self.compare("ohne-kurven.txt", self.told("show", 1))
        self.connection.execute("DROP TRIGGER run_curve_no_update")
        self.connection.execute("UPDATE run_curve SET points = x'0001' WHERE line = 'P'")
        self.connection.commit()
        self.compare("kurven-beschaedigt.txt", self.told("show", 2, code=1))
        self.compare("kurven-beschaedigt.html", self.told("export", 2, "--format", "html", "-o", "-", code=1))

    def test_lists(self) -> None:
        """For people, and as CSV and JSON for programs."""
        for command in ("list", "journal", "counters"):
            self.compare(f"{command}.txt", self.told(command))
            self.compare(f"{command}.csv", self.told(command, "--csv"))
            self.compare(f"{command}.json", self.told(command, "--json"))
        self.compare("verify.txt", self.told("verify"))

    def test_help(self) -> None:
        """Of the program and of each command."""
        with mock.patch.dict(os.environ, COLUMNS="100"):
            texts = [self.told("--help"), *(self.told(command, "--help") for command in _COMMANDS)]
        self.compare("hilfe.txt", b"\n".join(texts))
