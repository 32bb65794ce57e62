"""Someone at the tanks who refreshes a bath while it is tested."""

from typing import Final

from .plant import Liquid

#: Rise of the conductivity while concentrate is added, mS/cm per second.
RATE: Final = 0.5
#: How far above its set point a bath gets dosed, mS/cm.
MARGIN: Final = 1.5


class Dosing:
    """Doses one bath at a time. Belongs to one thread."""

    def __init__(self) -> None:
        self._bath: Liquid | None = None
        #: Conductivity, mS/cm.
        self._aim = 0.0

    def begin(self, bath: Liquid, set_point: float) -> None:
        """Doses this bath from now on until it is a little above its set point, mS/cm."""
        self._bath = bath
        self._aim = set_point + MARGIN

    def end(self) -> None:
        """Adds nothing any more."""
        self._bath = None

    def advance(self, dt: float) -> None:
        """Lets `dt` seconds pass."""
        if self._bath is not None and self._bath.conductivity < self._aim:
            self._bath.conductivity = min(self._aim, self._bath.conductivity + RATE * dt)
