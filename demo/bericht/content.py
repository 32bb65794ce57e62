"""What stands in a report, in words, and in which order; how it looks is for those who set it.

All texts are as they were recorded, but on one line: they are still to be escaped.
"""

import math
from collections.abc import Iterable, Sequence
from dataclasses import dataclass
from typing import Final

from logbook.reader import StoredCurves, StoredRun
from logbook.records import CheckRecord, ParameterRecord, RangeRecord, RunRecord, StepRecord, Value

from . import wording
from .drawing import draw
from .scene import Scene
from .wording import NOTHING, one_line

#: The width between the margins of a page, points.
PAGE_WIDTH: Final = 510.0
#: Measured quantities that have a column of their own in the table of steps.
_MOST_RANGES: Final = 3
#: What the columns of the table of steps need, points. The titles of the steps get the rest.
_NUMBER_WIDTH: Final = 20.0
_CLOCK_WIDTH: Final = 48.0
_LENGTH_WIDTH: Final = 42.0
_RESULT_WIDTH: Final = 77.0
_RANGE_WIDTH: Final = 67.0
_FIXED_WIDTHS: Final = _NUMBER_WIDTH + _CLOCK_WIDTH + _LENGTH_WIDTH + _RESULT_WIDTH
_TEXT_LETTERS: Final = 1500
_TITLE_LETTERS: Final = 200


@dataclass(frozen=True)
class Cell:
    """A text, and a second one below it in small letters. A cell that is `bad` is meant to be seen."""

    text: str
    small: str = ""
    bad: bool = False


def place_of_note(row: Sequence[Cell]) -> int | None:
    """Where the small text of a row stands that has only one. It gets all the room to the right."""
    places = [index for index, cell in enumerate(row) if cell.small]
    return places[0] if len(places) == 1 else None


@dataclass(frozen=True)
class Column:
    """A column of a table. Its share of the width is that of its weight."""

    title: str
    weight: float
    figures: bool = False


@dataclass(frozen=True)
class Table:
    """A table. Its note stands below it."""

    title: str
    columns: tuple[Column, ...]
    rows: tuple[tuple[Cell, ...], ...]
    note: str = ""


@dataclass(frozen=True)
class Report:  # pylint: disable=too-many-instance-attributes  # one for each part of the page
    """All of a report, from top to bottom."""

    number: int
    title: str
    result: str  # one of records.RESULTS, or another word
    result_text: str
    reason: str
    broken: str
    facts: tuple[tuple[str, str], ...]
    steps: Table
    scene: Scene | None
    scene_note: str
    tables: tuple[Table, ...]
    hash: str


def report(run: StoredRun, curves: StoredCurves) -> Report:
    """The report of a run."""
    record = run.record
    scene = draw(record, curves.lines, PAGE_WIDTH)
    return Report(
        number=record.number,
        title=f"Reinigungsbericht Nr. {record.number}",
        result=record.result,
        result_text=_text(_capital(wording.result(record.result))),
        reason=_text(record.reason),
        broken=run.broken,
        facts=tuple((name, _text(value)) for name, value in _facts(record)),
        steps=_steps(record),
        scene=scene,
        scene_note="" if scene else missing_text(curves),
        tables=tuple(table for table in _tables(record) if table.rows or table.note),
        hash=run.hash,
    )


def _capital(text: str) -> str:
    return text[:1].upper() + text[1:]


def _text(text: str) -> str:
    """A text of any length from anywhere. A page holds no more of one."""
    return wording.shortened(one_line(text), _TEXT_LETTERS)


def _title(text: str) -> str:
    return wording.shortened(one_line(text), _TITLE_LETTERS)


def missing_text(curves: StoredCurves) -> str:
    """Why there are no curves to show."""
    if curves.removed:
        time = _title(wording.full_time(curves.removed))
        return f"Die Kurven wurden am {time} nach Ablauf der Aufbewahrung entfernt."
    if curves.damaged:
        return "Die Kurven sind beschädigt und nicht lesbar."
    return "Es wurden keine Kurven aufgezeichnet."


