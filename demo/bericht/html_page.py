"""A report as a page of HTML in one file, with its curves as SVG in it."""

from collections.abc import Iterator, Sequence
from dataclasses import replace
from html import escape
from typing import Final

from logbook import records

from .content import Cell, Column, Report, Table, place_of_note
from .drawing import FRAME, GREY, GRID, INK
from .signatures import SIGNATURES
from .svg import svg

_STYLE: Final = f"""
@page {{ size: A4; margin: 13mm 15mm; }}
body {{ color: {INK}; font: 11px/1.4 "DejaVu Sans", sans-serif; margin: 0 auto; max-width: 180mm; padding: 1em; }}
h1 {{ font-size: 22px; margin: 0 0 8px; }}
h2 {{ break-after: avoid; font-size: 13px; margin: 18px 0 4px; }}
.result {{ background: #eceff3; font-size: 13px; padding: 8px 10px; }}
.result b {{ margin-right: .8em; }}
.success {{ background: #e3f2e9; color: #1d5c3c; }}
.warning {{ background: #fdf0d5; color: #7a4b00; }}
.error {{ background: #f9dcdc; color: #a61b1b; }}
.broken, .bad {{ color: #a61b1b; font-weight: bold; }}
dl {{ columns: 2; margin: 10px 0; }}
dl div {{ break-inside: avoid; }}
dt {{ color: {GREY}; display: inline; }}
dt::after {{ content: ": "; }}
dd {{ display: inline; margin: 0; }}
svg {{ display: block; width: 100%; }}
table {{ border-collapse: collapse; table-layout: fixed; width: 100%; }}
th {{ border-bottom: 1px solid {FRAME}; color: {GREY}; font-size: 9px; font-weight: normal; vertical-align: bottom; }}
td {{ border-bottom: 1px solid {GRID}; vertical-align: top; }}
th, td {{ overflow-wrap: anywhere; padding: 2px 4px; text-align: left; }}
th:first-child, td:first-child {{ padding-left: 0; }}
th:last-child, td:last-child {{ padding-right: 0; }}
tr {{ break-inside: avoid; }}
.noted {{ break-after: avoid; }}
.noted td {{ border-bottom: 0; padding-bottom: 0; }}
.noted + tr td {{ padding-top: 0; }}
.figures {{ font-variant-numeric: tabular-nums; text-align: right; }}
small, .note, footer {{ color: {GREY}; }}
small {{ display: block; font-weight: normal; }}
.signatures {{ break-inside: avoid; display: flex; gap: 24px; margin-top: 60px; }}
.signatures div {{ border-top: 1px solid {INK}; color: {GREY}; flex: 1; font-size: 10px; padding-top: 3px; }}
footer {{ border-top: 1px solid {GRID}; font: 9px "DejaVu Sans Mono", monospace; margin-top: 24px; padding-top: 4px; }}
footer {{ overflow-wrap: anywhere; }}
"""
#: Nothing in the page may load or run anything, whatever the texts in it say.
_POLICY: Final = "default-src 'none'; style-src 'unsafe-inline'"


def html_page(report: Report) -> str:
    """The page."""
    return "\n".join(
        (
            "<!DOCTYPE html>",
            '<html lang="de">',
            "<head>",
            '<meta charset="utf-8">',
            f'<meta http-equiv="Content-Security-Policy" content="{_POLICY}">',
            '<meta name="viewport" content="width=device-width">',
            f"<title>{escape(report.title)}</title>",
            f"<style>{_STYLE}</style>",
            "</head>",
            "<body>",
            *_body(report),
            "</body>",
            "</html>",
            "",
        )
    )


def _body(report: Report) -> list[str]:
    broken = [f'<p class="broken">Achtung: {_text(report.broken)}</p>'] if report.broken else []
    curves = svg(report.scene) if report.scene else f"<p>{_text(report.scene_note)}</p>"
    return [
        f"<h1>{_text(report.title)}</h1>",
        f'<div class="result{_tone(report.result)}">',
        f"<b>{_text(report.result_text)}</b>{_text(report.reason)}</div>",
        *broken,
        "<dl>",
        *(f"<div><dt>{_text(name)}</dt><dd>{_text(value)}</dd></div>" for name, value in report.facts),
        "</dl>",
        "<h2>Verlauf</h2>",
        curves,
        *(_section(table) for table in (report.steps, *report.tables)),
        '<div class="signatures">' + "".join(f"<div>{_text(text)}</div>" for text in SIGNATURES) + "</div>",
        f"<footer>SHA-256 {_text(report.hash)}</footer>",
    ]


def _tone(result: str) -> str:
    """The class of a result that has a colour of its own."""
    return f" {result}" if result in records.RESULTS else ""


def _text(text: str) -> str:
    """The text, so that it neither is markup nor turns the direction of what stands beside it."""
    return f"<bdi>{escape(text)}</bdi>" if not text.isascii() else escape(text)


def _section(table: Table) -> str:
    head = f"<h2>{_text(table.title)}</h2>"
    rows = _rows(table) if table.rows else ""
    note = f'<p class="note">{_text(table.note)}</p>' if table.note else ""
    return "\n".join(filter(None, (head, rows, note)))


def _rows(table: Table) -> str:
    total = sum(column.weight for column in table.columns)
    widths = "".join(f'<col style="width: {100 * column.weight / total:.1f}%">' for column in table.columns)
    head = "".join(f"<th{_class(column)}>{_text(column.title)}</th>" for column in table.columns)
    rows = "\n".join(line for row in table.rows for line in _row(row, table.columns))
    return (
        f"<table>\n<colgroup>{widths}</colgroup>\n<thead><tr>{head}</tr></thead>\n"
        f"<tbody>\n{rows}\n</tbody>\n</table>"
    )


def _row(row: Sequence[Cell], columns: Sequence[Column]) -> Iterator[str]:
    place = place_of_note(row)
    if place is None:
        yield f"<tr>{_cells(row, columns)}</tr>"
        return
    yield f'<tr class="noted">{_cells([replace(cell, small="") for cell in row], columns)}</tr>'
    before = f'<td colspan="{place}"></td>' if place else ""
    note = f'<td colspan="{len(row) - place}"><small>{_text(row[place].small)}</small></td>'
    yield f"<tr>{before}{note}</tr>"


def _cells(row: Sequence[Cell], columns: Sequence[Column]) -> str:
    return "".join(map(_cell, row, columns))


def _class(column: Column) -> str:
    return ' class="figures"' if column.figures else ""


def _cell(cell: Cell, column: Column) -> str:
    text = f'<span class="bad">{_text(cell.text)}</span>' if cell.bad else _text(cell.text)
    small = f"<small>{_text(cell.small)}</small>" if cell.small else ""
    return f"<td{_class(column)}>{text}{small}</td>"
