"""The host's simulator window, in which a developer plays the inputs of the machine."""

from typing import Protocol

from brovik import Logger
from brovik.simulator import SimuEnum


class SimulatorWindow(Protocol):
    """Takes what is played there, and the push buttons do not."""

    def set_value(self, enum: SimuEnum, value: object) -> None:
        """A slider is to move: `AIn0` and `AIn1` in percent, `Lw` in mS/cm. On the interpreter thread."""

    def set_level(self, reached: bool) -> None:
        """The level switch is to stay like this. On the machine's thread."""


class NoSimulatorWindow:
    """That of a machine which is there: nobody can play its sensors."""

    def set_value(self, enum: SimuEnum, _value: object) -> None:
        """Leaves a line in the log."""
        Logger.warning(f"Der Wert {enum.name} lässt sich nicht setzen")

    def set_level(self, _reached: bool) -> None:
        """Leaves a line in the log."""
        Logger.warning("Der Füllstandsschalter lässt sich nicht setzen")
