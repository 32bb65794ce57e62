"""The command line: what can be asked for, and the help."""

import argparse
import re
from pathlib import Path
from typing import TYPE_CHECKING, Final, TypeAlias

from logbook.place import DIRECTORY_VARIABLE, FILE_NAME
from logbook.records import KINDS, RESULTS

from . import exit_codes, wording
from .german import speak_german

FORMATS: Final = ("pdf", "html", "csv", "json")
#: Writes to the standard output instead of a file.
STANDARD_OUTPUT: Final = Path("-")

_GREATEST_NUMBER: Final = 2**63 - 1
_TIME: Final = re.compile(r"\d{4}(-\d\d(-\d\d([T ]\d\d(:\d\d(:\d\d)?)?)?)?)?")
_GERMAN_DAY: Final = re.compile(r"(\d{1,2})\.(\d{1,2})\.(\d{4})")

_DESCRIPTION: Final = """\
Berichte über Reinigungen, aus dem Logbuch der Maschine. Liest nur: die Datei wird nie geändert,
und die Maschine kann dabei laufen.
"""
_EPILOG: Final = f"""\
Mit BEFEHL --help steht das Weitere zu jedem Befehl.

Beispiele:
  %(prog)s list --since 2026-11 --result error
  %(prog)s export 123 -o bericht.pdf
  %(prog)s export 123 --format csv -o - | less
  %(prog)s verify --file /media/stick/{FILE_NAME}

Zeiten:
  2026, 2026-11, 2026-11-21, 21.11.2026 oder 2026-11-21T14:30, in der Zeit der Maschine. --since gilt
  ab dem Anfang der Angabe, --until bis zu ihrem Ende.

Dateien:
  Ohne --file gilt {FILE_NAME} in dem Verzeichnis, das in {DIRECTORY_VARIABLE} steht, sonst in
  ~/.config/kubelor-demo/BrovikGmbH. Eine Kopie genügt; zu ihr gehört auch die Datei mit der Endung
  -wal, solange es sie gibt. Eine Ausgabedatei ist danach entweder ganz da oder so, wie sie war.

CSV:
  Semikolons zwischen den Feldern, Kommas in Zahlen. Texten, die eine Tabellenkalkulation für eine
  Formel hielte, steht ein Apostroph voran.

Rückgabewerte:
  {exit_codes.OK}  gelungen
  {exit_codes.BROKEN}  die Kette der Berichte, oder der ausgegebene Bericht, ist nicht so, wie geschrieben
  {exit_codes.USAGE}  der Aufruf ist falsch
  {exit_codes.UNREADABLE}  die Datei ist nicht lesbar, oder es gibt den Bericht nicht
  {exit_codes.UNWRITABLE}  die Ausgabe kann nicht geschrieben werden
"""


def parser() -> argparse.ArgumentParser:
    """The parser of the whole command line."""
    speak_german()
    top = _parser("kubelor-bericht", _DESCRIPTION, _EPILOG)
    top.add_argument("--file", type=Path, metavar="DATEI", help="die Datei mit dem Logbuch")
    commands = top.add_subparsers(dest="command", metavar="BEFEHL", required=True, title="Befehle")
    _add_list(commands)
    _add_show(commands)
    _add_export(commands)
    _add_journal(commands)
    _add_counters(commands)
    _add_command(commands, "verify", "prüft die Kette der Berichte und nennt den ersten, der geändert wurde")
    return top


def _parser(prog: str, description: str, epilog: str = "") -> argparse.ArgumentParser:
    return argparse.ArgumentParser(
        prog=prog,
        description=description,
        epilog=epilog,
        formatter_class=argparse.RawDescriptionHelpFormatter,
        allow_abbrev=False,
    )


if TYPE_CHECKING:
    # argparse does not make this type known.
    Commands: TypeAlias = "argparse._SubParsersAction[argparse.ArgumentParser]"


def _add_command(commands: "Commands", name: str, text: str, *aliases: str) -> argparse.ArgumentParser:
    found: argparse.ArgumentParser = commands.add_parser(
        name, aliases=aliases, help=text, description=f"{text[:1].upper()}{text[1:]}.", allow_abbrev=False
    )
    found.set_defaults(command=name)
    # The file may be told before the command as well as after it.
    found.add_argument(
        "--file", type=Path, metavar="DATEI", default=argparse.SUPPRESS, help="die Datei mit dem Logbuch"
    )
    return found


def _add_list(commands: "Commands") -> None:
    command = _add_command(commands, "list", "nennt die Berichte, den neuesten zuerst")
    _add_times(command)
    meanings = ", ".join(f"{word}: {wording.result(word)}" for word in RESULTS)
    command.add_argument(
        "--result",
        action="append",
        choices=RESULTS,
        default=[],
        metavar="ERGEBNIS",
        help=f"nur diese; mehrmals möglich ({meanings})",
    )
    _add_table_formats(command)


def _add_show(commands: "Commands") -> None:
    command = _add_command(commands, "show", "zeigt einen Bericht als Text")
    _add_number(command)


def _add_export(commands: "Commands") -> None:
    command = _add_command(commands, "export", "schreibt einen Bericht in eine Datei")
    _add_number(command)
    command.add_argument("--format", choices=FORMATS, default="pdf", help="die Form der Datei; sonst pdf")
    command.add_argument(
        "-o",
        "--output",
        type=Path,
        metavar="DATEI",
        help="wohin; - ist die Standardausgabe; sonst Reinigungsbericht-N im Arbeitsverzeichnis",
    )


def _add_journal(commands: "Commands") -> None:
    command = _add_command(commands, "journal", "zeigt das Journal der Maschine, das Älteste zuerst")
    _add_times(command)
    meanings = ", ".join(f"{word}: {wording.kind(word)}" for word in KINDS)
    command.add_argument(
        "--kind",
        action="append",
        choices=KINDS,
        default=[],
        metavar="ART",
        help=f"nur diese; mehrmals möglich ({meanings})",
    )
    _add_table_formats(command)


def _add_counters(commands: "Commands") -> None:
    _add_table_formats(_add_command(commands, "counters", "zeigt die Zähler der Maschine", "zaehler"))


def _add_number(command: argparse.ArgumentParser) -> None:
    command.add_argument("number", type=_number, metavar="N", help="die Nummer des Berichts")


def _add_times(command: argparse.ArgumentParser) -> None:
    command.add_argument("--since", type=_time, metavar="ZEIT", help="nur ab dieser Zeit")
    command.add_argument("--until", type=_end, metavar="ZEIT", help="nur bis zu dieser Zeit")


def _add_table_formats(command: argparse.ArgumentParser) -> None:
    group = command.add_mutually_exclusive_group()
    group.add_argument("--json", action="store_true", help="als JSON")
    group.add_argument("--csv", action="store_true", help="als CSV")


def _number(text: str) -> int:
    if not (text.isascii() and text.isdigit() and len(text) < 20 and 0 < int(text) <= _GREATEST_NUMBER):
        raise argparse.ArgumentTypeError(f"{text!r} ist keine Nummer eines Berichts")
    return int(text)


def _time(text: str) -> str:
    """The beginning of a local time as the logbook has it."""
    text = text.strip()
    if german := _GERMAN_DAY.fullmatch(text):
        text = f"{german[3]}-{german[2]:0>2}-{german[1]:0>2}"
    if not _TIME.fullmatch(text):
        raise argparse.ArgumentTypeError(f"{text!r} ist keine Zeit; richtig ist zum Beispiel 2026-11-21")
    return text.replace(" ", "T")


def _end(text: str) -> str:
    """What comes after all times that begin so."""
    return _time(text) + "\x7f"
