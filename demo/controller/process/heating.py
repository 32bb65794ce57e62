"""The automatic heating of the lye bath."""

from typing import Final

#: Temperatures of the lye, °C.
ON_BELOW: Final = 58.0
OFF_ABOVE: Final = 62.0


def heater_wanted(temperature: float, on: bool) -> bool:
    """Whether the heater is to be on, given the temperature in °C and whether it is on now."""
    return temperature < (OFF_ABOVE if on else ON_BELOW)
