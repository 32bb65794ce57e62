"""The outputs of the machine."""

from enum import Enum


class Output(Enum):
    """An output. Names and numbers are those of the host: `MV_KALT` is `Actuator.mv_kalt`."""

    MV_LAUGE_IN = 0
    MV_SAURE_IN = 1
    MV_KALT = 2
    MV_HEISS = 3
    MV_KREIS = 4
    MV_SAURE_OUT = 5
    MV_LAUGE_OUT = 6
    MV_LUFT = 7
    MV_CO2 = 8
    MV_KANAL = 9
    PUMPE = 10
    HEAT_1 = 11
    MV_STEAM = 12

    # Sets of them are made many times in each period, and the library's own takes a call of Python for each.
    __hash__ = object.__hash__
