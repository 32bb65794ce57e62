"""Writes as much as it can from four threads, and raises whenever it is called."""

import threading
from typing import NoReturn

import brovik
from brovik import Logger
from brovik.gui import Gui

from controller.telling import tell

THREADS = 4
WRITES = 2000
HUGE = "x" * 10_000_000


def init(_debug: bool) -> None:
    """Nothing to do."""


def _flood(number: int) -> None:
    for count in range(WRITES):
        Gui.status = f"{number} {count}"
        if count % 20 == 0:
            Gui.message(f"{number}", f"{count}", "info")
    Gui.status2 = HUGE + str(number)
    Gui.message("groß", HUGE, "info")
    Logger.info(HUGE)


def _run() -> None:
    threads = [threading.Thread(target=_flood, args=(number,)) for number in range(THREADS)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    tell("flooded")


def _forwarding(*arguments: object) -> None:
    def fail() -> NoReturn:
        raise ValueError(*arguments)

    try:
        fail()
    except ValueError:
        brovik.forward_exception()


def gui_value_from_cpp(what: object, value: object) -> None:
    """Starts the flood, and raises."""
    if value is True:
        threading.Thread(target=_run).start()
    _forwarding(what, value)


actuator_toggle_from_cpp = auto_value_from_cpp = chart_action_from_cpp = _forwarding
sensor_value_from_cpp = shell_action_from_cpp = simulator_value_from_cpp = _forwarding
settings_from_cpp = wifi_action_from_cpp = _forwarding