def _facts(record: RunRecord) -> list[tuple[str, str]]:
    zone = wording.zone(record.begun)
    facts = [
        ("Maschine", " ".join(filter(None, (record.machine, _version(record.machine_version))))),
        ("Programm", record.program),
        ("Fass", record.barrel),
        ("Beginn", f"{wording.full_time(record.begun)} {zone}"),
        ("Ende", f"{wording.full_time(record.ended)} {wording.zone(record.ended)}"),
        ("Dauer", wording.duration(record.secs)),
        ("Intensivreinigung", _intense(record.intense_factor)),
        ("Ausstattung", ", ".join(f"{item.title}: {_value(item.value)}" for item in record.equipment)),
        ("Version", f"Programm {record.program_version}, Steuerung {record.backend_version}"),
    ]
    return [(name, value) for name, value in facts if value.strip()]


def _version(name: str) -> str:
    """The machine's version without the underscore that lets a digit begin a name."""
    return name.removeprefix("_")


def _intense(factor: float) -> str:
    return "" if factor == 1.0 else f"Faktor {wording.number(factor)}"


def _value(item: Value) -> str:
    return _title(wording.setting(item)) or NOTHING


# The table of steps.


def _steps(record: RunRecord) -> Table:
    quantities = _quantities(record.steps)
    columns = (
        Column("Nr.", _NUMBER_WIDTH, figures=True),
        Column("Schritt", PAGE_WIDTH - _FIXED_WIDTHS - _RANGE_WIDTH * len(quantities)),
        Column("Beginn", _CLOCK_WIDTH, figures=True),
        Column("Dauer in min:s", _LENGTH_WIDTH, figures=True),
        Column("Ergebnis", _RESULT_WIDTH),
        *(Column(_title(f"{name} in {unit}"), _RANGE_WIDTH, figures=True) for name, unit in quantities),
    )
    rows = tuple(_step_row(step, quantities, record.begun) for step in record.steps)
    note = "" if rows else "Es wurde kein Schritt begonnen."
    return Table("Schritte", columns, rows, note)


def _quantities(steps: Iterable[StepRecord]) -> list[tuple[str, str]]:
    """What was measured in any step, in the order in which it first occurs."""
    found = {(each.name, each.unit): None for step in steps for each in step.ranges}
    return list(found)[:_MOST_RANGES]


def _step_row(step: StepRecord, quantities: Sequence[tuple[str, str]], begun: str) -> tuple[Cell, ...]:
    ranges = {(each.name, each.unit): each for each in step.ranges}
    others = [each for key, each in ranges.items() if key not in quantities]
    small = [step.reason, *map(_check, step.checks), *map(_other_range, others)]
    result = wording.step_result(step.result)
    return (
        Cell(str(step.number)),
        Cell(_title(step.title), _text(" · ".join(filter(None, small)))),
        Cell(_title(wording.clock(step.begun, begun))),
        Cell(wording.length(step.ended_secs - step.begun_secs)),
        Cell(_title(result), bad=step.result != "done"),
        *(Cell(_range(ranges.get(key))) for key in quantities),
    )


def _range(found: RangeRecord | None) -> str:
    if found is None or not (math.isfinite(found.lowest) or math.isfinite(found.highest)):
        return NOTHING
    return f"{wording.number(found.lowest, 2)}–{wording.number(found.highest, 2)}"


def _other_range(found: RangeRecord) -> str:
    return f"{found.name} {_range(found)} {found.unit}".rstrip()


def _check(check: CheckRecord) -> str:
    limit = "" if check.limit is None else f" ({check.bound} {wording.quantity(check.limit, check.unit)})"
    return f"{check.name} {wording.quantity(check.value, check.unit)}{limit}"


# The other tables.


def _tables(record: RunRecord) -> list[Table]:
    return [_baths(record), _parameters(record), _words(record), _interruptions(record), _counters(record)]


