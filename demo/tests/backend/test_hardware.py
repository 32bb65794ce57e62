"""The demo machine's backend on a hardware of its own: the simulation is deleted."""

import atexit
import importlib
import os
import pkgutil
import shutil
import sys
import tempfile
import threading
import unittest
from collections.abc import Callable, Set
from dataclasses import replace
from pathlib import Path
from unittest.mock import patch

import demo_copy
import watching
import controller
from brovik.actuator import Actuator, ActuatorEnum
from brovik.auto import Auto, AutoEnum, ProgressColor
from brovik.gui import Gui
from brovik.sensor import Sensor, SensorEnum
from brovik.settings import SettingsValues
from brovik.simulator import SimuEnum, Simulator
from brovik.testing import wait_until
from controller.backend import Backend
from controller.hardware_choice import NO_HARDWARE, HardwareChoice
from controller.interrupted import RunNote
from controller.process.hardware import Readings
from controller.process.outputs import Output
from recording_hardware import RecordingHardware

SIMULATION = demo_copy.COPY / "controller" / "simulation"
LIMIT_SECS = 3600.0

#: All that a cleaning asks for, with the heater on from its start to its end.
RINSING_HOT = ["MV_HEISS MV_KANAL PUMPE HEAT_1", "MV_LUFT MV_KANAL HEAT_1"]
RINSING_COLD = ["MV_KALT MV_KANAL PUMPE HEAT_1", "MV_CO2 MV_KANAL HEAT_1"]
CO2_PULSE = ["MV_KANAL HEAT_1", "MV_CO2 MV_KANAL HEAT_1"]
CLEANING = [
    "run started, resumed: False",
    # Leak test: filled, held, vented.
    "MV_LUFT HEAT_1",
    "HEAT_1",
    "MV_KANAL HEAT_1",
    # Emptied.
    "MV_LUFT MV_KANAL HEAT_1",
    *RINSING_HOT * 3,
    "MV_LAUGE_IN MV_LAUGE_OUT PUMPE HEAT_1",
    "MV_LAUGE_OUT MV_LUFT HEAT_1",
    *RINSING_HOT,
    "MV_SAURE_IN MV_SAURE_OUT PUMPE HEAT_1",
    "MV_SAURE_OUT MV_CO2 HEAT_1",
    *RINSING_COLD * 3,
    # Air driven out, without a break after the last rinsing, and in pulses.
    *CO2_PULSE * 2,
    # Left under CO2.
    "MV_CO2 HEAT_1",
    "job ended",
    "",
]


class HardwareCase(unittest.TestCase):
    """A backend with a recording hardware, whose time the test lets pass."""

    def setUp(self) -> None:
        # addCleanup() ends it with the test.
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)
        watching.screens_loaded()
        self.gui = watching.SignalLog("Gui", ["message", "exception"])
        self.hardware = RecordingHardware()

    def make(self) -> Backend:
        """Makes the backend. It is stopped at the end of the test."""
        backend = Backend(self.directory, 1.0, lambda: HardwareChoice(self.hardware))
        self.addCleanup(backend.stop)
        return backend

    def advance(self, backend: Backend, until: Callable[[], bool]) -> None:
        """Lets time pass until the condition holds."""
        passed = 0.0
        while not until():
            self.assertLess(passed, LIMIT_SECS, Gui.status3)
            backend.operation.advance(0.1)
            passed += 0.1


class JobsTest(HardwareCase):
    """What the hardware is told."""

    def test_whole_cleaning(self) -> None:
        """Each output at its time, and nothing else; the readings are those on the screens."""
        backend = self.make()
        backend.operation.toggle(AutoEnum.Toggle)
        self.advance(backend, lambda: not Auto.active)
        backend.operation.advance(0.1)
        self.assertEqual(self.hardware.record, CLEANING)
        self.assertEqual((Auto.progress, Auto.progress_color), (100, ProgressColor.Success))
        self.assertEqual((Auto.lw_lauge_max, Auto.lw_saure_max), (58.0, 19.0))
        self.assertEqual(Sensor.druck, self.hardware.readings.pressure)
        self.assertGreaterEqual(Sensor.druck, SettingsValues.vorspannen_p)
        self.assertEqual(self.gui.names, [])

    def test_bath(self) -> None:
        """The test of a bath tells the set point that is in force."""
        backend = self.make()
        backend.operation.toggle(AutoEnum.ToggleLwTestSaure)
        backend.operation.toggle(AutoEnum.ToggleLwTestSaure)
        set_point = SettingsValues.lw_saure_sp
        self.assertEqual(self.hardware.record, [f"test of ACID started, {set_point} mS/cm", "job ended"])

    def test_resumed(self) -> None:
        """A run that goes on where it was interrupted says so."""
        backend = self.make()
        backend.operation.offer_to_continue(RunNote("acid", 1.0, False))
        backend.operation.questions.take({"1": {"a": True}})
        self.assertEqual(self.hardware.record, ["run started, resumed: True"])

    def test_hand(self) -> None:
        """A press reaches the hardware with the next exchange."""
        backend = self.make()
        backend.operation.toggle_output(ActuatorEnum.MvKalt)
        self.assertEqual(self.hardware.record, [])
        backend.operation.advance(0.1)
        backend.operation.toggle_output(ActuatorEnum.MvKalt)
        backend.operation.advance(0.1)
        self.assertEqual(self.hardware.record, ["MV_KALT", ""])


