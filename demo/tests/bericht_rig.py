"""Runs `kubelor-bericht` as a program, and reads what it writes."""

import atexit
import os
import subprocess
import sys
from contextlib import redirect_stderr, redirect_stdout
from io import BytesIO, StringIO, TextIOWrapper
from pathlib import Path
from shutil import rmtree
from tempfile import mkdtemp
from typing import Any

from bericht.command import main

from .logbook_rig import LogbookCase

PROGRAM = Path(__file__).resolve().parents[1] / "bericht" / "kubelor-bericht"
_MODULES = mkdtemp(prefix="kubelor-bericht-")
atexit.register(rmtree, _MODULES, ignore_errors=True)
#: Has a program find its modules compiled, as an installed one does: each start takes half the time.
COMPILED = {"PYTHONPYCACHEPREFIX": _MODULES, "PYTHONDONTWRITEBYTECODE": ""}
#: Texts that strangers could have chosen.
HOSTILE = (
    "<b>fett</b> & <script>alert(1)</script>",
    "</svg></table><img src=x onerror=alert(1)>",
    "&nbsp; &#0; &unbekannt;",
    "\"Anführung\" 'und' `mehr`",
    "Bier 🍺 und 👩\u200d🔧, 漢字",
    "rechts \u202enach links\u202c",
    "Zeile\nUmbruch\r\tTab \x1b[31mrot\x07 \x00",
    "{} %s $(reboot) ; DROP TABLE run_record; --",
    "=HYPERLINK(1)",
    "x" * 5000,
    "langes Wort " * 500,
    "é\u0301\u0301 ﷽ \ufeff\ufffe",
    "",
    " ",
)


def pdf_text(path: Path) -> str:
    """The text of a PDF, laid out as on the page."""
    return _output("pdftotext", "-layout", str(path), "-")


def pdf_pages(path: Path) -> int:
    """How many pages a PDF has."""
    fields = dict(line.split(":", 1) for line in _output("pdfinfo", str(path)).splitlines() if ":" in line)
    return int(fields["Pages"])


def pdf_images(path: Path) -> list[str]:
    """The images in a PDF, below the two lines of the head."""
    return _output("pdfimages", "-list", str(path)).splitlines()[2:]


def pdf_fonts(path: Path) -> list[list[str]]:
    """Name, ..., whether embedded, subset, Unicode, and two more fields of each font."""
    return [line.split() for line in _output("pdffonts", str(path)).splitlines()[2:]]


def _output(*command: str) -> str:
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


class ReportCase(LogbookCase):
    """A logbook that a writer has open, and the program."""

    def call(self, *arguments: object, file: Path | None = None, **options: Any) -> tuple[int, str, str]:
        """Runs the program on the file. Its exit code, what it says, what it complains of."""
        command = [sys.executable, str(PROGRAM), "--file", str(file or self.path), *map(str, arguments)]
        options = {"cwd": self.directory, "text": True, "encoding": "utf-8", **options}
        options["env"] = os.environ | {"PYTHONUTF8": "1", **COMPILED} | options.get("env", {})
        done = subprocess.run(command, check=False, capture_output=True, timeout=60, **options)
        self.assertNotIn("Traceback", done.stderr)
        return done.returncode, done.stdout, done.stderr

    def said(self, *arguments: object, **options: Any) -> str:
        """What the program says when all goes well."""
        code, out, complaint = self.call(*arguments, **options)
        self.assertEqual((code, complaint), (0, ""))
        return out

    def refused(self, code: int, *arguments: object, **options: Any) -> str:
        """The one sentence that the program ends with."""
        found, out, complaint = self.call(*arguments, **options)
        self.assertEqual((found, out), (code, ""), complaint)
        self.assertRegex(complaint, r"\Akubelor-bericht: [^\n]+\.\n\Z")
        return complaint

    def export(self, number: int = 1, form: str = "pdf") -> Path:
        """Exports a report to a file."""
        target = self.directory / f"out.{form}"
        target.unlink(missing_ok=True)
        arguments = ["--file", self.path, "export", number, "--format", form, "-o", target]
        # Not as a process of its own, which is what takes most of the time.
        with redirect_stdout(TextIOWrapper(BytesIO(), "utf-8")), redirect_stderr(StringIO()) as complaint:
            code = main(list(map(str, arguments)))
        self.assertEqual((code, complaint.getvalue()), (0, ""))
        return target
