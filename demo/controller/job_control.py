"""Starting and ending jobs: the automatic run and the tests of the baths."""

from typing import Final

from brovik import Logger
from brovik.actuator import Actuator
from brovik.auto import AutoEnum
from brovik.sensor import Sensor
from brovik.settings import SettingsValues
from brovik.shell import Shell

from . import notices
from .after_run import AfterRun
from .automatic_run import AutomaticRun
from .bath_test import BathTest
from .bath_views import BATH_VIEWS
from .board import Board
from .bookkeeping import Bookkeeper
from .dialogs import DialogId, Questions
from .interrupted import NO_RUN, RunNote
from .jobs import PROGRAM_ERROR, Job
from .process.hardware import Hardware
from .process.recipe import Electrolyte, Equipment, Recipe
from .process.sequence import steps_for
from .storage import StorageWriter

BATH_TESTS: Final = {
    AutoEnum.ToggleLwTestSaure: Electrolyte.ACID,
    AutoEnum.ToggleLwTestLauge: Electrolyte.LYE,
}


class JobControl:
    """Holds the job that runs. Belongs to the machine thread."""

    def __init__(  # pylint: disable=too-many-arguments
        self,
        board: Board,
        hardware: Hardware,
        equipment: Equipment,
        writer: StorageWriter,
        books: Bookkeeper,
        after_run: AfterRun,
    ) -> None:
        """`hardware` is told of starts and ends."""
        self._board = board
        self._hardware = hardware
        self._equipment = equipment
        self._writer = writer
        self._books = books
        self._after_run = after_run
        self._job: Job | None = None

    @property
    def questions(self) -> Questions:
        """The questions that wait for an answer."""
        return self._after_run.questions

    @property
    def running(self) -> bool:
        """Whether there is a job."""
        return self._job is not None

    @property
    def cleaning(self) -> bool:
        """Whether the job is an automatic run."""
        return isinstance(self._job, AutomaticRun)

    def advance(self, dt: float) -> None:
        """Lets `dt` seconds pass for the job and for its record."""
        running = self._job is None or self._job.advance(dt)
        self._books.advance(dt)
        if not running:
            self._end()

    def fail(self) -> None:
        """Ends the job because of an error of the program."""
        if self._job is not None:
            try:
                self._job.fail(PROGRAM_ERROR)
            finally:
                self._end()

    def break_off(self) -> None:
        """Breaks off a job that is running. For the time after the thread."""
        if self._job is not None:
            # Else its procedure would switch outputs whenever Python came to collect it.
            self._job.break_off()

    # What the operator does.

    def toggle(self, enum: AutoEnum) -> None:
        """Starts, aborts or finishes the run or the test of a bath."""
        if enum == AutoEnum.Toggle:
            self._toggle_run()
        else:
            self._toggle_bath_test(BATH_TESTS[enum])

    def start_or_abort(self) -> None:
        """Starts a run, or aborts the job, whatever it is."""
        if self._job is not None:
            self._abort()
        elif self._may_start():
            intense = SettingsValues.intense_cleaning
            lengthening = SettingsValues.intense_factor if intense else 1.0
            self._start_run(RunNote("", lengthening, SettingsValues.do_steam_step))

    def offer_to_continue(self, note: RunNote) -> None:
        """Asks whether to go on with a run that was interrupted."""
        if self._job is not None:
            # Started at the machine's own button before the screens were up. A run has its own note by now.
            return
        steps = {step.key: step for step in steps_for(self._recipe(note.lengthening, note.steam))}
        if note.step not in steps:
            Logger.warning(f"Unterbrochener Schritt {note.step!r} lässt sich nicht fortsetzen")
            self._discard()
            return
        self.questions.ask(
            DialogId.CONTINUE_RUN,
            "Automatikbetrieb unterbrochen",
            f"Ein Lauf wurde im Schritt „{steps[note.step].title}“ unterbrochen. Fortsetzen?",
            "Fortsetzen",
            "Verwerfen",
            lambda yes: self._continue(note) if yes else self._discard(),
        )

    def reserve_for_upgrade(self) -> bool:
        """Keeps jobs from starting until the program ends. False if one is running."""
        if self._job is None:
            Shell.upgrade_in_progress_or_finished = True
        return self._job is None

    def _toggle_run(self) -> None:
        if self._job is None or self.cleaning:
            self.start_or_abort()
        else:
            notices.warn("Zuerst die Leitwertprüfung beenden")

    def _toggle_bath_test(self, electrolyte: Electrolyte) -> None:
        job = self._job
        if job is None:
            self._start_bath_test(electrolyte)
        elif not isinstance(job, BathTest) or job.electrolyte is not electrolyte:
            notices.warn(f"{job.title} läuft bereits")
        elif job.can_finish:
            job.finish()
        else:
            self._abort()

    def _discard(self) -> None:
        """Nobody goes on with the interrupted run."""
        self._writer.submit(NO_RUN)
        self._books.close_interrupted()

    # Starts.

    def _continue(self, note: RunNote) -> None:
        if self._may_start():
            self._start_run(note)

    def _start_run(self, note: RunNote) -> None:
        """From the step of the note on; from the beginning if it has none."""
        recipe = self._recipe(note.lengthening, note.steam)
        self._hardware.run_started(resumed=bool(note.step))
        self._prepare()
        self._books.begin(AutomaticRun.title, recipe, note)
        self._start(AutomaticRun(self._board, recipe, self._books, note.step))

    def _start_bath_test(self, electrolyte: Electrolyte) -> None:
        if self._may_start():
            recipe = self._recipe(1.0, steam=False)
            self._hardware.bath_test_started(electrolyte, recipe.limits[electrolyte].set_point)
            self._prepare()
            self._start(BathTest(self._board, recipe, electrolyte))

    def _start(self, job: Job) -> None:
        job.start()
        self._job = job
        # Now, not with the next period: until then the operator could open what the job never closes.
        self._board.lock(running=True)

    def _may_start(self) -> bool:
        reason = ""
        if Sensor.lw_sensor_defective:
            reason = "Es wird kein Signal vom Leitwertsensor erkannt"
        elif Shell.upgrade_in_progress_or_finished:
            reason = "Nach einem Upgrade muss die Maschine neu gestartet werden"
        if reason:
            notices.warn(reason)
        return not reason

    def _prepare(self) -> None:
        """Leaves nothing behind of what was before the job."""
        self.questions.withdraw(DialogId.CONTINUE_RUN)
        self._after_run.withdraw()
        Actuator.manual_heating_enabled = False
        self._board.all_off()

    def _recipe(self, lengthening: float, steam: bool) -> Recipe:
        limits = {electrolyte: view.wished_limits for electrolyte, view in BATH_VIEWS.items()}
        # A note may be from before the valve was taken out.
        return Recipe(self._equipment, steam and self._equipment.steam_valve, lengthening, limits)

    # Ends.

    def _abort(self) -> None:
        if self._job is not None:
            self._job.abort()
            self._end()

    def _end(self) -> None:
        job, self._job = self._job, None
        self._board.lock(running=False)
        self._hardware.job_ended()
        if isinstance(job, AutomaticRun):
            self._books.end(job.outcome)
            self._after_run.ask()
