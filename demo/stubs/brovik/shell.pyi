# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple

class ShellActionEnum:
    """Requests of the operator."""
    __members__: ClassVar[dict[str, ShellActionEnum]]
    Update: ClassVar[ShellActionEnum]
    Upgrade: ClassVar[ShellActionEnum]
    Changelog: ClassVar[ShellActionEnum]
    LocalChangelog: ClassVar[ShellActionEnum]
    ClearCache: ClassVar[ShellActionEnum]
    TestConsole: ClassVar[ShellActionEnum]
    ToggleTesting: ClassVar[ShellActionEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class ShellClass:
    """State of the update facility."""
    @property
    def color_urgency_low(self) -> str:
        """Colour of the urgency "low"."""
    @color_urgency_low.setter
    def color_urgency_low(self, value: str) -> None: ...
    @property
    def color_urgency_medium(self) -> str:
        """Colour of the urgency "medium"."""
    @color_urgency_medium.setter
    def color_urgency_medium(self, value: str) -> None: ...
    @property
    def color_urgency_high(self) -> str:
        """Colour of the urgency "high"."""
    @color_urgency_high.setter
    def color_urgency_high(self, value: str) -> None: ...
    @property
    def color_urgency_other(self) -> str:
        """Colour of every other urgency."""
    @color_urgency_other.setter
    def color_urgency_other(self, value: str) -> None: ...
    @property
    def testing_repo_enabled(self) -> bool:
        """The testing component of the package source is on."""
    @testing_repo_enabled.setter
    def testing_repo_enabled(self, value: bool) -> None: ...
    @property
    def locked(self) -> bool:
        """The backend is at work; the update actions are locked."""
    @locked.setter
    def locked(self, value: bool) -> None: ...
    @property
    def upgrade_in_progress_or_finished(self) -> bool:
        """An upgrade was started; no automatic run until a restart."""
    @upgrade_in_progress_or_finished.setter
    def upgrade_in_progress_or_finished(self, value: bool) -> None: ...
    @property
    def installed(self) -> list[dict[str, typing.Any]]:
        """The installed packages, one record each."""
    @installed.setter
    def installed(self, value: list[dict[str, typing.Any]]) -> None: ...
    @property
    def upgradables(self) -> list[dict[str, typing.Any]]:
        """The packages with an update, one record each."""
    @upgradables.setter
    def upgradables(self, value: list[dict[str, typing.Any]]) -> None: ...
    def append_stderr(self, text: str) -> None:
        """Adds to the console, as an error."""
    def append_stdout(self, text: str) -> None:
        """Adds to the console."""

Shell: ShellClass
