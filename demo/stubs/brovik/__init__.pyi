# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple

def forward_exception() -> None:
    """Shows the exception that is being handled to the operator."""

class Logger:
    """Writes to the log of the program."""
    @staticmethod
    def debug(msg: str, w_trace: bool = False) -> None: ...
    @staticmethod
    def info(msg: str, w_trace: bool = False) -> None: ...
    @staticmethod
    def warning(msg: str, w_trace: bool = False) -> None: ...
    @staticmethod
    def critical(msg: str, w_trace: bool = False) -> None: ...
    @staticmethod
    def fatal(msg: str, w_trace: bool = False) -> None: ...
