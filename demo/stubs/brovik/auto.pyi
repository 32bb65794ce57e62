# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple

class AutoEnum:
    """The operator's commands."""
    __members__: ClassVar[dict[str, AutoEnum]]
    Toggle: ClassVar[AutoEnum]
    ToggleLwTestSaure: ClassVar[AutoEnum]
    ToggleLwTestLauge: ClassVar[AutoEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class ProgressColor:
    """Colour of the progress text."""
    __members__: ClassVar[dict[str, ProgressColor]]
    Normal: ClassVar[ProgressColor]
    Success: ClassVar[ProgressColor]
    Warning: ClassVar[ProgressColor]
    Error: ClassVar[ProgressColor]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class AutoClass:
    """State of the automatic run and of the bath tests."""
    @property
    def active(self) -> bool:
        """An automatic run is in progress."""
    @active.setter
    def active(self, value: bool) -> None: ...
    @property
    def lw_saure_active(self) -> bool:
        """The conductivity test of the acid bath is running."""
    @lw_saure_active.setter
    def lw_saure_active(self, value: bool) -> None: ...
    @property
    def lw_lauge_active(self) -> bool:
        """The conductivity test of the lye bath is running."""
    @lw_lauge_active.setter
    def lw_lauge_active(self, value: bool) -> None: ...
    @property
    def lw_saure_too_low(self) -> bool:
        """The acid's conductivity was found too low."""
    @lw_saure_too_low.setter
    def lw_saure_too_low(self, value: bool) -> None: ...
    @property
    def lw_lauge_too_low(self) -> bool:
        """The lye's conductivity was found too low."""
    @lw_lauge_too_low.setter
    def lw_lauge_too_low(self, value: bool) -> None: ...
    @property
    def lw_sp_reached(self) -> bool:
        """The running bath test has reached its set point."""
    @lw_sp_reached.setter
    def lw_sp_reached(self, value: bool) -> None: ...
    @property
    def lw_saure_max(self) -> float:
        """Highest conductivity of the acid so far, mS/cm."""
    @lw_saure_max.setter
    def lw_saure_max(self, value: float) -> None: ...
    @property
    def lw_saure_min(self) -> int:
        """Minimum of the acid in force for this run, mS/cm."""
    @lw_saure_min.setter
    def lw_saure_min(self, value: int) -> None: ...
    @property
    def lw_saure_sp(self) -> int:
        """Set point of the acid in force for this run, mS/cm."""
    @lw_saure_sp.setter
    def lw_saure_sp(self, value: int) -> None: ...
    @property
    def lw_lauge_max(self) -> float:
        """Highest conductivity of the lye so far, mS/cm."""
    @lw_lauge_max.setter
    def lw_lauge_max(self, value: float) -> None: ...
    @property
    def lw_lauge_min(self) -> int:
        """Minimum of the lye in force for this run, mS/cm."""
    @lw_lauge_min.setter
    def lw_lauge_min(self, value: int) -> None: ...
    @property
    def lw_lauge_sp(self) -> int:
        """Set point of the lye in force for this run, mS/cm."""
    @lw_lauge_sp.setter
    def lw_lauge_sp(self, value: int) -> None: ...
    @property
    def intense_factor(self) -> float:
        """Factor of intensive cleaning in force for this run."""
    @intense_factor.setter
    def intense_factor(self, value: float) -> None: ...
    @property
    def intense_cleaning(self) -> bool:
        """This run is an intensive cleaning."""
    @intense_cleaning.setter
    def intense_cleaning(self, value: bool) -> None: ...
    @property
    def progress(self) -> int:
        """Percentage of the progress bar, 0 to 100; negative: indeterminate."""
    @progress.setter
    def progress(self, value: int) -> None: ...
    @property
    def progress_str(self) -> str:
        """Large text over the progress bar."""
    @progress_str.setter
    def progress_str(self, value: str) -> None: ...
    @property
    def progress_color(self) -> ProgressColor:
        """Colour of the large text."""
    @progress_color.setter
    def progress_color(self, value: ProgressColor) -> None: ...

Auto: AutoClass