class ButtonsTest(HardwareCase):
    """The push buttons of the machine."""

    def press(self, backend: Backend, start: bool, stop: bool) -> None:
        """Has them held down like this in the next exchange."""
        self.hardware.readings = replace(self.hardware.readings, start_pressed=start, stop_pressed=stop)
        with patch.object(self.hardware, "exchange", lambda _dt, _on: self.hardware.readings):
            backend.operation.advance(0.1)

    def test_start_and_stop(self) -> None:
        """Green starts, red aborts, each when it goes down; the host shows them."""
        backend = self.make()
        for start, stop, running in (
            (True, False, True),
            (True, False, True),
            (False, False, True),
            (True, False, True),
            (False, True, False),
            (False, True, False),
            (False, False, False),
        ):
            self.press(backend, start, stop)
            self.assertEqual((Sensor.start.state, Sensor.stop.state), (start, stop))
            self.assertEqual(Auto.active, running)

    def test_both(self) -> None:
        """A machine that somebody wants to stop stands still."""
        backend = self.make()
        for before in (False, True):
            with self.subTest(before):
                self.press(backend, before, False)
                self.press(backend, True, True)
                self.assertFalse(Auto.active)
                self.press(backend, False, False)

    def test_held_in_the_window(self) -> None:
        """What is played in the simulator's window is not taken back by a button that nobody touches."""
        backend = self.make()
        backend.operation.change_input(SensorEnum.Start, True)
        self.press(backend, False, False)
        self.assertTrue(Sensor.start.state and Auto.active)


class WindowTest(HardwareCase):
    """The simulator's window, should anybody open it."""

    def test_plays_no_sensors(self) -> None:
        """A line in the log, and the readings stay those of the hardware."""
        log = watching.LogCapture()
        backend = self.make()
        backend.set_simulated(SimuEnum.AIn0, 50.0)
        backend.operation.change_input(SensorEnum.Level, False)
        backend.operation.advance(0.1)
        backend.operation.publish()
        self.assertEqual(Simulator.a_in_0, 0)
        self.assertTrue(Sensor.level.state)
        self.assertEqual(Gui.status2, "Laugebecken 55 °C\nFüllstand erreicht")
        self.assertEqual(len([text for _, text in log.messages if "lässt sich nicht setzen" in text]), 2)


class StartedCase(HardwareCase):
    """The backend as the host starts it, with its threads."""

    def start(self) -> Backend:
        """Calls `init` with the recording hardware as the chosen one."""
        with patch("controller.backend.choose_hardware", lambda: HardwareChoice(self.hardware)):
            self.init()
        return controller.backend()

    def init(self) -> None:
        """Calls `init`. What it has begun is ended after the test."""
        self.addCleanup(controller.backend.cache_clear)
        with patch.dict(os.environ, BROVIK_CONFIG_DIR=str(self.directory)):
            controller.init(False)
        backend = controller.backend()
        atexit.unregister(backend.stop)
        self.addCleanup(backend.stop)

    def errors(self) -> list[str]:
        """Types of the exceptions that the operator has been shown."""
        return [values[0]["type"] for signal, _, values in self.gui.emissions if signal == "exception"]


