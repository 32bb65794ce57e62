"""A backend that knows nothing of the host: it imports none of its modules and prints its calls."""


def init(_debug: bool) -> None:
    """Nothing to do."""


def _print_call(*arguments: object) -> None:
    print(*map(repr, arguments))


actuator_toggle_from_cpp = auto_value_from_cpp = chart_action_from_cpp = _print_call
gui_value_from_cpp = sensor_value_from_cpp = shell_action_from_cpp = _print_call
simulator_value_from_cpp = settings_from_cpp = wifi_action_from_cpp = _print_call
