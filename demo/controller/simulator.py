"""The values of the simulated hardware that a developer sets."""

from brovik import Logger
from brovik.simulator import SimuEnum, Simulator

from .process.scaling import SELI_SLI_03
from .values import fitting


def wish(enum: SimuEnum, value: object) -> None:
    """Sets a value. The machine thread finds the inputs moved and moves the plant."""
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
