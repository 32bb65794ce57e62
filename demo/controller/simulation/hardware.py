"""The simulated machine, as the hardware of this one."""

import os
from collections.abc import Set
from typing import Final, Self

from brovik import Logger
from brovik.sensor import Sensor
from brovik.simulator import SimuEnum, Simulator

from ..process.hardware import Readings
from ..process.outputs import Output
from ..process.recipe import Electrolyte
from .dosing import Dosing
from .faults import PlantFault
from .plant import Plant
from .sliders import Sliders, wish

FAULT: Final = "BROVIK_DEMO_FAULT"
WINDOW: Final = "BROVIK_DEMO_SIMULATOR"

#: No sensor stands at zero by itself, bar and mS/cm. It gives the calibration something to do.
PRESSURE_ZERO_ERROR: Final = 0.004
CONDUCTIVITY_ZERO_ERROR: Final = 0.005


class SimulatedHardware:
    """Hardware and simulator window in one: a plant, someone at its tanks, and a developer at the window."""

    def __init__(self, faults: Set[PlantFault] = frozenset()) -> None:
        self.plant = Plant(faults)
        self._dosing = Dosing()
        self._sliders = Sliders()
        Sensor.lw_sensor_defective = PlantFault.SENSOR in faults

    @classmethod
    def from_environment(cls) -> Self:
        """The simulation that the environment asks for."""
        simulated = cls(_faults())
        Simulator.enabled = os.environ.get(WINDOW) == "1" or Simulator.enabled
        return simulated

    # The hardware.

    def exchange(self, dt: float, on: Set[Output]) -> Readings:
        """Lets `dt` seconds pass for the plant, and reads its sensors."""
        self._sliders.move(self.plant)
        self.plant.advance(dt, on)
        self._dosing.advance(dt)
        return Readings(
            pressure=self.plant.pressure + PRESSURE_ZERO_ERROR,
            conductivity=self.plant.conductivity + CONDUCTIVITY_ZERO_ERROR,
            lye_temperature=self.plant.lye_temperature,
            level_reached=self.plant.level,
        )

    def all_off(self) -> None:
        """The plant stands still as soon as nobody lets time pass."""

    def run_started(self, resumed: bool) -> None:
        """Someone connects the barrel that is to be cleaned."""
        if not resumed:
            self.plant.connect_new_barrel()

    def bath_test_started(self, electrolyte: Electrolyte, set_point: float) -> None:
        """Someone begins to dose the bath up to its set point, mS/cm."""
        self._dosing.begin(self.plant.baths[electrolyte], set_point)

    def job_ended(self) -> None:
        """Nobody doses any more."""
        self._dosing.end()

    def tick_ended(self) -> None:
        """Shows the analogue inputs."""
        self._sliders.show(self.plant)

    # The window.

    def set_value(self, enum: SimuEnum, value: object) -> None:
        """A slider is to move. The next exchange finds it moved and moves the plant."""
        wish(enum, value)

    def set_level(self, reached: bool) -> None:
        """Someone holds the level switch."""
        self.plant.level_override = reached


def _faults() -> Set[PlantFault]:
    known = {fault.value: fault for fault in PlantFault}
    names = [name.strip() for name in os.environ.get(FAULT, "").split(",") if name.strip()]
    for name in names:
        if name not in known:
            Logger.warning(f"{FAULT}: {name!r} ist keines von {', '.join(known)}")
    return {known[name] for name in names if name in known}
