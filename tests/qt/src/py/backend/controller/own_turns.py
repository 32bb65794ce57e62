"""Chooses for itself how long a thread's turn with the interpreter is."""

import sys


def init(_debug: bool) -> None:
    """Chooses."""
    sys.setswitchinterval(0.02)
