"""The recording of a run, or of operation by hand."""

from collections.abc import Sequence, Set
from dataclasses import dataclass
from datetime import datetime
from typing import Final

from brovik.actuator import ActuatorEnum
from brovik.chart import Chart, ChartLineClass

from .board import Board
from .process.outputs import Output
from .saved_charts import ChartInfo

SAMPLE_SECS: Final = 0.5
NEUTRAL: Final = "neutral"


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
        self._lines: list[tuple[Output, ChartLineClass]] = []
        for output in board.shown:
            line = Chart.line_from_actuator_enum(ActuatorEnum(output.value))
            if line is not None:
                self._lines.append((output, line))
        self._now = _Progress(datetime.min)
        #: What the list will show of the chart that has been recorded last; None while there is none.
        self.info: ChartInfo | None = None

    def start(self, title: str, step_names: Sequence[str] = ()) -> None:
        """Begins a new chart; the one in memory goes."""
        self._now = _Progress(datetime.now())
        self.info = None
        Chart.clear()
        Chart.savable = False
        Chart.step_names = list(step_names)
        Chart.actuator_names = [self._board.name(output) for output, _ in self._lines]
        Chart.current_name = f"{title} {self._now.started:%d.%m.%Y %H:%M:%S}"
        Chart.active = True

    def step(self, number: int) -> None:
        """Notes the start of a step, counted from 1."""
        self._now.step = number
        Chart.step.add_point((self._now.secs, float(number)))

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
        recorded = f"{self._now.started:%d.%m.%Y %H:%M}"
        self.info = ChartInfo(Chart.current_name, result, status, recorded, int(self._now.secs))
        Chart.active = False
        Chart.savable = True

    def _record_outputs(self) -> None:
        on = self._board.on
        for height, (output, line) in enumerate(self._lines, start=1):
            if (output in on) != (output in self._now.on):
                line.add_point((self._now.secs, float(height) if output in on else 0.0))
        self._now.on = on

    def _record_inputs(self) -> None:
        Chart.p.add_point((self._now.secs, self._board.pressure))
        Chart.lw.add_point((self._now.secs, self._board.conductivity))
