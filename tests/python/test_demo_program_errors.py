"""Errors of the backend itself: shown once, counted, and no reason to leave the machine on."""

import asyncio
import threading
import unittest
from collections.abc import Callable, Iterator
from itertools import count
from typing import Any
from unittest.mock import patch

import demo_path  # pylint: disable=unused-import
import _probe
from brovik.actuator import Actuator, ActuatorEnum
from brovik.auto import Auto, AutoEnum, ProgressColor
from brovik.gui import Gui

from demo_support import DemoCase, RunningCase, SteppedCase, outputs_on
import controller
from controller import machine_thread
from controller.backend import Backend
from controller.program_errors import QUIET_SECS, ErrorReporter
from controller.jobs import PROGRAM_ERROR
from controller.machine_thread import ERRORS_TO_HALT, MachineThread


class ErrorCase(RunningCase):
    """A run in real time, in whose ticks something fails."""

    def setUp(self) -> None:
        super().setUp()
        self.log = _probe.LogCapture()
        self.start(factor=1)
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(outputs_on, "outputs")

    def failing(self, raise_: Callable[[int], None]) -> Iterator[int]:
        """Has each tick call this with its number, counted from 1. Gives the number of the last one."""
        last = [0]

        def publish() -> None:
            last[0] += 1
            raise_(last[0])

        self.enterContext(patch.object(controller.backend().operation, "publish", publish))
        while True:
            yield last[0]

    def types(self) -> list[str]:
        """Types of the exceptions that the operator has been shown."""
        return [record["type"] for (record,) in self.signals("exception")]


class TickTest(ErrorCase):
    """Ten times a second."""

    def test_one_dialog_and_the_end(self) -> None:
        """An error that does not end is shown once; after twenty in a row nothing is on and nothing runs."""

        def fail(number: int) -> None:
            raise ValueError(f"Fehler {number}")

        ticks = self.failing(fail)
        next(ticks)
        self.until(lambda: not Auto.active, "end of the run")
        self.handled()
        self.assertGreaterEqual(next(ticks), ERRORS_TO_HALT)
        self.assertEqual(outputs_on(), set())
        self.assertEqual((Gui.status, Gui.status3), ("Bereit", PROGRAM_ERROR))
        self.assertEqual(Auto.progress_color, ProgressColor.Error)
        self.until(lambda: next(ticks) > ERRORS_TO_HALT + 5)
        self.assertEqual(self.types(), ["ValueError"])
        self.assertEqual(self.signals("message"), [])
        self.assertTrue(any("zum 20. Mal: ValueError: Fehler 20" in text for _, text in self.log.messages))

    def test_nineteen_are_bad_luck(self) -> None:
        """A tick that succeeds begins the count anew."""

        def fail(number: int) -> None:
            if number % ERRORS_TO_HALT:
                raise ValueError("Fehler")

        ticks = self.failing(fail)
        self.until(lambda: next(ticks) > 2 * ERRORS_TO_HALT)
        self.assertTrue(Auto.active)
        self.assertEqual(self.types(), ["ValueError"])

    def test_each_error_has_its_dialog(self) -> None:
        """Of another type, or from another place."""

        def fail(number: int) -> None:
            if number % 3 == 0:
                raise ValueError("hier")
            if number % 3 == 1:
                raise ValueError("dort")
            raise KeyError("hier")

        ticks = self.failing(fail)
        self.until(lambda: next(ticks) > 12)
        self.assertEqual(sorted(self.types()), ["KeyError", "ValueError", "ValueError"])

    def test_press_that_fails(self) -> None:
        """Is answered each time, for somebody has pressed again."""

        def fail() -> None:
            raise ValueError("Fehler")

        for _ in range(2):
            controller.backend().machine.post(fail)
        self.handled()
        self.assertEqual(self.types(), ["ValueError"] * 2)

    def test_new_run_during_the_error(self) -> None:
        """Ends as well."""

        def fail(_number: int) -> None:
            raise ValueError("Fehler")

        next(self.failing(fail))
        self.until(lambda: not Auto.active, "end of the run")
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(lambda: Auto.active, "second run")
        self.until(lambda: not Auto.active, "end of the second run")
        self.assertEqual(outputs_on(), set())
        self.assertEqual(self.types(), ["ValueError"])

    def test_end_of_the_error(self) -> None:
        """The thread has gone on, and the machine runs again."""
        with patch.object(controller.backend().operation, "publish", side_effect=ValueError("Fehler")):
            self.until(lambda: not Auto.active, "end of the run")
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(outputs_on, "outputs")


