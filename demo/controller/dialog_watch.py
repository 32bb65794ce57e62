"""Which dialog on the screens shows what, so that the journal has when the operator has read it.

Knows nothing of the host.
"""

from collections import deque
from collections.abc import Callable, Mapping
from dataclasses import dataclass
from time import monotonic
from typing import Final

from logbook.records import JournalEntry

from .dialogs import dialog_id
from .journal import JOURNAL, NO_DETAILS, Details, Event, Journal, Kind

#: So many dialogs are waited for.
MOST: Final = 200
#: After this time a dialog that has not opened is not waited for any more.
OPENING_SECS: Final = 10.0


@dataclass(frozen=True)
class _Open:
    """What a dialog shows, and the details of its answer: by True for yes, False for no."""

    entry: JournalEntry
    answers: Mapping[bool, Details]


@dataclass(frozen=True)
class _Expected:
    """A message whose dialog is to open, and since when: seconds of the watch."""

    entry: JournalEntry
    since: float


class DialogWatch:
    """Follows dialogs from the moment in which they are shown.

    The host tells of a message's dialog only by a number of its own. Messages open in the order in which they
    were shown, and each tells of its opening: so they are told apart from the dialogs that a screen opens by
    itself, unless both happen in the same moment. `show` is for any thread, all else for one.
    """

    def __init__(self, journal: Journal, now: Callable[[], float] = monotonic) -> None:
        """`now` tells the time in seconds."""
        self._journal = journal
        self._now = now
        self._expected: deque[_Expected] = deque(maxlen=MOST)
        self._open: dict[int, _Open] = {}
        self._ready = False

    # What the backend shows.

    def show(self, kind: Kind, subject: str, text: str, details: Details) -> None:
        """A message is shown."""
        entry = self._journal.add(kind, Event.CAME, subject, text, details)
        self._expected.append(_Expected(entry, self._now()))

    def ask(  # pylint: disable=too-many-arguments  # each is named by its caller
        self, id_: int, subject: str, text: str, yes: str, no: str
    ) -> None:
        """A question is asked, with these labels of its buttons."""
        entry = self._journal.add(Kind.QUESTION, Event.CAME, subject, text, {"id": id_})
        self._open[id_] = _Open(entry, {True: {"id": id_, "answer": yes}, False: {"id": id_, "answer": no}})

    def withdraw(self, id_: int) -> None:
        """A question is closed without an answer."""
        shown = self._open.pop(id_, None)
        if shown is not None:
            self._follow(shown.entry, Event.GONE, {"id": id_})

    def reset(self) -> None:
        """The program ends, and all dialogs with it."""
        self._expected.clear()
        self._open.clear()
        self._ready = False

    # What the screens report.

    def screens_ready(self) -> None:
        """What was shown up to now opens now: the messages first, then the exceptions."""
        if not self._ready:
            self._ready = True
            waiting = [self._expected.popleft() for _ in range(len(self._expected))]
            waiting.sort(key=lambda expected: expected.entry.kind == Kind.EXCEPTION)
            # What another thread adds meanwhile comes behind.
            self._expected.extendleft(_Expected(e.entry, self._now()) for e in reversed(waiting))

    def take(self, report: object) -> None:
        """Takes a report of the dialog system, as `GuiEnum.DialogData` has it."""
        if not isinstance(report, Mapping):
            return
        if report.keys() == {"current"}:
            self._opened(report["current"])
            return
        for key, reply in report.items():
            if isinstance(reply, Mapping):
                self._closed(dialog_id(key), reply.get("a") is True)

    def _opened(self, current: object) -> None:
        match current:
            case [int() | float() as number, None] if number < 0:
                entry = self._next_expected()
                if entry is not None:
                    self._open[int(number)] = _Open(entry, {True: NO_DETAILS, False: NO_DETAILS})

    def _next_expected(self) -> JournalEntry | None:
        """What opens now; None if it is nothing of ours."""
        while self._expected:
            expected = self._expected.popleft()
            # One that has not opened for so long never will.
            if self._now() - expected.since < OPENING_SECS:
                return expected.entry
        return None

    def _closed(self, id_: int, accepted: bool) -> None:
        shown = self._open.pop(id_, None)
        if shown is not None:
            self._follow(shown.entry, Event.ACKNOWLEDGED, shown.answers[accepted])

    def _follow(self, entry: JournalEntry, event: Event, details: Details) -> None:
        self._journal.add(Kind(entry.kind), event, entry.subject, entry.text, details)


#: The one watch of the program.
DIALOGS: Final = DialogWatch(JOURNAL)
