"""The process parameters: what the operator wishes, what is stored, what holds."""

from collections.abc import Mapping
from typing import Final

from brovik import Logger
from brovik.gui import Gui, IconEnum
from brovik.sensor import Sensor
from brovik.settings import SettingsEnum, SettingsKeys, SettingsValues

from . import storage
from .jobs import job_running
from .process.recipe import Equipment
from .settings_table import HOST_SETTINGS
from .storage import Change, StorageWriter
from .values import Value, fitting

OFFSET_ACTIONS: Final = (
    SettingsEnum.POffsetSet,
    SettingsEnum.POffsetReset,
    SettingsEnum.LwOffsetSet,
    SettingsEnum.LwOffsetReset,
)


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
        else:
            HOST_SETTINGS[key].write(wanted)
    if not equipment.steam_valve:
        # The settings number the steps by this parameter alone. What the operator wished stays in the file.
        SettingsValues.do_steam_step = False


class SettingsKeeper:  # pylint: disable=too-few-public-methods
    """Takes the operator's wishes: a parameter, and the value that it is to have. Runs on the interpreter thread.

    The host clamps; what it has made of the value is what gets stored.
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
            Gui.toast_warn("Während eines Laufs lässt sich nicht kalibrieren")
            return
        if action == SettingsEnum.POffsetSet:
            self._store(SettingsKeys.p_offset, Sensor.raw_druck)
        elif action == SettingsEnum.POffsetReset:
            self._store(SettingsKeys.p_offset, SettingsValues.p_offset_default)
        elif action == SettingsEnum.LwOffsetSet:
            self._store(SettingsKeys.lw_offset, Sensor.raw_leitwert)
        else:
            self._store(SettingsKeys.lw_offset, SettingsValues.lw_offset_default)
        Gui.toast_notify("Offset gespeichert", IconEnum.Saved)

    def _store(self, key: str, value: Value) -> None:
        HOST_SETTINGS[key].write(value)
        self._writer.submit(Change(storage.SETTINGS, {key: HOST_SETTINGS[key].read()}))
