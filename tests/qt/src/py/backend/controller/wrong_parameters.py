"""Has functions that do not take what they are called with."""


def auto_value_from_cpp(_enum: object) -> None:
    """Without the value."""


def wifi_action_from_cpp(_enum: object, _value: object, *, _force: bool) -> None:
    """With a parameter that nobody gives."""
