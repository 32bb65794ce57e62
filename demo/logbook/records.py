"""What is kept of a run. Times are local, in ISO 8601 with the offset; "" is a time that has not come.

Seconds are those of the machine's time since the run began, as on the x axis of the curves.
"""

from dataclasses import dataclass, replace
from datetime import datetime
from typing import Final, TypeAlias

from . import document

#: How a run has ended.
SUCCESS: Final = "success"
WARNING: Final = "warning"
ERROR: Final = "error"
NEUTRAL: Final = "neutral"
RESULTS: Final = (SUCCESS, WARNING, ERROR, NEUTRAL)

#: How a step has ended.
DONE: Final = "done"
FAILED: Final = "failed"
ABORTED: Final = "aborted"
CUT_SHORT: Final = "cut short"
STEP_RESULTS: Final = (DONE, FAILED, ABORTED, CUT_SHORT)

Value: TypeAlias = bool | int | float | str


def timestamp(moment: datetime | None = None) -> str:
    """A moment, or now, as the records have it."""
    moment = moment or datetime.now()
    return moment.astimezone().isoformat(timespec="seconds")


@dataclass(frozen=True)
class RangeRecord:
    """Between which values a measured quantity was during a step."""

    name: str  # German, as shown: "Druck", "Leitwert", "Laugentemperatur"
    unit: str  # "bar", "mS/cm", "°C"
    lowest: float
    highest: float


@dataclass(frozen=True)
class CheckRecord:
    """What a check of a step has looked at, against its limit if there is one.

    `bound` is the German word for what the limit is: "mindestens", "höchstens".
    """

    name: str
    value: float
    unit: str
    limit: float | None = None
    bound: str = "Grenze"


@dataclass(frozen=True)
class StepRecord:  # pylint: disable=too-many-instance-attributes  # one for each thing kept
    """One step. A run that went on after an interruption has the step of it twice."""

    number: int
    key: str
    title: str
    begun: str
    ended: str
    begun_secs: float
    ended_secs: float
    result: str  # one of STEP_RESULTS
    ranges: tuple[RangeRecord, ...] = ()
    checks: tuple[CheckRecord, ...] = ()
    #: German text, as shown, if the step has failed.
    reason: str = ""


@dataclass(frozen=True)
class QuestionRecord:
    """A question to the operator. The answer is the text of the button, "" if none was given."""

    asked: str
    title: str
    text: str
    answered: str = ""
    answer: str = ""


@dataclass(frozen=True)
class MessageRecord:
    """A message or toast that was shown. The urgency is the host's: info, warning, error..."""

    time: str
    title: str
    text: str
    urgency: str = "info"


@dataclass(frozen=True)
class Interruption:
    """The program ended during the run. "" as `went_on` says that the run ended with it."""

    time: str
    step: int
    went_on: str = ""


@dataclass(frozen=True)
class ParameterRecord:
    """A process parameter, as it was in force during the run."""

    key: str
    title: str
    value: Value
    default: Value
    unit: str = ""


@dataclass(frozen=True)
class EquipmentRecord:
    """One item of the machine's equipment."""

    key: str
    title: str
    value: Value


@dataclass(frozen=True)
class BathRecord:
    """The concentration of a bath, mS/cm. The peak is nan if it has not been measured."""

    name: str
    set_point: float
    minimum: float
    peak: float
    too_low: bool


@dataclass(frozen=True)
class CounterRecord:
    """The reading of a counter after the run."""

    name: str
    value: float
    unit: str = ""


@dataclass(frozen=True)
class RunRecord:  # pylint: disable=too-many-instance-attributes  # one for each thing kept
    """All that is kept of one run but its curves.

    `number` and `curves_digest` are filled in by whoever appends the record.
    """

    begun: str
    ended: str
    secs: float
    result: str  # one of RESULTS
    reason: str  # German text, as shown
    program: str  # what has run: "Automatikbetrieb"
    machine_version: str
    program_version: str
    backend_version: str
    number: int = 0
    machine: str = ""  # the name of this one machine, if it has one
    barrel: str = ""  # number or name of the barrel, if it was told
    intense_factor: float = 1.0
    equipment: tuple[EquipmentRecord, ...] = ()
    parameters: tuple[ParameterRecord, ...] = ()
    steps: tuple[StepRecord, ...] = ()
    questions: tuple[QuestionRecord, ...] = ()
    messages: tuple[MessageRecord, ...] = ()
    interruptions: tuple[Interruption, ...] = ()
    baths: tuple[BathRecord, ...] = ()
    counters: tuple[CounterRecord, ...] = ()
    #: For the curves: the names of all steps of the sequence, and of the actuators by their height from 1.
    step_names: tuple[str, ...] = ()
    actuator_names: tuple[str, ...] = ()
    curves_digest: str = ""

    def document(self) -> str:
        """The canonical document."""
        return document.to_document(self)

    @classmethod
    def from_document(cls, text: str) -> "RunRecord":
        """The record of a document. Raises DocumentError."""
        return document.from_document(cls, text)

    def numbered(self, number: int, curves_digest: str) -> "RunRecord":
        """The record as it is appended."""
        return replace(self, number=number, curves_digest=curves_digest)


@dataclass(frozen=True)
class JournalEntry:
    """One line of the journal. `details` is JSON, canonical if `document.canonical` made it."""

    kind: str  # one of KINDS
    event: str  # one of EVENTS
    subject: str
    text: str = ""
    details: str = "{}"
    time: str = ""  # "" is the moment of writing
    number: int = 0  # filled in by the file


KINDS: Final = (
    "message",
    "question",
    "exception",
    "toast",
    "setting",
    "login",
    "update",
    "program",
    "run",
    "maintenance",
)
EVENTS: Final = ("came", "acknowledged", "gone", "changed", "begun", "ended")
