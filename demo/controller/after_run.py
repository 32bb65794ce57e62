"""What the operator is asked after a run, and at no other time."""

from typing import Final

from .dialogs import DialogId, Questions
from .maintenance_plans import Plan
from .upkeep import DONE, LATER, Upkeep

TITLE: Final = "Wartung"


class AfterRun:
    """Asks for the maintenance that is due, one plan after the other. Belongs to the machine thread."""

    def __init__(self, questions: Questions, upkeep: Upkeep) -> None:
        self.questions = questions
        self._upkeep = upkeep
        #: The plans that are still to be asked for; the first one is asked for now.
        self._due: list[Plan] = []

    def ask(self) -> None:
        """A run has ended."""
        self._due = self._upkeep.due()
        self._ask_next()

    def withdraw(self) -> None:
        """A run begins: what nobody has answered is asked again after it."""
        if self._due:
            self.questions.withdraw(self._id(self._due[0]))
            self._due = []
        self.questions.withdraw(DialogId.SAVE_REPORT)

    def _ask_next(self) -> None:
        if self._due:
            plan = self._due[0]
            self.questions.ask(
                self._id(plan), TITLE, plan.text, DONE, LATER, lambda yes: self._answered(plan, yes), "info"
            )

    def _answered(self, plan: Plan, done: bool) -> None:
        self._upkeep.answer(plan, done)
        del self._due[0]
        self._ask_next()

    def _id(self, plan: Plan) -> int:
        return DialogId.MAINTENANCE + self._upkeep.index(plan)
