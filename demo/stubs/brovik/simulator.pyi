# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple
import brovik.records

class SimuEnum:
    """What the operator sets."""
    __members__: ClassVar[dict[str, SimuEnum]]
    Enabled: ClassVar[SimuEnum]
    AIn0: ClassVar[SimuEnum]
    AIn1: ClassVar[SimuEnum]
    Lw: ClassVar[SimuEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class SimKeys:
    """Names of the attributes."""
    def __init__(self) -> None: ...
    enabled: ClassVar[str]
    enabled_default: ClassVar[str]
    a_in_0: ClassVar[str]
    a_in_0_min: ClassVar[str]
    a_in_0_max: ClassVar[str]
    a_in_0_default: ClassVar[str]
    a_in_1: ClassVar[str]
    a_in_1_min: ClassVar[str]
    a_in_1_max: ClassVar[str]
    a_in_1_default: ClassVar[str]
    scale_factor: ClassVar[str]
    scale_factor_default: ClassVar[str]

class SimulatorClass:
    """Values of the simulated hardware."""
    @property
    def enabled(self) -> bool:
        """The simulation is on."""
    @enabled.setter
    def enabled(self, value: bool) -> None: ...
    @property
    def enabled_default(self) -> bool:
        """Default: The simulation is on."""
    @property
    def a_in_0_min(self) -> int:
        """Lower bound: Analogue input 0, the pressure channel, percent."""
    @a_in_0_min.setter
    def a_in_0_min(self, value: int) -> None: ...
    @property
    def a_in_0_max(self) -> int:
        """Upper bound: Analogue input 0, the pressure channel, percent."""
    @a_in_0_max.setter
    def a_in_0_max(self, value: int) -> None: ...
    @property
    def a_in_0(self) -> int:
        """Analogue input 0, the pressure channel, percent."""
    @a_in_0.setter
    def a_in_0(self, value: int) -> None: ...
    @property
    def a_in_0_default(self) -> int:
        """Default: Analogue input 0, the pressure channel, percent."""
    @property
    def a_in_1_min(self) -> int:
        """Lower bound: Analogue input 1, the conductivity channel, percent."""
    @a_in_1_min.setter
    def a_in_1_min(self, value: int) -> None: ...
    @property
    def a_in_1_max(self) -> int:
        """Upper bound: Analogue input 1, the conductivity channel, percent."""
    @a_in_1_max.setter
    def a_in_1_max(self, value: int) -> None: ...
    @property
    def a_in_1(self) -> int:
        """Analogue input 1, the conductivity channel, percent."""
    @a_in_1.setter
    def a_in_1(self, value: int) -> None: ...
    @property
    def a_in_1_default(self) -> int:
        """Default: Analogue input 1, the conductivity channel, percent."""
    @property
    def scale_factor(self) -> float:
        """Scale of the left column of the simulator's window."""
    @scale_factor.setter
    def scale_factor(self, value: float) -> None: ...
    @property
    def scale_factor_default(self) -> float:
        """Default: Scale of the left column of the simulator's window."""
    @property
    def p_inc_rate(self) -> float:
        """Rise of the pressure in the leak test, bar/s."""
    @p_inc_rate.setter
    def p_inc_rate(self, value: float) -> None: ...
    @property
    def p_dec_rate(self) -> float:
        """Fall of the pressure in the leak test, bar/s."""
    @p_dec_rate.setter
    def p_dec_rate(self, value: float) -> None: ...
    def get_default_values(self) -> brovik.records.SimulatorDefaults:
        """The defaults that a backend may store. Always the same dictionary: do not change it."""
    def get_min_max_keys(self) -> set[str]:
        """The names of the bounds. Always the same set: do not change it."""

Simulator: SimulatorClass
