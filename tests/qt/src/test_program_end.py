"""The end of the program: test_program_end.py <entry host> <backend> <python>."""

import os
import re
import signal
import subprocess
import unittest
from collections.abc import Callable

from program_case import HOST, PATIENCE, ProgramCase, Run

# The linter does not see that signals are members of an enum.
# pylint: disable=no-member
SIGNALS = (signal.SIGTERM, signal.SIGHUP, signal.SIGINT)
# Where the backend of these tests holds the end up, and what the log calls it.
PLACES = {
    "press": "gui_value_from_cpp(Ready)",
    "thread": "die Python-Threads Pumpe",
    "atexit": "die atexit-Funktionen des Backends",
}


def go_on(run: Run) -> None:
    """Lets the backend go on that waits."""
    run.tell("x")


class EndTest(ProgramCase):
    """Signals and the operator end the program in order."""

    def start(self, place: str, **environment: str) -> Run:
        """Starts the program with the backend that waits at this place."""
        return self.enterContext(Run(self.variables("leaving", TEST_PLACE=place, **environment)))

    def assert_orderly(self, run: Run, number: signal.Signals) -> None:
        """The program ends with 0, and the backend's exit functions have run."""
        self.assertEqual(run.end(), 0, run.lines)
        self.assertIn("goodbye\n", run.lines)
        told = [line for line in run.lines if "Das Programm wird beendet." in line]
        self.assertEqual(len(told), 1, run.lines)
        self.assertRegex(told[0], rf"^\[INFO \].* {number.name}: ")
        self.assertFalse([line for line in run.lines if "KeyboardInterrupt" in line or "own handler" in line])

    def test_each_signal(self) -> None:
        """A signal ends the program as closing its window does, with no press in between."""
        for number in SIGNALS:
            with self.subTest(number.name):
                run = self.start("")
                run.wait_for("ready")
                run.send(number)
                self.assert_orderly(run, number)

    def test_handlers_of_the_backend(self) -> None:
        """Handlers that the backend sets in init or in a press are replaced, with a line each."""
        for place in ("handler", "handler of a press"):
            for number in SIGNALS:
                with self.subTest(place, signal=number.name):
                    run = self.start(place)
                    run.wait_for("Das Backend hat SIGTERM, SIGHUP, SIGINT selbst behandelt")
                    run.send(number)
                    self.assert_orderly(run, number)
                    self.assertEqual("".join(run.lines).count("selbst behandelt"), 1)

    def test_signal_during_init(self) -> None:
        """A signal that comes before the event loop runs ends the program as soon as it does."""
        run = self.start("init")
        run.wait_for("waits")
        run.send(signal.SIGTERM)
        run.wait_for("SIGTERM: ")
        go_on(run)
        self.assert_orderly(run, signal.SIGTERM)
        self.assertIn("ready\n", run.lines)

    def test_further_signals_change_nothing(self) -> None:
        """Not while exit functions run, nor when Python has given its own handlers up."""
        for place in ("atexit", "module"):
            with self.subTest(place):
                run = self.start(place)
                run.wait_for("ready")
                run.send(signal.SIGINT)
                run.wait_for("waits")
                for number in SIGNALS * 3:
                    run.send(number)
                go_on(run)
                self.assert_orderly(run, signal.SIGINT)

    def test_what_the_end_waits_for(self) -> None:
        """Each second a line tells what is in the way; once it is out of the way the end is orderly."""
        for place, name in PLACES.items():
            with self.subTest(place):
                run = self.start(place)
                run.wait_for("waits" if place == "press" else "ready")
                run.send(signal.SIGHUP)
                # On a busy machine the screens may take the first second.
                line = run.wait_for(f" s auf {name}.\n")
                self.assertTrue(line.startswith("[WARN ]"), line)
                told = re.search(r"Das Ende wartet seit (\d+) s auf ", line)
                assert told is not None, line
                run.wait_for(f"Das Ende wartet seit {int(told[1]) + 1} s auf {name}.\n")
                go_on(run)
                self.assert_orderly(run, signal.SIGHUP)

    def test_end_by_force(self) -> None:
        """After ten seconds the stacks of all Python threads are written, and the process leaves with 1."""
        runs = {place: self.start(place) for place in PLACES}
        for place, run in runs.items():
            run.wait_for("waits" if place == "press" else "ready")
            run.send(signal.SIGTERM)
        for place, run in runs.items():
            with self.subTest(place):
                self.assertEqual(run.end(), 1, run.lines)
                last = next(number for number, line in enumerate(run.lines) if "wird abgebrochen" in line)
                self.assertRegex(run.lines[last], rf"^\[CRIT \].*SIGTERM: .*{PLACES[place].split('(')[0]}")
                self.assertIn("Das Ende wartet seit 9 s", "".join(run.lines[:last]))
                stacks = "".join(run.lines[last + 1 :])
                self.assertIn("(most recent call first):", stacks)
                self.assertRegex(stacks, r'leaving\.py", line \d+ in _wait')
        # The press has been told of by itself, once and before all that.
        lines = runs["press"].lines
        told = "gui_value_from_cpp(Ready) läuft seit 2 s"
        slow = [number for number, line in enumerate(lines) if told in line]
        self.assertEqual(len(slow), 1, lines)
        self.assertRegex(lines[slow[0]], r"^\[WARN \]")
        self.assertRegex(lines[slow[0] + 1], r"^\[WARN \].*Die Python-Threads:$")
        self.assertRegex("".join(lines[slow[0] :]), r'leaving\.py", line \d+ in _wait')
        self.assertNotIn("läuft seit", "".join(runs["thread"].lines + runs["atexit"].lines))

    def test_operator_has_time(self) -> None:
        """An end without a signal is waited for longer than that, with the same lines."""
        run = self.start("thread", TEST_CODE="5")
        run.wait_for("Das Ende wartet seit 12 s auf die Python-Threads Pumpe.")
        go_on(run)
        self.assertEqual(run.end(), 5, run.lines)
        self.assertIn("goodbye\n", run.lines)

    def test_signal_ends_the_patience_with_the_operators_end(self) -> None:
        """A signal sets the deadline also for an end that has begun without one."""
        run = self.start("thread", TEST_CODE="5")
        run.wait_for("Das Ende wartet seit 1 s")
        run.send(signal.SIGTERM)
        self.assertEqual(run.end(), 1, run.lines)

    def test_nobody_reads_the_log(self) -> None:
        """A log that takes nothing more does not keep the process from ending."""
        reading, writing = os.pipe()
        with open(reading, "rb"), open(writing, "wb") as log:
            # It is waited for below.
            program = subprocess.Popen(  # pylint: disable=consider-using-with
                [HOST],
                stdin=subprocess.DEVNULL,
                stdout=subprocess.PIPE,
                stderr=log,
                env=self.variables("leaving", TEST_PLACE="full"),
            )
            with program:
                assert program.stdout is not None
                self.assertTrue(any(b"ready" in line for line in program.stdout))
                program.send_signal(signal.SIGTERM)
                self.assertEqual(program.wait(PATIENCE), 1)

    def test_end_by_a_library(self) -> None:
        """A library that ends the process has the program end first, and the backend."""
        run = self.start("library")
        self.assertEqual(run.end(), 3, run.lines)
        self.assertIn("goodbye\n", run.lines)
        self.assertRegex("".join(run.lines), r"(?m)^\[INFO \].* exit\(3\): Das Programm wird beendet\.$")
        self.assertNotIn("Das Ende wartet", "".join(run.lines))

    def test_end_at_once(self) -> None:
        """The backend may leave without a farewell."""
        run = self.start("python")
        self.assertEqual(run.end(), 7, run.lines)
        self.assertNotIn("goodbye\n", run.lines)
        self.assertNotIn("Das Programm wird beendet.", "".join(run.lines))

    def test_children_have_no_handlers(self) -> None:
        """What the backend starts is ended by a signal as ever, and by itself."""
        run = self.start("child", TEST_CODE="0")
        run.wait_for(f"child {-signal.SIGTERM}")
        run.wait_for(f"fork {signal.SIGTERM}")
        self.assertEqual(run.end(), 0, run.lines)
        self.assertNotIn("Das Programm wird beendet.", "".join(run.lines))


