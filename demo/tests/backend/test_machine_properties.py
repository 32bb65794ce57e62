"""Rules of the machine that hold whatever happens, in any order: presses, wishes, readings, faults, ends."""

# pylint: disable=protected-access  # tests look inside

import math
import os
import tempfile
import unittest
from collections.abc import Set
from contextlib import closing
from dataclasses import replace
from pathlib import Path

from hypothesis import strategies as st
from hypothesis.stateful import RuleBasedStateMachine, initialize, invariant, precondition, rule

import watching
from brovik.actuator import Actuator, ActuatorEnum
from brovik.auto import Auto, AutoEnum
from brovik.gui import Gui
from brovik.sensor import Sensor, SensorEnum
from brovik.settings import SettingsEnum, SettingsValues
from brovik.simulator import SimuEnum

from demo_logbook import records
from demo_support import STEP_SECS, outputs_on, reset_host
from controller.backend import Backend
from controller.dialogs import DialogId
from controller.hardware_choice import HardwareChoice
from controller.machine_thread import ERRORS_TO_HALT
from controller.process.hardware import Readings
from controller.process.outputs import Output
from controller.process.recipe import Equipment, Recipe
from controller.process.sequence import SEQUENCE
from controller.settings_table import HOST_SETTINGS
from controller.simulation.faults import PlantFault
from controller.simulation.hardware import SimulatedHardware
from controller.storage import MACHINE, RUN, SETTINGS, Change, Storage
from controller.values import fitting
from logbook.place import FILE_NAME
from tests.rig import LOWEST
from tests.safety import ACID, COLD, LYE, longest_secs, never_together, pumps_in_vain, trials

STEPS = 3000
#: A status line, and what is left of it for the step: a run has all of them, the test of a bath two.
KEYS = {step.title: step.key for step in SEQUENCE}
#: Readings that override those of the plant: pressure, conductivity, temperature, level, start, stop.
READINGS = {
    "pressure": (-1.0, 0.0, 0.06, 0.7, 3.0, float("nan")),
    "conductivity": (0.0, 0.08, 0.5, 30.0, 100.0, float("nan")),
    "lye_temperature": (20.0, 57.0, 60.0, 63.0, float("nan")),
    "level_reached": (False, True),
    "start_pressed": (False, True),
    "stop_pressed": (False, True),
}
WISHED = sorted(HOST_SETTINGS.keys() & vars(SettingsEnum).keys())
NONSENSE: tuple[object, ...] = (None, "x", "", True, -1.0, 1e300, float("nan"), [])


def job_running() -> bool:
    """What the screens show: a run, or the test of a bath."""
    return any((Auto.active, Auto.lw_saure_active, Auto.lw_lauge_active))


class ShakyHardware:  # pylint: disable=too-many-instance-attributes
    """The simulated machine, with sensors that may show what is not there, on a bus that may fail."""

    def __init__(self, simulated: SimulatedHardware, level_switch: bool) -> None:
        self._simulated = simulated
        self._level_switch = level_switch
        self.shown: dict[str, object] = {}
        self.broken = False
        self.switched_off = False
        #: A run has begun, and nobody has seen that yet.
        self.run_begun = False
        #: What was wrong with the outputs that were handed over.
        self.wrong: list[str] = []
        self._dry = False
        # Neither tests of baths and ends nor the simulator's window are anything special.
        self.bath_test_started = simulated.bath_test_started
        self.job_ended = simulated.job_ended
        self.tick_ended = simulated.tick_ended

    def exchange(self, dt: float, on: Set[Output]) -> Readings:
        """Looks at the outputs, as they reach the valves."""
        if self.broken:
            raise OSError("kein Bus")
        self.switched_off = False
        self.wrong += never_together(on)
        if job_running():
            self.wrong += pumps_in_vain(on)
        looked_at = self._level_switch and SettingsValues.test_lauge_level
        if Output.HEAT_1 in on:
            self._judge_heater(looked_at)
        # A level, or a wish to look at it, holds from the next exchange on.
        readings = replace(self._simulated.exchange(dt, on), **self.shown)
        self._dry = looked_at and not readings.level_reached
        return readings

    def _judge_heater(self, looked_at: bool) -> None:
        if self._dry and looked_at:
            self.wrong.append("the heater is on in a tank run dry")
        if not (Auto.active or Actuator.manual_heating_enabled):
            self.wrong.append("the heater is on though nobody wants it")

    def all_off(self) -> None:
        """Remembers."""
        self.switched_off = True

    def run_started(self, resumed: bool) -> None:
        """Remembers: who holds both push buttons down has a run that ends in the period of its start."""
        self.run_begun = True
        self._simulated.run_started(resumed)