def _baths(record: RunRecord) -> Table:
    columns = (
        Column("Bad", 46),
        Column("Sollwert in mS/cm", 34, figures=True),
        Column("Mindestwert in mS/cm", 34, figures=True),
        Column("Höchster Messwert in mS/cm", 42, figures=True),
        Column("Beurteilung", 34),
    )
    rows = tuple(
        (
            Cell(_title(bath.name)),
            Cell(wording.number(bath.set_point)),
            Cell(wording.number(bath.minimum)),
            Cell(wording.number(bath.peak, 2)),
            Cell("zu niedrig" if bath.too_low else "in Ordnung", bad=bath.too_low),
        )
        for bath in record.baths
    )
    return Table("Konzentration der Bäder", columns, rows)


def _parameters(record: RunRecord) -> Table:
    changed = [parameter for parameter in record.parameters if differs(parameter)]
    rest = len(record.parameters) - len(changed)
    columns = (
        Column("Parameter", 100),
        Column("Wert", 40, figures=True),
        Column("Vorgabe", 40, figures=True),
    )
    rows = tuple(
        (
            Cell(_title(parameter.title or parameter.key)),
            Cell(f"{_value(parameter.value)} {_title(parameter.unit)}".rstrip()),
            Cell(f"{_value(parameter.default)} {_title(parameter.unit)}".rstrip()),
        )
        for parameter in changed
    )
    return Table("Parameter, die von der Vorgabe abweichen", columns, rows, _rest(rest, bool(changed)))


def _rest(count: int, changed: bool) -> str:
    match count, changed:
        case 0, _:
            return ""
        case 1, _:
            return (
                "Der andere Parameter hat seine Vorgabe." if changed else "Der Parameter hat seine Vorgabe."
            )
        case _, True:
            return f"Die anderen {count} Parameter haben ihre Vorgabe."
        case _:
            return f"Alle {count} Parameter haben ihre Vorgabe."


def differs(parameter: ParameterRecord) -> bool:
    """Whether a parameter has another value than its default."""
    value, default = parameter.value, parameter.default
    if isinstance(value, float) and isinstance(default, (int, float)) and not isinstance(default, bool):
        return not math.isclose(value, default, rel_tol=1e-9, abs_tol=1e-12)
    return value != default


def _words(record: RunRecord) -> Table:
    """Questions and messages in the order of their times."""
    found = [
        (
            message.time,
            Cell(wording.urgency(_title(message.urgency)), bad=message.urgency == "error"),
            Cell(_title(message.title) or NOTHING, _text(message.text)),
            Cell(""),
        )
        for message in record.messages
    ]
    found += [
        (
            question.asked,
            Cell("Frage"),
            Cell(_title(question.title) or NOTHING, _text(question.text)),
            Cell(
                _title(question.answer) or "keine Antwort",
                _title(wording.clock(question.answered, record.begun)) if question.answered else "",
            ),
        )
        for question in record.questions
    ]
    columns = (
        Column("Zeit", 20, figures=True),
        Column("Art", 22),
        Column("Text", 100),
        Column("Antwort", 38),
    )
    rows = tuple(
        (Cell(_title(wording.clock(time, record.begun))), *cells)
        for time, *cells in sorted(found, key=lambda row: row[0])
    )
    return Table("Fragen und Meldungen", columns, rows)


def _interruptions(record: RunRecord) -> Table:
    columns = (Column("Unterbrochen", 45), Column("Im Schritt", 90), Column("Fortgesetzt", 45))
    titles = {step.number: step.title for step in record.steps}
    rows = tuple(
        (
            Cell(_title(wording.full_time(each.time))),
            Cell(_title(f"{each.step} {titles.get(each.step, '')}")),
            Cell(_title(wording.full_time(each.went_on)) if each.went_on else "nicht fortgesetzt"),
        )
        for each in record.interruptions
    )
    return Table("Unterbrechungen", columns, rows)


def _counters(record: RunRecord) -> Table:
    """Of less weight than the rest, so one after the other below the heading."""
    readings = (f"{each.name} {wording.quantity(each.value, each.unit)}" for each in record.counters)
    return Table("Zählerstände nach dem Lauf", (), (), " · ".join(map(_title, readings)))
