"""A report as lines of text, for a terminal."""

from collections.abc import Iterator, Sequence

from .content import Cell, Report, Table, place_of_note
from .text_tables import text_table
from .wording import one_line


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
    rows = [line for row in table.rows for line in _lines(row)]
    note = f"{table.note}\n" if table.note else ""
    body = text_table(head, rows, figures) if rows else ""
    return f"{table.title}\n{'-' * len(table.title)}\n{body}{note}"


def _lines(row: Sequence[Cell]) -> Iterator[list[str]]:
    """A row, and below it its note if there is one alone."""
    place = place_of_note(row)
    if place is None:
        yield [f"{cell.text} ({cell.small})" if cell.small else cell.text for cell in row]
        return
    yield [cell.text for cell in row]
    yield [*[""] * place, row[place].small]
