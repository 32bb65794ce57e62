"""Tells every call."""

import os
import signal
import sys

from controller.telling import tell, tell_call


def init(debug: object) -> None:
    """Tells what the interpreter was started with."""
    tell("sys.path", sys.path[:2])
    tell("sys.argv", sys.argv)
    tell("stubs", os.environ.get("BROVIK_MAKE_PY_STUBS"))
    tell("file names", sys.getfilesystemencoding())
    tell("SIGINT", getattr(signal.getsignal(signal.SIGINT), "__name__", None))
    tell_call("init", debug)


def actuator_toggle_from_cpp(output: object) -> None:
    """A press on an output."""
    tell_call("actuator_toggle_from_cpp", output)


def auto_value_from_cpp(action: object, value: object) -> None:
    """A command of the automatic page."""
    tell_call("auto_value_from_cpp", action, value)


def chart_action_from_cpp(action: object, value: object) -> None:
    """A command of the chart pages."""
    tell_call("chart_action_from_cpp", action, value)


def gui_value_from_cpp(what: object, value: object) -> None:
    """A report of the screens."""
    tell_call("gui_value_from_cpp", what, value)


def sensor_value_from_cpp(sensor: object, state: object) -> None:
    """A simulated input."""
    tell_call("sensor_value_from_cpp", sensor, state)


def shell_action_from_cpp(action: object, value: object) -> None:
    """A command of the update pages."""
    tell_call("shell_action_from_cpp", action, value)


def simulator_value_from_cpp(what: object, value: object) -> None:
    """A simulated value."""
    tell_call("simulator_value_from_cpp", what, value)


def settings_from_cpp(key: object, value: object) -> None:
    """A wish for a setting."""
    tell_call("settings_from_cpp", key, value)


def wifi_action_from_cpp(action: object, value: object) -> None:
    """A command of the network pages."""
    tell_call("wifi_action_from_cpp", action, value)
