"""Waiting for what the board does, by the clock of the machine that emulates it."""

import time
from collections.abc import Callable
from typing import TypeVar

T = TypeVar("T")

# Generous: the emulated processor is slow, and shares the real ones. What is promised in seconds is
# measured by the clock of the board.
DEADLINE_SECS = 900.0
# Each question is work for the board.
_POLL_SECS = 1.0


def wait_for(what: str, condition: Callable[[], T | None], deadline: float = DEADLINE_SECS) -> T:
    """Asks until the answer is true, and gives that answer. AssertionError after `deadline` seconds."""
    end = time.monotonic() + deadline
    while not (result := condition()):
        if time.monotonic() > end:
            raise AssertionError(f"nothing after {deadline:g} s: {what}")
        time.sleep(_POLL_SECS)
    return result
