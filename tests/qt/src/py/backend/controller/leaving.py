"""Ends late, or not at all: it waits at the place that TEST_PLACE names until its input goes on."""

import atexit
import ctypes
import os
import signal
import subprocess
import sys
import threading
from collections.abc import Callable
from types import FrameType

from brovik.gui import GuiEnum, Gui
from brovik.sensor import Sensor

PLACE = os.environ.get("TEST_PLACE", "")


def _wait(read: Callable[[int, int], bytes] = os.read) -> None:
    # Also when the modules of Python are gone already.
    print("waits", flush=True)
    read(0, 1)


def _own_handler(_signal: int, _frame: FrameType | None) -> None:
    print("own handler")


def _set_own_handlers() -> None:
    for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
        signal.signal(number, _own_handler)


def _end_a_fork() -> None:
    child = os.fork()
    if child == 0:
        signal.pause()
        # A fork must not run what is registered for the end of the program.
        os._exit(0)  # pylint: disable=protected-access
    os.kill(child, signal.SIGTERM)
    print("fork", os.WTERMSIG(os.waitpid(child, 0)[1]))


def _end_a_child() -> None:
    with subprocess.Popen(["sleep", "1000"]) as child:
        child.terminate()
        print("child", child.wait())


def _call_from_c(function: str) -> None:
    """Ends the process as a library would, on a thread of its own."""
    code = 3
    threading.Thread(target=getattr(ctypes.CDLL(None), function), args=(code,), daemon=True).start()


# What the class has is called by Python itself.
# pylint: disable-next=too-few-public-methods
class _Late:
    """Is taken down with its module."""

    def __del__(self) -> None:
        _wait()


@atexit.register
def _say_goodbye() -> None:
    print("goodbye")


if PLACE == "gpio":
    Sensor.setup_lw_edge_detect(5)
if PLACE == "module":
    LATE = _Late()


def init(_debug: bool) -> None:
    """Does what the place asks for."""
    match PLACE:
        case "init":
            _wait()
        case "handler":
            _set_own_handlers()
        case "thread":
            threading.Thread(target=_wait, name="Pumpe").start()
        case "atexit":
            atexit.register(_wait)
        case "child":
            _end_a_child()
            _end_a_fork()
        case "own file":
            with open(os.environ["TEST_FILE"], "w", encoding="utf-8") as file:
                file.write("mine\n")
                file.flush()
                print("not mine")
                print("not mine", file=sys.stderr)


def gui_value_from_cpp(what: GuiEnum, _value: object) -> None:
    """The first press."""
    if what != GuiEnum.Ready:
        return
    print("ready", flush=True)
    match PLACE:
        case "press":
            _wait()
        case "handler of a press":
            _set_own_handlers()
        case "library":
            _call_from_c("exit")
        case "python":
            os._exit(7)  # pylint: disable=protected-access  # what is tried here
        case "full":
            while True:
                print("more and more", file=sys.stderr)
    if "TEST_CODE" in os.environ:
        Gui.set_pico_return_value(int(os.environ["TEST_CODE"]))
