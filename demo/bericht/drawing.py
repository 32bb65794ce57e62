"""The picture of a run: steps as bands, pressure and conductivity as curves, outputs as bars."""

import math
from collections.abc import Iterable, Mapping, Sequence
from dataclasses import dataclass
from typing import Final

from logbook.curves import Point
from logbook.records import RunRecord, StepRecord

from .scene import Anchor, Box, Label, Line, Scene
from .thinning import pieces
from .wording import number, one_line, shortened

PRESSURE: Final = "P"
CONDUCTIVITY: Final = "Lw"
STEP: Final = "Step"

INK: Final = "#1f2a37"
GREY: Final = "#5b6673"
GRID: Final = "#d5dae1"
FRAME: Final = "#8a94a1"
BANDS: Final = ("#f3f6fa", "#e4eaf2")
BAD_BAND: Final = "#f9dcdc"
PRESSURE_COLOR: Final = "#0b57a4"
CONDUCTIVITY_COLOR: Final = "#c2570c"
BAR_COLOR: Final = "#3d7a5f"

_LEFT: Final = 92.0
_RIGHT: Final = 40.0
_LEGEND: Final = 16.0
_BAND_LABELS: Final = 11.0
_PLOT: Final = 150.0
_GAP: Final = 6.0
_TOP: Final = _LEGEND + _BAND_LABELS
_PLOT_END: Final = _TOP + _PLOT
_ROWS: Final = _PLOT_END + _GAP
_ROW: Final = 9.0
_BAR: Final = 5.5
_TIMES: Final = 24.0
_SMALL: Final = 6.5
_TEXT: Final = 7.5
_CURVE: Final = 0.9
_HAIR: Final = 0.4
#: A column of the thinned curves is narrower than the curve is wide.
_COLUMNS: Final = 1200
_TICKS: Final = 5
_NAME_LETTERS: Final = 24
_NICE_SECS: Final = (
    1,
    2,
    5,
    10,
    15,
    30,
    60,
    120,
    300,
    600,
    900,
    1800,
    3600,
    7200,
    14400,
    21600,
    43200,
    86400,
)
_MOST_TIMES: Final = 9


@dataclass(frozen=True)
class _Scale:
    """From values to lengths: `low` is at `start`, `high` at `end`."""

    low: float
    high: float
    start: float
    end: float

    def place(self, value: float) -> float:
        """Where a value is."""
        share = (value - self.low) / (self.high - self.low)
        return self.start + min(max(share, 0.0), 1.0) * (self.end - self.start)


def _nice_step(span: float) -> float:
    """The distance of ticks: 1, 2 or 5 of a power of ten."""
    rough = span / _TICKS
    power = 10.0 ** math.floor(math.log10(rough))
    return next(power * factor for factor in (1, 2, 5, 10) if power * factor >= rough * 0.999)


def _ticks(values: Iterable[float]) -> list[float]:
    """Ticks from 0 or below to beyond the highest value. There are two at least."""
    known = [value for value in values if math.isfinite(value)]
    low, high = min([0.0, *known]), max([0.0, *known])
    if not 1e-9 < high - low < 1e15:
        low, high = 0.0, 1.0
    step = _nice_step(high - low)
    first, last = math.floor(low / step + 1e-9), math.ceil(high / step - 1e-9)
    return [index * step for index in range(first, last + 1)]


def run_secs(record: RunRecord, lines: Mapping[str, Sequence[Point]]) -> float:
    """The end of the time axis."""
    ends = [record.secs, *(step.ended_secs for step in record.steps)]
    ends += [points[-1][0] for points in lines.values() if points]
    return max([1.0, *(secs for secs in ends if math.isfinite(secs) and secs < 1e9)])


def draw(record: RunRecord, lines: Mapping[str, Sequence[Point]], width: float) -> Scene | None:
    """The picture, so many points wide; None if there is nothing to draw."""
    if not any(lines.values()):
        return None
    return _Picture(record, lines, width).drawn()


