"""Waiting for what happens on other threads."""

import time
from collections.abc import Callable

import _probe

DEADLINE = 20.0


def eventually(condition: Callable[[], bool]) -> bool:
    """Lets the GUI thread work until the condition holds. False if it does not come to hold."""
    end = time.monotonic() + DEADLINE
    while not condition():
        if time.monotonic() > end:
            return False
        _probe.settle()
    return True
