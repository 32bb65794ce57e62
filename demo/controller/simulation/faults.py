"""Faults of the simulated plant."""

from enum import Enum


class PlantFault(Enum):
    """What can be made to go wrong at the plant, by the name that the environment variable uses."""

    LEAK = "leak"
    NO_GAS = "no_gas"
    NO_WATER = "no_water"
    WRONG_MEDIUM = "wrong_medium"
    WEAK_BATH = "weak_bath"
    LEVEL = "level"
    SENSOR = "sensor"
