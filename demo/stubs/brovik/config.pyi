# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple

class MachineVersion:
    """Generations of the machine."""
    __members__: ClassVar[dict[str, MachineVersion]]
    Legacy: ClassVar[MachineVersion]
    _2024: ClassVar[MachineVersion]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class DisplayType:
    """Displays that the machine may have."""
    __members__: ClassVar[dict[str, DisplayType]]
    _7_WSSKU_14628: ClassVar[DisplayType]
    _8_WSSKU_23741: ClassVar[DisplayType]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class ConfigClass:
    """The equipment of this machine."""
    @property
    def machine_version(self) -> MachineVersion:
        """Generation of the machine."""
    @machine_version.setter
    def machine_version(self, value: MachineVersion) -> None: ...
    @property
    def machine_version_default(self) -> MachineVersion:
        """Default: Generation of the machine."""
    @property
    def display_type(self) -> DisplayType:
        """Mounted display. Read by the backend alone."""
    @display_type.setter
    def display_type(self, value: DisplayType) -> None: ...
    @property
    def display_type_default(self) -> DisplayType:
        """Default: Mounted display. Read by the backend alone."""
    @property
    def has_level_switch(self) -> bool:
        """A level switch is fitted to the lye tank. Reads the default, whatever was written; the screens follow what was written."""
    @has_level_switch.setter
    def has_level_switch(self, value: bool) -> None: ...
    @property
    def has_level_switch_default(self) -> bool:
        """Default: A level switch is fitted to the lye tank. Reads the default, whatever was written; the screens follow what was written."""
    @property
    def has_steam_valve(self) -> bool:
        """A steam valve is fitted."""
    @has_steam_valve.setter
    def has_steam_valve(self, value: bool) -> None: ...
    @property
    def has_steam_valve_default(self) -> bool:
        """Default: A steam valve is fitted."""
    @property
    def steam_pressure_sterilization(self) -> bool:
        """Steam sterilization runs under pressure."""
    @steam_pressure_sterilization.setter
    def steam_pressure_sterilization(self, value: bool) -> None: ...
    @property
    def steam_pressure_sterilization_default(self) -> bool:
        """Default: Steam sterilization runs under pressure."""

Config: ConfigClass
