"""A run as CSV."""

from collections.abc import Sequence
from typing import Final

from logbook.reader import StoredCurves, StoredRun
from logbook.records import ParameterRecord, StepRecord

from .content import missing_text
from .csv_tables import csv_text


def run_csv(run: StoredRun, curves: StoredCurves) -> str:
    """A run: blocks of steps, their measured values, parameters and curves, each with its name and a head."""
    record = run.record
    run_rows = [
        ("Nummer", record.number),
        ("Beginn", record.begun),
        ("Ende", record.ended),
        ("Dauer in s", record.secs),
        ("Ergebnis", record.result),
        ("Grund", record.reason),
        ("SHA-256", run.hash),
    ]
    blocks: list[tuple[str, Sequence[Sequence[object]]]] = [
        ("Lauf", run_rows),
        ("Schritte", [_STEP_HEAD, *map(_step, record.steps)]),
        ("Messwerte", [_MEASURED_HEAD, *(row for step in record.steps for row in _measured(step))]),
        ("Parameter", [_PARAMETER_HEAD, *map(_parameter, record.parameters)]),
        ("Kurven", _curves(curves)),
    ]
    return "\r\n".join(csv_text([(name,), *rows]) for name, rows in blocks)


_STEP_HEAD: Final = (
    "Nr.",
    "Schlüssel",
    "Schritt",
    "Beginn",
    "Ende",
    "Beginn in s",
    "Ende in s",
    "Ergebnis",
    "Grund",
)
_MEASURED_HEAD: Final = (
    "Schritt",
    "Art",
    "Größe",
    "Einheit",
    "Kleinster Wert",
    "Größter Wert",
    "Grenze",
    "Art der Grenze",
)
_PARAMETER_HEAD: Final = ("Schlüssel", "Parameter", "Wert", "Vorgabe", "Einheit")
_CURVE_HEAD: Final = ("Linie", "Zeit in s", "Wert")


def _step(step: StepRecord) -> tuple[object, ...]:
    return (
        step.number,
        step.key,
        step.title,
        step.begun,
        step.ended,
        step.begun_secs,
        step.ended_secs,
        step.result,
        step.reason,
    )


def _measured(step: StepRecord) -> list[tuple[object, ...]]:
    ranges = [(step.number, "Bereich", r.name, r.unit, r.lowest, r.highest, None, "") for r in step.ranges]
    checks = [
        (
            step.number,
            "Prüfung",
            c.name,
            c.unit,
            c.value,
            c.value,
            c.limit,
            c.bound if c.limit is not None else "",
        )
        for c in step.checks
    ]
    return [*ranges, *checks]


def _parameter(parameter: ParameterRecord) -> tuple[object, ...]:
    return parameter.key, parameter.title, parameter.value, parameter.default, parameter.unit


def _curves(curves: StoredCurves) -> list[Sequence[object]]:
    if not curves.lines:
        return [(missing_text(curves),)]
    return [_CURVE_HEAD, *((name, x, y) for name, points in curves.lines.items() for x, y in points)]
