"""The machine that the program runs on: its equipment, from the file or as the host has it."""

from collections.abc import Callable, Mapping
from dataclasses import dataclass
from typing import Any, Final

from brovik import Logger
from brovik.config import Config, DisplayType, MachineVersion
from brovik.gui import Gui
from brovik.sensor import Sensor, SensorLwEnum, SensorPEnum
from brovik.simulator import Simulator

from logbook.records import EquipmentRecord

from .chart_limits import ChartLimits
from .process.recipe import Equipment
from .values import fitting

#: Sizes of the controls against the standard display, factors.
DISPLAY_SCALES: Final = {
    DisplayType._8_WSSKU_23741: 1.0,  # pylint: disable=protected-access
    DisplayType._7_WSSKU_14628: 0.9,  # pylint: disable=protected-access
}


def _named(enum: Any) -> Callable[[object], Any]:
    """A reader for an enum that is stored by the name of its member."""

    def read(value: object) -> Any:
        members = enum.__members__
        if not isinstance(value, str) or value not in members:
            raise ValueError(f"{value!r} ist keines von {', '.join(members)}")
        return members[value]

    return read


def _switch(value: object) -> bool:
    return bool(fitting(value, False))


def _text(value: object) -> str:
    return str(fitting(value, ""))


def _count(value: object) -> int:
    count = int(fitting(value, 0))
    if count < 0:
        raise ValueError(f"{value!r} ist keine Anzahl")
    return count


@dataclass(frozen=True)
class Item:
    """One line of the configuration: its default as stored, how to read it, and its title in records.

    Without a title it is no equipment, and in no record.
    """

    default: object
    read: Callable[[object], Any]
    title: str = ""


#: So many runs keep their curves, the newest. Their records all stay.
KEPT_CURVES: Final = 1000
#: What of the charts that the operator has saved.
KEPT_CHARTS: Final = ChartLimits(number=1000, days=3650)

ITEMS: Final[Mapping[str, Item]] = {
    "machine_version": Item(Config.machine_version_default.name, _named(MachineVersion), "Ausführung"),
    "display_type": Item(Config.display_type_default.name, _named(DisplayType)),
    "has_level_switch": Item(Config.has_level_switch_default, _switch, "Füllstandsschalter"),
    "has_steam_valve": Item(Config.has_steam_valve_default, _switch, "Dampfventil"),
    "steam_pressure_sterilization": Item(
        Config.steam_pressure_sterilization_default, _switch, "Sterilisation unter Dampfdruck"
    ),
    # There is no pulse input to count on, so the sensor with an analogue output is fitted.
    "lw_type": Item(SensorLwEnum.Seli_SLI_03.name, _named(SensorLwEnum), "Leitwertsensor"),
    "p_type": Item(SensorPEnum.SMC_PSE564_02.name, _named(SensorPEnum), "Drucksensor"),
    "simulator": Item(Simulator.enabled_default, _switch),
    "machine_name": Item("", _text),
    "kept_curves": Item(KEPT_CURVES, _count),
    "kept_charts": Item(KEPT_CHARTS.number, _count),
    "kept_charts_days": Item(KEPT_CHARTS.days, _count),
}


@dataclass(frozen=True)
class Configuration:
    """What of the configuration the host does not have."""

    equipment: Equipment
    #: The equipment as records have it.
    records: tuple[EquipmentRecord, ...]
    version: str
    machine_name: str
    kept_curves: int
    kept_charts: ChartLimits


def missing(stored: Mapping[str, object]) -> dict[str, object]:
    """The defaults of what is not in the file, so that they can be found and edited there."""
    return {key: item.default for key, item in ITEMS.items() if key not in stored}


def apply(stored: Mapping[str, object]) -> Configuration:
    """Tells the host what machine this is, and returns what others have to know of it."""
    for key in stored.keys() - ITEMS.keys():
        Logger.warning(f"Konfiguration {key!r} ist unbekannt und wird ignoriert")
    values = {key: _value(key, item, stored) for key, item in ITEMS.items()}
    Config.machine_version = values["machine_version"]
    Config.display_type = values["display_type"]
    Config.has_level_switch = values["has_level_switch"]
    Config.has_steam_valve = values["has_steam_valve"]
    Config.steam_pressure_sterilization = values["steam_pressure_sterilization"]
    Sensor.lw_type = values["lw_type"]
    Sensor.p_type = values["p_type"]
    Simulator.enabled = values["simulator"]
    Gui.apply_items_scale_to_default(DISPLAY_SCALES[values["display_type"]])
    # Not read back from the host: it answers `has_level_switch` with the default, always.
    equipment = Equipment(
        legacy=values["machine_version"] == MachineVersion.Legacy,
        steam_valve=values["has_steam_valve"],
        steam_pressure=values["steam_pressure_sterilization"],
        level_switch=values["has_level_switch"],
    )
    return Configuration(
        equipment,
        _records(values),
        values["machine_version"].name,
        values["machine_name"],
        values["kept_curves"],
        ChartLimits(values["kept_charts"], values["kept_charts_days"]),
    )


def _records(values: Mapping[str, Any]) -> tuple[EquipmentRecord, ...]:
    return tuple(
        EquipmentRecord(
            key, item.title, value if isinstance(value := values[key], bool) else value.name.lstrip("_")
        )
        for key, item in ITEMS.items()
        if item.title
    )


def _value(key: str, item: Item, stored: Mapping[str, object]) -> Any:
    try:
        return item.read(stored.get(key, item.default))
    except ValueError as error:
        Logger.warning(f"Konfiguration {key!r} wird ignoriert: {error}")
        return item.read(item.default)
