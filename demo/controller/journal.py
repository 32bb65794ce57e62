"""The journal: what was told, asked, changed and done, each an entry that stays.

Knows nothing of the host. For any thread.
"""

from collections import deque
from collections.abc import Callable, Mapping
from enum import StrEnum
from types import MappingProxyType
from typing import Final, TypeAlias

from logbook.document import canonical, clean
from logbook.records import JournalEntry, timestamp

#: So many entries are kept from the time before there is a file to write them to.
EARLY: Final = 200

Details: TypeAlias = Mapping[str, object]
Sink: TypeAlias = Callable[[JournalEntry], None]
NO_DETAILS: Final[Details] = MappingProxyType({})


class Kind(StrEnum):
    """What an entry is about."""

    MESSAGE = "message"
    QUESTION = "question"
    EXCEPTION = "exception"
    TOAST = "toast"
    SETTING = "setting"
    LOGIN = "login"
    UPDATE = "update"
    PROGRAM = "program"
    RUN = "run"
    MAINTENANCE = "maintenance"


class Event(StrEnum):
    """What has become of it."""

    CAME = "came"
    ACKNOWLEDGED = "acknowledged"
    GONE = "gone"
    CHANGED = "changed"
    BEGUN = "begun"
    ENDED = "ended"


class Journal:
    """Takes entries on and hands them to whoever writes them."""

    def __init__(self) -> None:
        self._sink: Sink | None = None
        self._listener: Sink | None = None
        self._early: deque[JournalEntry] = deque(maxlen=EARLY)

    def open(self, sink: Sink) -> None:
        """From now on all entries go to `sink`, those first that came before."""
        self._sink = sink
        while self._early:
            sink(self._early.popleft())

    def listen(self, listener: Sink) -> None:
        """Has all entries told to one more, on the thread that they come from."""
        self._listener = listener

    def close(self) -> None:
        """The program ends: nobody writes any more."""
        self._sink = self._listener = None
        self._early.clear()

    def add(  # pylint: disable=too-many-arguments  # each is named by its caller
        self, kind: Kind, event: Event, subject: str, text: str = "", details: Details = NO_DETAILS
    ) -> JournalEntry:
        """Takes an entry on."""
        entry = JournalEntry(kind, event, clean(subject), clean(text), canonical(details), timestamp())
        sink, listener = self._sink, self._listener  # Another thread may close meanwhile.
        if sink is None:
            self._early.append(entry)
        else:
            sink(entry)
        if listener is not None:
            listener(entry)
        return entry


#: The one journal of the program.
JOURNAL: Final = Journal()
