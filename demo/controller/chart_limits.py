"""How many saved charts there may be, how old they may become, and which of them go first."""

import re
from collections.abc import Iterable
from dataclasses import dataclass
from datetime import datetime, timedelta
from typing import Final

from .saved_charts import RECORDED, ChartInfo


#: How many go by their age each time that a chart is saved: enough that those that are too old do run out,
#: and so few that a clock that is years ahead for a while does not take all.
OLD_AT_ONCE: Final = 2


@dataclass(frozen=True)
class ChartLimits:
    """What is kept. 0 is no limit."""

    number: int
    days: int

    def surplus(self, charts: Iterable[ChartInfo], now: datetime) -> list[str]:
        """The names of those that go when one has been saved: a few of what is too old, and of too many those
        first that nobody has named, the oldest first."""
        there = sorted(charts, key=lambda info: (not is_unnamed(info), _time(info), info.name))
        old = [info.name for info in there if self._is_old(info, now)][:OLD_AT_ONCE]
        left = [info.name for info in there if info.name not in set(old)]
        too_many = max(0, len(left) - self.number) if self.number else 0
        return old + left[:too_many]

    def _is_old(self, info: ChartInfo, now: datetime) -> bool:
        # What bears no date is as old as can be, but nobody knows.
        return bool(self.days) and datetime.min < _time(info) < now - timedelta(days=self.days)


def is_unnamed(info: ChartInfo) -> bool:
    """Whether it was saved under the name that it was recorded with."""
    return re.search(rf" {re.escape(info.recorded)}:\d\d$", info.name) is not None


def _time(info: ChartInfo) -> datetime:
    try:
        return datetime.strptime(info.recorded, RECORDED)
    except ValueError:
        return datetime.min
