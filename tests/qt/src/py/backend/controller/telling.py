"""How a backend for tests tells the test what happened to it."""

import threading

from brovik.gui import Gui, PageEnum


def tell(*parts: object) -> None:
    """Raises a signal that no screen listens to; the test takes it down with its thread."""
    Gui.set_pico_stdout(" ".join(str(part) for part in parts))


def tell_call(function: str, *arguments: object) -> None:
    """Tells of a call of an entry function."""
    where = "main" if threading.current_thread() is threading.main_thread() else "other"
    tell(where, function, *(repr(argument) for argument in arguments))


def wait_for_page(page: PageEnum) -> None:
    """Waits until the test asks for a page."""
    pause = threading.Event()
    while Gui.page != page:
        pause.wait(0.001)
