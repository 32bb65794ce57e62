"""Jobs: what drives the machine from a press of the operator to its end."""

from abc import ABC, abstractmethod
from collections.abc import Callable
from contextlib import closing
from dataclasses import dataclass
from typing import Final

from brovik import Logger, forward_exception
from brovik.auto import Auto, ProgressColor
from brovik.gui import Gui
from brovik.settings import SettingsValues

from .board import Board
from .process import steps
from .process.control import Control, Procedure, StepFailed
from .process.recipe import Electrolyte, Recipe
from .process.sequence import Progress, Step, steps_for

READY_STATUS: Final = "Bereit"
PROGRAM_ERROR: Final = "Programmfehler, siehe Meldung."


@dataclass(frozen=True)
class Outcome:
    """How a job has ended, as the list of charts shows it."""

    result: str
    status: str


ABORTED: Final = Outcome("neutral", "abgebrochen")


@dataclass(frozen=True)
class BathView:
    """The attributes of `Auto` that show one bath. The settings have two of the same names."""

    active: str
    maximum: str
    minimum: str
    set_point: str
    too_low: str


BATH_VIEWS: Final = {
    Electrolyte.ACID: BathView(
        "lw_saure_active", "lw_saure_max", "lw_saure_min", "lw_saure_sp", "lw_saure_too_low"
    ),
    Electrolyte.LYE: BathView(
        "lw_lauge_active", "lw_lauge_max", "lw_lauge_min", "lw_lauge_sp", "lw_lauge_too_low"
    ),
}


def job_running() -> bool:
    """Whether a job is running. For any thread; only on the machine's it stays true for a while."""
    return Auto.active or any(getattr(Auto, view.active) for view in BATH_VIEWS.values())


def show_progress(percent: int, text: str, color: ProgressColor = ProgressColor.Normal) -> None:
    """Sets the three parts of the progress display. Below 0 percent the bar is indeterminate."""
    Auto.progress = percent
    Auto.progress_str = text
    Auto.progress_color = color


class Job(ABC):
    """Advances its procedure and keeps `Auto` and `Gui` current. Belongs to the machine thread.

    A job is its own watcher: what the steps tell goes straight to the screens.
    """

    #: What the job is called in messages.
    title: str

    def __init__(self, board: Board, recipe: Recipe) -> None:
        self._board = board
        self.control = Control(board, self, SettingsValues, recipe)
        self.too_low_baths: list[Electrolyte] = []
        self.outcome = ABORTED
        for electrolyte, view in BATH_VIEWS.items():
            setattr(Auto, view.minimum, recipe.limits[electrolyte].minimum)
            setattr(Auto, view.set_point, recipe.limits[electrolyte].set_point)
        self._procedure = self.procedure()

    def advance(self, dt: float) -> bool:
        """Lets `dt` seconds pass. False once the job has ended, in whatever way."""
        self.control.now += dt
        try:
            if self._board.sensor_defective:
                raise StepFailed("Es wird kein Signal vom Leitwertsensor erkannt.")
            next(self._procedure)
            return True
        except StopIteration:
            self._end(self.finished)
        except StepFailed as failure:
            self.fail(str(failure))
            Gui.message(self.title, str(failure), "error")
        except Exception:  # pylint: disable=broad-exception-caught
            forward_exception()
            self.fail(PROGRAM_ERROR)
        return False

    def abort(self) -> None:
        """Ends the job where it stands."""
        Logger.info(f"{self.title} abgebrochen")
        self._end(self.aborted)

    def break_off(self) -> None:
        """Switches off what the step under way has switched on, and shows nothing of it."""
        self._procedure.close()

    def fail(self, reason: str) -> None:
        """Ends the job where it stands, for a reason that stays on the page."""
        Logger.warning(f"{self.title} fehlgeschlagen: {reason}")
        self.outcome = Outcome("error", reason)
        self._end(lambda: self.failed(reason))

    def _end(self, show_ending: Callable[[], None]) -> None:
        try:
            self._procedure.close()
        finally:
            self._board.all_off()
            self.clear()
            Gui.status = READY_STATUS
            show_ending()

    def detail(self, text: str) -> None:
        """What the step is doing just now."""
        Gui.status3 = text

    def peak(self, electrolyte: Electrolyte, conductivity: float) -> None:
        """Highest conductivity of this electrolyte so far."""
        setattr(Auto, BATH_VIEWS[electrolyte].maximum, conductivity)

    def too_low(self, electrolyte: Electrolyte) -> None:
        """The electrolyte stays below its minimum."""
        self.too_low_baths.append(electrolyte)
        setattr(Auto, BATH_VIEWS[electrolyte].too_low, True)

    def set_point_reached(self) -> None:
        """The set point has been held long enough."""
        Auto.lw_sp_reached = True

    def too_low_text(self) -> str:
        """Which baths are too low; empty if none is."""
        names = " und ".join(electrolyte.value for electrolyte in self.too_low_baths)
        return f"Leitwert zu niedrig: {names}. Bitte auffrischen." if names else ""

    @abstractmethod
    def procedure(self) -> Procedure:
        """All steps of the job as one."""

    @abstractmethod
    def clear(self) -> None:
        """Takes back what says that the job is running."""

    @abstractmethod
    def finished(self) -> None:
        """Shows that the job has reached its end."""

    @abstractmethod
    def failed(self, reason: str) -> None:
        """Shows that a check, or an error of the program, has ended the job."""

    @abstractmethod
    def aborted(self) -> None:
        """Shows that the operator has ended the job."""


