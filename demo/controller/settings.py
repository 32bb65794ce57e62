"""The process parameters: what the operator wishes, what is stored, what holds."""

import math
from collections.abc import Mapping
from enum import StrEnum
from typing import Final

from brovik import Logger
from brovik.gui import Gui, IconEnum
from brovik.sensor import Sensor
from brovik.settings import SettingsEnum, SettingsKeys, SettingsValues

from logbook.records import ParameterRecord

from . import notices, storage
from .jobs import job_running
from .journal import JOURNAL, Event, Kind
from .process.recipe import Equipment
from .settings_table import HOST_SETTINGS
from .settings_titles import TITLES
from .storage import Change, StorageWriter
from .values import Value, fitting

OFFSET_ACTIONS: Final = (
    SettingsEnum.POffsetSet,
    SettingsEnum.POffsetReset,
    SettingsEnum.LwOffsetSet,
    SettingsEnum.LwOffsetReset,
)


class Source(StrEnum):
    """Who has changed a parameter."""

    SCREEN = "screen"
    BACKEND = "backend"


def load(stored: Mapping[str, object], equipment: Equipment) -> None:
    """Writes stored parameters to the host. What is unknown or out of range stays in the file."""
    defaults = SettingsValues.get_default_values()
    for key, value in stored.items():
        if key not in HOST_SETTINGS:
            Logger.warning(f"Gespeicherte Einstellung {key!r} ist unbekannt und wird ignoriert")
            continue
        try:
            wanted = fitting(value, defaults[key])
            HOST_SETTINGS[key].check(wanted)
        except ValueError as error:
            Logger.warning(f"Gespeicherte Einstellung {key!r} wird ignoriert: {error}")
            _note_change(key, value, defaults[key], Source.BACKEND)
        else:
            HOST_SETTINGS[key].write(wanted)
    if not equipment.steam_valve:
        # The settings number the steps by this parameter alone. What the operator wished stays in the file.
        if stored.get(SettingsEnum.do_steam_step.name) is True:
            _note_change(SettingsEnum.do_steam_step.name, True, False, Source.BACKEND)
        SettingsValues.do_steam_step = False


def parameters() -> tuple[ParameterRecord, ...]:
    """All parameters as they are in force now."""
    defaults = SettingsValues.get_default_values()
    return tuple(
        ParameterRecord(key, TITLES[key].text, setting.read(), defaults[key], TITLES[key].unit)
        for key, setting in HOST_SETTINGS.items()
    )


def _note_change(key: str, old: object, new: object, source: Source) -> None:
    details = {"key": key, "old": old, "new": new, "source": source}
    JOURNAL.add(Kind.SETTING, Event.CHANGED, TITLES[key].text, details=details)


def _offset(action: SettingsEnum) -> tuple[str, float]:
    """The parameter that the action is about, and what it is to become: bar or mS/cm."""
    if action == SettingsEnum.POffsetSet:
        return SettingsKeys.p_offset, Sensor.raw_druck
    if action == SettingsEnum.POffsetReset:
        return SettingsKeys.p_offset, SettingsValues.p_offset_default
    if action == SettingsEnum.LwOffsetSet:
        return SettingsKeys.lw_offset, Sensor.raw_leitwert
    return SettingsKeys.lw_offset, SettingsValues.lw_offset_default


class SettingsKeeper:  # pylint: disable=too-few-public-methods
    """Takes the operator's wishes: a parameter, and the value that it is to have.

    Runs on the interpreter thread. The host clamps; what it has made of the value is what gets stored.
    """

    def __init__(self, writer: StorageWriter, equipment: Equipment) -> None:
        self._writer = writer
        self._equipment = equipment

    def wish(self, enum: SettingsEnum, value: object) -> None:
        """Sets a parameter, or does one of the actions on the offsets."""
        if enum in OFFSET_ACTIONS:
            self._change_offset(enum)
        else:
            self._set(enum.name, value)

    def _set(self, key: str, value: object) -> None:
        defaults = SettingsValues.get_default_values()
        if key not in HOST_SETTINGS:
            Logger.warning(f"Es gibt keine Einstellung {key!r}")
            return
        if key == SettingsEnum.do_steam_step.name and not self._equipment.steam_valve:
            Logger.warning(f"Einstellung {key!r} bleibt unverändert: Die Maschine hat kein Dampfventil")
            return
        try:
            self._store(key, fitting(value, defaults[key]))
        except ValueError as error:
            Logger.warning(f"Einstellung {key!r} bleibt unverändert: {error}")

    def _change_offset(self, action: SettingsEnum) -> None:
        if job_running():
            notices.warn("Während eines Laufs lässt sich nicht kalibrieren")
            return
        key, offset = _offset(action)
        if not math.isfinite(offset):
            # Every value would be as unknown from then on, and the file could not give it back.
            notices.warn("Ohne Messwert lässt sich nicht kalibrieren")
            return
        self._store(key, offset)
        Gui.toast_notify("Offset gespeichert", IconEnum.Saved)

    def _store(self, key: str, value: Value) -> None:
        old = HOST_SETTINGS[key].read()
        HOST_SETTINGS[key].write(value)
        new = HOST_SETTINGS[key].read()
        self._writer.submit(Change(storage.SETTINGS, {key: new}))
        if new != old:
            _note_change(key, old, new, Source.SCREEN)