class _Picture:  # pylint: disable=too-few-public-methods  # its parts are for nobody else
    """Draws from top to bottom: legend, bands with their numbers, curves, outputs, times."""

    def __init__(self, record: RunRecord, lines: Mapping[str, Sequence[Point]], width: float) -> None:
        self._record = record
        self._lines = lines
        self._bars = _bars(record, lines)
        self._bottom = _ROWS + _ROW * len(self._bars) if self._bars else _PLOT_END
        self._end_secs = run_secs(record, lines)
        self._x = _Scale(0.0, self._end_secs, _LEFT, width - _RIGHT)
        self._scene = Scene(width, self._bottom + _TIMES, f"Verlauf von Bericht Nr. {record.number}")

    def drawn(self) -> Scene:
        """The picture. To be called once."""
        self._draw_bands()
        self._draw_times()
        left, right = self._scale(PRESSURE), self._scale(CONDUCTIVITY)
        self._draw_grid(left)
        self._draw_axis(left, _LEFT - 4, Anchor.END, PRESSURE_COLOR)
        self._draw_axis(right, self._x.end + 4, Anchor.START, CONDUCTIVITY_COLOR)
        self._label_axes()
        self._draw_frame(_TOP, _PLOT_END)
        self._draw_curve(CONDUCTIVITY, right[0], CONDUCTIVITY_COLOR)
        self._draw_curve(PRESSURE, left[0], PRESSURE_COLOR)
        self._draw_bars()
        self._draw_legend()
        return self._scene

    def _add(self, *parts: Box | Line | Label) -> None:
        self._scene.parts.extend(parts)

    def _draw_bands(self) -> None:
        free_from = -math.inf
        for index, step in enumerate(self._record.steps):
            if not (math.isfinite(step.begun_secs) and math.isfinite(step.ended_secs)):
                continue
            left, right = self._x.place(step.begun_secs), self._x.place(step.ended_secs)
            color = _band_color(index, step)
            self._add(Box(left, _TOP, max(right - left, 0.0), self._bottom - _TOP, color))
            middle, text = (left + right) / 2, str(step.number)
            half = len(text) * _SMALL * 0.35
            if middle - half > free_from:
                self._add(Label(middle, _TOP - 3, text, _SMALL, GREY, Anchor.MIDDLE))
                free_from = middle + half

    def _draw_times(self) -> None:
        step = next((s for s in _NICE_SECS if self._end_secs / s <= _MOST_TIMES), None)
        step = step or math.ceil(self._end_secs / _MOST_TIMES / 86400) * 86400
        for index in range(int(self._end_secs / step) + 1):
            x = self._x.place(index * step)
            self._add(Line(((x, _TOP), (x, self._bottom)), GRID, _HAIR))
            self._add(Label(x, self._bottom + 9, _time(index * step, step), _SMALL, GREY, Anchor.MIDDLE))
        unit = "min:s" if step < 3600 and self._end_secs < 36000 else "h:min"
        middle = (self._x.start + self._x.end) / 2
        self._add(
            Label(middle, self._bottom + 19, f"Zeit seit Beginn in {unit}", _SMALL, GREY, Anchor.MIDDLE)
        )

    def _scale(self, line: str) -> tuple[_Scale, list[float]]:
        ticks = _ticks(y for _, y in self._lines.get(line, ()))
        return _Scale(ticks[0], ticks[-1], _PLOT_END, _TOP), ticks

    def _draw_grid(self, axis: tuple[_Scale, list[float]]) -> None:
        scale, ticks = axis
        for tick in ticks:
            y = scale.place(tick)
            self._add(Line(((self._x.start, y), (self._x.end, y)), GRID, _HAIR))

    def _draw_axis(self, axis: tuple[_Scale, list[float]], x: float, anchor: Anchor, color: str) -> None:
        scale, ticks = axis
        decimals = max(0, -math.floor(math.log10(ticks[1] - ticks[0]) + 1e-9))
        for tick in ticks:
            self._add(Label(x, scale.place(tick) + 2.3, number(tick, decimals), _SMALL, color, anchor))

    def _label_axes(self) -> None:
        middle = (_TOP + _PLOT_END) / 2
        for x, text, color in (
            (self._x.start - 32, "Druck in bar", PRESSURE_COLOR),
            (self._x.end + 36, "Leitwert in mS/cm", CONDUCTIVITY_COLOR),
        ):
            self._add(Label(x, middle, text, _TEXT, color, Anchor.MIDDLE, upward=True))

    def _draw_frame(self, top: float, bottom: float) -> None:
        left, right = self._x.start, self._x.end
        corners = ((left, top), (right, top), (right, bottom), (left, bottom), (left, top))
        self._add(Line(corners, FRAME, _HAIR * 1.5))

    def _draw_curve(self, line: str, scale: _Scale, color: str) -> None:
        for piece in pieces(self._lines.get(line, ()), _COLUMNS):
            points = [(self._x.place(x), scale.place(y)) for x, y in piece]
            self._add(Line(points, color, _CURVE))

    def _draw_bars(self) -> None:
        if not self._bars:
            return
        y = _ROWS
        for name, spans in self._bars:
            self._add(Label(_LEFT - 4, y + _ROW / 2 + 2.2, name, _SMALL, INK, Anchor.END))
            for begin, end in _apart(spans, self._end_secs / _COLUMNS):
                left, right = self._x.place(begin), self._x.place(min(end, self._end_secs))
                self._add(Box(left, y + (_ROW - _BAR) / 2, max(right - left, _HAIR), _BAR, BAR_COLOR))
            y += _ROW
        self._draw_frame(_ROWS, self._bottom)

    def _draw_legend(self) -> None:
        x, y = self._x.start, 8.0
        for text, color in (("Druck", PRESSURE_COLOR), ("Leitwert", CONDUCTIVITY_COLOR)):
            self._add(Line(((x, y - 2.5), (x + 16, y - 2.5)), color, _CURVE * 2))
            self._add(Label(x + 20, y, text, _TEXT, INK))
            x += 70
        if self._bars:
            self._add(
                Box(x, y - 2.5 - _BAR / 2, 16, _BAR, BAR_COLOR), Label(x + 20, y, "Ausgang ein", _TEXT, INK)
            )
            x += 90
        for color, offset in zip(BANDS, (0.0, 8.0)):
            self._add(Box(x + offset, y - 6, 8, 7, color))
        self._add(Label(x + 20, y, "Schritte mit ihrer Nummer", _TEXT, INK))


