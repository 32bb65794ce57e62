"""A report as PDF: A4, DejaVu Sans, nothing but text and vectors. The same run makes the same bytes."""

from collections.abc import Callable, Iterator, Sequence
from dataclasses import replace
from html import escape
from io import BytesIO
from itertools import zip_longest
from typing import Any, Final

from reportlab.lib.colors import HexColor
from reportlab.lib.enums import TA_RIGHT
from reportlab.lib.pagesizes import A4
from reportlab.lib.styles import ParagraphStyle
from reportlab.lib.units import mm
from reportlab.pdfgen.canvas import Canvas
from reportlab.platypus import (
    BaseDocTemplate,
    CondPageBreak,
    Flowable,
    Frame,
    KeepTogether,
    LongTable,
    PageTemplate,
    Paragraph,
    Spacer,
    TableStyle,
)

from logbook import records

from . import fonts
from .content import PAGE_WIDTH, Cell, Column, Report, Table, place_of_note
from .drawing import FRAME, GREY, GRID, INK
from .fonts import BOLD, MONO, REGULAR, printable
from .scene import Anchor, Box, Label, Line, Scene
from .signatures import SIGNATURES

_MARGIN: Final = (A4[0] - PAGE_WIDTH) / 2
_FOOT: Final = 17 * mm
#: The height up to which the facts are kept together.
_MOST_OF_FACTS: Final = 60 * mm
_HEAD: Final = 13 * mm
_PADDING: Final = 3.5
#: A table begins on a page that has room for so much of it: its title, its head, two rows.
_LEAST_OF_TABLE: Final = 85.0
_BAD: Final = "#a61b1b"
#: Letters and background of the line with the result.
_TONES: Final = {
    records.SUCCESS: ("#1d5c3c", "#e3f2e9"),
    records.WARNING: ("#7a4b00", "#fdf0d5"),
    records.ERROR: (_BAD, "#f9dcdc"),
}
_NEUTRAL: Final = (INK, "#eceff3")


def _style(name: str, size: float, **more: Any) -> ParagraphStyle:
    look = {"fontName": REGULAR, "fontSize": size, "leading": size * 1.25, "textColor": HexColor(INK)}
    return ParagraphStyle(name, **(look | more))


_TITLE: Final = _style("title", 17, fontName=BOLD)
_HEADING: Final = _style("heading", 9.5, fontName=BOLD, spaceBefore=9, spaceAfter=3)
_TEXT: Final = _style("text", 7.8)
_FIGURES: Final = _style("figures", 7.8, alignment=TA_RIGHT)
_COLUMN: Final = _style("column", 6.3, textColor=HexColor(GREY))
_COLUMN_FIGURES: Final = _style("column figures", 6.3, textColor=HexColor(GREY), alignment=TA_RIGHT)
_SMALL: Final = _style("small", 6.5, textColor=HexColor(GREY))
_NOTE: Final = _style("note", 7.2, textColor=HexColor(GREY), spaceBefore=2)
_FACT: Final = _style("fact", 8.2, spaceAfter=2)
_WARNING: Final = _style("warning", 8.5, fontName=BOLD, textColor=HexColor(_BAD), spaceBefore=5)


def pdf(report: Report) -> bytes:
    """The document. Raises fonts.FontError."""
    fonts.register()
    target = BytesIO()
    document = BaseDocTemplate(
        target,
        pagesize=A4,
        title=report.title,
        subject=f"Ergebnis: {report.result_text}",
        creator="kubelor-bericht",
        lang="de-DE",
        invariant=1,
        initialFontName=REGULAR,
    )
    frame = Frame(_MARGIN, _FOOT, PAGE_WIDTH, A4[1] - _FOOT - _HEAD, 0, 0, 0, 0)
    document.addPageTemplates([PageTemplate(frames=[frame])])
    document.build(list(_story(report)), canvasmaker=_numbered_canvas(report))
    return target.getvalue()


def _story(report: Report) -> Iterator[Flowable]:
    yield _paragraph(report.title, _TITLE)
    yield Spacer(0, 5)
    yield _result(report)
    if report.broken:
        yield _paragraph(f"Achtung: {report.broken}", _WARNING)
    yield Spacer(0, 5)
    yield _facts(report)
    yield _paragraph("Verlauf", _HEADING)
    yield SceneFlowable(report.scene) if report.scene else _paragraph(report.scene_note, _TEXT)
    for table in (report.steps, *report.tables):
        yield from _section(table)
    yield KeepTogether([Spacer(0, 16), _Signatures()])


def _paragraph(text: str, style: ParagraphStyle) -> Paragraph:
    return Paragraph(_markup(text, style.fontName), style)


