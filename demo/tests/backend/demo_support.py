"""What the tests of the demo machine's backend have in common."""

import atexit
import os
import tempfile
import threading
import time
import unittest
from collections.abc import Callable, Mapping
from contextlib import closing
from pathlib import Path
from typing import Any

import watching
import controller
from brovik.actuator import Actuator, ActuatorEnum
from brovik.auto import Auto, ProgressColor
from brovik.config import Config, MachineVersion
from brovik.gui import Gui, PageEnum
from brovik.sensor import Sensor
from brovik.settings import SettingsValues
from brovik.shell import ChangelogEntryVector, Shell
from brovik.simulator import Simulator
from brovik.wifi import Wifi, WifiStateEnum
from controller.backend import Backend
from controller.hardware_choice import HardwareChoice
from controller.operation import Operation
from controller.simulation.faults import PlantFault
from controller.simulation.hardware import SimulatedHardware
from controller.storage import MACHINE, Change, Storage
from logbook.place import FILE_NAME

DEADLINE_SECS = 60.0
#: Longest simulated time that any job may take.
LIMIT_SECS = 3600.0
STEP_SECS = 0.1


def reset_host() -> None:
    """Puts the host's objects back to what they are at the start of the program."""
    for key, value in SettingsValues.get_default_values().items():
        setattr(SettingsValues, key, value)
    Config.machine_version = MachineVersion._2024  # pylint: disable=protected-access
    Config.has_steam_valve = False
    Config.has_level_switch = True
    Config.steam_pressure_sterilization = False
    Auto.progress, Auto.progress_str, Auto.progress_color = 0, "0 %", ProgressColor.Normal
    Auto.active = Auto.lw_saure_active = Auto.lw_lauge_active = Auto.lw_sp_reached = False
    Sensor.lw_sensor_defective = Sensor.start.state = Sensor.stop.state = False
    Simulator.enabled = False
    Actuator.manual_heating_enabled = False
    Actuator.unblock_all_except_of(set())
    for dout in Actuator.all_douts:
        dout.state = False
    Gui.page = PageEnum.Auto
    Shell.locked = Shell.testing_repo_enabled = Shell.upgrade_in_progress_or_finished = False
    Shell.installed, Shell.upgradables, Shell.changelogs = [], [], ChangelogEntryVector()
    Wifi.state, Wifi.ssid, Wifi.quality_percantage, Wifi.is_5_ghz = WifiStateEnum.Disconnected, "", 0, False
    Wifi.ip_map_list, Wifi.scan_results = [], {}


def outputs_on() -> set[str]:
    """Names of the outputs that are on."""
    return {ActuatorEnum(int(dout.enum)).name for dout in Actuator.active_douts}


class DemoCase(unittest.TestCase):
    """A directory for the file, and a host as at the start of the program."""

    def setUp(self) -> None:
        # addCleanup() ends it with the test.
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)
        watching.screens_loaded()
        # No question after a run because of what the computer of the test has.
        os.environ["BROVIK_DEMO_STICK"] = ""
        self.gui = watching.SignalLog("Gui", ["message", "question", "toastWarn", "exception"])
        reset_host()

    def configure(self, **values: object) -> None:
        """Stores a configuration of the machine."""
        self.put_into_file(MACHINE, values)

    def put_into_file(self, section: str, values: Mapping[str, object]) -> None:
        """Stores values for the next start."""
        with closing(Storage(self.directory / FILE_NAME)) as storage:
            storage.apply([Change(section, values)])

    def in_file(self, section: str) -> dict[str, Any]:
        """What is stored. A stopped backend has written all of it."""
        with closing(Storage(self.directory / FILE_NAME)) as storage:
            return storage.read(section)

    def until(self, condition: Callable[[], Any], what: str = "condition") -> None:
        """Waits for a condition that another thread brings about."""
        deadline = time.monotonic() + DEADLINE_SECS
        pause = threading.Event()
        while not condition():
            self.assertLess(time.monotonic(), deadline, f"{what} did not come about")
            pause.wait(0.002)

    def signals(self, name: str) -> list[list[Any]]:
        """Arguments of the signals of this name that `Gui` has raised."""
        return [values for signal, _, values in self.gui.emissions if signal == name]


class SteppedCase(DemoCase):
    """A backend whose machine thread does not run: the test lets the time pass."""

    backend: Backend
    operation: Operation
    simulated: SimulatedHardware

    def make(self, *faults: PlantFault) -> Backend:
        """Makes the backend of a simulated machine. It is stopped at the end of the test."""

        def choose() -> HardwareChoice:
            self.simulated = SimulatedHardware(frozenset(faults))
            return HardwareChoice(self.simulated, self.simulated)

        backend = Backend(self.directory, 1.0, choose)
        self.addCleanup(backend.stop)
        self.backend = backend
        self.operation = backend.operation
        return backend

    def run_until(self, condition: Callable[[], Any], what: str = "condition") -> float:
        """Lets time pass until the condition holds. Returns the seconds."""
        passed = 0.0
        while not condition():
            self.assertLess(passed, LIMIT_SECS, f"{what} did not come about: {Gui.status3}")
            self.operation.advance(STEP_SECS)
            passed += STEP_SECS
        return passed

    def assert_clean(self) -> None:
        """Nothing runs, nothing is on, nothing is blocked."""
        self.assertEqual(outputs_on(), set())
        self.assertFalse(Auto.active or Auto.lw_saure_active or Auto.lw_lauge_active)
        self.assertFalse(any(dout.blocked for dout in Actuator.all_douts))
        self.assertEqual(Gui.status, "Bereit")


class RunningCase(DemoCase):
    """The backend as the host starts it, with its threads, through the entry functions."""

    def start(self, factor: float = 500.0, fault: str = "", simulator: str = "") -> None:
        """Calls `init` with this environment. The backend is stopped at the end of the test."""
        os.environ["BROVIK_CONFIG_DIR"] = str(self.directory)
        os.environ["BROVIK_DEMO_TIME_FACTOR"] = str(factor)
        os.environ["BROVIK_DEMO_FAULT"] = fault
        os.environ["BROVIK_DEMO_SIMULATOR"] = simulator
        controller.init(False)
        self.addCleanup(self.stop)

    def stop(self) -> None:
        """What the end of the interpreter does. Does nothing the second time."""
        if controller.backend.cache_info().currsize:
            controller.backend().stop()
            atexit.unregister(controller.backend().stop)
            controller.backend.cache_clear()

    def handled(self) -> None:
        """Waits until the machine thread has run all that was posted to it."""
        self._wait_for(controller.backend().machine.post)

    def services_handled(self) -> None:
        """Waits until the services' thread has taken up all that was posted to it."""
        self._wait_for(controller.backend().maintenance.services.post)

    def _wait_for(self, post: Callable[[Callable[[], None]], None]) -> None:
        done = threading.Event()
        post(done.set)
        self.assertTrue(done.wait(DEADLINE_SECS))
