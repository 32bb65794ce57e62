"""What gets kept of the run in progress. Knows nothing of the host."""

import json
import math
from collections import deque
from collections.abc import Callable, Mapping, Sequence
from dataclasses import dataclass, field, replace
from typing import Final

from logbook.curves import Curves, Point
from logbook.records import (
    ABORTED,
    CUT_SHORT,
    DONE,
    ERROR,
    FAILED,
    NEUTRAL,
    BathRecord,
    CheckRecord,
    CounterRecord,
    EquipmentRecord,
    Interruption,
    JournalEntry,
    MessageRecord,
    ParameterRecord,
    QuestionRecord,
    RangeRecord,
    RunRecord,
    StepRecord,
    timestamp,
)

from .journal import Event, Kind
from .process.control import Check
from .process.sequence import Step

#: Why a run has ended that nobody has ended.
INTERRUPTED: Final = "Das Programm endete während des Laufs, und er wurde nicht fortgesetzt."

#: What is measured all the time, and its unit.
MEASURED: Final = (("Druck", "bar"), ("Leitwert", "mS/cm"), ("Laugentemperatur", "°C"))

#: How a step has ended if the run has ended in it.
STEP_RESULTS: Final[Mapping[str, str]] = {ERROR: FAILED, NEUTRAL: ABORTED}


@dataclass(frozen=True)
class MachineFacts:
    """What is the same for all runs of a program."""

    name: str
    version: str
    program_version: str
    backend_version: str
    equipment: tuple[EquipmentRecord, ...]


@dataclass(frozen=True)
class RunFacts:
    """What is the same from start to end of a run. `steps` are all of its sequence."""

    program: str
    lengthening: float
    steps: tuple[Step, ...]
    actuator_names: tuple[str, ...]
    parameters: tuple[ParameterRecord, ...]


@dataclass(frozen=True)
class Recorded:
    """A record with its curves, whose points were taken in parts: each with the second that it began at."""

    record: RunRecord
    parts: tuple[tuple[float, Curves], ...] = ()

    @property
    def lines(self) -> dict[str, list[Point]]:
        """The curves as a whole. Takes some milliseconds."""
        joined: dict[str, list[Point]] = {}
        for begun, lines in self.parts:
            for name, points in lines.items():
                joined.setdefault(name, []).extend((begun + x, y) for x, y in points)
        return joined


@dataclass
class _StepInProgress:
    """A step, and what has been measured and checked in it."""

    begun: StepRecord
    lowest: list[float] = field(default_factory=lambda: [math.inf] * len(MEASURED))
    highest: list[float] = field(default_factory=lambda: [-math.inf] * len(MEASURED))
    checks: list[CheckRecord] = field(default_factory=list)

    def measure(self, values: Sequence[float]) -> None:
        """Takes values in, in the order of MEASURED."""
        for i, value in enumerate(values):
            if value < self.lowest[i]:
                self.lowest[i] = value
            if value > self.highest[i]:
                self.highest[i] = value

    def record(self, ended: str, secs: float, result: str, reason: str) -> StepRecord:
        """The step as it would be if it ended now."""
        ranges = tuple(
            RangeRecord(name, unit, low, high)
            for (name, unit), low, high in zip(MEASURED, self.lowest, self.highest)
            if low <= high
        )
        return replace(
            self.begun,
            ended=ended,
            ended_secs=secs,
            result=result,
            reason=reason,
            ranges=ranges,
            checks=tuple(self.checks),
        )


@dataclass
class _Run:  # pylint: disable=too-many-instance-attributes  # one for each thing kept
    """The run in progress."""

    facts: RunFacts
    begun: str
    #: Seconds of the machine's time at which this part of the run began, and those of now.
    part_begun: float
    secs: float
    steps: list[StepRecord]
    messages: list[MessageRecord]
    questions: list[QuestionRecord]
    interruptions: list[Interruption]
    baths: tuple[BathRecord, ...]
    #: Curves of the parts before an interruption.
    parts: tuple[tuple[float, Curves], ...]
    step: _StepInProgress | None = None


