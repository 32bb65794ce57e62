"""Outputs and readings of the machine, as the host shows them, and the way to the hardware.

The host's objects hold the state. Outputs are switched here and nowhere else.
"""

from collections.abc import Set

from brovik.actuator import Actuator, ActuatorEnum, DOut
from brovik.gui import Gui
from brovik.sensor import DIn, Sensor

from .process import interlocks
from .process.hardware import Hardware, Readings
from .process.outputs import Output


class Board:
    """Stands between process, hardware and host. Belongs to the machine thread after its construction.

    What is switched reaches the hardware with the next exchange. `shut_down` is for any thread.
    """

    def __init__(self, hardware: Hardware, with_steam: bool) -> None:
        """Numbers the inputs and outputs and shows those that the machine has."""
        self._hardware = hardware
        self._douts: dict[Output, DOut] = {Output(int(dout.enum)): dout for dout in Actuator.all_douts}
        self._blocked: Set[Output] | None = None
        for number, dout in enumerate(Actuator.all_douts, start=1):
            dout.num = number
        for number, din in enumerate(Sensor.all_dins, start=1):
            din.num = number
        #: The outputs that the machine has.
        self.shown = tuple(o for o in Output if with_steam or o is not Output.MV_STEAM)
        Actuator.set_dout_model(self._douts[output] for output in self.shown)
        #: Those of the last exchange.
        self.readings = hardware.exchange(0.0, frozenset())
        #: The outputs that were on in it.
        self.exchanged: Set[Output] = frozenset()

    # Inputs.

    @property
    def pressure(self) -> float:
        """Pressure in the barrel, bar over ambient, after the offset."""
        return Sensor.druck

    @property
    def conductivity(self) -> float:
        """Conductivity past the sensor, mS/cm, after the offset."""
        return Sensor.leitwert

    @property
    def level_reached(self) -> bool:
        """The level switch of the lye bath."""
        return Sensor.level.state

    @property
    def sensor_defective(self) -> bool:
        """The conductivity sensor gives no signal."""
        return Sensor.lw_sensor_defective

    def exchange(self, dt: float) -> Readings:
        """Lets `dt` seconds pass: hands the outputs to the hardware, and shows what it reads."""
        self.exchanged = self.on
        self.readings = self._hardware.exchange(dt, self.exchanged)
        Sensor.set_p_and_apply_offset(self.readings.pressure)
        Sensor.set_lw_and_apply_offset(self.readings.conductivity)
        Sensor.level.state = self.readings.level_reached
        return self.readings

    def show_button(self, din: DIn, pressed: bool) -> bool:
        """Shows a push button. True if it has just gone down."""
        gone_down = pressed and not din.state
        din.state = pressed
        return gone_down

    def publish(self) -> None:
        """Shows what changes slowly."""
        self._hardware.tick_ended()
        heater = ", Heizung ein" if self.is_on(Output.HEAT_1) else ""
        level = "erreicht" if self.level_reached else "unterschritten"
        Gui.status2 = f"Laugebecken {self.readings.lye_temperature:.0f} °C{heater}\nFüllstand {level}"

    # Outputs.

    @property
    def on(self) -> Set[Output]:
        """The outputs that are on."""
        return {output for output, dout in self._douts.items() if dout.state}

    def is_on(self, output: Output) -> bool:
        """Whether this output is on."""
        return self._douts[output].state

    def is_blocked(self, output: Output) -> bool:
        """Whether this output is locked against the operator."""
        return self._douts[output].blocked

    def name(self, output: Output) -> str:
        """The name of this output on the screens."""
        return self._douts[output].name

    def switch(self, output: Output, on: bool) -> None:
        """Switches one output, whether or not it is locked against the operator."""
        self._douts[output].state = on

    def all_off(self) -> None:
        """Switches everything off."""
        for dout in self._douts.values():
            dout.state = False

    def shut_down(self) -> None:
        """Switches everything off, at the hardware too, without waiting for an exchange."""
        self.all_off()
        self._hardware.all_off()

    def lock(self, running: bool) -> None:
        """Locks against the operator what the outputs that are on exclude; everything while a job runs."""
        blocked = interlocks.blocked(self.on, running)
        if blocked != self._blocked:
            self._blocked = blocked
            Actuator.unblock_all_except_of({ActuatorEnum(output.value) for output in blocked})
