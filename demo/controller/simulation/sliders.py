"""The sliders of the simulator's window, which show the plant and move it."""

from collections.abc import Mapping
from typing import Final

from brovik import Logger
from brovik.sensor import Sensor, SensorPEnum
from brovik.simulator import SimuEnum, Simulator

from ..process.scaling import GEMS_3500, SELI_SLI_03, SMC_PSE564_02, Scale
from ..values import fitting
from .plant import Plant

#: What the analogue input shows of the pressure, by the sensor that is fitted.
PRESSURE_SCALES: Final[Mapping[SensorPEnum, Scale]] = {
    SensorPEnum.SMC_PSE564_02: SMC_PSE564_02,
    SensorPEnum.Gems_3500R0006G01B000: GEMS_3500,
}


def wish(enum: SimuEnum, value: object) -> None:
    """Sets a slider: `AIn0` and `AIn1` in percent, `Lw` in mS/cm. For any thread."""
    try:
        if enum == SimuEnum.Enabled:
            Simulator.enabled = bool(fitting(value, False))
        elif enum == SimuEnum.AIn0:
            Simulator.a_in_0 = int(fitting(value, 0))
        elif enum == SimuEnum.AIn1:
            Simulator.a_in_1 = int(fitting(value, 0))
        else:
            Simulator.a_in_1 = round(SELI_SLI_03.percent(float(fitting(value, 0.0))))
    except ValueError as error:
        Logger.warning(f"Simulator, {enum.name} bleibt unverändert: {error}")


class Sliders:
    """Stands between plant and window. Belongs to the machine thread after its construction."""

    def __init__(self) -> None:
        #: Where the sliders of the two analogue inputs have been left, percent.
        self._left_at = (Simulator.a_in_0, Simulator.a_in_1)

    def move(self, plant: Plant) -> None:
        """Lets whoever has moved a slider since it was last shown move the plant."""
        plant.rates.rise, plant.rates.fall = Simulator.p_inc_rate, Simulator.p_dec_rate
        found_at = (Simulator.a_in_0, Simulator.a_in_1)
        pressure_moved, conductivity_moved = (f != l for f, l in zip(found_at, self._left_at))
        self._left_at = found_at
        if pressure_moved:
            plant.pressure = max(0.0, PRESSURE_SCALES[Sensor.p_type].value(found_at[0]))
        if conductivity_moved:
            plant.conductivity = max(0.0, SELI_SLI_03.value(found_at[1]))

    def show(self, plant: Plant) -> None:
        """Keeps the analogue inputs, and the sliders, at what the sensors would give.

        The window moves a slider at any moment: one that is not where it was left waits to be found.
        """
        Sensor.ain1.value = PRESSURE_SCALES[Sensor.p_type].percent(plant.pressure)
        Sensor.ain2.value = SELI_SLI_03.percent(plant.conductivity)
        pressure, conductivity = self._left_at
        if Simulator.a_in_0 == pressure:
            Simulator.a_in_0 = pressure = _position(Sensor.ain1.value)
        if Simulator.a_in_1 == conductivity:
            Simulator.a_in_1 = conductivity = _position(Sensor.ain2.value)
        self._left_at = (pressure, conductivity)


def _position(percent: float) -> int:
    """The one that a slider can take."""
    return max(Simulator.a_in_0_min, min(round(percent), Simulator.a_in_0_max))
