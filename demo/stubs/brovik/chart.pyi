# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple
import brovik.actuator

class ChartMetaDataList:
    """The records of the saved charts, by reference."""
    def __init__(self) -> None: ...
    class iterator:
        """Walks over the elements."""
        def __iter__(self) -> ChartMetaDataList.iterator: ...
        def __next__(self) -> ChartMetaData: ...
    def __iter__(self) -> ChartMetaDataList.iterator: ...
    def append(self, element: ChartMetaData) -> None:
        """Puts a copy at the end."""
    def at(self, index: int) -> ChartMetaData:
        """The element at a position counted from 0."""
    def size(self) -> int:
        """Number of elements."""
    def remove(self, element: ChartMetaData) -> None:
        """Removes the first element equal to this one."""
    def __len__(self) -> int: ...
    def __bool__(self) -> bool: ...
    def __getitem__(self, index: int) -> ChartMetaData: ...
    def __setitem__(self, index: int, element: ChartMetaData) -> None: ...

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

class LineEnum:
    """The lines of the chart."""
    __members__: ClassVar[dict[str, LineEnum]]
    Invalid: ClassVar[LineEnum]
    Co2: ClassVar[LineEnum]
    Heiss: ClassVar[LineEnum]
    Kalt: ClassVar[LineEnum]
    Kanal: ClassVar[LineEnum]
    Kreis: ClassVar[LineEnum]
    LIn: ClassVar[LineEnum]
    LOut: ClassVar[LineEnum]
    Luft: ClassVar[LineEnum]
    Lw: ClassVar[LineEnum]
    P: ClassVar[LineEnum]
    Pumpe: ClassVar[LineEnum]
    SIn: ClassVar[LineEnum]
    SOut: ClassVar[LineEnum]
    Steam: ClassVar[LineEnum]
    Step: ClassVar[LineEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class ChartMetaData:
    """What the list tells of a saved chart."""
    @typing.overload
    def __init__(self) -> None: ...
    @typing.overload
    def __init__(self, filename: str, result: str, status: str, datetime_str: str, duration: int) -> None: ...
    @property
    def name(self) -> str:
        """Name of the saved chart, by which all requests call it."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def result(self) -> str:
        """How the run ended: success, warning, error, or another word."""
    @result.setter
    def result(self, value: str) -> None: ...
    @property
    def status(self) -> str:
        """Text shown behind the name."""
    @status.setter
    def status(self, value: str) -> None: ...
    @property
    def datetime_str(self) -> str:
        """Date and time as the operator reads them."""
    @datetime_str.setter
    def datetime_str(self, value: str) -> None: ...
    @property
    def duration(self) -> int:
        """Length of the process, seconds."""
    @duration.setter
    def duration(self, value: int) -> None: ...

class ChartLineClass:
    """One line of the chart."""
    @property
    def data(self) -> list[tuple[float, float]]:
        """All points: seconds and value."""
    @data.setter
    def data(self, value: list[tuple[float, float]]) -> None: ...
    @property
    def name(self) -> str:
        """Name of the line in the log."""
    @name.setter
    def name(self, value: str) -> None: ...
    def add_point(self, point: tuple[float, float]) -> None:
        """Appends one point: seconds and value."""
    def clear(self) -> None:
        """Removes all points."""

class ChartClass:
    """The chart in memory and the list of saved charts."""
    @property
    def co2(self) -> ChartLineClass:
        """CO2: off, or at the height of its label."""
    @property
    def heiss(self) -> ChartLineClass:
        """Hot water: off, or at the height of its label."""
    @property
    def kalt(self) -> ChartLineClass:
        """Cold water: off, or at the height of its label."""
    @property
    def kanal(self) -> ChartLineClass:
        """Drain: off, or at the height of its label."""
    @property
    def kreis(self) -> ChartLineClass:
        """Circulation: off, or at the height of its label."""
    @property
    def l_in(self) -> ChartLineClass:
        """Lye inlet: off, or at the height of its label."""
    @property
    def l_out(self) -> ChartLineClass:
        """Lye outlet: off, or at the height of its label."""
    @property
    def luft(self) -> ChartLineClass:
        """Air: off, or at the height of its label."""
    @property
    def lw(self) -> ChartLineClass:
        """Conductivity, mS/cm."""
    @property
    def p(self) -> ChartLineClass:
        """Pressure, bar."""
    @property
    def pumpe(self) -> ChartLineClass:
        """Pump: off, or at the height of its label."""
    @property
    def s_in(self) -> ChartLineClass:
        """Acid inlet: off, or at the height of its label."""
    @property
    def s_out(self) -> ChartLineClass:
        """Acid outlet: off, or at the height of its label."""
    @property
    def steam(self) -> ChartLineClass:
        """Steam: off, or at the height of its label."""
    @property
    def step(self) -> ChartLineClass:
        """Number of the step."""
    def line_from_actuator_enum(self, enum: brovik.actuator.ActuatorEnum) -> Optional[ChartLineClass]:
        """None for what has no line in the chart."""
    def line_from_line_enum(self, enum: LineEnum) -> Optional[ChartLineClass]:
        """None for a value that is no line."""
    def clear(self) -> None:
        """Removes the points of all lines."""
    @property
    def active(self) -> bool:
        """A recording is running."""
    @active.setter
    def active(self, value: bool) -> None: ...
    @property
    def savable(self) -> bool:
        """The chart in memory can be saved."""
    @savable.setter
    def savable(self, value: bool) -> None: ...
    @property
    def current_name(self) -> str:
        """Title of the chart in memory."""
    @current_name.setter
    def current_name(self, value: str) -> None: ...
    @property
    def assigned_names(self) -> list[str]:
        """Names that saved charts already have."""
    @assigned_names.setter
    def assigned_names(self, value: list[str]) -> None: ...
    @property
    def step_names(self) -> list[str]:
        """Labels of the steps, the first at height 1."""
    @step_names.setter
    def step_names(self, value: list[str]) -> None: ...
    @property
    def actuator_names(self) -> list[str]:
        """Labels of the actuators, the first at height 1."""
    @actuator_names.setter
    def actuator_names(self, value: list[str]) -> None: ...
    @property
    def meta_data_list(self) -> ChartMetaDataList:
        """The saved charts. A change of the list itself is shown when one of the two functions is called that raise metaDataListChanged."""
    @meta_data_list.setter
    def meta_data_list(self, value: ChartMetaDataList) -> None: ...
    def find_meta_data_by_name(self, name: str) -> Optional[ChartMetaData]:
        """The record of exactly this name; None if there is none."""
    def emit_meta_data_list_changed(self) -> None:
        """Shows the list anew."""
    def sort_and_emit_meta_data_list_changed(self) -> None:
        """Sorts the list by name, whatever the case of the letters, and shows it anew."""

Chart: ChartClass
