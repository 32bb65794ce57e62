"""A model of the machine: barrel, baths, pipes, gases and heater.

Coarse, but each valve has its effect. The time step comes from outside, so the model has neither
thread nor clock. Not safe across threads: it belongs to whoever advances it.
"""

import math
from collections.abc import Set
from dataclasses import dataclass, field
from typing import Final

from ..process.hardware import PUMP_FLOW
from ..process.outputs import Output
from ..process.recipe import Electrolyte
from .faults import PlantFault


@dataclass
class Liquid:
    """An amount of one liquid: litres and conductivity in mS/cm."""

    volume: float
    conductivity: float

    def take(self, volume: float) -> "Liquid":
        """Takes out at most this many litres."""
        taken = min(volume, self.volume)
        self.volume -= taken
        return Liquid(taken, self.conductivity)

    def add(self, other: "Liquid") -> None:
        """Mixes another liquid in: conductivities by the volumes, in litres."""
        total = self.volume + other.volume
        if total > 0:
            mixed = self.volume * self.conductivity + other.volume * other.conductivity
            self.conductivity = mixed / total
        self.volume = total


@dataclass
class GasRates:
    """Change of pressure in the closed barrel, bar/s: with a gas valve open, and by a leak."""

    rise: float = 0.05
    fall: float = 0.1


MAINS_CONDUCTIVITY: Final = {Output.MV_KALT: 0.5, Output.MV_HEISS: 0.6}  # mS/cm
WEAK_CONDUCTIVITY: Final = 5.0  # mS/cm
BLOW_FLOW: Final = 1.0  # litres per second that a gas drives out
DRAIN_SECS: Final = 3.0  # time constant of a barrel that runs empty by itself
BARREL_VOLUME: Final = 50.0  # litres
GAS_PRESSURE: Final = {Output.MV_LUFT: 3.0, Output.MV_CO2: 2.5, Output.MV_STEAM: 1.2}  # bar
DRIVING_PRESSURE: Final = 0.3  # a gas that pushes liquid before it, bar
FREE_PRESSURE: Final = 0.002  # a gas that finds the way clear, bar
OUTLETS: Final = frozenset({Output.MV_KANAL, Output.MV_LAUGE_OUT, Output.MV_SAURE_OUT})
LEVEL_VOLUME: Final = 60.0  # litres at the level switch of the lye bath
ROOM_TEMPERATURE: Final = 20.0  # °C
HEATING_RATE: Final = 0.08  # kelvin per second
COOLING_SECS: Final = 7200.0  # time constant of a lye bath that nobody heats


def _approach(value: float, target: float, dt: float, secs: float) -> float:
    """First-order lag over `dt` seconds, with the time constant `secs`."""
    return target + (value - target) * math.exp(-dt / secs)


@dataclass
class Plant:  # pylint: disable=too-many-instance-attributes
    """The machine's state: pressure in bar over ambient, conductivity at the sensor in mS/cm, °C."""

    faults: Set[PlantFault] = frozenset()
    rates: GasRates = field(default_factory=GasRates)
    lye: Liquid = field(default_factory=lambda: Liquid(80.0, 58.0))
    acid: Liquid = field(default_factory=lambda: Liquid(80.0, 19.0))
    barrel: Liquid = field(default_factory=lambda: Liquid(0.0, 0.0))
    pressure: float = 0.0
    conductivity: float = 0.0
    lye_temperature: float = 55.0
    level_override: bool | None = None

    def __post_init__(self) -> None:
        if PlantFault.WRONG_MEDIUM in self.faults:
            self.lye.conductivity = MAINS_CONDUCTIVITY[Output.MV_HEISS]
        if PlantFault.WEAK_BATH in self.faults:
            self.lye.conductivity = self.acid.conductivity = WEAK_CONDUCTIVITY
        if PlantFault.LEVEL in self.faults:
            self.lye.volume = LEVEL_VOLUME / 2

    @property
    def baths(self) -> dict[Electrolyte, Liquid]:
        """Both baths."""
        return {Electrolyte.LYE: self.lye, Electrolyte.ACID: self.acid}

    @property
    def level(self) -> bool:
        """The level switch of the lye bath."""
        if self.level_override is not None:
            return self.level_override
        return self.lye.volume >= LEVEL_VOLUME

    def connect_new_barrel(self) -> None:
        """Puts a used barrel on: a rest of beer under a rest of CO2."""
        self.barrel = Liquid(0.5, 1.8)
        self.pressure = 0.1

    def advance(self, dt: float, on: Set[Output]) -> None:
        """Lets `dt` seconds pass with these outputs on."""
        passed = self._move_liquids(dt, on)
        self._change_pressure(dt, on)
        self._measure(dt, on, passed)
        self._heat(dt, Output.HEAT_1 in on)

    def _move_liquids(self, dt: float, on: Set[Output]) -> bool:
        """Fills and drains the barrel. True if liquid passed the sensor."""
        if Output.PUMPE in on:
            self._pump_in(dt, on)
        drained = self._drain(dt, on)
        circulates = {Output.PUMPE, Output.MV_KREIS} <= on and self.barrel.volume > 0
        return drained or circulates

    def _pump_in(self, dt: float, on: Set[Output]) -> None:
        volume = min(PUMP_FLOW * dt, BARREL_VOLUME - self.barrel.volume)
        if PlantFault.NO_WATER not in self.faults:
            for main in MAINS_CONDUCTIVITY.keys() & on:
                self.barrel.add(Liquid(volume, MAINS_CONDUCTIVITY[main]))
        for valve, bath in ((Output.MV_LAUGE_IN, self.lye), (Output.MV_SAURE_IN, self.acid)):
            if valve in on:
                self.barrel.add(bath.take(volume))

    def _drain(self, dt: float, on: Set[Output]) -> bool:
        if not OUTLETS & on or self.barrel.volume <= 0:
            return False
        flow = self.barrel.volume / DRAIN_SECS + (BLOW_FLOW if self._gas(on) else 0.0)
        drained = self.barrel.take(flow * dt)
        if Output.MV_KANAL not in on:
            (self.lye if Output.MV_LAUGE_OUT in on else self.acid).add(drained)
        return True

    def _gas(self, on: Set[Output]) -> float:
        """Pressure of the strongest gas that is let in, bar; 0 if none is."""
        if PlantFault.NO_GAS in self.faults:
            return 0.0
        return max((pressure for valve, pressure in GAS_PRESSURE.items() if valve in on), default=0)

    def _change_pressure(self, dt: float, on: Set[Output]) -> None:
        gas = self._gas(on)
        if OUTLETS & on:
            driven = DRIVING_PRESSURE if self.barrel.volume > 0 else FREE_PRESSURE
            self.pressure = _approach(self.pressure, driven if gas else 0.0, dt, 0.5)
        elif gas > self.pressure:
            self.pressure = min(gas, self.pressure + self.rates.rise * dt)
        elif PlantFault.LEAK in self.faults:
            self.pressure = max(0.0, self.pressure - self.rates.fall * dt)

    def _measure(self, dt: float, on: Set[Output], passed: bool) -> None:
        if passed:
            self.conductivity = _approach(self.conductivity, self.barrel.conductivity, dt, 0.5)
        elif OUTLETS & on and self._gas(on):
            # The film on the sensor dries off.
            self.conductivity = _approach(self.conductivity, 0.0, dt, 1.0)

    def _heat(self, dt: float, on: bool) -> None:
        cooled = _approach(self.lye_temperature, ROOM_TEMPERATURE, dt, COOLING_SECS)
        self.lye_temperature = cooled + (HEATING_RATE * dt if on else 0.0)
