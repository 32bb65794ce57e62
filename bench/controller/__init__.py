"""A backend that does nothing, as fast as it can."""

import brovik  # pylint: disable=unused-import  # the enums of the actions must be known
import _bench


def auto_value_from_cpp(_action: object, _value: object) -> None:
    """Called by the measured road."""


def init(_debug: bool) -> None:
    """Tells the benchmark of this thread and of the function that the bare road calls."""
    _bench.register(auto_value_from_cpp)


def _ignore(*_arguments: object) -> None:
    """All other actions."""


actuator_toggle_from_cpp = _ignore
chart_action_from_cpp = _ignore
gui_value_from_cpp = _ignore
sensor_value_from_cpp = _ignore
shell_action_from_cpp = _ignore
simulator_value_from_cpp = _ignore
settings_from_cpp = _ignore
wifi_action_from_cpp = _ignore