class ThreadTest(StartedCase):
    """Who calls the hardware, and when for the last time."""

    def test_threads(self) -> None:
        """The first exchange comes from this thread with nothing on, all others from the machine's."""
        calls: list[tuple[str, float, Set[Output]]] = []
        exchange = self.hardware.exchange

        def note(dt: float, on: Set[Output]) -> Readings:
            calls.append((threading.current_thread().name, dt, on))
            return exchange(dt, on)

        with patch.object(self.hardware, "exchange", note):
            self.start()
            wait_until(lambda: len(calls) > 3)
        self.assertEqual(calls[0], (threading.current_thread().name, 0.0, frozenset()))
        self.assertEqual({name for name, *_ in calls[1:]}, {"demo-machine"})
        self.assertEqual({dt for _, dt, _ in calls[1:]}, {0.1})

    def test_end(self) -> None:
        """The hardware switches off before anybody is waited for, and when all have ended."""
        backend = self.start()
        controller.actuator_toggle_from_cpp(ActuatorEnum.MvLuft)
        wait_until(lambda: self.hardware.record == ["MV_LUFT"])
        alive: list[bool] = []
        switch_off = self.hardware.all_off

        def note() -> None:
            alive.append(any(thread.name == "demo-machine" for thread in threading.enumerate()))
            switch_off()

        with patch.object(self.hardware, "all_off", note):
            backend.stop()
        self.assertEqual(alive, [True, False])
        self.assertEqual(self.hardware.record[-1], "all off")

    def test_hardware_that_fails_to_switch_off(self) -> None:
        """Keeps nothing else from its end, and is told of."""
        backend = self.start()
        with patch.object(self.hardware, "all_off", side_effect=OSError("kein Bus")):
            self.assertRaises(OSError, backend.stop)
        self.assertEqual([t.name for t in threading.enumerate() if t.name.startswith("demo-")], [])

    def test_hardware_that_fails(self) -> None:
        """Is shown once. After twenty times in a row the run ends, and the hardware switches off."""
        self.start()
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        wait_until(lambda: "MV_LUFT HEAT_1" in self.hardware.record)
        with patch.object(self.hardware, "exchange", side_effect=OSError("kein Bus")):
            wait_until(lambda: "all off" in self.hardware.record)
            wait_until(lambda: not Auto.active)
        self.assertFalse(any(dout.state for dout in Actuator.all_douts))
        self.assertEqual(self.errors(), ["OSError"])

    def test_hardware_that_fails_at_the_start(self) -> None:
        """Is an error of `init`, which the host shows."""
        with patch.object(self.hardware, "exchange", side_effect=OSError("kein Bus")):
            self.assertRaisesRegex(OSError, "kein Bus", self.start)


class DeletedTest(StartedCase):
    """The folder of the simulation."""

    def test_everything_can_be_imported(self) -> None:
        """All modules of the package, and none of them brings the simulation in."""
        names = [found.name for found in pkgutil.walk_packages(controller.__path__, "controller.")]
        for name in names:
            module = importlib.import_module(name)
            self.assertTrue(Path(str(module.__file__)).is_relative_to(demo_copy.COPY), name)
        whole = {path.stem for path in (demo_copy.DEMO / "controller").rglob("*.py")}
        gone = {path.stem for path in (demo_copy.DEMO / "controller" / "simulation").glob("*.py")}
        self.assertGreaterEqual({name.rpartition(".")[2] for name in names} | gone | {"__init__"}, whole)
        self.assertEqual([name for name in sys.modules if name.startswith("controller.simulation")], [])

    def test_no_hardware(self) -> None:
        """The start says what is missing, also if an empty folder is left, and leaves nothing behind."""
        for folder in (False, True):
            with self.subTest(folder=folder):
                if folder:
                    SIMULATION.mkdir()
                    self.addCleanup(shutil.rmtree, SIMULATION)
                    importlib.invalidate_caches()
                with self.assertRaises(RuntimeError) as caught:
                    self.init()
                self.assertEqual(str(caught.exception), NO_HARDWARE)
                names = [t.name for t in threading.enumerate() if t.name.startswith("demo-")]
                self.assertEqual(names, [])

    def test_simulation_that_lacks_something_else(self) -> None:
        """Is not taken for one that is not there."""
        SIMULATION.mkdir()
        self.addCleanup(shutil.rmtree, SIMULATION)
        (SIMULATION / "hardware.py").write_text("import nicht_da\n", encoding="utf-8")
        importlib.invalidate_caches()
        with self.assertRaises(ModuleNotFoundError) as caught:
            self.init()
        self.assertEqual(caught.exception.name, "nicht_da")


if __name__ == "__main__":
    unittest.main()
