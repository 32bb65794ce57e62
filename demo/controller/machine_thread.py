"""The thread that everything of the machine happens on."""

import threading
from collections.abc import Callable
from queue import Empty, SimpleQueue
from time import monotonic
from typing import Final, Protocol, TypeAlias

from .notices import show_exception
from .program_errors import ErrorReporter

Command: TypeAlias = Callable[[], None]

STEP_SECS: Final = 0.1  # of the machine's time
TICK_SECS: Final = 0.1  # of real time
STOP_SECS: Final = 5.0  # of real time
#: So many ticks that fail in a row end whatever runs.
ERRORS_TO_HALT: Final = 20


class Driven(Protocol):
    """What the thread drives."""

    def advance(self, dt: float) -> None:
        """Lets `dt` seconds of the machine's time pass."""

    def publish(self) -> None:
        """Shows the present state. Once per tick, however much time has passed in it."""

    def halt(self) -> None:
        """Switches everything off and ends what runs: an error of the program does not let it go on."""


class MachineThread:
    """The thread "demo-machine". It alone touches hardware and process, so neither needs a lock.

    Everybody else hands it commands through a queue, which `post` may do from any thread.
    """

    def __init__(self, driven: Driven, time_factor: float) -> None:
        """`time_factor` is the speed of the machine's time against real time."""
        self._driven = driven
        self._time_factor = time_factor
        #: The machine's time that has not been worked off yet, seconds.
        self._due = 0.0
        self._commands: SimpleQueue[Command | None] = SimpleQueue()
        self._thread = threading.Thread(target=self._run, name="demo-machine", daemon=True)
        self._stopping = False
        self._errors = ErrorReporter()

    def start(self) -> None:
        """Starts the thread."""
        self._thread.start()

    def post(self, command: Command) -> None:
        """Has a command run on the thread, soon and after all earlier ones."""
        self._commands.put(command)

    def stop(self) -> None:
        """Ends the thread and waits for its end. What is still in the queue is dropped.

        RuntimeError if the thread does not end: something on it waits for ever.
        """
        self._stopping = True
        self._commands.put(None)
        if self._thread.is_alive():
            self._thread.join(STOP_SECS)
            if self._thread.is_alive():
                raise RuntimeError(f"Der Thread {self._thread.name} endet nicht")

    def _run(self) -> None:
        try:
            self._run_ticks()
        except BaseException:
            self._guarded(self._driven.halt)
            raise

    def _run_ticks(self) -> None:
        next_tick = monotonic()
        failed_in_a_row = 0
        while not self._stopping:
            next_tick = max(next_tick + TICK_SECS, monotonic())
            if self._guarded(self._tick):
                failed_in_a_row = 0
            else:
                failed_in_a_row += 1
                self._after_error(failed_in_a_row)
            self._wait_until(next_tick)

    def _after_error(self, failed_in_a_row: int) -> None:
        """One tick that fails may be bad luck. Many in a row leave a machine that nobody drives."""
        # The time that the error has taken is not made up for.
        self._due = 0.0
        if failed_in_a_row % ERRORS_TO_HALT == 0:
            self._guarded(self._driven.halt)

    def _tick(self) -> None:
        self._due += TICK_SECS * self._time_factor
        while self._due >= STEP_SECS and not self._stopping:
            self._due -= STEP_SECS
            self._run_waiting_commands()
            self._driven.advance(STEP_SECS)
        self._driven.publish()

    def _run_waiting_commands(self) -> None:
        while not self._commands.empty():
            self._run_command(self._commands.get())

    def _wait_until(self, moment: float) -> None:
        """Runs commands as they come in, until the next tick is due."""
        while not self._stopping and (left := moment - monotonic()) > 0:
            try:
                self._run_command(self._commands.get(timeout=left))
            except Empty:
                return

    @staticmethod
    def _run_command(command: Command | None) -> None:
        """A command is somebody's press, so each error of it is shown."""
        try:
            if command is not None:
                command()
        except Exception:  # pylint: disable=broad-exception-caught
            show_exception()

    def _guarded(self, action: Command) -> bool:
        """An error in the tick must not end the thread, and the machine with it. False if there was one."""
        try:
            action()
        except Exception:  # pylint: disable=broad-exception-caught
            self._errors.report()
            return False
        return True
