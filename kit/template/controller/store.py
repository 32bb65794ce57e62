"""The file that outlives the program. Whenever the power fails, it is the old one or the new one."""

import json
import os
import threading
from pathlib import Path
from typing import Final, TypeAlias

from brovik import Logger, forward_exception
from brovik.gui import Gui

Value: TypeAlias = bool | int | float | str

STOP_SECS: Final = 5.0


class Store:
    """Values by their names. A thread of its own writes them, for that takes a while. Any thread may keep."""

    def __init__(self, file: Path) -> None:
        self._file = file
        self._values: dict[str, Value] = {}
        self._changed = threading.Condition()
        self._dirty = self._stopping = False
        self._thread = threading.Thread(target=self._run, name="store", daemon=True)

    def read(self) -> dict[str, Value]:
        """What was kept. A file that cannot be read is moved aside and told."""
        try:
            found = json.loads(self._file.read_text(encoding="utf-8"))
            if not isinstance(found, dict):
                raise ValueError("kein Objekt")
        except FileNotFoundError:
            return {}
        except (OSError, ValueError) as error:
            self._put_aside(error)
            return {}
        self._values = {
            name: value for name, value in found.items() if isinstance(value, (bool, int, float, str))
        }
        return dict(self._values)

    def keep(self, name: str, value: Value) -> None:
        """Keeps a value, soon."""
        with self._changed:
            self._values[name] = value
            self._dirty = True
            self._changed.notify()

    def start(self) -> None:
        """Starts the thread."""
        self._thread.start()

    def stop(self) -> None:
        """Writes what is left and ends the thread. RuntimeError if that does not come about."""
        with self._changed:
            self._stopping = True
            self._changed.notify()
        if self._thread.is_alive():
            self._thread.join(STOP_SECS)
        if self._thread.is_alive():
            raise RuntimeError(f"Der Thread {self._thread.name} endet nicht")

    def _put_aside(self, error: Exception) -> None:
        aside = self._file.with_suffix(".damaged")
        self._file.replace(aside)
        text = f"{self._file} ist nicht lesbar und liegt nun in {aside}. Es gelten die Standardwerte."
        Logger.critical(f"{text} {error}")
        Gui.message("Einstellungen", text, "error")

    def _run(self) -> None:
        while True:
            with self._changed:
                self._changed.wait_for(lambda: self._dirty or self._stopping)
                if not self._dirty:
                    return
                self._dirty = False
                values = dict(self._values)
            try:
                self._write(values)
            except OSError:
                forward_exception()

    def _write(self, values: dict[str, Value]) -> None:
        self._file.parent.mkdir(parents=True, exist_ok=True)
        new = self._file.with_suffix(".new")
        with new.open("w", encoding="utf-8") as stream:
            json.dump(values, stream, indent=2, ensure_ascii=False)
            stream.flush()
            os.fsync(stream.fileno())
        new.replace(self._file)
        folder = os.open(self._file.parent, os.O_RDONLY)
        try:
            os.fsync(folder)
        finally:
            os.close(folder)
