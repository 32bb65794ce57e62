# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple

class ChartEnum:
    """Requests of the operator."""
    __members__: ClassVar[dict[str, ChartEnum]]
    Invalid: ClassVar[ChartEnum]
    Save: ClassVar[ChartEnum]
    Load: ClassVar[ChartEnum]
    Delete: ClassVar[ChartEnum]
    Rename: ClassVar[ChartEnum]
    Hand: ClassVar[ChartEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class ChartClass:
    """The chart in memory and the list of saved charts."""

Chart: ChartClass