class HaltTest(SteppedCase):
    """What is left of the machine."""

    def test_hand_operation(self) -> None:
        """Outputs that the operator has switched on go off as well, the heater with them."""
        self.make()
        self.operation.toggle_output(ActuatorEnum.MvLuft)
        self.operation.toggle_output(ActuatorEnum.ToggleManualHeating)
        self.operation.toggle_output(ActuatorEnum.Heat1)
        self.operation.halt()
        self.assertEqual(outputs_on(), set())
        self.assertFalse(Actuator.manual_heating_enabled)

    def test_step_that_cannot_be_closed(self) -> None:
        """The job is over all the same."""
        self.make()
        self.operation.toggle(AutoEnum.Toggle)
        self.run_until(outputs_on)
        with patch("controller.board.Board.switch", side_effect=OSError("kein Bus")):
            self.assertRaises(OSError, self.operation.halt)
        self.operation.advance(0.1)
        self.assert_clean()
        self.assertEqual(Gui.status3, PROGRAM_ERROR)


class CatchingUpTest(unittest.TestCase):
    """The machine's time."""

    def test_is_not_made_up_for(self) -> None:
        """After an error the machine goes on at its speed, and does not hurry after what it has missed."""
        calls: list[str] = []
        steps: list[int] = []
        done = threading.Event()

        class Machine:
            """Fails in its first ticks, and counts what is asked of it in each later one."""

            def advance(self, _dt: float) -> None:
                """One step."""
                calls.append("advance")
                if len(calls) <= 5:
                    raise ValueError("Fehler")

            def publish(self) -> None:
                """The end of a tick."""
                steps.append(len(calls))
                calls.clear()
                calls.extend(["ok"] * 5)
                if len(steps) == 3:
                    done.set()

            def halt(self) -> None:
                """Not wanted here."""

        thread = MachineThread(Machine(), 10.0)
        thread.start()
        self.assertTrue(done.wait(20.0))
        thread.stop()
        # 0.1 s are ten steps at this speed; the first five calls are the ones that failed, or stand for them.
        self.assertLessEqual(max(steps), 5 + 10 + 1)


class ReporterTest(DemoCase):
    """The same error, and how long it is remembered."""

    def test_news_after_a_while(self) -> None:
        """An error that has not come for some time is shown again."""
        clock = [0.0]
        reporter = ErrorReporter(now=lambda: clock[0])
        for moment, shown in ((0.0, 1), (1.0, 1), (QUIET_SECS, 1), (2 * QUIET_SECS + 1.0, 2)):
            clock[0] = moment
            try:
                raise ValueError("Fehler")
            except ValueError:
                reporter.report()
            self.assertEqual(len(self.signals("exception")), shown)

    def test_log_of_an_endless_error(self) -> None:
        """The first twenty times, then one of twenty."""
        log = _probe.LogCapture()
        reporter = ErrorReporter(now=lambda: 0.0)
        for _ in range(100):
            try:
                raise ValueError("Fehler")
            except ValueError:
                reporter.report()
        repeated = [text for _, text in log.messages if text.startswith("Derselbe Fehler")]
        self.assertEqual(len(repeated), 19 + 4)

    def test_error_that_cannot_tell_its_text(self) -> None:
        """Does not get out."""

        class Mute(Exception):
            """Fails at its own text."""

            def __str__(self) -> str:
                raise ValueError("stumm")

        reporter = ErrorReporter()
        for _ in range(3):
            try:
                raise Mute
            except Mute:
                reporter.report()


