"""`kubelor-bericht`: what its commands do."""

import argparse
import json
import sys
from collections.abc import Callable, Mapping, Sequence
from dataclasses import asdict
from datetime import datetime
from pathlib import Path
from typing import Final

from logbook.place import usual_path
from logbook.reader import Logbook, LogbookError, RunSummary, open_logbook
from logbook.records import JournalEntry

from . import exit_codes, wording
from .arguments import STANDARD_OUTPUT, parser
from .csv_tables import csv_text
from .output import BYTE_ORDER_MARK, OutputError, write_file, write_out
from .text_tables import text_table

PROGRAM: Final = "kubelor-bericht"


def main(arguments: Sequence[str] | None = None) -> int:
    """Runs the program. The value is its exit code."""
    options = parser().parse_args(arguments)
    try:
        with open_logbook(options.file or usual_path()) as book:
            return _COMMANDS[options.command](book, options)
    except LogbookError as error:
        _complain(error)
        return exit_codes.UNREADABLE
    except OutputError as error:
        _complain(error)
        return exit_codes.UNWRITABLE
    except KeyboardInterrupt:
        return exit_codes.INTERRUPTED


def _complain(error: object) -> None:
    print(f"{PROGRAM}: {wording.one_line(str(error))}", file=sys.stderr)


def _print(text: str) -> None:
    write_out(text.encode(sys.stdout.encoding or "utf-8", "replace"))


# Lists.


def _list(book: Logbook, options: argparse.Namespace) -> int:
    runs = book.runs(options.since or "", options.until or "", options.result)
    if options.json:
        _print_json(list(map(asdict, runs)))
    elif options.csv:
        head = ("Nr.", "Beginn", "Ende", "Ergebnis", "Grund")
        _print_csv([head, *((r.number, r.begun, r.ended, r.result, r.reason) for r in runs)])
    elif runs:
        head = ("Nr.", "Beginn", "Dauer", "Ergebnis", "Grund")
        _print(text_table(head, map(_run_row, runs), (True, False, True, False, False)))
    else:
        _print("Es gibt keine solchen Berichte.\n" if book.last() else "Es gibt noch keine Berichte.\n")
    return exit_codes.OK


def _run_row(run: RunSummary) -> tuple[str, ...]:
    return (
        str(run.number),
        wording.full_time(run.begun),
        wording.duration(_secs(run)),
        wording.result(run.result),
        run.reason,
    )


def _secs(run: RunSummary) -> float:
    try:
        return (datetime.fromisoformat(run.ended) - datetime.fromisoformat(run.begun)).total_seconds()
    except (ValueError, TypeError):
        return float("nan")


def _journal(book: Logbook, options: argparse.Namespace) -> int:
    entries = list(book.journal(options.since or "", options.until or "", options.kind))
    if options.json:
        _print_json(list(map(asdict, entries)))
    elif options.csv:
        head = ("Nr.", "Zeit", "Art", "Ereignis", "Gegenstand", "Text", "Einzelheiten")
        rows = [(e.number, e.time, e.kind, e.event, e.subject, e.text, e.details) for e in entries]
        _print_csv([head, *rows])
    elif entries:
        columns = ("Nr.", "Zeit", "Art", "Ereignis", "Gegenstand", "Text")
        _print(text_table(columns, map(_entry_row, entries), (True, *[False] * 5)))
    else:
        _print("Das Journal hat keine solchen Zeilen.\n")
    return exit_codes.OK


def _entry_row(entry: JournalEntry) -> tuple[str, ...]:
    return (
        str(entry.number),
        wording.full_time(entry.time),
        wording.kind(entry.kind),
        wording.event(entry.event),
        entry.subject,
        entry.text,
    )


def _counters(book: Logbook, options: argparse.Namespace) -> int:
    counters = book.counters()
    if options.json:
        _print_json(list(map(asdict, counters)))
    elif options.csv:
        _print_csv([("Zähler", "Stand", "Einheit"), *((c.name, c.value, c.unit) for c in counters)])
    elif counters:
        rows = [(c.name, wording.number(c.value), c.unit) for c in counters]
        _print(text_table(("Zähler", "Stand", "Einheit"), rows, (False, True, False)))
    else:
        _print("Es gibt noch keine Zähler.\n")
    return exit_codes.OK


def _print_json(value: object) -> None:
    text = json.dumps(value, ensure_ascii=False, indent=2)
    write_out(f"{text}\n".encode("utf-8", "replace"))


def _print_csv(rows: Sequence[Sequence[object]]) -> None:
    write_out(csv_text(rows).encode("utf-8", "replace"))


# One report. What it takes is not loaded for a list.


def _show(book: Logbook, options: argparse.Namespace) -> int:
    from .forms import text_form  # pylint: disable=import-outside-toplevel  # loaded only where it is needed

    run = book.run(options.number)
    _print(text_form(run, book.curves(options.number)))
    return exit_codes.BROKEN if run.broken else exit_codes.OK


def _export(book: Logbook, options: argparse.Namespace) -> int:
    from .forms import FORMS  # pylint: disable=import-outside-toplevel  # loaded only where it is needed

    run = book.run(options.number)
    content = FORMS[options.format](run, book.curves(options.number))
    if options.output == STANDARD_OUTPUT:
        write_out(content)
    else:
        target = options.output or Path(f"Reinigungsbericht-{options.number}.{options.format}")
        write_file(target, BYTE_ORDER_MARK + content if options.format == "csv" else content)
        _print(f"{target} ist geschrieben.\n")
    if run.broken:
        _complain(run.broken)
    return exit_codes.BROKEN if run.broken else exit_codes.OK


# The chain.


def _verify(book: Logbook, _options: argparse.Namespace) -> int:
    found = book.verify()
    if found is not None:
        _print(
            f"{found.text} Die Berichte davor sind unversehrt.\n" if found.number > 1 else f"{found.text}\n"
        )
        return exit_codes.BROKEN
    last = book.last()
    if last is None:
        _print("Es gibt noch keine Berichte.\n")
    else:
        _print(f"Alle Berichte von Nr. 1 bis Nr. {last[0]} sind unversehrt.\nLetzter SHA-256: {last[1]}\n")
    return exit_codes.OK


_COMMANDS: Final[Mapping[str, Callable[[Logbook, argparse.Namespace], int]]] = {
    "list": _list,
    "show": _show,
    "export": _export,
    "journal": _journal,
    "counters": _counters,
    "verify": _verify,
}
