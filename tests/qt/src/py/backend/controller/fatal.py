"""Ends the program by a fatal message, on the threads that TEST_FATAL names."""

import os
import threading

from brovik import Logger
from brovik.gui import Gui


def _end() -> None:
    Logger.fatal("Ende")


def _flood() -> None:
    count = 0
    while True:
        count += 1
        Gui.status = str(count)


def init(_debug: bool) -> None:
    """Ends the program while other threads are at work."""
    threading.Thread(target=_flood, daemon=True).start()
    if os.environ["TEST_FATAL"] == "interpreter":
        _end()
    for _ in range(3):
        threading.Thread(target=_end, daemon=True).start()
