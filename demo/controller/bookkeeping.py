"""What runs leave behind: the chart on the screen, the record, the note to go on with, the counters."""

import math
from collections.abc import Mapping
from dataclasses import dataclass, replace
from pathlib import Path
from typing import Final

from brovik import Logger

from logbook.records import BathRecord, CounterRecord

from .bath_views import BATH_VIEWS
from .board import Board
from .interrupted import RunNote
from .jobs import Outcome
from .journal import JOURNAL, Event, Kind
from .process.control import Check
from .process.recipe import Recipe
from .process.sequence import Step, steps_for
from .process.usage import UNITS, Usage
from .recording import Recorder
from .run_archive import RunArchive
from .run_log import MachineFacts, Recorded, RunFacts, RunLog
from .settings import parameters
from .storage import MAINTENANCE, Storage

#: Results of a run that leave a clean barrel.
CLEAN: Final = frozenset({"success", "warning"})


@dataclass(frozen=True)
class SavedBooks:
    """What the file has of the books."""

    counters: Mapping[str, float]
    #: What is left of a run that the end of the program has cut short.
    interrupted: Recorded | None
    upkeep: Mapping[str, object]
    #: None if they live in memory alone.
    file: Path | None


def read_books(storage: Storage) -> SavedBooks:
    """Reads the books. A draft that cannot be read is reported."""
    return SavedBooks(
        storage.logbook.counters(), _interrupted(storage), storage.read(MAINTENANCE), storage.path
    )


def _interrupted(storage: Storage) -> Recorded | None:
    try:
        draft = storage.logbook.draft()
    except ValueError as error:
        Logger.warning(f"Der Entwurf des unterbrochenen Laufs ist nicht lesbar: {error}")
        return None
    return Recorded(draft[0], ((0.0, draft[1]),)) if draft else None


@dataclass
class _CurrentRun:
    """The run in progress. The note has its present step."""

    recipe: Recipe
    steps: tuple[Step, ...]
    note: RunNote


class Bookkeeper:
    """Keeps the books of the automatic runs. Belongs to the machine thread."""

    def __init__(  # pylint: disable=too-many-arguments  # each is named by its caller
        self, board: Board, recorder: Recorder, facts: MachineFacts, saved: SavedBooks, archive: RunArchive
    ) -> None:
        self._board = board
        self._recorder = recorder
        self._usage = Usage(saved.counters)
        self._archive = archive
        self._interrupted = saved.interrupted
        self._run: _CurrentRun | None = None
        self._log = RunLog(facts, self._baths, self._counters, lambda: recorder.points)
        JOURNAL.listen(self._log.hear)

    # What a run tells.

    def begin(self, program: str, recipe: Recipe, note: RunNote) -> None:
        """A run begins. If the note has a step, it is the interrupted one that goes on."""
        before = self._interrupted if note.step else None
        if before is None:
            self.close_interrupted()
        self._interrupted = None
        steps = steps_for(recipe)
        self._run = _CurrentRun(recipe, steps, note)
        self._recorder.start(program, [step.title for step in steps], kept=True)
        names = self._recorder.actuator_names
        self._log.begin(RunFacts(program, recipe.lengthening, steps, names, parameters()), before)
        JOURNAL.add(Kind.RUN, Event.BEGUN, program, details={"step": note.step})

    def start_step(self, step: Step) -> None:
        """A step begins."""
        run = self._run
        assert run is not None
        number = run.steps.index(step) + 1
        run.note = replace(run.note, step=step.key)
        self._recorder.step(number)
        self._log.start_step(number, step)
        self._keep(run)

    def checked(self, check: Check) -> None:
        """A check has looked at something."""
        self._log.checked(check)

    def advance(self, dt: float) -> None:
        """Lets `dt` seconds pass for the chart, the record and the counters."""
        board = self._board
        self._recorder.advance(dt)
        self._log.advance(dt, (board.pressure, board.conductivity, board.readings.lye_temperature))
        was_idle = self._usage.idle
        self._usage.advance(dt, board.exchanged)
        if self._run is None and self._usage.idle and not was_idle:
            # The operator has switched the last output off.
            self._archive.keep_counters(self._readings())

    def end(self, outcome: Outcome) -> None:
        """The run has ended, in whatever way."""
        self._recorder.end(outcome.result, outcome.status)
        if outcome.result in CLEAN:
            self._usage.barrel_cleaned()
        recorded = self._log.end(outcome.result, outcome.status)
        self._run = None
        self._archive.append(recorded, self._readings(), just_ended=True)

    # What is left of a run that the program does not outlive.

    def stop(self) -> None:
        """The program ends. For the time after the machine's thread."""
        if self._run is not None:
            self._keep(self._run)
        else:
            self._archive.keep_counters(self._readings())

    def close_interrupted(self) -> None:
        """Nobody goes on with the interrupted run: its record is that of one cut short."""
        if self._interrupted is not None:
            self._archive.append(self._interrupted, {}, just_ended=False)
            self._interrupted = None

    # Counters.

    @property
    def counters(self) -> Mapping[str, float]:
        """The readings of the counters."""
        return self._usage.values

    def _readings(self) -> dict[str, tuple[float, str]]:
        return {name: (value, UNITS[name]) for name, value in self._usage.values.items()}

    def _counters(self) -> tuple[CounterRecord, ...]:
        readings = self._readings().items()
        return tuple(CounterRecord(name, value, unit) for name, (value, unit) in readings if value)

    # Details.

    def _keep(self, run: _CurrentRun) -> None:
        self._archive.keep_draft(run.note, self._log.draft(), self._readings())

    def _baths(self) -> tuple[BathRecord, ...]:
        if self._run is None:
            return ()
        return tuple(
            BathRecord(
                electrolyte.value,
                float(limits.set_point),
                float(limits.minimum),
                BATH_VIEWS[electrolyte].peak or math.nan,
                BATH_VIEWS[electrolyte].too_low,
            )
            for electrolyte, limits in self._run.recipe.limits.items()
        )
