"""What the host tells, for tests of the backend as a whole.

They run in an ordinary Python on `brovik.testing`. A few need the screens' side of the host as well, and run
in the program's own interpreter, where the module `_probe` has all of this.
"""

# pylint: disable=unused-import,ungrouped-imports,useless-import-alias  # one of two modules has what others import from here

try:
    from _probe import LogCapture as LogCapture
    from _probe import SignalLog as SignalLog
    from _probe import screens_loaded as screens_loaded
    from _probe import settle as settle
except ImportError:
    import importlib
    from collections.abc import Sequence
    from typing import Any

    from brovik import _kit
    from brovik._kit import screens_loaded as screens_loaded
    from brovik.testing import process_events as settle

    class SignalLog:  # type: ignore[no-redef]  # the other one is for another interpreter
        """The signals of an object of `brovik` with these names, in their order."""

        def __init__(self, name: str, signals: Sequence[str]) -> None:
            self._recorder = _kit.ChangeRecorder()
            self._recorder.watch(getattr(importlib.import_module(f"brovik.{name.lower()}"), name), name)
            self._signals = frozenset(signals)

        @property
        def emissions(self) -> list[tuple[str, bool, list[Any]]]:
            """The name of each, whether the main thread has told it, and its values."""
            return [
                (signal, thread == "MainThread", list(values))
                for _, signal, _, thread, values in self._recorder.changes()
                if signal in self._signals
            ]

        @property
        def names(self) -> list[str]:
            """The name of each."""
            return [name for name, _, _ in self.emissions]

        def clear(self) -> None:
            """Forgets all of it."""
            self._recorder.clear()

    class LogCapture:  # type: ignore[no-redef]  # the other one is for another interpreter
        """The lines of the log from now on."""

        def __init__(self) -> None:
            self.clear()

        @property
        def messages(self) -> list[tuple[str, str]]:
            """Level and text of each."""
            return list(_kit.log_lines())

        @staticmethod
        def clear() -> None:
            """Forgets them."""
            _kit.clear_log()
