"""The machine in operation: its time, its presses, and what goes on beside the jobs."""

from brovik import Logger
from brovik.actuator import Actuator, ActuatorEnum
from brovik.auto import AutoEnum
from brovik.sensor import Sensor, SensorEnum
from brovik.settings import SettingsValues

from . import hand
from .board import Board
from .dialog_watch import DIALOGS
from .interrupted import RunNote
from .job_control import JobControl
from .process import heating
from .process.hardware import Readings
from .process.outputs import Output
from .process.recipe import Equipment
from .simulator_window import SimulatorWindow


class Operation:
    """All that happens on the machine thread. From another thread, a call of it is posted."""

    def __init__(self, board: Board, jobs: JobControl, equipment: Equipment, window: SimulatorWindow) -> None:
        self.questions = jobs.questions
        self._board = board
        self._jobs = jobs
        self._equipment = equipment
        self._window = window

    # What the thread calls.

    def advance(self, dt: float) -> None:
        """Lets `dt` seconds pass: first for the hardware, then for the job."""
        before = self._board.readings
        self._take_buttons(before, self._board.exchange(dt))
        self._jobs.advance(dt)
        self._heat()
        self._lock()

    def publish(self) -> None:
        """Shows what changes slowly."""
        self._board.publish()

    def halt(self) -> None:
        """Switches everything off and ends the job, because of an error that the operator has been shown."""
        try:
            self._board.shut_down()
        finally:
            Actuator.manual_heating_enabled = False
            self._jobs.fail()

    def stop(self) -> None:
        """Breaks off a job that is running. For the time after the thread."""
        self._jobs.break_off()

    # What the operator does.

    def toggle(self, enum: AutoEnum) -> None:
        """Starts, aborts or finishes the run or the test of a bath."""
        self._jobs.toggle(enum)

    def toggle_output(self, enum: ActuatorEnum) -> None:
        """Switches an output by hand."""
        hand.toggle(self._board, enum, self._jobs.running, self._tank_is_dry)
        self._lock()

    def change_input(self, enum: SensorEnum, state: bool) -> None:
        """A push button of the machine has changed, or the simulator plays one, or the level switch."""
        if enum == SensorEnum.Level:
            self._window.set_level(state)
            return
        din = Sensor.din_from_enum(enum)
        if din is None:
            Logger.warning(f"Der Eingang {enum.name} lässt sich nicht setzen")
            return
        if self._board.show_button(din, state) and self._jobs.running != (enum == SensorEnum.Start):
            self._jobs.start_or_abort()

    def take_report(self, report: object) -> None:
        """The dialogs have told of an opening, an answer, a closing."""
        DIALOGS.take(report)
        self.questions.take(report)

    def offer_to_continue(self, note: RunNote) -> None:
        """Asks whether to go on with a run that was interrupted."""
        self._jobs.offer_to_continue(note)

    def reserve_for_upgrade(self) -> bool:
        """Keeps jobs from starting until the program ends. False if one is running."""
        return self._jobs.reserve_for_upgrade()

    # What goes on beside the jobs.

    def _take_buttons(self, before: Readings, now: Readings) -> None:
        """Follows the changes alone: the simulator's window may hold a button meanwhile."""
        if now.start_pressed != before.start_pressed:
            self.change_input(SensorEnum.Start, now.start_pressed)
        # After the start: whoever holds both down gets a machine that stands still.
        if now.stop_pressed != before.stop_pressed:
            self.change_input(SensorEnum.Stop, now.stop_pressed)

    def _heat(self) -> None:
        """Heats the lye during a run, or as the operator wants, but never a tank run dry."""
        on = self._board.is_on(Output.HEAT_1)
        if self._tank_is_dry:
            self._board.switch(Output.HEAT_1, False)
        elif not Actuator.manual_heating_enabled:
            temperature = self._board.readings.lye_temperature
            self._board.switch(Output.HEAT_1, self._jobs.cleaning and heating.heater_wanted(temperature, on))

    @property
    def _tank_is_dry(self) -> bool:
        """There is too little lye to cover the heater, as far as the machine can tell and is to look."""
        checked = self._equipment.level_switch and SettingsValues.test_lauge_level
        return checked and not self._board.readings.level_reached

    def _lock(self) -> None:
        self._board.lock(self._jobs.running)
