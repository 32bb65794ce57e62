"""The values of the simulated hardware that a developer sets."""

from brovik.simulator import SimuEnum, Simulator

from .process.scaling import SELI_SLI_03
from .values import fitting


def wish(enum: SimuEnum, value: object) -> None:
    """Sets a value. The machine thread finds the inputs moved and moves the plant."""
    if enum == SimuEnum.Enabled:
        Simulator.enabled = bool(fitting(value, False))
        return
    number = float(fitting(value, 0.0))
    if enum == SimuEnum.AIn0:
        Simulator.a_in_0 = round(number)
    elif enum == SimuEnum.AIn1:
        Simulator.a_in_1 = round(number)
    else:
        Simulator.a_in_1 = round(SELI_SLI_03.percent(number))
