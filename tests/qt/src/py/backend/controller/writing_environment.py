"""Sets variables of the environment while the screens load, and ends the program once both are done."""

import os
import threading

from brovik.gui import GuiEnum, Gui

VARIABLES = 20_000


def _write() -> None:
    for number in range(VARIABLES):
        os.environ[f"TEST_{number}"] = str(number)


writer = threading.Thread(target=_write)


def init(_debug: bool) -> None:
    """Starts to write."""
    writer.start()


def gui_value_from_cpp(what: GuiEnum, _value: object) -> None:
    """Ends the program."""
    if what == GuiEnum.Ready:
        writer.join()
        Gui.set_pico_return_value(7)
