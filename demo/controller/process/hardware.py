"""The port to the machine: outputs go out, readings come in."""

from collections.abc import Set
from dataclasses import dataclass
from typing import Final, Protocol

from .outputs import Output
from .recipe import Electrolyte

#: What the pump moves, litres per second. No sensor measures it: what the counters say of water, lye and
#: acid is an estimate by this number.
PUMP_FLOW: Final = 1.0


@dataclass(frozen=True)
class Readings:
    """What the sensors and push buttons of the machine give. Offsets of the calibration are not yet in it."""

    #: Pressure in the barrel, bar over ambient.
    pressure: float
    #: Conductivity of what flows past the sensor, mS/cm.
    conductivity: float
    #: Temperature of the lye bath, °C.
    lye_temperature: float
    #: The level switch of the lye bath: there is enough to circulate, and to cover the heater.
    level_reached: bool
    #: The green and the red push button of the machine are held down.
    start_pressed: bool = False
    stop_pressed: bool = False


class Hardware(Protocol):
    """The machine, real or simulated. Calls come from the machine's thread where nothing else is told.

    Whatever a method raises is shown to the operator. If `exchange` goes on failing, `all_off` is called.
    """

    def exchange(self, dt: float, on: Set[Output]) -> Readings:
        """Has these outputs on and all others off, and reads the sensors.

        `dt` is the time since the last call, seconds. The first call has a `dt` of 0 and no outputs; it
        comes from the interpreter thread, while the program starts.
        """

    def all_off(self) -> None:
        """Switches all outputs off, now: the program ends, or an error does not let the machine go on.

        From any thread, also while another one is in `exchange`, and more than once.
        """

    def run_started(self, resumed: bool) -> None:
        """An automatic run begins: with a barrel just connected, or `resumed` where it was interrupted."""

    def bath_test_started(self, electrolyte: Electrolyte, set_point: float) -> None:
        """The test of a bath begins, in which someone doses it up to the set point, mS/cm."""

    def job_ended(self) -> None:
        """The run or the test of a bath has ended, in whatever way."""

    def tick_ended(self) -> None:
        """Ten times per second of real time: for what else the hardware has to show at the host."""
