"""What has to be maintained at the machine, and when. For another machine, this is the place to change."""

from dataclasses import dataclass
from typing import Final

from .process.outputs import Output
from .process.usage import BARRELS, hours, switchings

#: Stands for the calendar in place of a counter.
DAYS: Final = "Tage"


@dataclass(frozen=True)
class Plan:
    """Work that comes round each time that a counter has gone on by `every`, or each so many DAYS.

    The key is what is stored of it, so it stays.
    """

    key: str
    text: str
    counter: str
    every: float


PLANS: Final = (
    Plan("pump_seal", "Gleitringdichtung der Pumpe auf Leckage prüfen.", hours(Output.PUMPE), 250.0),
    Plan("lye_valve", "Membran des Ventils Lauge IN tauschen.", switchings(Output.MV_LAUGE_IN), 20_000.0),
    Plan("sensor", "Leitwertsensor ausbauen und reinigen.", BARRELS, 500.0),
    Plan("hoses", "Schläuche und Kupplungen auf Schäden prüfen.", DAYS, 90.0),
)
