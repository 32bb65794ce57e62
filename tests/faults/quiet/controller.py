"""A backend that has the program end as soon as its screens are there."""

import os
import signal

from brovik.gui import GuiEnum


def init(_debug: bool) -> None:
    """Tells what has come of the environment file."""
    print("environment", os.environ.get("BROVIK_FAULTS"), flush=True)


def gui_value_from_cpp(enum: GuiEnum, _value: object) -> None:
    """Ends the program as the service manager does: the window is closed."""
    if enum == GuiEnum.Ready:
        os.kill(os.getpid(), signal.SIGTERM)


def _ignore(*_arguments: object) -> None:
    pass


actuator_toggle_from_cpp = auto_value_from_cpp = chart_action_from_cpp = sensor_value_from_cpp = _ignore
settings_from_cpp = shell_action_from_cpp = simulator_value_from_cpp = wifi_action_from_cpp = _ignore
