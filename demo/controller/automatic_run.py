"""The automatic run."""

from contextlib import closing
from typing import Protocol

from brovik import Logger
from brovik.auto import Auto, ProgressColor
from brovik.gui import Gui

from . import notices
from .bath_views import BATH_VIEWS
from .board import Board
from .jobs import Job, Outcome, show_progress
from .process.control import Check, Procedure
from .process.recipe import Recipe
from .process.sequence import Progress, Step, steps_for


class RunListener(Protocol):
    """Whoever keeps what a run tells."""

    def start_step(self, step: Step) -> None:
        """A step begins."""

    def checked(self, check: Check) -> None:
        """A check has looked at something."""


class AutomaticRun(Job):
    """A cleaning of one barrel."""

    title = "Automatikbetrieb"

    def __init__(
        self,
        board: Board,
        recipe: Recipe,
        listener: RunListener,
        first: str | None = None,
    ) -> None:
        """With `first`, the key of a step, the run begins there."""
        super().__init__(board, recipe)
        self._recipe = recipe
        self._listener = listener
        self._steps = steps_for(recipe)
        self._first = max((i for i, step in enumerate(self._steps) if step.key == first), default=0)

    def started(self) -> None:
        Auto.intense_cleaning = self._recipe.lengthening > 1.0
        Auto.intense_factor = self._recipe.lengthening
        for view in BATH_VIEWS.values():
            view.show_too_low(False)
            view.show_peak(0.0)
        show_progress(0, "0 %")
        Auto.active = True

    def procedure(self) -> Procedure:
        progress = Progress(self.control, self._steps)
        for index, step in enumerate(self._steps[self._first :], start=self._first):
            Gui.status = f"Schritt {index + 1} von {len(self._steps)}: {step.title}"
            Logger.info(Gui.status)
            self._listener.start_step(step)
            progress.start_step()
            with closing(step.run(self.control)) as procedure:
                for _ in procedure:
                    percent = progress.percent(index)
                    show_progress(percent, f"{percent} %")
                    yield

    def clear(self) -> None:
        Auto.active = False

    def checked(self, check: Check) -> None:
        self._listener.checked(check)

    def finished(self) -> None:
        warning = self.too_low_text()
        color = ProgressColor.Warning if warning else ProgressColor.Success
        show_progress(100, "100 %", color)
        Gui.status3 = warning or "Das Fass ist gereinigt und vorgespannt."
        self.outcome = Outcome("warning" if warning else "success", Gui.status3)
        if warning:
            notices.message(self.title, warning, "warning")

    def failed(self, reason: str) -> None:
        Auto.progress_color = ProgressColor.Error
        Gui.status3 = reason

    def aborted(self) -> None:
        show_progress(0, "0 %", ProgressColor.Warning)
        Gui.status3 = "Der Automatikbetrieb wurde abgebrochen."
