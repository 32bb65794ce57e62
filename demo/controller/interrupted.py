"""The note of a run in progress. If the program finds one at its start, a run was interrupted."""

from collections.abc import Mapping
from dataclasses import dataclass
from typing import Self

from .storage import RUN, Change
from .values import fitting


@dataclass(frozen=True)
class RunNote:
    """What is needed to go on with a run: the key of its present step, and its recipe."""

    step: str
    lengthening: float
    steam: bool

    @classmethod
    def read(cls, stored: Mapping[str, object]) -> Self | None:
        """The note in these stored values; None if there is none, or none that makes sense."""
        try:
            return cls(
                str(fitting(stored.get("step"), "")),
                float(fitting(stored.get("lengthening"), 1.0)),
                bool(fitting(stored.get("steam"), False)),
            )
        except ValueError:
            return None

    def change(self) -> Change:
        """Stores the note in place of an earlier one."""
        return Change(RUN, vars(self), replace=True)


#: Takes the note away.
NO_RUN = Change(RUN, {}, replace=True)
