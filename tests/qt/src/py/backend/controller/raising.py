"""Lets an exception out of an entry function."""


def gui_value_from_cpp(_what: object, _value: object) -> None:
    """Breaks the rule."""
    raise ValueError("entkommen")
