"""Tells of more than the screens can take, in the call itself and on a thread that the call waits for."""

import threading

from brovik.gui import Gui

from controller.telling import tell

WRITES = 20_000


def init(_debug: bool) -> None:
    """Nothing to do."""


def _write() -> None:
    name = threading.current_thread().name
    for count in range(WRITES):
        Gui.status = f"{name} {count}"


def gui_value_from_cpp(_what: object, value: object) -> None:
    """Tells of much if it is asked to."""
    if value is True:
        _write()
        thread = threading.Thread(target=_write)
        thread.start()
        thread.join()
        tell("told")


def _ignore(*_arguments: object) -> None:
    """All other actions."""


actuator_toggle_from_cpp = auto_value_from_cpp = chart_action_from_cpp = _ignore
sensor_value_from_cpp = shell_action_from_cpp = simulator_value_from_cpp = _ignore
settings_from_cpp = wifi_action_from_cpp = _ignore
