"""Which outputs the operator may not touch."""

from collections.abc import Mapping, Set
from typing import Final

from .outputs import Output

ALL: Final = frozenset(Output)
NONE: Final[frozenset[Output]] = frozenset()

_LYE: Final = frozenset({Output.MV_LAUGE_IN, Output.MV_LAUGE_OUT})
_ACID: Final = frozenset({Output.MV_SAURE_IN, Output.MV_SAURE_OUT})

#: An output that is on, and what it blocks. Lye and acid must never meet.
EXCLUDES: Final[Mapping[Output, frozenset[Output]]] = {
    Output.MV_LAUGE_IN: _ACID,
    Output.MV_LAUGE_OUT: _ACID,
    Output.MV_SAURE_IN: _LYE,
    Output.MV_SAURE_OUT: _LYE,
    Output.MV_STEAM: frozenset({Output.MV_KALT, Output.PUMPE}),
    Output.MV_KALT: frozenset({Output.MV_STEAM}),
    Output.PUMPE: frozenset({Output.MV_STEAM}),
}


def blocked(on: Set[Output], running: bool) -> frozenset[Output]:
    """All outputs while a process runs, else those that the ones that are on exclude."""
    if running:
        return ALL
    return NONE.union(*(EXCLUDES.get(output, NONE) for output in on))
