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
    asked = time.monotonic()
    while not (result := condition()):
        if time.monotonic() > end:
            raise AssertionError(f"nothing after {deadline:g} s: {what}")
        time.sleep(max(_POLL_SECS, time.monotonic() - asked))
        asked = time.monotonic()
    return result


def hold(seconds: float) -> None:
    """Lets the time of a press pass: there the time itself is what the program waits for."""
    time.sleep(seconds)
