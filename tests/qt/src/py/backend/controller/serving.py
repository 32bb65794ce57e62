"""Runs each line of its input as code, on a thread of its own.

FIFO names a pipe that nobody writes to: who opens it waits until the test opens it as well.
"""

import atexit
import os
import subprocess
import sys
import threading

from brovik.gui import Gui, GuiEnum

FIFO = os.environ["TEST_FIFO"]
# What the next call of the entry function does.
answers: list[str] = []


def wait(place: str) -> None:
    """Says where it is, and waits."""
    print("waits", place, flush=True)
    with open(FIFO, encoding="utf-8"):
        pass


def _serve() -> None:
    for line in sys.stdin:
        exec(line, globals())  # pylint: disable=exec-used


def _tell_environment() -> None:
    names = subprocess.run(["env"], capture_output=True, encoding="utf-8", check=True).stdout
    print("children know", [line for line in names.splitlines() if line.startswith(("NOTIFY", "WATCHDOG"))])


def init(_debug: bool) -> None:
    """Starts to listen."""
    _tell_environment()
    threading.Thread(target=_serve, daemon=True).start()
    if "TEST_LATE_END" in os.environ:
        atexit.register(wait, "at the end")


def gui_value_from_cpp(what: GuiEnum, _value: object) -> None:
    """Answers late if the test wishes it."""
    if what == GuiEnum.Ready:
        Gui.status = "Noch nicht bereit"
        if "TEST_LATE_READY" in os.environ:
            wait("in Ready")
        print("ready", flush=True)
    elif answers:
        wait(answers.pop())
