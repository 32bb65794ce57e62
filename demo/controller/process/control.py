"""What a step works with: time, outputs, measured values, and the operator who watches.

A step is done by a procedure, a generator. It yields whenever it is content to wait for the next period,
and closing it at any yield leaves the outputs off that it has switched on.
"""

import math
from collections.abc import Callable, Generator, Iterator
from contextlib import contextmanager
from dataclasses import dataclass
from enum import Enum
from typing import Final, Protocol, TypeAlias

from .outputs import Output
from .recipe import Electrolyte, Recipe
from .settings import ProcessSettings

#: Sums of time steps may be off by this much, seconds.
ROUNDING: Final = 1e-6

Procedure: TypeAlias = Generator[None, None, None]


#: What a limit may be.
AT_LEAST: Final = "mindestens"
AT_MOST: Final = "höchstens"
BELOW: Final = "unter"


class StepFailed(Exception):
    """A check of the process has failed; the text is for the operator."""


class Medium(Enum):
    """What flows past the sensor, as the conductivity tells. The value is the word for it."""

    AIR = "Luft"
    FOAM = "Schaum"
    WATER = "Wasser"
    ELECTROLYTE = "Lauge oder Säure"


@dataclass(frozen=True)
class Check:
    """What a check of a step has looked at, its limit if it has one, and what that limit is."""

    name: str
    value: float
    unit: str
    limit: float | None = None
    bound: str = "Grenze"


class ProcessIO(Protocol):
    """Outputs and inputs, as the process sees them."""

    @property
    def pressure(self) -> float:
        """Pressure in the barrel, bar over ambient, after the offset."""

    @property
    def conductivity(self) -> float:
        """Conductivity of what flows past the sensor, mS/cm, after the offset."""

    @property
    def level_reached(self) -> bool:
        """The level switch of the lye bath."""

    @property
    def sensor_defective(self) -> bool:
        """The conductivity sensor gives no signal."""

    def switch(self, output: Output, on: bool) -> None:
        """Switches one output, whether or not it is blocked for the operator."""


class Watcher(Protocol):
    """Whoever is told how the process gets on."""

    def detail(self, text: str) -> None:
        """What the step is doing just now."""

    def peak(self, electrolyte: Electrolyte, conductivity: float) -> None:
        """Highest conductivity of this electrolyte so far, mS/cm."""

    def too_low(self, electrolyte: Electrolyte) -> None:
        """The electrolyte stays below its minimum. The process goes on."""

    def set_point_reached(self) -> None:
        """The set point has been held long enough."""

    def checked(self, check: Check) -> None:
        """A check has looked at something. It may have failed; a failure is raised besides."""


class Control:
    """The process as a step sees it. Belongs to the thread that advances the steps."""

    def __init__(self, io: ProcessIO, watcher: Watcher, settings: ProcessSettings, recipe: Recipe) -> None:
        self.io = io
        self.watcher = watcher
        self.settings = settings
        self.recipe = recipe
        #: Time since the start of the job, seconds.
        self.now = 0.0

    @property
    def medium(self) -> Medium:
        """What the sensor stands in."""
        conductivity = self.io.conductivity
        if conductivity >= self.settings.threshold_lw_electrolyte:
            return Medium.ELECTROLYTE
        if conductivity >= self.settings.threshold_lw_water:
            return Medium.WATER
        return Medium.AIR if conductivity < self.settings.threshold_lw_empty else Medium.FOAM

    @contextmanager
    def outputs(self, *outputs: Output) -> Iterator[None]:
        """Has these outputs on, and off again however the block is left."""
        try:
            for output in outputs:
                self.io.switch(output, True)
            yield
        finally:
            for output in reversed(outputs):
                self.io.switch(output, False)

    def wait(self, secs: float, text: str) -> Procedure:
        """Waits for `secs` seconds, and tells how many are left."""
        end = self.now + secs
        while self.now < end - ROUNDING:
            self.watcher.detail(f"{text}, noch {math.ceil(end - self.now - ROUNDING)} s")
            yield

    def until(self, reached: Callable[[], bool], limit_secs: float, failure: str) -> Procedure:
        """Waits for a condition, and fails if it has not come about after `limit_secs` seconds."""
        end = self.now + limit_secs
        while not reached():
            if self.now >= end - ROUNDING:
                raise StepFailed(failure)
            yield

    @contextmanager
    def telling(self, check: Callable[[], Check]) -> Iterator[None]:
        """Tells what the checks in the block have looked at last, however the block is left."""
        try:
            yield
        finally:
            self.watcher.checked(check())

    def require(self, medium: Medium, wanted: str) -> None:
        """Fails if another medium flows than the one wanted."""
        if self.medium is not medium:
            raise StepFailed(
                f"Falsches Medium: {self.medium.value} statt {wanted} " f"({self.io.conductivity:.2f} mS/cm)."
            )
