"""Jobs: what drives the machine from a press of the operator to its end."""

from abc import ABC, abstractmethod
from collections.abc import Callable
from dataclasses import dataclass
from typing import Final

from brovik import Logger
from brovik.auto import Auto, ProgressColor
from brovik.gui import Gui
from brovik.settings import SettingsValues

from . import notices
from .bath_views import BATH_VIEWS
from .board import Board
from .process.control import Check, Control, Procedure, StepFailed
from .process.recipe import Electrolyte, Recipe

READY_STATUS: Final = "Bereit"
PROGRAM_ERROR: Final = "Programmfehler, siehe Meldung."


@dataclass(frozen=True)
class Outcome:
    """How a job has ended, as the list of charts shows it."""

    result: str
    status: str


ABORTED: Final = Outcome("neutral", "abgebrochen")


def job_running() -> bool:
    """Whether a job is running. For any thread; only on the machine's it stays true for a while."""
    return Auto.active or any(view.active for view in BATH_VIEWS.values())


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

    #: From `start` on.
    _procedure: Procedure

    def __init__(self, board: Board, recipe: Recipe) -> None:
        """Nothing happens before `start`."""
        self._board = board
        self.control = Control(board, self, SettingsValues, recipe)
        self.too_low_baths: list[Electrolyte] = []
        self.outcome = ABORTED

    def start(self) -> None:
        """Shows that the job is running. To be called once, before everything else."""
        for electrolyte, view in BATH_VIEWS.items():
            view.show_limits(self.control.recipe.limits[electrolyte])
        self.started()
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
            notices.message(self.title, str(failure), "error")
        except Exception:  # pylint: disable=broad-exception-caught
            notices.show_exception()
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
        """Highest conductivity of this electrolyte so far, mS/cm."""
        BATH_VIEWS[electrolyte].show_peak(conductivity)

    def too_low(self, electrolyte: Electrolyte) -> None:
        """The electrolyte stays below its minimum."""
        self.too_low_baths.append(electrolyte)
        BATH_VIEWS[electrolyte].show_too_low(True)

    def set_point_reached(self) -> None:
        """The set point has been held long enough."""
        Auto.lw_sp_reached = True

    def checked(self, check: Check) -> None:
        """A check has looked at something. Only a run keeps that."""

    def too_low_text(self) -> str:
        """Which baths are too low; empty if none is."""
        names = " und ".join(electrolyte.value for electrolyte in self.too_low_baths)
        return f"Leitwert zu niedrig: {names}. Bitte auffrischen." if names else ""

    @abstractmethod
    def procedure(self) -> Procedure:
        """All steps of the job, one after the other."""

    @abstractmethod
    def started(self) -> None:
        """Shows that the job is running, and nothing any more of an earlier one."""

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
