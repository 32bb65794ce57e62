"""Errors of the program, which the operator is to see, but not over and over; and what helps to find them."""

import faulthandler
import signal
import sys
import threading
from collections.abc import Callable
from dataclasses import dataclass
from time import monotonic
from types import TracebackType
from typing import Final, TypeAlias

from brovik import Logger

from .notices import exception_text, show_exception

#: After this time without an error, seconds, the same one is news again.
QUIET_SECS: Final = 10.0
#: The same where a press may be the cause: nobody closes the dialog and presses again in less.
PRESS_QUIET_SECS: Final = 3.0
#: An error that does not end is logged so many times, and after that once for as many more.
LOGGED: Final = 20

#: The type of an exception, and the place that it comes from. Its text may hold a value that changes.
Kind: TypeAlias = tuple[type[BaseException], str, int]


@dataclass
class _Known:
    """An error that has been shown: how often it has come, and when last, in seconds."""

    count: int
    last: float


# To report is all that it is there for.
class ErrorReporter:  # pylint: disable=too-few-public-methods
    """Shows an error once and counts its repetitions in the log. Belongs to one thread.

    What fails ten times a second would else pile up dialogs over the power button.
    """

    def __init__(self, quiet_secs: float = QUIET_SECS, now: Callable[[], float] = monotonic) -> None:
        """`now` tells the time in seconds."""
        self._quiet_secs = quiet_secs
        self._now = now
        self._known: dict[Kind, _Known] = {}

    def report(self) -> None:
        """Reports the exception that is being handled: call it within the `except` block."""
        error = sys.exc_info()[1]
        if error is None:
            return
        now = self._now()
        known = self._known.setdefault(_kind(error), _Known(0, now))
        if now - known.last > self._quiet_secs:
            known.count = 0
        known.count += 1
        known.last = now
        if known.count == 1:
            show_exception()
        elif known.count <= LOGGED or known.count % LOGGED == 0:
            Logger.critical(f"Derselbe Fehler zum {known.count}. Mal: {exception_text(error)}")


def _kind(error: BaseException) -> Kind:
    innermost: TracebackType | None = error.__traceback__
    while innermost is not None and innermost.tb_next is not None:
        innermost = innermost.tb_next
    if innermost is None:
        return type(error), "", 0
    return type(error), innermost.tb_frame.f_code.co_filename, innermost.tb_lineno


def report_dead_threads() -> None:
    """Has the exception shown that a thread of the backend dies of. Python itself would print it, at most."""
    threading.excepthook = _report_dead


def write_stacks_on_request() -> None:
    """Has the stacks of all threads written on SIGUSR1, to see where a program that stands still does so, and
    on a crash."""
    # Not `sys.stderr`: that is the host's, and has no file descriptor.
    if sys.__stderr__ is not None:
        faulthandler.enable(sys.__stderr__)
        faulthandler.register(signal.SIGUSR1, sys.__stderr__)


def _report_dead(death: threading.ExceptHookArgs) -> None:
    name = death.thread.name if death.thread else "unbekannt"
    text = exception_text(death.exc_value) if death.exc_value else death.exc_type.__name__
    Logger.critical(f"Der Thread {name} ist gestorben: {text}")
    # Python calls the hook from within its `except` block.
    show_exception()
