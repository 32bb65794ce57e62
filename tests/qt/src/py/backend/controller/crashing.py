"""Crashes in native code beside a thread that waits."""

import ctypes
import os
import sys
import threading

from brovik.gui import GuiEnum


def _wait(waits: threading.Event) -> None:
    waits.set()
    threading.Event().wait()


def gui_value_from_cpp(what: GuiEnum, _value: object) -> None:
    """Reads where nothing is."""
    if what != GuiEnum.Ready:
        return
    waits = threading.Event()
    threading.Thread(target=_wait, args=(waits,), daemon=True).start()
    waits.wait()
    if "TEST_CLOSED" in os.environ and sys.__stderr__ is not None:
        sys.__stderr__.close()
    ctypes.string_at(0)
