"""A backend whose entry functions all fail, and which says so as it should."""

from typing import Protocol

import brovik
from brovik.gui import Gui


class Entry(Protocol):  # pylint: disable=too-few-public-methods
    """An entry function of a backend."""

    def __call__(self, enum: object, value: object = None) -> None:
        ...


def _entry(name: str) -> Entry:
    def entry(enum: object, value: object = None) -> None:
        try:
            raise ValueError(f"{name}({enum}, {value})")
        except ValueError:
            brovik.forward_exception()

    return entry


actuator_toggle_from_cpp = _entry("actuator_toggle_from_cpp")
auto_value_from_cpp = _entry("auto_value_from_cpp")
chart_action_from_cpp = _entry("chart_action_from_cpp")
gui_value_from_cpp = _entry("gui_value_from_cpp")
sensor_value_from_cpp = _entry("sensor_value_from_cpp")
settings_from_cpp = _entry("settings_from_cpp")
shell_action_from_cpp = _entry("shell_action_from_cpp")
simulator_value_from_cpp = _entry("simulator_value_from_cpp")
wifi_action_from_cpp = _entry("wifi_action_from_cpp")


def init(_debug: bool) -> None:
    """Says that the backend is up."""
    Gui.status = "Fehlerbackend bereit"
