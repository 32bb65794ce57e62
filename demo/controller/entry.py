"""The guard around the functions that the host calls."""

from collections.abc import Callable
from functools import wraps
from typing import ParamSpec

from .notices import show_exception

Parameters = ParamSpec("Parameters")


def entry(function: Callable[Parameters, None]) -> Callable[Parameters, None]:
    """Shows every exception to the operator. One that got out would end the program."""

    @wraps(function)
    def guarded(*args: Parameters.args, **kwargs: Parameters.kwargs) -> None:
        try:
            function(*args, **kwargs)
        except BaseException:  # pylint: disable=broad-exception-caught
            show_exception()

    return guarded
