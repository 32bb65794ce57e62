# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple

class GPIOClass:
    """Edge detection on input lines."""
    @property
    def consumer_prefix(self) -> str:
        """Start of the label of lines that are requested from now on; the offset follows."""
    @consumer_prefix.setter
    def consumer_prefix(self, value: str) -> None: ...
    def open_chip(self, path_to_dev: str) -> None:
        """Opens the chip, by path, name, label or number. Before the first line is watched."""
    def release(self, line: int) -> None:
        """Gives one line up."""

GPIO: GPIOClass
