"""The conductivity test of a bath."""

from brovik.auto import Auto, ProgressColor
from brovik.gui import Gui

from .bath_views import BATH_VIEWS
from .board import Board
from .jobs import Job, show_progress
from .process import steps
from .process.control import Procedure
from .process.recipe import Electrolyte, Recipe


class BathTest(Job):
    """A test of one bath, which someone refreshes meanwhile."""

    title = "Leitwertprüfung"

    def __init__(self, board: Board, recipe: Recipe, electrolyte: Electrolyte) -> None:
        super().__init__(board, recipe)
        self.electrolyte = electrolyte
        self._finish = False
        self._view = BATH_VIEWS[electrolyte]

    @property
    def can_finish(self) -> bool:
        """Whether a press finishes the test rather than aborting it."""
        return Auto.lw_sp_reached and not self._finish

    def finish(self) -> None:
        """Ends the circulation and brings the electrolyte back."""
        self._finish = True

    def started(self) -> None:
        self._view.show_too_low(False)
        self._view.show_peak(0.0)
        Auto.lw_sp_reached = False
        show_progress(-1, "Prüfung")
        self._view.show_active(True)

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
        self._view.show_active(False)
        Auto.lw_sp_reached = False

    def finished(self) -> None:
        show_progress(100, "100 %", ProgressColor.Success)
        Gui.status3 = f"{self.title} abgeschlossen, Höchstwert {self._view.peak:.2f} mS/cm."

    def failed(self, reason: str) -> None:
        show_progress(0, "0 %", ProgressColor.Error)
        Gui.status3 = reason

    def aborted(self) -> None:
        show_progress(0, "0 %", ProgressColor.Warning)
        Gui.status3 = self.too_low_text() or "Die Leitwertprüfung wurde abgebrochen."
