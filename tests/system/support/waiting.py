"""Waiting for a condition, with a deadline."""

import time
from collections.abc import Callable
from typing import TypeVar

T = TypeVar("T")

# Generous: the drawing is done by two slow cores that do other work as well.
DEADLINE_SECS = 60.0
_POLL_SECS = 0.05


def wait_for(what: str, condition: Callable[[], T | None], deadline: float = DEADLINE_SECS) -> T:
    """Asks until the answer is true, and gives that answer. AssertionError after `deadline` seconds."""
    end = time.monotonic() + deadline
    while True:
        asked = time.monotonic()
        if result := condition():
            return result
        if asked > end:
            raise AssertionError(f"nothing after {deadline:g} s: {what}")
        # To ask is work for the program, too: it has at least as long to itself.
        time.sleep(max(_POLL_SECS, time.monotonic() - asked))


def hold(seconds: float) -> None:
    """Lets the time of a press pass: there the time itself is what the program waits for."""
    time.sleep(seconds)
