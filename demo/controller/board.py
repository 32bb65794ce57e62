"""The machine's outputs and inputs, as the host shows them.

The host's objects hold the state; this class only gives it the names of the process.
"""

from collections.abc import Set
from typing import Final

from brovik.actuator import Actuator, ActuatorEnum, DOut
from brovik.sensor import Sensor, SensorPEnum
from brovik.simulator import Simulator

from .process import scaling
from .process.outputs import Output
from .process.plant import Plant

PRESSURE_SCALES = {
    SensorPEnum.SMC_PSE564_02: scaling.SMC_PSE564_02,
    SensorPEnum.Gems_3500R0006G01B000: scaling.GEMS_3500,
}

#: No sensor stands at zero by itself, bar and mS/cm. It gives the calibration something to do.
PRESSURE_ZERO_ERROR: Final = 0.004
CONDUCTIVITY_ZERO_ERROR: Final = 0.005


class Board:
    """Stands between process and host. Belongs to the machine thread after its construction."""

    def __init__(self, with_steam: bool) -> None:
        """Numbers the inputs and outputs and shows those that the machine has."""
        self._douts = {Output(int(dout.enum)): dout for dout in Actuator.all_douts}
        self._blocked: Set[Output] | None = None
        self._simulated = (Simulator.a_in_0, Simulator.a_in_1)
        for number, dout in enumerate(Actuator.all_douts, start=1):
            dout.num = number
        for number, din in enumerate(Sensor.all_dins, start=1):
            din.num = number
        #: The outputs that the machine has.
        self.shown = tuple(o for o in Output if with_steam or o is not Output.MV_STEAM)
        Actuator.set_dout_model(self._douts[output] for output in self.shown)

    @property
    def pressure(self) -> float:
        """Pressure in the barrel, bar."""
        return Sensor.druck

    @property
    def conductivity(self) -> float:
        """Conductivity past the sensor, mS/cm."""
        return Sensor.leitwert

    @property
    def level_reached(self) -> bool:
        """The level switch of the lye bath."""
        return Sensor.level.state

    @property
    def sensor_defective(self) -> bool:
        """The conductivity sensor gives no signal."""
        return Sensor.lw_sensor_defective

    @property
    def on(self) -> Set[Output]:
        """The outputs that are on."""
        return {output for output, dout in self._douts.items() if dout.state}

    def dout(self, output: Output) -> DOut:
        """The host's object for an output."""
        return self._douts[output]

    def switch(self, output: Output, on: bool) -> None:
        """Switches one output."""
        self._douts[output].state = on

    def all_off(self) -> None:
        """Switches everything off."""
        for dout in self._douts.values():
            dout.state = False

    def block(self, outputs: Set[Output]) -> None:
        """Locks these outputs against the operator and frees all others."""
        if outputs != self._blocked:
            self._blocked = outputs
            Actuator.unblock_all_except_of({ActuatorEnum(output.value) for output in outputs})

    def take_over_simulated_inputs(self, plant: Plant) -> None:
        """Lets whoever has moved a simulated input since it was last shown move the plant."""
        plant.rates.rise, plant.rates.fall = Simulator.p_inc_rate, Simulator.p_dec_rate
        moved = (Simulator.a_in_0, Simulator.a_in_1)
        pressure_moved, conductivity_moved = (m != s for m, s in zip(moved, self._simulated))
        self._simulated = moved
        if pressure_moved:
            plant.pressure = max(0.0, PRESSURE_SCALES[Sensor.p_type].value(moved[0]))
        if conductivity_moved:
            plant.conductivity = max(0.0, scaling.SELI_SLI_03.value(moved[1]))

    def measure(self, plant: Plant) -> None:
        """Reads the plant's sensors."""
        Sensor.set_p_and_apply_offset(plant.pressure + PRESSURE_ZERO_ERROR)
        Sensor.set_lw_and_apply_offset(plant.conductivity + CONDUCTIVITY_ZERO_ERROR)
        Sensor.level.state = plant.level

    def show_analogue_inputs(self, plant: Plant) -> None:
        """Keeps the analogue inputs at what the sensors would give."""
        Sensor.ain1.value = PRESSURE_SCALES[Sensor.p_type].percent(plant.pressure)
        Sensor.ain2.value = scaling.SELI_SLI_03.percent(plant.conductivity)
        Simulator.a_in_0 = round(Sensor.ain1.value)
        Simulator.a_in_1 = round(Sensor.ain2.value)
        self._simulated = (Simulator.a_in_0, Simulator.a_in_1)
