"""Uses all ways out, and ends the program when its window is ready."""

import os
import sys

from brovik import Logger
from brovik.gui import GuiEnum, Gui


print("imported", os.environ.get("BROVIK_MAKE_PY_STUBS"))


def init(_debug: bool) -> None:
    """Writes on all ways out."""
    print("x", end="")
    print("y", file=sys.stderr, end="")
    print("\udcff")
    Logger.info("zu 100 %")
    Logger.info("Wert %2")
    print("argv", sys.argv)
    variables = {name: value for name, value in os.environ.items() if name.startswith(("BROVIK", "QT_IM"))}
    print("environment", sorted(variables.items()))
    if "TEST_MESSAGES" in os.environ:
        Gui.message("Erste", "", "info")
        Gui.message("Zweite", "", "info")


def gui_value_from_cpp(what: GuiEnum, value: object) -> None:
    """Tells what the screens report, and ends the program."""
    print("gui_value_from_cpp", what, value)
    if what == GuiEnum.Ready:
        Gui.set_pico_return_value(int(os.environ.get("TEST_CODE", "7")))
