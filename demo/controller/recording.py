"""The recording of a run, or of operation by hand."""

from collections.abc import Mapping, Sequence, Set
from dataclasses import dataclass
from datetime import datetime
from typing import Final

from brovik.actuator import ActuatorEnum
from brovik.chart import Chart, ChartLineClass, LineEnum

from logbook.curves import Point

from .board import Board
from .process.outputs import Output
from .saved_charts import RECORDED, ChartInfo

SAMPLE_SECS: Final = 0.5
NEUTRAL: Final = "neutral"


def all_lines() -> dict[str, ChartLineClass]:
    """The fifteen lines by name."""
    found = {name: Chart.line_from_line_enum(enum) for name, enum in LineEnum.__members__.items()}
    return {name: line for name, line in found.items() if line is not None}


class _Line:
    """A line on the screen, and its points once more: reading them back from there would take a while."""

    def __init__(self, shown: ChartLineClass) -> None:
        self.points: list[Point] = []
        self._shown = shown
        self._kept = False

    def clear(self, kept: bool) -> None:
        """Forgets all points. `kept` says whether to keep those to come."""
        self.points = []
        self._kept = kept

    def shows(self, line: ChartLineClass) -> bool:
        """Whether it is this one on the screen."""
        return self._shown is line

    def add(self, secs: float, value: float) -> None:
        """Adds a point."""
        if self._kept:
            self.points.append((secs, value))
        self._shown.add_point((secs, value))


@dataclass
class _Progress:
    """How far a recording is. Times are in seconds from its start."""

    started: datetime
    secs: float = 0.0
    next_sample: float = 0.0
    step: int = 0
    on: Set[Output] = frozenset()


class Recorder:
    """Writes to `Chart` what the machine does. Belongs to the machine thread.

    Measured lines get samples, the others their changes. An output that is on has the height of
    its label on the axis.
    """

    def __init__(self, board: Board) -> None:
        self._board = board
        self._named = {name: _Line(line) for name, line in all_lines().items()}
        self._lines: list[tuple[Output, _Line]] = []
        for output in board.shown:
            line = Chart.line_from_actuator_enum(ActuatorEnum(output.value))
            if line is not None:
                self._lines.append((output, self._line(line)))
        self._now = _Progress(datetime.min)
        #: What the list will show of the chart that has been recorded last; None while there is none.
        self.info: ChartInfo | None = None

    @property
    def points(self) -> Mapping[str, Sequence[Point]]:
        """The lines up to now of what is being recorded, by name, if it is kept."""
        return {name: tuple(line.points) for name, line in self._named.items() if line.points}

    @property
    def actuator_names(self) -> tuple[str, ...]:
        """Names of the outputs, by the height of their labels."""
        return tuple(self._board.name(output) for output, _ in self._lines)

    def _line(self, shown: ChartLineClass) -> _Line:
        return next(line for line in self._named.values() if line.shows(shown))

    def start(self, title: str, step_names: Sequence[str] = (), kept: bool = False) -> None:
        """Begins a new chart; the one in memory goes. Of one that is kept there are the `points`."""
        self._now = _Progress(datetime.now())
        self.info = None
        Chart.clear()
        for line in self._named.values():
            line.clear(kept)
        Chart.savable = False
        Chart.step_names = list(step_names)
        Chart.actuator_names = list(self.actuator_names)
        Chart.current_name = f"{title} {self._now.started:%d.%m.%Y %H:%M:%S}"
        Chart.active = True

    def step(self, number: int) -> None:
        """Notes the start of a step, counted from 1."""
        self._now.step = number
        self._named[LineEnum.Step.name].add(self._now.secs, float(number))

    def advance(self, dt: float) -> None:
        """Lets `dt` seconds pass."""
        if not Chart.active:
            return
        self._record_outputs()
        if self._now.secs >= self._now.next_sample:
            self._record_inputs()
            self._now.next_sample += SAMPLE_SECS
        # Without the error that adding up tenths of a second makes.
        self._now.secs = round(self._now.secs + dt, 3)

    def end(self, result: str, status: str) -> None:
        """Ends the recording. All lines reach up to its end."""
        if not Chart.active:
            return
        self._record_outputs()
        self._record_inputs()
        if self._now.step:
            self.step(self._now.step)
        recorded = f"{self._now.started:{RECORDED}}"
        self.info = ChartInfo(Chart.current_name, result, status, recorded, int(self._now.secs))
        Chart.active = False
        Chart.savable = True

    def _record_outputs(self) -> None:
        on = self._board.on
        for height, (output, line) in enumerate(self._lines, start=1):
            if (output in on) != (output in self._now.on):
                line.add(self._now.secs, float(height) if output in on else 0.0)
        self._now.on = on

    def _record_inputs(self) -> None:
        self._named[LineEnum.P.name].add(self._now.secs, self._board.pressure)
        self._named[LineEnum.Lw.name].add(self._now.secs, self._board.conductivity)
