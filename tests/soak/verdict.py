"""What must hold of a long run."""

from collections.abc import Sequence
from statistics import linear_regression
from typing import Final

from samples import KIB, Sample, Stall

DAY_HOURS: Final = 24.0
#: Of resident memory in a simulated day after the first, MB. In the first one caches fill.
MOST_GROWTH: Final = 1.0
#: Of the GUI thread, ms, without the time for which the processor did other things.
LONGEST_STALL: Final = 100
#: The part of the operator's actions that may come to nothing, as when a run ends while the button is held.
MOST_MISSED: Final = 0.25


def growth(samples: Sequence[Sample]) -> float:
    """Of resident memory after the first day, MB in a day; 0 if there is nothing after it."""
    later = [sample for sample in samples if sample.hours > DAY_HOURS]
    if len(later) < 2:
        return 0.0
    line = linear_regression([s.hours / DAY_HOURS for s in later], [s.memory / KIB for s in later])
    return float(line.slope)


def findings(
    samples: Sequence[Sample], stalls: Sequence[Stall], complaints: Sequence[str], done: int, missed: int
) -> list[str]:
    """What does not hold, in words."""
    found = []
    if (slope := growth(samples)) >= MOST_GROWTH:
        found.append(f"The memory grows by {slope:.2f} MB in a simulated day")
    own = [stall for stall in stalls if stall.own > LONGEST_STALL]
    if own:
        longest = max(own, key=lambda stall: stall.own)
        found.append(f"The screens stood {len(own)} times, once for {longest.own} of {longest.length} ms")
    if missed > MOST_MISSED * (done + missed):
        found.append(f"{missed} of {done + missed} actions came to nothing")
    return found + [f"In the log: {line}" for line in complaints]
