"""The maintenance of the machine by its operator: what is due, and what has been done."""

import math
from collections.abc import Callable, Mapping, Sequence
from datetime import date
from typing import Final

from .journal import JOURNAL, Event, Kind
from .maintenance_plans import DAYS, PLANS, Plan
from .storage import MAINTENANCE, Change, StorageWriter
from .values import fitting

LATER: Final = "Später"
DONE: Final = "Erledigt"


class Upkeep:
    """Knows when each plan was worked off last. Belongs to the machine thread."""

    def __init__(  # pylint: disable=too-many-arguments  # each is named by its caller
        self,
        stored: Mapping[str, object],
        counters: Callable[[], Mapping[str, float]],
        writer: StorageWriter,
        plans: Sequence[Plan] = PLANS,
        today: Callable[[], date] = date.today,
    ) -> None:
        """`stored` has the reading at which each plan was worked off last, by the plan's key."""
        self._counters = counters
        self._writer = writer
        self._plans = plans
        self._today = today
        self._done: dict[str, float] = {}
        for plan in plans:
            reading = _reading(stored.get(plan.key))
            self._done[plan.key] = self._reading(plan) if reading is None else reading
        new = {key: reading for key, reading in self._done.items() if _reading(stored.get(key)) is None}
        if new:
            # They count from now on.
            writer.submit(Change(MAINTENANCE, new))

    def due(self) -> list[Plan]:
        """The plans that are due, in their order."""
        return [plan for plan in self._plans if self._gone_on(plan) >= plan.every]

    def index(self, plan: Plan) -> int:
        """The place of a plan among all."""
        return self._plans.index(plan)

    def answer(self, plan: Plan, done: bool) -> None:
        """The operator has worked it off, or will later."""
        reading = self._reading(plan)
        details = {"plan": plan.key, "counter": plan.counter, "reading": reading, "done": done}
        JOURNAL.add(Kind.MAINTENANCE, Event.ACKNOWLEDGED, plan.text, DONE if done else LATER, details)
        if done:
            self._count_from(plan, reading)

    def _gone_on(self, plan: Plan) -> float:
        reading = self._reading(plan)
        if reading < self._done[plan.key]:
            # The clock was ahead when it was worked off, and has been put right since.
            self._count_from(plan, reading)
        return reading - self._done[plan.key]

    def _count_from(self, plan: Plan, reading: float) -> None:
        self._done[plan.key] = reading
        self._writer.submit(Change(MAINTENANCE, {plan.key: reading}))

    def _reading(self, plan: Plan) -> float:
        if plan.counter == DAYS:
            return float(self._today().toordinal())
        return self._counters().get(plan.counter, 0.0)


def _reading(value: object) -> float | None:
    """A stored reading; None if there is none that makes sense."""
    try:
        reading = float(fitting(value, 0.0))
    except ValueError:
        return None
    return reading if math.isfinite(reading) else None
