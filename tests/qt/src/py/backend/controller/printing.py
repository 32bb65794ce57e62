"""Prints, logs, and asks for nothing."""

import os
import sys

from brovik import Logger


def init(_debug: bool) -> None:
    """Writes on all ways out."""
    print("x", end="")
    print("y", file=sys.stderr, end="")
    print("\udcff")
    Logger.info("zu 100 %")
    Logger.info("Wert %2")
    print("argv", sys.argv)
    print({name: value for name, value in os.environ.items() if name.startswith("BROVIK")})


def gui_value_from_cpp(what: object, value: object) -> None:
    """Tells what the screens report."""
    print("gui_value_from_cpp", what, value)
