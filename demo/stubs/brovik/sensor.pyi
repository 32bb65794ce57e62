# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple

class SensorEnum:
    """The inputs and the measured values."""
    __members__: ClassVar[dict[str, SensorEnum]]
    Start: ClassVar[SensorEnum]
    Stop: ClassVar[SensorEnum]
    Level: ClassVar[SensorEnum]
    Lw: ClassVar[SensorEnum]
    AIn1: ClassVar[SensorEnum]
    AIn2: ClassVar[SensorEnum]
    P: ClassVar[SensorEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class SensorLwEnum:
    """Kinds of conductivity sensors."""
    __members__: ClassVar[dict[str, SensorLwEnum]]
    Seli_SLI_03: ClassVar[SensorLwEnum]
    ILFS_02_TK2: ClassVar[SensorLwEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class SensorPEnum:
    """Kinds of pressure sensors."""
    __members__: ClassVar[dict[str, SensorPEnum]]
    SMC_PSE564_02: ClassVar[SensorPEnum]
    Gems_3500R0006G01B000: ClassVar[SensorPEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class DIn:
    """One digital input."""
    @property
    def name(self) -> str:
        """Name of the input."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def state(self) -> bool:
        """State of the input, as the backend reads it."""
    @state.setter
    def state(self, value: bool) -> None: ...
    @property
    def num(self) -> int:
        """Number of the input, given by the backend; -1 until then."""
    @num.setter
    def num(self, value: int) -> None: ...
    @property
    def enum(self) -> SensorEnum:
        """Which input this is."""

class AIn:
    """One analogue input."""
    @property
    def name(self) -> str:
        """Name of the input."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def value(self) -> float:
        """Value of the input, percent of its range, as the backend reads it."""
    @value.setter
    def value(self, value: float) -> None: ...
    @property
    def num(self) -> int:
        """Number of the input."""
    @num.setter
    def num(self, value: int) -> None: ...
    @property
    def enum(self) -> SensorEnum:
        """Which input this is."""

class SensorClass:
    """The inputs of the machine."""
    @property
    def start(self) -> DIn:
        """The input start."""
    @property
    def stop(self) -> DIn:
        """The input stop."""
    @property
    def level(self) -> DIn:
        """The input level."""
    @property
    def all_dins(self) -> List[DIn]:
        """start, stop and level."""
    @property
    def ain1(self) -> AIn:
        """The input ain1."""
    @property
    def ain2(self) -> AIn:
        """The input ain2."""
    def din_from_enum(self, enum: SensorEnum) -> Optional[DIn]:
        """None for a value that is no digital input."""
    def ain_from_enum(self, enum: SensorEnum) -> Optional[AIn]:
        """None for a value that is no analogue input."""
    @property
    def leitwert(self) -> float:
        """Conductivity after the offset, mS/cm."""
    @property
    def druck(self) -> float:
        """Pressure after the offset, bar."""
    @property
    def raw_leitwert(self) -> float:
        """Conductivity before the offset, mS/cm."""
    @property
    def raw_druck(self) -> float:
        """Pressure before the offset, bar."""
    @property
    def lw_type(self) -> SensorLwEnum:
        """Kind of the conductivity sensor."""
    @lw_type.setter
    def lw_type(self, value: SensorLwEnum) -> None: ...
    @property
    def p_type(self) -> SensorPEnum:
        """Kind of the pressure sensor."""
    @p_type.setter
    def p_type(self, value: SensorPEnum) -> None: ...
    @property
    def lw_sensor_defective(self) -> bool:
        """The conductivity sensor gave no pulses in the last period."""
    @lw_sensor_defective.setter
    def lw_sensor_defective(self, value: bool) -> None: ...
    @property
    def lw_ticks(self) -> int:
        """Edges counted since the last period."""
    def p_change_from_simulator(self, value: float) -> None:
        """Takes a simulated pressure, bar, and sets the simulated input to match."""
    def set_lw_and_apply_offset(self, value: float) -> float:
        """Stores a raw conductivity, mS/cm, and returns the value after the offset."""
    def set_p_and_apply_offset(self, value: float) -> float:
        """Stores a raw pressure, bar, and returns the value after the offset."""
    def set_lw_without_offset(self, value: float) -> None:
        """Stores a conductivity, mS/cm, as the raw value and as the value after the offset."""
    def set_p_without_offset(self, value: float) -> None:
        """Stores a pressure, bar, as the raw value and as the value after the offset."""
    def init_lw_timer(self) -> None:
        """Starts the measurement of conductivity from counted edges. To be called once."""
    def setup_lw_edge_detect(self, channel: int) -> None:
        """Counts the falling edges of this GPIO line from now on."""

Sensor: SensorClass