# pylint: disable-next=too-many-instance-attributes,too-many-public-methods  # one for each thing that may happen
class BackendMachine(RuleBasedStateMachine):
    """An operator who does anything at any time, on a machine where anything happens."""

    def __init__(self) -> None:
        super().__init__()
        self.directory: tempfile.TemporaryDirectory[str] | None = None
        self.file = Path()
        self.backend: Backend | None = None
        self.equipment = Equipment()
        self.faults: frozenset[PlantFault] = frozenset()
        self.failed_in_a_row = 0
        # What the file has to have.
        self.stored: dict[str, object] = {}
        self.written_runs = 0
        self.interrupted = False
        self.forget_job()

    def forget_job(self) -> None:
        """Nothing is known of a job."""
        self.was_active = self.was_running = False
        self.progress = 0
        self.status = ""
        self.secs = self.last_secs = 0.0
        self.pressure = 0.0

    # Start and end of the program.

    @initialize(
        legacy=st.booleans(),
        steam=st.booleans(),
        level_switch=st.booleans(),
        faults=st.frozensets(st.sampled_from(PlantFault), max_size=1),
        quick=st.booleans(),
    )
    def build(  # pylint: disable=too-many-arguments
        self, legacy: bool, steam: bool, level_switch: bool, faults: frozenset[PlantFault], quick: bool
    ) -> None:
        """A machine, which may be one that does everything in the shortest time."""
        # Until the end of the trial.
        self.directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.file = Path(self.directory.name) / FILE_NAME
        watching.screens_loaded()
        os.environ["BROVIK_DEMO_STICK"] = ""
        self.equipment = Equipment(legacy, steam, steam, level_switch)
        self.faults = faults
        version = "Legacy" if legacy else "_2024"
        values = {"machine_version": version, "has_steam_valve": steam, "has_level_switch": level_switch}
        with closing(Storage(self.file)) as storage:
            storage.apply([Change(MACHINE, {**values, "steam_pressure_sterilization": steam})])
        self.begin_program()
        if quick:
            for key, value in LOWEST.items():
                self.wish(key, value)

    def begin_program(self) -> None:
        """As at the start of the program, to the moment in which the screens are up."""
        reset_host()
        self.forget_job()
        simulated = SimulatedHardware(self.faults)
        self.hardware = ShakyHardware(simulated, self.equipment.level_switch)
        self.backend = Backend(self.file.parent, 1.0, lambda: HardwareChoice(self.hardware, simulated))
        self.operation = self.backend.operation
        note = self.backend._note
        if note is not None:
            self.operation.offer_to_continue(note)
            if not self.operation.questions.waits(DialogId.CONTINUE_RUN):
                self.close_interrupted()

    def end_program(self) -> None:
        """The file then has all that was acknowledged."""
        if self.backend is None:
            return
        active = Auto.active
        self.backend.stop()
        assert not outputs_on() and self.hardware.switched_off
        if active:
            self.interrupted = True
        with closing(Storage(self.file)) as storage:
            settings, note = storage.read(SETTINGS), storage.read(RUN)
        assert settings == self.stored, (settings, self.stored)
        assert bool(note) == self.interrupted, note
        assert len(records(self.file)) == self.written_runs
        self.backend = None

    @rule()
    def restart(self) -> None:
        """All settings are those that were acknowledged."""
        self.end_program()
        self.begin_program()
        for key, value in self.stored.items():
            unwanted = key == SettingsEnum.do_steam_step.name and not self.equipment.steam_valve
            assert HOST_SETTINGS[key].read() == (False if unwanted else value), key

    def teardown(self) -> None:
        try:
            self.end_program()
        finally:
            if self.directory is not None:
                self.directory.cleanup()

    # What the operator does.

    @rule(enum=st.sampled_from((AutoEnum.Toggle, AutoEnum.ToggleLwTestLauge, AutoEnum.ToggleLwTestSaure)))
    def press(self, enum: AutoEnum) -> None:
        """Start, abort, finish."""
        self.operation.toggle(enum)
        self.observe()

    @rule(output=st.sampled_from(Output))
    def press_output(self, output: Output) -> None:
        """A blocked output stays as it is, and no press switches another one."""
        dout = next(dout for dout in Actuator.all_douts if int(dout.enum) == output.value)
        before, blocked = self.on(), dout.blocked
        self.operation.toggle_output(ActuatorEnum(output.value))
        assert self.on() - {output} == before - {output}
        assert not blocked or self.on() == before

    @rule()
    def press_manual_heating(self) -> None:
        """Switches nothing on."""
        before = self.on()
        self.operation.toggle_output(ActuatorEnum.ToggleManualHeating)
        assert self.on() <= before

    @rule()
    def heat_by_hand(self) -> None:
        """Both presses that it takes."""
        if not Actuator.manual_heating_enabled:
            self.press_manual_heating()
        self.press_output(Output.HEAT_1)

    @rule(enum=st.sampled_from((SensorEnum.Start, SensorEnum.Stop, SensorEnum.Level)), state=st.booleans())
    def play_input(self, enum: SensorEnum, state: bool) -> None:
        """In the simulator's window."""
        self.operation.change_input(enum, state)
        self.observe()

    @rule(enum=st.sampled_from((SimuEnum.AIn0, SimuEnum.AIn1)), percent=st.sampled_from((0, 30, 100)))
    def move_slider(self, enum: SimuEnum, percent: int) -> None:
        """In the same window."""
        assert self.backend is not None
        self.backend.set_simulated(enum, percent)

    @rule(id_=st.sampled_from((1, 2, 10, 11, 12, 99)), yes=st.booleans())
    def answer(self, id_: int, yes: bool) -> None:
        """A question, or one that nobody has asked."""
        continuing = id_ == DialogId.CONTINUE_RUN and self.operation.questions.waits(id_)
        self.operation.take_report({str(id_): {"a": yes}})
        if continuing and not yes:
            self.close_interrupted()
        elif continuing and Auto.active:
            self.interrupted = False
        self.observe()

    @rule(key=st.sampled_from(WISHED), share=st.sampled_from((0.0, 0.3, 1.0)))
    def wish_sense(self, key: str, share: float) -> None:
        """A value between the bounds, or the other of two."""
        setting = HOST_SETTINGS[key]
        if setting.lowest is None:
            self.wish(key, share > 0.5 if isinstance(setting.read(), bool) else f"{share}")
            return
        lowest, highest = setting.lowest.fget(SettingsValues), setting.highest.fget(SettingsValues)
        self.wish(key, type(setting.read())(lowest + share * (highest - lowest)))

    @rule(key=st.sampled_from(WISHED), value=st.sampled_from(NONSENSE))
    def wish_nonsense(self, key: str, value: object) -> None:
        """The host clamps it, or it is refused."""
        self.wish(key, value)

    @rule(action=st.sampled_from((SettingsEnum.POffsetSet, SettingsEnum.POffsetReset)))
    def calibrate(self, action: SettingsEnum) -> None:
        """Not while a job runs, and not by a pressure that is no number."""
        assert self.backend is not None
        before = SettingsValues.p_offset
        self.backend.settings.wish(action, None)
        known = action == SettingsEnum.POffsetReset or math.isfinite(Sensor.raw_druck)
        if job_running() or not known:
            assert SettingsValues.p_offset == before
        else:
            self.stored["p_offset"] = SettingsValues.p_offset

    def wish(self, key: str, value: object) -> None:
        """What the host shows afterwards is acknowledged."""
        assert self.backend is not None
        self.backend.settings.wish(getattr(SettingsEnum, key), value)
        if self._is_accepted(key, value):
            self.stored[key] = HOST_SETTINGS[key].read()

    def _is_accepted(self, key: str, value: object) -> bool:
        """Whether the operator may wish for that."""
        if key == SettingsEnum.do_steam_step.name and not self.equipment.steam_valve:
            return False
        try:
            fitting(value, SettingsValues.get_default_values()[key])
        except ValueError:
            return False
        return True

    # What the machine does.

    @rule(periods=st.sampled_from((1, 2, 20, 100)))
    def wait(self, periods: int) -> None:
        """Time passes."""
        for _ in range(periods):
            self.tick()

    @precondition(lambda self: job_running())
    @rule()
    def wait_for_next_step(self) -> None:
        """Time passes until something else happens."""
        status = Gui.status
        for _ in range(400):
            self.tick()
            if Gui.status != status:
                break

    @rule(reading=st.sampled_from([(name, value) for name, values in READINGS.items() for value in values]))
    def show(self, reading: tuple[str, object]) -> None:
        """A sensor shows something, or a push button is held or let go."""
        self.hardware.shown[reading[0]] = reading[1]

    @rule()
    def show_what_is(self) -> None:
        """All sensors are sound."""
        self.hardware.shown.clear()

    @rule(defective=st.booleans())
    def lose_signal(self, defective: bool) -> None:
        """The host finds no signal of the conductivity sensor, or finds it again."""
        Sensor.lw_sensor_defective = defective

    @rule(periods=st.sampled_from((1, 3, ERRORS_TO_HALT)))
    def lose_bus(self, periods: int) -> None:
        """The hardware fails for some periods."""
        self.hardware.broken = True
        for _ in range(periods):
            self.tick()
        self.hardware.broken = False
        if periods >= ERRORS_TO_HALT:
            assert not job_running() and not outputs_on() and self.hardware.switched_off

    def tick(self) -> None:
        """One period, as the machine's thread has it."""
        try:
            self.operation.advance(STEP_SECS)
        except OSError:
            self.failed_in_a_row += 1
            if self.failed_in_a_row % ERRORS_TO_HALT == 0:
                self.operation.halt()
        else:
            self.failed_in_a_row = 0
            self.secs += STEP_SECS
        self.observe()

    # What holds.

    def on(self) -> frozenset[Output]:
        """The outputs that are on."""
        return frozenset(Output(int(dout.enum)) for dout in Actuator.active_douts)

    def observe(self) -> None:
        """After whatever a job may have ended or begun in."""
        if self.hardware.run_begun:
            self.hardware.run_begun = False
            self.was_active = self.was_running = True
            self.progress = 0
            if self.interrupted:  # Somebody has begun anew.
                self.close_interrupted()
        if self.was_active and not Auto.active:
            self.written_runs += 1
        if self.was_running and not job_running():
            assert not outputs_on(), outputs_on()
        if Auto.active:
            assert self.progress <= Auto.progress < 100
            self.progress = Auto.progress
        self.was_active, self.was_running = Auto.active, job_running()
        self.check_time()

    def close_interrupted(self) -> None:
        """Nobody goes on with the run: it gets its record."""
        self.written_runs += self.interrupted
        self.interrupted = False

    def check_time(self) -> None:
        """A step ends within what the settings say, and those may have changed since it began."""
        if Gui.status != self.status or not job_running():
            self.status, self.secs, self.last_secs = Gui.status, 0.0, 0.0
            self.pressure = Sensor.druck
        key = KEYS.get(Gui.status.partition(": ")[2])
        if key is not None and job_running():
            recipe = Recipe(self.equipment, True, Auto.intense_factor, {})
            self.last_secs = max(self.last_secs, longest_secs(key, SettingsValues, recipe, self.pressure))
            assert self.secs <= self.last_secs, f"{Gui.status} takes longer than {self.last_secs} s"

    @invariant()
    def outputs_are_safe(self) -> None:
        """Those on the screens, and those that have reached the valves."""
        if self.backend is not None:
            wrong = never_together(self.on()) + self.hardware.wrong
            assert not wrong, wrong

    @invariant()
    def dangerous_outputs_are_blocked(self) -> None:
        """All of them while a job runs, else what must not come to what is on."""
        blocked = {Output(int(dout.enum)) for dout in Actuator.all_douts if dout.blocked}
        on = self.on()
        if self.backend is None:
            return
        if job_running():
            assert blocked == set(Output)
            return
        for one, other in ((LYE, ACID), (ACID, LYE), (COLD, {Output.MV_STEAM}), ({Output.MV_STEAM}, COLD)):
            assert other <= blocked or not on & one, (on, blocked)


BackendPropertiesTest = BackendMachine.TestCase
BackendPropertiesTest.settings = trials(STEPS)


class FoundTest(unittest.TestCase):
    """What chance has found once."""

    def test_both_buttons_at_once(self) -> None:
        """The run ends in the period in which it has begun, and has its record."""
        machine = BackendMachine()
        self.addCleanup(machine.teardown)
        machine.build(legacy=False, steam=False, level_switch=False, faults=frozenset(), quick=False)
        machine.show(("start_pressed", True))
        machine.show(("stop_pressed", True))
        machine.wait(1)
        self.assertEqual((machine.written_runs, Auto.active), (1, False))

    def test_heater_in_a_tank_that_nobody_looks_at(self) -> None:
        """It was dry in the last exchange, when somebody still did."""
        machine = BackendMachine()
        self.addCleanup(machine.teardown)
        faults = frozenset({PlantFault.LEVEL})
        machine.build(legacy=False, steam=False, level_switch=True, faults=faults, quick=False)
        machine.wish("test_lauge_level", False)
        machine.heat_by_hand()
        machine.wait(1)
        machine.outputs_are_safe()
        self.assertIn(Output.HEAT_1, machine.on())


if __name__ == "__main__":
    unittest.main()
