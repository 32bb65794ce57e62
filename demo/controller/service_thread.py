"""The thread of the maintenance services: updates and network."""

import threading
from collections.abc import Callable, Coroutine, Iterable
from time import monotonic
from typing import TYPE_CHECKING, Any, Protocol, TypeVar

from .machine_thread import Command
from .program_errors import PRESS_QUIET_SECS, ErrorReporter

if TYPE_CHECKING:
    from .service_loop import ServiceLoop

T = TypeVar("T")


class ProcessFailed(Exception):
    """A program has failed; the text is what it has said last."""


class Task(Protocol):
    """Work that goes on beside all other."""

    def cancel(self) -> bool:
        """Makes it tidy up and end. False if it has ended."""

    def done(self) -> bool:
        """Whether it has ended."""


class ServiceThread:
    """The thread "demo-services", with an asyncio loop for what takes long and must not hold up the machine.

    `post` may be called from any thread, `spawn`, `sleep` and `done_by` on this one only. What belongs to it
    needs no lock; the lock here is for the loop and for what waits until there is one.
    """

    def __init__(self, time_factor: float) -> None:
        """`time_factor` is the speed of the machine's time against real time."""
        self._time_factor = time_factor
        self._errors = ErrorReporter(PRESS_QUIET_SECS)
        self._lock = threading.Lock()
        self._early: list[Command] = []
        self._made: "ServiceLoop | None" = None
        self._thread = threading.Thread(target=self._run, name="demo-services", daemon=True)

    def start(self) -> None:
        """Starts the thread."""
        self._thread.start()

    def post(self, command: Command) -> None:
        """Has a command run on the thread, soon and after all earlier ones."""
        with self._lock:
            if self._made is None:
                self._early.append(command)
            else:
                self._made.post(command)

    def spawn(self, work: Coroutine[Any, Any, None]) -> Task:
        """Has work done beside all other. Cancelling it makes it tidy up and end; `stop` does that, too."""
        return self._loop.spawn(work)

    @property
    def now(self) -> float:
        """Seconds of the machine's time, from an arbitrary beginning. For any thread."""
        return monotonic() * self._time_factor

    async def sleep(self, secs: float) -> None:
        """Waits for `secs` seconds of the machine's time."""
        await self._loop.sleep(secs / self._time_factor)

    async def done_by(self, post: Callable[[Command], None], function: Callable[[], T]) -> T:
        """Has another thread call a function, and waits for the result. `post` hands commands to it."""
        return await self._loop.done_by(post, function)

    async def run(self, command: Iterable[str], limit_secs: float) -> None:
        """Runs a program, for `limit_secs` seconds of real time at most, and waits for its end.

        Raises OSError if it cannot be started, ProcessFailed if it fails. Cancelling ends the program.
        """
        code, said = await self._loop.run_process(command, limit_secs)
        if code is None:
            raise ProcessFailed(f"Das Programm wurde nach {limit_secs:.0f} s abgebrochen.")
        if code:
            raise ProcessFailed(said.strip().rpartition("\n")[2] or f"Fehlercode {code}")

    def stop(self) -> None:
        """Cancels all work, waits until it has tidied up, and ends the thread."""
        if self._thread.is_alive():
            self.post(self._stop_loop)
            self._thread.join()

    def _stop_loop(self) -> None:
        self._loop.stop()

    @property
    def _loop(self) -> "ServiceLoop":
        """On the thread, where there always is one."""
        assert self._made is not None
        return self._made

    def _run(self) -> None:
        from .service_loop import ServiceLoop  # pylint: disable=import-outside-toplevel

        loop = ServiceLoop(self._guarded)
        with self._lock:
            self._made = loop
            for command in self._early:
                loop.post(command)
        loop.run()

    def _guarded(self, command: Command) -> None:
        """An error in one command is the operator's to see, and no other command's."""
        try:
            command()
        except Exception:  # pylint: disable=broad-exception-caught
            self._errors.report()
