"""Types of stored and requested values."""

import math
from typing import Final, TypeAlias

#: The host's whole numbers have 32 bits.
GREATEST_INT: Final = 2**31 - 1

Value: TypeAlias = bool | int | float | str


def fitting(value: object, like: Value) -> Value:
    """The value in the type of `like`, which is how a key's default tells the type of the key.

    Screens and JSON have but one kind of number, so a whole one serves where an int is needed.
    Raises ValueError for anything that is not meant: a bool is no number, a number no text.
    """
    if isinstance(like, bool):
        if isinstance(value, bool):
            return value
    elif isinstance(like, str):
        if isinstance(value, str):
            return value
    elif isinstance(value, (int, float)) and not isinstance(value, bool) and math.isfinite(value):
        if isinstance(like, float):
            return float(value)
        if value == int(value) and abs(value) <= GREATEST_INT:
            return int(value)
    raise ValueError(f"{value!r} ist kein Wert der Art {type(like).__name__}")
