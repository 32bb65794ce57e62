# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple

class DOutTypeEnum:
    """Kinds of outputs."""
    __members__: ClassVar[dict[str, DOutTypeEnum]]
    Mv: ClassVar[DOutTypeEnum]
    Sv: ClassVar[DOutTypeEnum]
    Pv3: ClassVar[DOutTypeEnum]
    Led: ClassVar[DOutTypeEnum]
    Heating: ClassVar[DOutTypeEnum]
    Spare: ClassVar[DOutTypeEnum]
    Pump: ClassVar[DOutTypeEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class ActuatorEnum:
    """The outputs, and the request for manual heating."""
    __members__: ClassVar[dict[str, ActuatorEnum]]
    MvLaugeIn: ClassVar[ActuatorEnum]
    MvSaureIn: ClassVar[ActuatorEnum]
    MvKalt: ClassVar[ActuatorEnum]
    MvHeiss: ClassVar[ActuatorEnum]
    MvKreis: ClassVar[ActuatorEnum]
    MvSaureOut: ClassVar[ActuatorEnum]
    MvLaugeOut: ClassVar[ActuatorEnum]
    MvLuft: ClassVar[ActuatorEnum]
    MvCo2: ClassVar[ActuatorEnum]
    MvKanal: ClassVar[ActuatorEnum]
    Pumpe: ClassVar[ActuatorEnum]
    Heat1: ClassVar[ActuatorEnum]
    MvSteam: ClassVar[ActuatorEnum]
    ToggleManualHeating: ClassVar[ActuatorEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class DOut:
    """One digital output."""
    @property
    def name(self) -> str:
        """Name that the operator sees."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def log_name(self) -> str:
        """Short name for logs and charts; may be empty."""
    @log_name.setter
    def log_name(self, value: str) -> None: ...
    @property
    def state(self) -> bool:
        """The output is on, as the backend reports it."""
    @state.setter
    def state(self, value: bool) -> None: ...
    @property
    def blocked(self) -> bool:
        """The operator may not switch the output. No screen shows it: the backend refuses."""
    @blocked.setter
    def blocked(self, value: bool) -> None: ...
    @property
    def num(self) -> int:
        """Number of the output, given by the backend; -1 until then."""
    @num.setter
    def num(self, value: int) -> None: ...
    @property
    def enum(self) -> ActuatorEnum:
        """Which output this is."""
    @property
    def type_(self) -> DOutTypeEnum:
        """Kind of output."""
    def __repr__(self) -> str: ...

class ActuatorClass:
    """The thirteen digital outputs."""
    @property
    def mv_lauge_in(self) -> DOut:
        """Lauge IN"""
    @property
    def mv_saure_in(self) -> DOut:
        """Säure IN"""
    @property
    def mv_kalt(self) -> DOut:
        """Wasser kalt"""
    @property
    def mv_heiss(self) -> DOut:
        """Wasser Heiß"""
    @property
    def mv_kreis(self) -> DOut:
        """Kreislauf"""
    @property
    def mv_saure_out(self) -> DOut:
        """Säure OUT"""
    @property
    def mv_lauge_out(self) -> DOut:
        """Lauge OUT"""
    @property
    def mv_luft(self) -> DOut:
        """Luft"""
    @property
    def mv_co2(self) -> DOut:
        """CO2"""
    @property
    def mv_kanal(self) -> DOut:
        """Kanal"""
    @property
    def pumpe(self) -> DOut:
        """Pumpe"""
    @property
    def heat_1(self) -> DOut:
        """Heizung"""
    @property
    def mv_steam(self) -> DOut:
        """Dampf"""
    @property
    def all_douts(self) -> List[DOut]:
        """All outputs, in the order of ActuatorEnum."""
    @property
    def active_douts(self) -> Set[DOut]:
        """The outputs that are on."""
    def dout_from_enum(self, enum: ActuatorEnum) -> Optional[DOut]:
        """None for a value that is no output."""
    @property
    def manual_heating_enabled(self) -> bool:
        """The operator may switch the heater by hand."""
    @manual_heating_enabled.setter
    def manual_heating_enabled(self, value: bool) -> None: ...
    def block_all_except_of(self, outputs: Set[ActuatorEnum]) -> None:
        """Unblocks the outputs of the set and blocks all others."""
    def unblock_all_except_of(self, outputs: Set[ActuatorEnum]) -> None:
        """Blocks the outputs of the set and unblocks all others."""
    def add_blocked(self, outputs: Iterable[ActuatorEnum]) -> None:
        """Blocks these outputs and leaves the others as they are."""
    def remove_blocked(self, outputs: Iterable[ActuatorEnum]) -> None:
        """Unblocks these outputs and leaves the others as they are."""
    def set_dout_model(self, douts: typing.Iterable[DOut]) -> None:
        """Chooses the outputs that the screens show, in this order. Returns before they show them."""

Actuator: ActuatorClass
