"""What a backend can write, as it is at the start of the program."""

from collections.abc import Callable, Iterator
from typing import Any

from brovik import actuator, auto, chart, config, gpio, gui, sensor, settings, shell, simulator, wifi

_SINGLETONS = (
    actuator.Actuator,
    auto.Auto,
    chart.Chart,
    config.Config,
    gpio.GPIO,
    gui.Gui,
    sensor.Sensor,
    settings.SettingsValues,
    shell.Shell,
    simulator.Simulator,
    wifi.Wifi,
)
# Lists, empty at first, that tell of every write.
_LISTS = ("changelogs", "data", "meta_data_list")


def _properties(owner: object) -> dict[str, property]:
    """All of a bound object, in the order of their declaration."""
    return {name: member for name, member in vars(type(owner)).items() if isinstance(member, property)}


def _with_parts(owner: object) -> Iterator[object]:
    """The object, and the objects that it hands out for good, such as outputs and lines."""
    yield owner
    for name, member in _properties(owner).items():
        if member.fset is None and any(part.fset for part in _properties(getattr(owner, name)).values()):
            yield getattr(owner, name)


def _maker(owner: object, name: str) -> Callable[[], Any]:
    value = getattr(owner, name)
    if name in _LISTS:
        return type(value)
    # No colour is read as black.
    value = "" if name.startswith("color_") else value
    return lambda: value


_DEFAULTS = [
    (owner, name, _maker(owner, name))
    for singleton in _SINGLETONS
    for owner in _with_parts(singleton)
    for name, member in _properties(owner).items()
    if member.fset
]


def restore() -> None:
    """Writes all of it. An equal write is none, but for lists."""
    for owner, name, make in _DEFAULTS:
        if name not in _LISTS or getattr(owner, name):
            setattr(owner, name, make())
    if sensor.Sensor.druck or sensor.Sensor.raw_druck:
        sensor.Sensor.set_p_without_offset(0.0)
    if sensor.Sensor.leitwert or sensor.Sensor.raw_leitwert:
        sensor.Sensor.set_lw_without_offset(0.0)
