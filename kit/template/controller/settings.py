"""The parameters of the process: what the operator wishes, and what is kept of it."""

from brovik import Logger
from brovik.settings import SettingsEnum, SettingsValues

from .store import Store, Value


class Settings:
    """Puts parameters into `SettingsValues` and into the store. Belongs to the interpreter thread."""

    def __init__(self, store: Store) -> None:
        self._store = store

    def load(self) -> None:
        """Takes what is kept. What does not fit any more is left at its default."""
        for name, value in self._store.read().items():
            try:
                self._put(name, value)
            except (AttributeError, TypeError, ValueError) as error:
                Logger.warning(f"Der Parameter {name} behält seinen Standardwert: {error}")

    def wish(self, enum: SettingsEnum, value: object) -> None:
        """Takes a value of the operator. The bounds are those of the program, which clamps."""
        if isinstance(value, (bool, float, str)):
            self._put(enum.name, value)
            self._store.keep(enum.name, getattr(SettingsValues, enum.name))

    @staticmethod
    def _put(name: str, value: Value) -> None:
        """A number comes as a float, also for a parameter that counts."""
        if name not in SettingsValues.get_default_values():
            raise AttributeError("unbekannt")
        kind = type(getattr(SettingsValues, name))
        setattr(SettingsValues, name, kind(value))
