"""What is in force for one run: equipment of the machine and choices that no longer change."""

from collections.abc import Mapping
from dataclasses import dataclass
from enum import Enum

from .outputs import Output


class Electrolyte(Enum):
    """The two baths. The value is the bath's name on the screens."""

    LYE = "Lauge"
    ACID = "Säure"


@dataclass(frozen=True)
class Limits:
    """Least conductivity and set point of a bath, mS/cm."""

    minimum: int
    set_point: int


@dataclass(frozen=True)
class Equipment:
    """What the machine has. Fixed from start to end of the program."""

    legacy: bool = False
    steam_valve: bool = False
    steam_pressure: bool = False
    level_switch: bool = True


@dataclass(frozen=True)
class Recipe:
    """The choices for one run. `lengthening` is a factor: 1.0 unless the run cleans intensively."""

    equipment: Equipment
    steam: bool
    lengthening: float
    limits: Mapping[Electrolyte, Limits]


@dataclass(frozen=True)
class Circuit:
    """The outputs that an electrolyte flows through."""

    inlet: Output
    outlet: Output


CIRCUITS: Mapping[Electrolyte, Circuit] = {
    Electrolyte.LYE: Circuit(Output.MV_LAUGE_IN, Output.MV_LAUGE_OUT),
    Electrolyte.ACID: Circuit(Output.MV_SAURE_IN, Output.MV_SAURE_OUT),
}
