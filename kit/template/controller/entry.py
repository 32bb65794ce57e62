"""The guard around the functions that the program calls."""

from collections.abc import Callable
from functools import wraps
from typing import ParamSpec

from brovik import forward_exception

Parameters = ParamSpec("Parameters")


def entry(function: Callable[Parameters, None]) -> Callable[Parameters, None]:
    """Shows every exception to the operator. One that got out would end the program."""

    @wraps(function)
    def guarded(*args: Parameters.args, **kwargs: Parameters.kwargs) -> None:
        try:
            function(*args, **kwargs)
        except BaseException:  # pylint: disable=broad-exception-caught  # whatever it is, the rest goes on
            forward_exception()

    return guarded