def _markup(text: str, font: str = REGULAR) -> str:
    """The text as reportlab's paragraphs take it."""
    return escape(printable(text, font), quote=False)


def _result(report: Report) -> Flowable:
    ink, paper = _TONES.get(report.result, _NEUTRAL)
    style = _style("result", 9.5, textColor=HexColor(ink))
    reason = f"&nbsp; {_markup(report.reason)}" if report.reason else ""
    look = [("BACKGROUND", (0, 0), (-1, -1), HexColor(paper)), ("LEFTPADDING", (0, 0), (-1, -1), 7)]
    text = Paragraph(f"<b>{_markup(report.result_text, BOLD)}</b>{reason}", style)
    return _grid([[text]], [PAGE_WIDTH], look, padding=6)


def _facts(report: Report) -> Flowable:
    """Two columns, filled downwards. If they are too high, line by line: a page may end between two."""
    cells = [
        Paragraph(f'<font color="{GREY}">{_markup(name)}:</font> {_markup(value)}', _FACT)
        for name, value in report.facts
    ]
    width, half = PAGE_WIDTH / 2, (len(cells) + 1) // 2
    columns = [cells[:half], cells[half:]]
    highest = max(sum(cell.wrap(width, 0)[1] for cell in column) for column in columns)
    rows = [columns] if highest < _MOST_OF_FACTS else list(map(list, zip_longest(*columns, fillvalue="")))
    return _grid(rows, [width] * 2, [], padding=1)


def _section(table: Table) -> Iterator[Flowable]:
    yield CondPageBreak(_LEAST_OF_TABLE)
    yield _paragraph(table.title, _HEADING)
    if table.rows:
        yield _table(table)
    if table.note:
        yield _paragraph(table.note, _NOTE)


def _table(table: Table) -> Flowable:
    weights = [column.weight for column in table.columns]
    widths = [PAGE_WIDTH * weight / sum(weights) for weight in weights]
    head = [_paragraph(c.title, _COLUMN_FIGURES if c.figures else _COLUMN) for c in table.columns]
    rows = [head]
    look: list[tuple[Any, ...]] = [
        ("LINEBELOW", (0, 0), (-1, 0), 0.8, HexColor(FRAME)),
        ("VALIGN", (0, 0), (-1, 0), "BOTTOM"),
    ]
    for row in table.rows:
        place = place_of_note(row)
        if place is None:
            rows.append(_row(row, table.columns))
        else:
            rows.append(_row([replace(cell, small="") for cell in row], table.columns))
            rows.append(_row([Cell("")] * len(row), table.columns))
            rows[-1][place] = _paragraph(row[place].small, _SMALL)
            look += _look_of_note(place, len(rows) - 1)
        look.append(("LINEBELOW", (0, len(rows) - 1), (-1, len(rows) - 1), 0.3, HexColor(GRID)))
    return _grid(rows, widths, look, padding=1.6, head=1)


def _look_of_note(place: int, row: int) -> list[tuple[Any, ...]]:
    """What makes one of this row and the one above it."""
    return [
        ("SPAN", (place, row), (-1, row)),
        ("TOPPADDING", (0, row), (-1, row), 0),
        ("BOTTOMPADDING", (0, row - 1), (-1, row - 1), 0),
        ("NOSPLIT", (0, row - 1), (0, row)),
    ]


def _row(cells: Sequence[Cell], columns: Sequence[Column]) -> list[Flowable]:
    return [_cell(cell, _FIGURES if column.figures else _TEXT) for cell, column in zip(cells, columns)]


def _cell(cell: Cell, style: ParagraphStyle) -> Flowable:
    font = BOLD if cell.bad else REGULAR
    text = _markup(cell.text, font)
    if cell.bad:
        text = f'<b><font color="{_BAD}">{text}</font></b>'
    if cell.small:
        text += f'<br/><font size="6.5" color="{GREY}">{_markup(cell.small)}</font>'
    return Paragraph(text, style)


def _grid(
    rows: Sequence[Sequence[Flowable | list[Flowable] | str]],
    widths: list[float],
    commands: Sequence[tuple[Any, ...]],
    padding: float,
    head: int = 0,
) -> Flowable:
    style = TableStyle(
        [
            ("FONT", (0, 0), (-1, -1), REGULAR),
            ("VALIGN", (0, 0), (-1, -1), "TOP"),
            ("LEFTPADDING", (0, 0), (-1, -1), _PADDING),
            ("RIGHTPADDING", (0, 0), (-1, -1), _PADDING),
            ("RIGHTPADDING", (-1, 0), (-1, -1), 0),
            ("LEFTPADDING", (0, 0), (0, -1), 0),
            ("TOPPADDING", (0, 0), (-1, -1), padding),
            ("BOTTOMPADDING", (0, 0), (-1, -1), padding),
            *commands,
        ]
    )
    return LongTable(rows, widths, style=style, repeatRows=head)