class GpioEndTest(ProgramCase):
    """Where no screens are loaded, a GPIO thread that the backend's import has started ends in time, too."""

    def assert_gpio_stopped(self, run: "subprocess.CompletedProcess[str]") -> None:
        """The thread has ended while the log was whole."""
        self.assertRegex(run.stderr, r"(?m)^\[DEBUG\]\[\d{4}-[^]]+\]\[0:\d+:\d+\] Stoppe GPIO-Thread \.\.\.$")
        self.assertEqual(run.stderr.count("Stoppe GPIO-Thread"), 1)

    def test_second_instance(self) -> None:
        """A second instance."""
        self.write("bin/wmctrl", "#!/bin/sh\necho 'Brovik Kubelor'\n", 0o755)
        run = self.run_program(backend="leaving", TEST_PLACE="gpio")
        self.assertEqual(run.returncode, 100, run.stderr)
        self.assert_gpio_stopped(run)

    def test_make_stubs(self) -> None:
        """A run that only imports the backend."""
        run = self.run_program("--make-stubs", backend="leaving", TEST_PLACE="gpio")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assert_gpio_stopped(run)


class StreamsTest(ProgramCase):
    """Standard streams that are not what they should be."""

    def run_with(self, prepare: Callable[[], None], stderr: int | None, **environment: str) -> int:
        """Runs the program in a process prepared so, and gives the exit code."""
        return subprocess.run(
            [HOST],
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=stderr,
            preexec_fn=prepare,
            env=self.variables("leaving", TEST_CODE="7", **environment),
            timeout=PATIENCE,
            check=False,
        ).returncode

    def test_log_without_a_reader(self) -> None:
        """Nobody at the other end of the log."""
        reading, writing = os.pipe()
        os.close(reading)
        with open(writing, "wb") as log:
            self.assertEqual(self.run_with(lambda: None, log.fileno()), 7)

    def test_closed_streams(self) -> None:
        """Descriptors 0 to 2 are closed: nothing of the log lands in a file that the backend opens."""
        file = self.folder / "backend.txt"

        def close() -> None:
            os.closerange(0, 3)

        code = self.run_with(close, subprocess.DEVNULL, TEST_PLACE="own file", TEST_FILE=str(file))
        self.assertEqual(code, 7)
        self.assertEqual(file.read_text("utf-8"), "mine\n")


if __name__ == "__main__":
    unittest.main(verbosity=2)