class AutomaticRun(Job):
    """A cleaning of one barrel."""

    title = "Automatikbetrieb"

    def __init__(
        self,
        board: Board,
        recipe: Recipe,
        on_step: Callable[[Step | None], None],
        first: str | None = None,
    ) -> None:
        """`on_step` hears of each step at its start, and None at the end of the run.

        With `first`, the key of a step, the run begins there.
        """
        super().__init__(board, recipe)
        self._on_step = on_step
        self._steps = steps_for(recipe)
        self._first = max((i for i, step in enumerate(self._steps) if step.key == first), default=0)
        Auto.intense_cleaning = recipe.lengthening > 1.0
        Auto.intense_factor = recipe.lengthening
        for electrolyte, view in BATH_VIEWS.items():
            setattr(Auto, view.too_low, False)
            self.peak(electrolyte, 0.0)
        show_progress(0, "0 %")
        Auto.active = True

    def procedure(self) -> Procedure:
        progress = Progress(self.control, self._steps)
        for index, step in enumerate(self._steps[self._first :], start=self._first):
            Gui.status = f"Schritt {index + 1} von {len(self._steps)}: {step.title}"
            Logger.info(Gui.status)
            self._on_step(step)
            progress.start_step()
            with closing(step.run(self.control)) as procedure:
                for _ in procedure:
                    percent = progress.percent(index)
                    show_progress(percent, f"{percent} %")
                    yield

    def clear(self) -> None:
        Auto.active = False
        self._on_step(None)

    def finished(self) -> None:
        warning = self.too_low_text()
        color = ProgressColor.Warning if warning else ProgressColor.Success
        show_progress(100, "100 %", color)
        Gui.status3 = warning or "Das Fass ist gereinigt und vorgespannt."
        self.outcome = Outcome("warning" if warning else "success", Gui.status3)
        if warning:
            Gui.message(self.title, warning, "warning")

    def failed(self, reason: str) -> None:
        Auto.progress_color = ProgressColor.Error
        Gui.status3 = reason

    def aborted(self) -> None:
        show_progress(0, "0 %", ProgressColor.Warning)
        Gui.status3 = "Der Automatikbetrieb wurde abgebrochen."


class BathTest(Job):
    """A test of one bath, which someone refreshes meanwhile."""

    title = "Leitwertprüfung"

    def __init__(self, board: Board, recipe: Recipe, electrolyte: Electrolyte) -> None:
        super().__init__(board, recipe)
        self.electrolyte = electrolyte
        self._finish = False
        self._view = BATH_VIEWS[electrolyte]
        setattr(Auto, self._view.too_low, False)
        self.peak(electrolyte, 0.0)
        Auto.lw_sp_reached = False
        show_progress(-1, "Prüfung")
        setattr(Auto, self._view.active, True)

    @property
    def can_finish(self) -> bool:
        """Whether a press finishes the test rather than aborting it."""
        return Auto.lw_sp_reached and not self._finish

    def finish(self) -> None:
        """Ends the circulation and brings the electrolyte back."""
        self._finish = True

    def procedure(self) -> Procedure:
        self._show_step("Dichtheitsprobe")
        yield from steps.leak_test(self.control)
        self._show_step("Umwälzen und messen")
        yield from steps.refresh(self.control, self.electrolyte, lambda: self._finish)
        self._show_step(f"{self.electrolyte.value} zurückfördern")
        yield from steps.give_back(self.control, self.electrolyte)

    def _show_step(self, text: str) -> None:
        Gui.status = f"{self.title} {self.electrolyte.value}: {text}"

    def clear(self) -> None:
        setattr(Auto, self._view.active, False)
        Auto.lw_sp_reached = False

    def finished(self) -> None:
        show_progress(100, "100 %", ProgressColor.Success)
        maximum = getattr(Auto, self._view.maximum)
        Gui.status3 = f"{self.title} abgeschlossen, Höchstwert {maximum:.2f} mS/cm."

    def failed(self, reason: str) -> None:
        show_progress(0, "0 %", ProgressColor.Error)
        Gui.status3 = reason

    def aborted(self) -> None:
        show_progress(0, "0 %", ProgressColor.Warning)
        Gui.status3 = self.too_low_text() or "Die Leitwertprüfung wurde abgebrochen."
