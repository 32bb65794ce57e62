"""How much the machine has worked: what its outputs have done, and what has flowed."""

from collections.abc import Mapping, Set
from enum import Enum
from typing import Final

from .hardware import PUMP_FLOW
from .outputs import Output

SECS_PER_HOUR: Final = 3600.0

HOURS: Final = "h"
LITRES: Final = "l"
PIECES: Final = ""


class Liquid(Enum):
    """What the pump moves. The value is its name in the file."""

    WATER = "Wasser"
    LYE = "Lauge"
    ACID = "Säure"


#: The valves that it comes in through.
INLETS: Final[Mapping[Output, Liquid]] = {
    Output.MV_KALT: Liquid.WATER,
    Output.MV_HEISS: Liquid.WATER,
    Output.MV_LAUGE_IN: Liquid.LYE,
    Output.MV_SAURE_IN: Liquid.ACID,
}

#: The names of the counters are also their keys in the file.
BARRELS: Final = "Fässer"


def hours(output: Output) -> str:
    """The counter of the time for which an output was on."""
    return f"{output.name}, Betriebsstunden"


def switchings(output: Output) -> str:
    """The counter of how often an output went on."""
    return f"{output.name}, Schaltungen"


def litres(liquid: Liquid) -> str:
    """The counter of what has flowed in, an estimate from time and flow."""
    return f"{liquid.value}, geschätzt"


UNITS: Final[Mapping[str, str]] = {
    BARRELS: PIECES,
    **{hours(output): HOURS for output in Output},
    **{switchings(output): PIECES for output in Output},
    **{litres(liquid): LITRES for liquid in Liquid},
}


class Usage:
    """Counts. Belongs to one thread."""

    def __init__(self, counted: Mapping[str, float]) -> None:
        """`counted` is what there was at the start of the program."""
        self._values = {name: counted.get(name, 0.0) for name in UNITS}
        self._on: Set[Output] = frozenset()
        #: The time on since it was last added up, seconds.
        self._secs = {output: 0.0 for output in Output}
        self._flowed = {liquid: 0.0 for liquid in Liquid}

    def advance(self, dt: float, on: Set[Output]) -> None:
        """Lets `dt` seconds pass with these outputs on."""
        for output in on:
            self._secs[output] += dt
            if output not in self._on:
                self._values[switchings(output)] += 1.0
        self._on = on
        if Output.PUMPE in on:
            for liquid in {INLETS[valve] for valve in INLETS.keys() & on}:
                self._flowed[liquid] += PUMP_FLOW * dt

    def barrel_cleaned(self) -> None:
        """One more."""
        self._values[BARRELS] += 1.0

    @property
    def idle(self) -> bool:
        """Whether everything is off."""
        return not self._on

    @property
    def values(self) -> Mapping[str, float]:
        """All counters by name."""
        for output, secs in self._secs.items():
            self._values[hours(output)] += secs / SECS_PER_HOUR
            self._secs[output] = 0.0
        for liquid, amount in self._flowed.items():
            self._values[litres(liquid)] += amount
            self._flowed[liquid] = 0.0
        return dict(self._values)
