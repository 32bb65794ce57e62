"""Has a thread that outlives the event loop, and an exit function."""

import atexit
import threading

from brovik.gui import PageEnum

from controller.telling import tell_call, wait_for_page


def _work() -> None:
    wait_for_page(PageEnum.Chart)
    tell_call("thread ends")


def init(_debug: bool) -> None:
    """Starts the thread."""
    atexit.register(tell_call, "atexit")
    threading.Thread(target=_work).start()
