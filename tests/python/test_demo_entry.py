"""The functions that the host calls: quick, and never with an exception."""

import gc
import os
import sys
import threading
import time
import unittest
from collections.abc import Callable
from typing import Any
from unittest.mock import patch

import demo_path  # pylint: disable=unused-import
import _probe
from brovik.actuator import ActuatorEnum
from brovik.auto import Auto, AutoEnum
from brovik.chart import ChartEnum
from brovik.gui import GuiEnum
from brovik.sensor import SensorEnum
from brovik.settings import SettingsEnum, SettingsValues
from brovik.shell import ShellActionEnum
from brovik.simulator import SimuEnum, Simulator
from brovik.wifi import WifiActionEnum

from demo_support import RunningCase, outputs_on
import controller
from controller.backend import Backend
from controller.hardware_choice import choose_hardware

VALUES: tuple[Any, ...] = (None, True, 5.0, -1e300, "Text", [], ["a", "b"], {}, {"1": {"a": True}})
LIMIT_SECS = 0.005
TURN_SECS = 0.0005

#: Each entry function with its enum.
ENTRIES: tuple[tuple[Callable[..., None], Any], ...] = (
    (controller.auto_value_from_cpp, AutoEnum),
    (controller.chart_action_from_cpp, ChartEnum),
    (controller.gui_value_from_cpp, GuiEnum),
    (controller.shell_action_from_cpp, ShellActionEnum),
    (controller.simulator_value_from_cpp, SimuEnum),
    (controller.settings_from_cpp, SettingsEnum),
    (controller.wifi_action_from_cpp, WifiActionEnum),
)


def calls() -> list[tuple[Callable[..., None], tuple[Any, ...]]]:
    """Every entry function with every enumerator and all sorts of values."""
    result: list[tuple[Callable[..., None], tuple[Any, ...]]] = []
    for output in ActuatorEnum.__members__.values():
        result.append((controller.actuator_toggle_from_cpp, (output,)))
    for sensor in SensorEnum.__members__.values():
        result += [(controller.sensor_value_from_cpp, (sensor, state)) for state in (True, False)]
    for function, enums in ENTRIES:
        for enum in enums.__members__.values():
            result += [(function, (enum, value)) for value in VALUES]
    return result


class EntryTest(RunningCase):
    """All nine of them."""

    def test_takes_anything(self) -> None:
        """No value makes one raise, and the machine goes on afterwards."""
        log = _probe.LogCapture()
        self.start()
        for function, arguments in calls():
            with self.subTest(function.__name__, arguments=arguments):
                self.assertIsNone(function(*arguments))
        self.handled()
        self.services_handled()
        self.assertEqual(self.signals("exception"), [])
        self.assertGreater(len(log.messages), 100)
        self.stop()
        self.assertEqual(outputs_on(), set())

    def test_within_five_milliseconds(self) -> None:
        """Also while the machine's thread has all the work that it can get.

        The time is the least of five rounds: what counts is what a function does, not what else
        this computer had to do.
        """
        if sys.gettrace() is not None:
            self.skipTest("Somebody watches each line, and that takes longer.")
        # As in the program, whose threads have shorter turns than Python's own.
        self.addCleanup(sys.setswitchinterval, sys.getswitchinterval())
        sys.setswitchinterval(TURN_SECS)
        log = _probe.LogCapture()
        self.start(factor=2000)
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(lambda: Auto.active)
        durations: dict[str, float] = {}
        gc.disable()
        self.addCleanup(gc.enable)
        for _ in range(5):
            for function, arguments in calls():
                started = time.perf_counter()
                function(*arguments)
                secs = time.perf_counter() - started
                key = f"{function.__name__}{arguments}"
                durations[key] = min(secs, durations.get(key, secs))
        slow = {key: secs for key, secs in durations.items() if secs > LIMIT_SECS}
        self.assertEqual(slow, {})
        self.assertGreater(len(log.messages), 100)

    def test_exceptions_are_forwarded(self) -> None:
        """Whatever is raised, the operator sees it, and the host does not."""
        self.start()
        for error in (ValueError("schlecht"), SystemExit(3), KeyboardInterrupt(), MemoryError()):
            with self.subTest(repr(error)):
                self.gui.clear()
                with patch.object(controller.backend().settings, "wish", side_effect=error):
                    controller.settings_from_cpp(SettingsEnum.secs_pump, 5.0)
                (record,) = self.signals("exception")[0]
                self.assertEqual(record["type"], type(error).__name__)

    def test_faults_on_the_machine_thread(self) -> None:
        """Are shown, and the thread goes on."""
        self.start()
        operation = controller.backend().operation
        with patch.object(operation, "toggle", side_effect=ValueError("schlecht")):
            controller.auto_value_from_cpp(AutoEnum.Toggle, None)
            self.handled()
        with patch.object(operation, "publish", side_effect=KeyError("schlecht")):
            self.until(lambda: len(self.signals("exception")) > 1)
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(lambda: Auto.active)
        types = [record["type"] for (record,) in self.signals("exception")]
        self.assertEqual(types[0], "ValueError")
        self.assertEqual(set(types[1:]), {"KeyError"})

    def test_settings_hold_at_the_return(self) -> None:
        """A control that shows the stored value finds it there."""
        self.start()
        controller.settings_from_cpp(SettingsEnum.secs_pump, 9.0)
        self.assertEqual(SettingsValues.secs_pump, 9)
        controller.simulator_value_from_cpp(SimuEnum.AIn1, 55.0)
        self.assertEqual(Simulator.a_in_1, 55)


class EnvironmentTest(RunningCase):
    """Time factor and faults."""

    def test_nonsense(self) -> None:
        """Is logged, and the machine runs in real time without a fault."""
        log = _probe.LogCapture()
        for factor in ("schnell", "0", "-3", "nan", "inf", ""):
            with self.subTest(factor):
                log.clear()
                os.environ["BROVIK_CONFIG_DIR"] = str(self.directory)
                os.environ["BROVIK_DEMO_TIME_FACTOR"] = factor
                os.environ["BROVIK_DEMO_FAULT"] = "leak, gremlins,"
                backend = Backend.from_environment()
                backend.stop()
                self.assertEqual(backend.machine._time_factor, 1.0)  # pylint: disable=protected-access
                self.assertEqual(len(log.messages), 2)

    def test_fault(self) -> None:
        """The fault of the environment is the plant's."""
        self.start(fault="no_gas")
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(lambda: self.signals("message"))
        self.assertIn("Undicht", self.signals("message")[0][1])


class EndTest(RunningCase):
    """The end of the interpreter."""

    def test_prompt(self) -> None:
        """All threads end at once, with work in their queues."""
        self.start(factor=0.01)
        for _ in range(100):
            controller.actuator_toggle_from_cpp(ActuatorEnum.MvKalt)
            controller.settings_from_cpp(SettingsEnum.secs_pump, 9.0)
        started = time.monotonic()
        self.stop()
        self.assertLess(time.monotonic() - started, 2.0)
        names = {thread.name for thread in controller_threads()}
        self.assertEqual(names, set())

    def test_stop_without_start(self) -> None:
        """A backend that never ran ends, too."""
        Backend(self.directory, 1.0, choose_hardware).stop()


def controller_threads() -> list[Any]:
    """The backend's threads that are alive."""
    return [thread for thread in threading.enumerate() if thread.name.startswith("demo-")]


if __name__ == "__main__":
    unittest.main()
