"""Tables and reports as lines of text, for a terminal."""

import unicodedata
from collections.abc import Iterable, Sequence
from typing import Final

from .content import Report, Table
from .wording import one_line

_GAP: Final = "  "
#: A column is no wider; only the last one is, for it stands at the end of the line.
_WIDEST: Final = 60


def text_table(head: Sequence[str], rows: Iterable[Sequence[str]], figures: Sequence[bool]) -> str:
    """A table with its columns below each other; `figures` says which ones stand to the right."""
    lines = [[one_line(cell) for cell in row] for row in (head, *rows)]
    widths = [min(max(map(_width, column)), _WIDEST) for column in zip(*lines)]
    return "".join(f"{_line(line, widths, figures)}\n" for line in lines)


def _line(cells: Sequence[str], widths: Sequence[int], figures: Sequence[bool]) -> str:
    padded = []
    for cell, width, right in zip(cells, widths, figures):
        blanks = " " * max(width - _width(cell), 0)
        padded.append(blanks + cell if right else cell + blanks)
    return _GAP.join(padded).rstrip()


def _width(text: str) -> int:
    """How many places of a terminal the text takes."""
    return sum(_places(letter) for letter in text)


def _places(letter: str) -> int:
    if unicodedata.combining(letter):
        return 0
    return 2 if unicodedata.east_asian_width(letter) in "WF" else 1


def report_text(report: Report) -> str:
    """A report from top to bottom, without its picture."""
    parts = [
        f"{report.title}\n{'=' * len(report.title)}\n",
        f"{report.result_text}. {report.reason}".rstrip() + "\n",
        f"Achtung: {report.broken}\n" if report.broken else "",
        text_table(("", ""), report.facts, (False, False)).lstrip("\n"),
        f"{report.scene_note}\n" if report.scene_note else "",
        *map(_section, (report.steps, *report.tables)),
        f"SHA-256 {one_line(report.hash)}\n",
    ]
    return "\n".join(filter(None, parts))


def _section(table: Table) -> str:
    head = [column.title for column in table.columns]
    figures = [column.figures for column in table.columns]
    rows = [
        [f"{cell.text} ({cell.small})" if cell.small else cell.text for cell in row] for row in table.rows
    ]
    note = f"{table.note}\n" if table.note else ""
    body = text_table(head, rows, figures) if rows else ""
    return f"{table.title}\n{'-' * len(table.title)}\n{body}{note}"