class SceneFlowable(Flowable):  # type: ignore[misc]  # reportlab has no types
    """A scene on the page, drawn of lines and letters."""

    def __init__(self, scene: Scene) -> None:
        super().__init__()
        self._scene = scene

    def wrap(self, *_: float) -> tuple[float, float]:
        """The size that it takes."""
        return self._scene.width, self._scene.height

    def draw(self) -> None:
        """Draws it; the page's y grows upwards."""
        canvas = self.canv
        canvas.setLineJoin(1)
        for part in self._scene.parts:
            match part:
                case Box():
                    canvas.setFillColor(HexColor(part.color))
                    y = self._scene.height - part.y - part.height
                    canvas.rect(part.x, y, part.width, part.height, stroke=0, fill=1)
                case Line():
                    self._draw_line(part)
                case Label():
                    self._draw_label(part)

    def _draw_line(self, line: Line) -> None:
        path = self.canv.beginPath()
        for index, (x, y) in enumerate(line.points):
            (path.lineTo if index else path.moveTo)(x, self._scene.height - y)
        self.canv.setStrokeColor(HexColor(line.color))
        self.canv.setLineWidth(line.width)
        self.canv.drawPath(path)

    def _draw_label(self, label: Label) -> None:
        canvas = self.canv
        canvas.saveState()
        canvas.setFont(REGULAR, label.size)
        canvas.setFillColor(HexColor(label.color))
        canvas.translate(label.x, self._scene.height - label.y)
        if label.upward:
            canvas.rotate(90)
        _DRAWERS[label.anchor](canvas, 0, 0, printable(label.text))
        canvas.restoreState()


_DRAWERS: Final[dict[Anchor, Callable[[Canvas, float, float, str], None]]] = {
    Anchor.START: Canvas.drawString,
    Anchor.MIDDLE: Canvas.drawCentredString,
    Anchor.END: Canvas.drawRightString,
}


class _Signatures(Flowable):  # type: ignore[misc]  # reportlab has no types
    """Lines to sign on, beside each other."""

    def wrap(self, *_: float) -> tuple[float, float]:
        """The size that it takes."""
        return PAGE_WIDTH, 44.0

    def draw(self) -> None:
        """A line for each, and below it what belongs there."""
        gap = 24.0
        width = (PAGE_WIDTH - gap * (len(SIGNATURES) - 1)) / len(SIGNATURES)
        self.canv.setStrokeColor(HexColor(INK))
        self.canv.setFillColor(HexColor(GREY))
        self.canv.setLineWidth(0.6)
        self.canv.setFont(REGULAR, 7)
        for index, text in enumerate(SIGNATURES):
            x = index * (width + gap)
            self.canv.line(x, 12, x + width, 12)
            self.canv.drawString(x, 3, text)


def _numbered_canvas(report: Report) -> type[Canvas]:
    """A canvas that keeps its pages until it knows how many they are."""

    # reportlab has no types, and what pylint takes for abstract is what this version of Canvas does not have.
    class NumberedCanvas(Canvas):  # type: ignore[misc]  # pylint: disable=abstract-method
        """Draws the foot of all pages at the end."""

        def __init__(self, *args: Any, **options: Any) -> None:
            super().__init__(*args, **options)
            self._pages: list[dict[str, Any]] = []

        def showPage(self) -> None:  # pylint: disable=invalid-name  # reportlab's name
            """Keeps the page."""
            self._pages.append(dict(vars(self)))
            self._startPage()

        def save(self) -> None:
            """Draws what is the same on all pages, and writes them."""
            pages = self._pages
            for number, page in enumerate(pages, start=1):
                self.__dict__.update(page)
                _draw_foot(self, report, f"Seite {number} von {len(pages)}")
                super().showPage()
            super().save()

    return NumberedCanvas


def _draw_foot(canvas: Canvas, report: Report, page: str) -> None:
    right = _MARGIN + PAGE_WIDTH
    canvas.setStrokeColor(HexColor(GRID))
    canvas.setLineWidth(0.5)
    canvas.line(_MARGIN, 13 * mm, right, 13 * mm)
    canvas.setFillColor(HexColor(GREY))
    canvas.setFont(REGULAR, 6.8)
    canvas.drawString(_MARGIN, 9.5 * mm, report.title)
    canvas.drawRightString(right, 9.5 * mm, page)
    canvas.setFont(MONO, 6)
    canvas.drawString(_MARGIN, 6.3 * mm, f"SHA-256 {printable(report.hash[:64], MONO)}")