def _band_color(index: int, step: StepRecord) -> str:
    return BAD_BAND if step.result == "failed" else BANDS[index % len(BANDS)]


def _time(secs: int, step: int) -> str:
    if step >= 3600 or secs >= 36000:
        return f"{secs // 3600}:{secs % 3600 // 60:02}"
    return f"{secs // 60}:{secs % 60:02}"


def _bars(
    record: RunRecord, lines: Mapping[str, Sequence[Point]]
) -> list[tuple[str, list[tuple[float, float]]]]:
    """When each output was on, in the order of their heights; those that never were are left out."""
    found = []
    for line, points in lines.items():
        if line in (PRESSURE, CONDUCTIVITY, STEP):
            continue
        spans, height = _spans(points, run_secs(record, lines))
        if spans:
            found.append((height, _name(record, line, height), spans))
    return [(name, spans) for _, name, spans in sorted(found)]


def _name(record: RunRecord, line: str, height: float) -> str:
    index = int(height) - 1 if 0 < height <= len(record.actuator_names) else None
    name = line if index is None else record.actuator_names[index]
    return shortened(one_line(name), _NAME_LETTERS)


def _spans(points: Sequence[Point], end: float) -> tuple[list[tuple[float, float]], float]:
    """From when to when a line is above 0, and its height."""
    spans: list[tuple[float, float]] = []
    height, since = 0.0, None
    for x, y in points:
        if not (math.isfinite(x) and math.isfinite(y)):
            continue
        if y > 0:
            height = max(height, y)
            since = x if since is None else since
        elif since is not None:
            spans.append((since, x))
            since = None
    if since is not None:
        spans.append((since, end))
    return spans, height


def _apart(spans: Sequence[tuple[float, float]], least: float) -> list[tuple[float, float]]:
    """The spans, those joined that are too near to be told apart."""
    result: list[tuple[float, float]] = []
    for begin, end in spans:
        if result and begin - result[-1][1] < least:
            result[-1] = (result[-1][0], max(end, result[-1][1]))
        else:
            result.append((begin, end))
    return result