class RunLog:
    """Collects what a run leaves behind. Belongs to the machine's thread; `hear` is for any."""

    def __init__(
        self,
        facts: MachineFacts,
        baths: Callable[[], tuple[BathRecord, ...]],
        counters: Callable[[], tuple[CounterRecord, ...]],
        curves: Callable[[], Curves],
    ) -> None:
        """The functions tell what there is just now."""
        self._facts = facts
        self._baths = baths
        self._counters = counters
        self._curves = curves
        self._run: _Run | None = None
        self._heard: deque[JournalEntry] = deque()

    # What the run tells.

    def begin(self, facts: RunFacts, interrupted: Recorded | None) -> None:
        """A run begins, or one goes on that was interrupted."""
        self._heard.clear()
        if interrupted is None:
            self._run = _Run(facts, timestamp(), 0.0, 0.0, [], [], [], [], (), ())
            return
        before = interrupted.record
        *earlier, last = before.interruptions or (Interruption(before.ended, 0),)
        self._run = _Run(
            facts,
            before.begun,
            before.secs,
            before.secs,
            list(before.steps),
            list(before.messages),
            list(before.questions),
            [*earlier, replace(last, went_on=timestamp())],
            before.baths,
            interrupted.parts,
        )

    def start_step(self, number: int, step: Step) -> None:
        """A step begins, and the one before it has been done."""
        run = self._running
        now = timestamp()
        if run.step is not None:
            run.steps.append(run.step.record(now, run.secs, DONE, ""))
        begun = StepRecord(number, step.key, step.title, now, "", run.secs, run.secs, CUT_SHORT)
        run.step = _StepInProgress(begun)

    def checked(self, check: Check) -> None:
        """A check has looked at something."""
        if self._run is not None and self._run.step is not None:
            self._run.step.checks.append(CheckRecord(**vars(check)))

    def advance(self, dt: float, values: Sequence[float]) -> None:
        """Lets `dt` seconds pass, at whose end these values are measured."""
        run = self._run
        if run is not None:
            run.secs = round(run.secs + dt, 3)
            if run.step is not None:
                run.step.measure(values)

    def hear(self, entry: JournalEntry) -> None:
        """Something has been written into the journal."""
        if self._run is not None:
            self._heard.append(entry)

    # What is left of it.

    def draft(self) -> Recorded:
        """The record as it is to be if the power fails now."""
        run = self._running
        now = timestamp()
        number = run.step.begun.number if run.step is not None else 0
        interruptions = (*run.interruptions, Interruption(now, number))
        return self._recorded(now, ERROR, INTERRUPTED, CUT_SHORT, interruptions)

    def end(self, result: str, reason: str) -> Recorded:
        """The record of the run, which ends."""
        step_result = STEP_RESULTS.get(result, DONE)
        recorded = self._recorded(
            timestamp(), result, reason, step_result, tuple(self._running.interruptions)
        )
        self._run = None
        return recorded

    @property
    def _running(self) -> _Run:
        assert self._run is not None
        return self._run

    def _recorded(  # pylint: disable=too-many-arguments  # each is named by its caller
        self, now: str, result: str, reason: str, step_result: str, interruptions: tuple[Interruption, ...]
    ) -> Recorded:
        run = self._running
        self._take_heard(run)
        steps = list(run.steps)
        if run.step is not None:
            failure = reason if step_result == FAILED else ""
            steps.append(run.step.record(now, run.secs, step_result, failure))
        record = RunRecord(
            begun=run.begun,
            ended=now,
            secs=run.secs,
            result=result,
            reason=reason,
            program=run.facts.program,
            machine_version=self._facts.version,
            program_version=self._facts.program_version,
            backend_version=self._facts.backend_version,
            machine=self._facts.name,
            intense_factor=run.facts.lengthening,
            equipment=self._facts.equipment,
            parameters=run.facts.parameters,
            steps=tuple(steps),
            questions=tuple(run.questions),
            messages=tuple(run.messages),
            interruptions=interruptions,
            baths=_joined(run.baths, self._baths()),
            counters=self._counters(),
            step_names=tuple(step.title for step in run.facts.steps),
            actuator_names=run.facts.actuator_names,
        )
        return Recorded(record, (*run.parts, (run.part_begun, self._curves())))

    def _take_heard(self, run: _Run) -> None:
        while self._heard:
            entry = self._heard.popleft()
            match entry.kind, entry.event:
                case Kind.QUESTION, Event.CAME:
                    run.questions.append(QuestionRecord(entry.time, entry.subject, entry.text))
                case Kind.QUESTION, Event.ACKNOWLEDGED:
                    _answer(run.questions, entry)
                case (Kind.MESSAGE | Kind.EXCEPTION | Kind.TOAST), Event.CAME:
                    run.messages.append(MessageRecord(entry.time, entry.subject, entry.text, _urgency(entry)))


def _answer(questions: list[QuestionRecord], entry: JournalEntry) -> None:
    for i, question in enumerate(questions):
        if not question.answered and (question.title, question.text) == (entry.subject, entry.text):
            questions[i] = replace(question, answered=entry.time, answer=_detail(entry, "answer"))
            return


def _detail(entry: JournalEntry, key: str) -> str:
    return str(json.loads(entry.details).get(key, ""))


def _urgency(entry: JournalEntry) -> str:
    if entry.kind == Kind.MESSAGE:
        return _detail(entry, "category")
    return "error" if entry.kind == Kind.EXCEPTION else "warning"


def _joined(before: Sequence[BathRecord], now: Sequence[BathRecord]) -> tuple[BathRecord, ...]:
    """The baths over an interruption: what was seen before it counts, too."""
    earlier = {bath.name: bath for bath in before}
    return tuple(_with(earlier.get(bath.name), bath) for bath in now)


def _with(before: BathRecord | None, now: BathRecord) -> BathRecord:
    if before is None or math.isnan(before.peak):
        return now
    peak = before.peak if math.isnan(now.peak) else max(before.peak, now.peak)
    return replace(now, peak=peak, too_low=before.too_low or now.too_low)
