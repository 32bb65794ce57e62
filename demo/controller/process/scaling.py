"""What an analogue input shows of a measured value, in percent of its range."""

from dataclasses import dataclass
from typing import Final


@dataclass(frozen=True)
class Scale:
    """A straight line: percent at a value of 0, and percent per bar or mS/cm."""

    zero: float
    slope: float

    def percent(self, value: float) -> float:
        """The input that belongs to a value, percent, kept within its range."""
        return min(100.0, max(0.0, self.zero + self.slope * value))

    def value(self, percent: float) -> float:
        """The value that belongs to an input in percent: bar or mS/cm."""
        return (percent - self.zero) / self.slope


#: Pressure sensors, bar.
SMC_PSE564_02: Final = Scale(20.0, 16.0)
GEMS_3500: Final = Scale(0.0, 100.0 / 6.0)
#: Conductivity sensor, mS/cm.
SELI_SLI_03: Final = Scale(20.0, 0.8)
