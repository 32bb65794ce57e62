"""The thread that everything of the machine happens on."""

import threading
from collections.abc import Callable
from queue import Empty, SimpleQueue
from time import monotonic
from typing import Final, Protocol, TypeAlias

from brovik import Logger, forward_exception

Command: TypeAlias = Callable[[], None]

#: So much time passes in a tick.
TICK_SECS: Final = 0.1
#: So often there is one. A test lets the time pass faster.
PERIOD_SECS = TICK_SECS
STOP_SECS: Final = 5.0


def _nothing() -> None:
    """Nobody has pressed anything."""


class Driven(Protocol):
    """What the thread drives."""

    def advance(self, seconds: float) -> None:
        """Lets so much time pass."""

    def halt(self) -> None:
        """Switches everything off: an error does not let it go on."""


class MachineThread:
    """The thread "machine". It alone touches what it drives, so it needs no lock: others post commands."""

    def __init__(self, driven: Driven) -> None:
        self._driven = driven
        self._commands: SimpleQueue[Command | None] = SimpleQueue()
        self._thread = threading.Thread(target=self._run, name="machine", daemon=True)
        #: The tick has failed, and the operator knows.
        self._fault: type[BaseException] | None = None

    def start(self) -> None:
        """Starts the thread."""
        self._thread.start()

    def post(self, command: Command) -> None:
        """Has a command run on the thread, after all earlier ones. Any thread."""
        self._commands.put(command)

    def stop(self) -> None:
        """Ends the thread and waits for its end. RuntimeError if it does not come about."""
        self._commands.put(None)
        if self._thread.is_alive():
            self._thread.join(STOP_SECS)
        if self._thread.is_alive():
            raise RuntimeError(f"Der Thread {self._thread.name} endet nicht")

    def _run(self) -> None:
        tick = monotonic() + PERIOD_SECS
        while (command := self._next_command(tick)) is not None:
            self._obey(command)
            if monotonic() >= tick:
                tick = max(tick + PERIOD_SECS, monotonic())
                self._advance()

    def _next_command(self, tick: float) -> Command | None:
        """What to do next, at the latest when the tick is due; None at the end."""
        try:
            return self._commands.get(timeout=max(tick - monotonic(), 0.0))
        except Empty:
            return _nothing

    @staticmethod
    def _obey(command: Command) -> None:
        """A command is somebody's press, so each error of it is shown."""
        try:
            command()
        except Exception:  # pylint: disable=broad-exception-caught  # whatever it is, the rest goes on
            forward_exception()

    def _advance(self) -> None:
        """An error must not end the thread, and the operator is to see it once, not ten times a second."""
        try:
            self._driven.advance(TICK_SECS)
            self._fault = None
        # Whatever it is, the thread goes on.
        except Exception as error:  # pylint: disable=broad-exception-caught
            if self._fault is not type(error):
                forward_exception()
            else:
                Logger.debug(f"Derselbe Fehler: {error!r}")
            self._fault = type(error)
            self._obey(self._driven.halt)
