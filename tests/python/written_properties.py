"""The shared objects as the model of their writes knows them: properties, and what is written into them."""

import functools
import math
from collections.abc import Callable
from dataclasses import dataclass
from typing import Any

import _probe
from brovik import actuator, auto, chart, config, gui, sensor, settings, shell, simulator, wifi
import chart_support
import test_auto
import test_config
import test_gui
import test_settings
import test_shell
import test_simulator
import test_wifi
from shared_properties import Attribute
from write_model import Property


class LateText:  # pylint: disable=too-few-public-methods  # a text
    """A text that takes until the GUI thread has come by, and lets all other threads go on meanwhile."""

    def __str__(self) -> str:
        _probe.settle()
        return "spät"


@dataclass(frozen=True)
class Kind:
    """What may be written into the attributes of a type."""

    values: tuple[Any, ...]
    refused: tuple[Any, ...] = ()
    taken: Callable[[Any], Any] = lambda value: value


KINDS = {
    bool: Kind((False, True), (1, None)),
    int: Kind((0, -5, 1, 2, 7, 20, 50, 100, 2**31 - 1, -(2**31)), ("1", 1.5, 2**31)),
    float: Kind(
        (0.0, 1, -0.0, -1.0, 0.01, 0.05, 3.0, 1e9, math.inf, -math.inf, math.nan), ("1", None), float
    ),
    str: Kind(("", "a", "ä€😀", 7, LateText()), (), str),
}
LISTS = Kind(([], ["a"], ["a", "ä"], ["ä", "a"]), (5,))
RECORDS = Kind(([], [{}], [{"a": 3}], [{"a": 3.0}], [{"a": True}], [{"a": [1, "x"]}, {}]), (5,))
MAPS = Kind(({}, {"a": 3}, {"a": 3.0}, {"a": {"b": [True]}}, {"a": {"b": [1]}}))
COLORS = Kind(("red", "#ff0000", "#00ff00", "#0000ff"), (), lambda name: name.replace("red", "#ff0000"))


@dataclass(frozen=True)
class Shared:
    """A shared object, the path by which the probe finds it, and its properties."""

    path: str
    python: Any
    properties: tuple[Property, ...]

    @functools.cached_property
    def by_qml(self) -> dict[str, Property]:
        """The properties by their names for the screens."""
        return {prop.qml: prop for prop in self.properties}


def _kind(attribute: Attribute) -> Kind:
    initial = attribute.initial
    if isinstance(initial, dict):
        return MAPS
    if isinstance(initial, list):
        return RECORDS if isinstance(attribute.other[0], dict) else LISTS
    members = getattr(type(initial), "__members__", None)
    if members is not None:
        # The probe shows an enumerator as its number.
        return Kind(tuple(members.values()), ("1", None), int)
    return KINDS[type(initial)]


def _property(attribute: Attribute, names: set[str], kind: Kind | None = None) -> Property:
    kind = kind or _kind(attribute)
    has_bounds = {f"{attribute.name}_min", f"{attribute.name}_max"} <= names
    return Property(
        attribute.name,
        attribute.qml,
        attribute.initial,
        kind.values,
        kind.refused,
        kind.taken,
        (f"{attribute.qml}Min", f"{attribute.qml}Max") if has_bounds else None,
    )


def _shared(path: str, python: Any, attributes: list[Attribute], *more: Property) -> Shared:
    names = {attribute.name for attribute in attributes}
    return Shared(path, python, (*(_property(attribute, names) for attribute in attributes), *more))


def _input(value: Attribute) -> list[Attribute]:
    return [Attribute("name", "name", "", "x"), value, Attribute("num", "num", -1, 4)]


#: Of a number that only functions write.
def _measured(name: str, qml: str) -> Property:
    return Property(name, qml, 0.0, (), (), float)


MEASURED = {
    prop.name: prop
    for prop in (
        _measured("leitwert", "leitwert"),
        _measured("raw_leitwert", "rawLeitwert"),
        _measured("druck", "druck"),
        _measured("raw_druck", "rawDruck"),
    )
}
SENSOR = [
    Attribute("lw_type", "lwType", sensor.SensorLwEnum.ILFS_02_TK2, None),
    Attribute("p_type", "pType", sensor.SensorPEnum.SMC_PSE564_02, None),
    Attribute("lw_sensor_defective", "lwSensorDefective", False, True),
]
LEVEL_SWITCH = Property("has_level_switch", "hasLevelSwitch", True, (False, True), (1,), reads_default=True)
SHELL_COLORS = [
    _property(
        Attribute(f"color_urgency_{urgency}", f"colorUrgency{urgency.capitalize()}", "#00ff00", ""),
        set(),
        COLORS,
    )
    for urgency in test_shell.COLORS
]

OBJECTS = (
    _shared("Auto", auto.Auto, test_auto.ATTRIBUTES),
    _shared("Config", config.Config, test_config.ATTRIBUTES, LEVEL_SWITCH),
    _shared("Gui", gui.Gui, test_gui.ATTRIBUTES),
    _shared("Settings", settings.SettingsValues, test_settings.ATTRIBUTES),
    _shared("Simulator", simulator.Simulator, test_simulator.ATTRIBUTES),
    _shared("Sensor", sensor.Sensor, SENSOR, *MEASURED.values()),
    _shared("Sensor.level", sensor.Sensor.level, _input(Attribute("state", "state", False, True))),
    _shared("Sensor.aIn2", sensor.Sensor.ain2, _input(Attribute("value", "value", 0.0, 1.0))),
    _shared(
        "Actuator",
        actuator.Actuator,
        [Attribute("manual_heating_enabled", "manualHeatingEnabled", False, True)],
    ),
    _shared(
        "Actuator.mvKalt",
        actuator.Actuator.mv_kalt,
        [
            *_input(Attribute("state", "state", False, True)),
            Attribute("log_name", "logName", "", "x"),
            Attribute("blocked", "blocked", False, True),
        ],
    ),
    _shared("Chart", chart.Chart, chart_support.ATTRIBUTES),
    _shared("Shell", shell.Shell, test_shell.STATE, *SHELL_COLORS),
    _shared(
        "Wifi",
        wifi.Wifi,
        [*test_wifi.STATE, Attribute("quality_percantage", "qualityPercentage", 0, 1)],
    ),
)
