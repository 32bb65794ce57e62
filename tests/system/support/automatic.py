"""The page of the automatic run."""

import re

from support.panel import Panel

START = "Automatikbetrieb starten"
ABORT = "Automatikbetrieb abbrechen"


def progress(program: Panel) -> int:
    """The percentage that the page shows; -1 while it shows none."""
    for name in program.names():
        if match := re.fullmatch(r"(\d+) %", name):
            return int(match[1])
    return -1