class ThreadTest(ErrorCase):
    """Threads that die, and what asyncio would keep to itself."""

    def test_dead_thread(self) -> None:
        """Whatever it dies of, the operator sees it and the log has its name."""
        for error in (ValueError("schlecht"), SystemExit(3)):
            with self.subTest(repr(error)):
                self.gui.clear()
                self.log.clear()
                self._let_die(error)
                self.assertEqual(self.types(), [type(error).__name__])
                told = [text for _, text in self.log.messages if "gestorben" in text]
                self.assertEqual(told, [f"Der Thread opfer ist gestorben: {type(error).__name__}: {error}"])

    def _let_die(self, error: BaseException) -> None:
        def die() -> None:
            raise error

        thread = threading.Thread(target=die, name="opfer")
        thread.start()
        thread.join()

    def test_death_of_the_machine_thread(self) -> None:
        """Leaves nothing on."""
        machine = controller.backend().machine

        def die() -> None:
            raise SystemExit

        machine.post(die)
        self.until(lambda: self.types() == ["SystemExit"], "report")
        self.assertFalse(Auto.active)
        self.assertEqual(outputs_on(), set())

    def test_callback_of_the_loop(self) -> None:
        """An error that asyncio hands to nobody is the operator's to see."""
        services = controller.backend().maintenance.services

        def fail() -> None:
            raise ValueError("schlecht")

        def pass_on() -> None:
            asyncio.get_running_loop().call_soon(fail)

        services.post(pass_on)
        self.until(lambda: self.types() == ["ValueError"], "report")

    def test_polled_error(self) -> None:
        """What a page asks for every second fails every second, in one dialog."""
        services = controller.backend().maintenance.services
        failed = count(1)
        numbers: list[int] = []

        def fail() -> None:
            numbers.append(next(failed))
            raise ValueError("schlecht")

        for _ in range(5):
            services.post(fail)
        self.until(lambda: len(numbers) == 5)
        self.services_handled()
        self.assertEqual(self.types(), ["ValueError"])


class EndTest(RunningCase):
    """The farewell, when something stands in its way."""

    def test_part_that_fails_at_its_end(self) -> None:
        """Outputs go off and the file is written all the same."""
        self.start()
        backend = controller.backend()
        controller.actuator_toggle_from_cpp(ActuatorEnum.MvLuft)
        self.until(outputs_on, "output")
        with patch.object(backend.operation, "stop", side_effect=ValueError("Fehler")):
            self.assertRaises(ValueError, backend.stop)
        self.assertEqual(outputs_on(), set())
        self.assertEqual([t.name for t in threading.enumerate() if t.name.startswith("demo-")], [])

    def test_machine_thread_that_does_not_end(self) -> None:
        """Outputs go off before anything is waited for, and the wait has an end."""
        self.start()
        backend = controller.backend()
        controller.actuator_toggle_from_cpp(ActuatorEnum.MvLuft)
        self.until(outputs_on, "output")
        stuck, go_on = threading.Event(), threading.Event()
        self.addCleanup(go_on.set)

        def wait() -> None:
            stuck.set()
            go_on.wait()

        backend.machine.post(wait)
        self.assertTrue(stuck.wait(20.0))
        with patch.object(machine_thread, "STOP_SECS", 0.05):
            self.assertRaises(RuntimeError, backend.stop)
        self.assertEqual(outputs_on(), set())

    def test_farewell_of_a_start_that_fails(self) -> None:
        """It is registered before anything can go wrong."""
        registered: list[Any] = []
        with (
            patch.object(Backend, "start", side_effect=ValueError("Fehler")),
            patch("atexit.register", registered.append),
        ):
            self.assertRaises(ValueError, self.start)
        self.addCleanup(self.stop)
        self.assertEqual(registered, [controller.backend().stop])


if __name__ == "__main__":
    unittest.main()
