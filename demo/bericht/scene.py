"""A picture as what it is made of. Lengths are points; x grows to the right and y downwards."""

from collections.abc import Sequence
from dataclasses import dataclass, field
from enum import Enum
from typing import TypeAlias

from logbook.curves import Point


class Anchor(Enum):
    """Where a text stands at its x."""

    START = "start"
    MIDDLE = "middle"
    END = "end"


@dataclass(frozen=True)
class Box:
    """A filled rectangle."""

    x: float
    y: float
    width: float
    height: float
    color: str


@dataclass(frozen=True)
class Line:
    """Straight lines through all points."""

    points: Sequence[Point]
    color: str
    width: float


@dataclass(frozen=True)
class Label:
    """A text on one line; y is its base line. With `upward` it is read from below."""

    x: float
    y: float
    text: str
    size: float
    color: str
    anchor: Anchor = Anchor.START
    upward: bool = False


Part: TypeAlias = Box | Line | Label


@dataclass
class Scene:
    """The parts in the order in which they are drawn."""

    width: float
    height: float
    #: What is to be seen, for those who cannot.
    title: str
    parts: list[Part] = field(default_factory=list)
