"""The machine in operation: the operator's presses, the job that runs, and the plant."""

from typing import Final

from brovik import Logger
from brovik.actuator import Actuator, ActuatorEnum
from brovik.auto import AutoEnum
from brovik.gui import Gui
from brovik.sensor import Sensor, SensorEnum
from brovik.settings import SettingsValues
from brovik.shell import Shell

from . import hand
from .automatic_run import AutomaticRun
from .bath_test import BathTest
from .bath_views import BATH_VIEWS
from .board import Board
from .dialogs import DialogId, Questions
from .interrupted import NO_RUN, RunNote
from .jobs import PROGRAM_ERROR, Job
from .process import heating, interlocks
from .process.outputs import Output
from .process.plant import Plant
from .process.recipe import Electrolyte, Equipment, Recipe
from .process.sequence import Step, steps_for
from .recording import Recorder
from .storage import StorageWriter

BATH_TESTS: Final = {
    AutoEnum.ToggleLwTestSaure: Electrolyte.ACID,
    AutoEnum.ToggleLwTestLauge: Electrolyte.LYE,
}
#: How far above its set point a bath gets dosed that is being refreshed, mS/cm.
DOSING_MARGIN: Final = 1.5


class Operation:
    """All that happens on the machine thread. From another thread, a call of it is posted."""

    def __init__(  # pylint: disable=too-many-arguments
        self,
        board: Board,
        plant: Plant,
        equipment: Equipment,
        writer: StorageWriter,
        recorder: Recorder,
    ) -> None:
        self.questions = Questions(Gui.question, Gui.close_dialog)
        self._board = board
        self._plant = plant
        self._equipment = equipment
        self._writer = writer
        self._recorder = recorder
        self._job: Job | None = None

    # What the thread calls.

    def advance(self, dt: float) -> None:
        """Lets `dt` seconds pass: first for the plant, then for the job."""
        self._board.take_over_simulated_inputs(self._plant)
        self._plant.advance(dt, self._board.on)
        self._board.measure(self._plant)
        running = self._job is None or self._job.advance(dt)
        self._recorder.advance(dt)
        if not running:
            self._end_job()
        self._heat()
        self._update_blocking()

    def publish(self) -> None:
        """Shows what changes slowly."""
        self._board.show_analogue_inputs(self._plant)
        heater = ", Heizung ein" if Actuator.heat_1.state else ""
        level = "erreicht" if Sensor.level.state else "unterschritten"
        Gui.status2 = f"Laugebecken {self._plant.lye_temperature:.0f} °C{heater}\nFüllstand {level}"

    def halt(self) -> None:
        """Switches everything off and ends the job, because of an error that the operator has been shown."""
        self._board.all_off()
        Actuator.manual_heating_enabled = False
        if self._job is not None:
            try:
                self._job.fail(PROGRAM_ERROR)
            finally:
                self._end_job()

    def stop(self) -> None:
        """Breaks off a job that is running. For the time after the thread."""
        if self._job is not None:
            # Else its steps would switch outputs whenever Python came to collect them.
            self._job.break_off()

    # What the operator does.

    def toggle(self, enum: AutoEnum) -> None:
        """Starts, aborts or finishes the run or the test of a bath."""
        if enum == AutoEnum.Toggle:
            self._toggle_run()
        else:
            self._toggle_bath_test(BATH_TESTS[enum])

    def toggle_output(self, enum: ActuatorEnum) -> None:
        """Switches an output by hand."""
        hand.toggle(enum, self._job is not None)
        self._update_blocking()

    def change_input(self, enum: SensorEnum, state: bool) -> None:
        """A push button of the machine or the level switch, as the simulator plays them."""
        if enum == SensorEnum.Level:
            self._plant.level_override = state
            return
        din = Sensor.din_from_enum(enum)
        if din is None:
            Logger.warning(f"Der Eingang {enum.name} lässt sich nicht setzen")
            return
        pushed = state and not din.state
        din.state = state
        if pushed and (self._job is None) == (enum == SensorEnum.Start):
            self._start_or_abort()

    def offer_to_continue(self, note: RunNote) -> None:
        """Asks whether to go on with a run that was interrupted."""
        if self._job is not None:
            # Started at the machine's own button before the screens were up. A run has its own note by now.
            return
        steps = {step.key: step for step in steps_for(self._recipe(note.lengthening, note.steam))}
        if note.step not in steps:
            Logger.warning(f"Unterbrochener Schritt {note.step!r} lässt sich nicht fortsetzen")
            self._writer.submit(NO_RUN)
            return
        self.questions.ask(
            DialogId.CONTINUE_RUN,
            "Automatikbetrieb unterbrochen",
            f"Ein Lauf wurde im Schritt „{steps[note.step].title}“ unterbrochen. Fortsetzen?",
            "Fortsetzen",
            "Verwerfen",
            lambda yes: self._continue(note) if yes else self._writer.submit(NO_RUN),
        )

    def reserve_for_upgrade(self) -> bool:
        """Keeps jobs from starting until the program ends. False if one is running."""
        if self._job is None:
            Shell.upgrade_in_progress_or_finished = True
        return self._job is None

    # Jobs.

    def _toggle_run(self) -> None:
        if self._job is None or isinstance(self._job, AutomaticRun):
            self._start_or_abort()
        else:
            Gui.toast_warn("Zuerst die Leitwertprüfung beenden")

    def _start_or_abort(self) -> None:
        if self._job is not None:
            self._abort()
        elif self._may_start():
            intense = SettingsValues.intense_cleaning
            lengthening = SettingsValues.intense_factor if intense else 1.0
            note = RunNote("", lengthening, SettingsValues.do_steam_step)
            self._plant.connect_new_barrel()
            self._start_run(note)

    def _continue(self, note: RunNote) -> None:
        if self._may_start():
            self._start_run(note)

    def _start_run(self, note: RunNote) -> None:
        recipe = self._recipe(note.lengthening, note.steam)
        steps = steps_for(recipe)

        def remember(step: Step | None) -> None:
            if step is None:
                self._writer.submit(NO_RUN)
            else:
                self._writer.submit(RunNote(step.key, note.lengthening, note.steam).change())
                self._recorder.step(steps.index(step) + 1)

        self._prepare()
        self._recorder.start(AutomaticRun.title, [step.title for step in steps])
        self._begin(AutomaticRun(self._board, recipe, remember, note.step))

    def _toggle_bath_test(self, electrolyte: Electrolyte) -> None:
        job = self._job
        if job is None:
            self._start_bath_test(electrolyte)
        elif not isinstance(job, BathTest) or job.electrolyte is not electrolyte:
            Gui.toast_warn(f"{job.title} läuft bereits")
        elif job.can_finish:
            job.finish()
        else:
            self._abort()

    def _start_bath_test(self, electrolyte: Electrolyte) -> None:
        if self._may_start():
            self._prepare()
            recipe = self._recipe(1.0, steam=False)
            bath = self._plant.baths[electrolyte]
            bath.refresh_to = recipe.limits[electrolyte].set_point + DOSING_MARGIN
            self._begin(BathTest(self._board, recipe, electrolyte))

    def _begin(self, job: Job) -> None:
        job.start()
        self._job = job

    def _may_start(self) -> bool:
        reason = ""
        if Sensor.lw_sensor_defective:
            reason = "Es wird kein Signal vom Leitwertsensor erkannt"
        elif Shell.upgrade_in_progress_or_finished:
            reason = "Nach einem Upgrade muss die Maschine neu gestartet werden"
        if reason:
            Gui.toast_warn(reason)
        return not reason

    def _prepare(self) -> None:
        """Leaves nothing behind of what was before the job."""
        self.questions.withdraw(DialogId.CONTINUE_RUN)
        Actuator.manual_heating_enabled = False
        self._board.all_off()

    def _abort(self) -> None:
        if self._job is not None:
            self._job.abort()
            self._end_job()

    def _end_job(self) -> None:
        if isinstance(self._job, AutomaticRun):
            self._recorder.end(self._job.outcome.result, self._job.outcome.status)
        self._job = None
        for bath in self._plant.baths.values():
            bath.refresh_to = 0.0
        self._update_blocking()

    def _recipe(self, lengthening: float, steam: bool) -> Recipe:
        limits = {electrolyte: view.wished_limits for electrolyte, view in BATH_VIEWS.items()}
        # A note may be from before the valve was taken out.
        return Recipe(self._equipment, steam and self._equipment.steam_valve, lengthening, limits)

    # What goes on beside the jobs.

    def _heat(self) -> None:
        """Heats the lye during a run, or as the operator wants, but never a tank run dry."""
        heater = self._board.dout(Output.HEAT_1)
        checked = self._equipment.level_switch and SettingsValues.test_lauge_level
        if checked and not self._board.level_reached:
            heater.state = False
        elif not Actuator.manual_heating_enabled:
            automatic = isinstance(self._job, AutomaticRun)
            heater.state = automatic and heating.heater_wanted(self._plant.lye_temperature, heater.state)

    def _update_blocking(self) -> None:
        self._board.block(interlocks.blocked(self._board.on, self._job is not None))
