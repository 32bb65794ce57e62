"""A backend that writes down what it is called with, as a module of its own for each test."""

import unittest
from types import ModuleType
from typing import Any

from brovik import testing
from brovik.gui import GuiEnum

FUNCTIONS = {
    "actuator": "actuator_toggle_from_cpp",
    "auto": "auto_value_from_cpp",
    "chart": "chart_action_from_cpp",
    "gui": "gui_value_from_cpp",
    "sensor": "sensor_value_from_cpp",
    "shell": "shell_action_from_cpp",
    "simulator": "simulator_value_from_cpp",
    "settings": "settings_from_cpp",
    "wifi": "wifi_action_from_cpp",
}


class PlainBackend(ModuleType):  # pylint: disable=too-few-public-methods  # its face is one call
    """The module; what it is called with stands in `calls`."""

    def __init__(self) -> None:
        super().__init__("controller")
        self.calls: list[tuple[Any, ...]] = []
        for name in ("init", *FUNCTIONS.values()):
            setattr(self, name, self._noting(name))

    def _noting(self, name: str) -> Any:
        def function(*arguments: Any) -> None:
            self.calls.append((name, *arguments))

        return function

    def reports(self) -> list[Any]:
        """What the dialogs have reported, and forgets it."""
        found = [call[2] for call in self.calls if call[1:2] == (GuiEnum.DialogData,)]
        self.calls.clear()
        return found


class BackendCase(unittest.TestCase):
    """A backend that has been started."""

    def setUp(self) -> None:
        testing.reset()
        self.backend = PlainBackend()
        testing.start(self.backend)
        self.backend.calls.clear()
