# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple
import brovik.records

class ChangelogEntryVector:
    """Entries of a changelog."""
    def __init__(self) -> None: ...
    class iterator:
        """Walks over the elements."""
        def __iter__(self) -> ChangelogEntryVector.iterator: ...
        def __next__(self) -> ChangelogEntry: ...
    def __iter__(self) -> ChangelogEntryVector.iterator: ...
    def append(self, element: ChangelogEntry) -> None:
        """Puts a copy at the end."""
    def at(self, index: int) -> ChangelogEntry:
        """The element at a position counted from 0."""
    def size(self) -> int:
        """Number of elements."""
    def remove(self, element: ChangelogEntry) -> None:
        """Removes the first element equal to this one."""
    def __len__(self) -> int: ...
    def __bool__(self) -> bool: ...
    def __getitem__(self, index: int) -> ChangelogEntry: ...
    def __setitem__(self, index: int, element: ChangelogEntry) -> None: ...

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
    def installed(self) -> list[brovik.records.InstalledPackage]:
        """The installed packages, one record each."""
    @installed.setter
    def installed(self, value: list[brovik.records.InstalledPackage]) -> None: ...
    @property
    def changelogs(self) -> ChangelogEntryVector:
        """The changelog asked for last, as a copy. A list of equal entries does not take its place."""
    @changelogs.setter
    def changelogs(self, value: ChangelogEntryVector) -> None: ...
    @property
    def upgradables(self) -> list[brovik.records.AvailablePackage]:
        """The packages with an update, one record each."""
    @upgradables.setter
    def upgradables(self, value: list[brovik.records.AvailablePackage]) -> None: ...
    def append_stderr(self, text: str) -> None:
        """Adds to the console, as an error."""
    def append_stdout(self, text: str) -> None:
        """Adds to the console."""

Shell: ShellClass

class ChangelogEntry:
    """One entry of a changelog."""
    @typing.overload
    def __init__(self, shell: ShellClass) -> None:
        """An empty entry."""
    @typing.overload
    def __init__(self, other: ChangelogEntry) -> None:
        """A copy."""
    def __repr__(self) -> str: ...
    @property
    def name(self) -> str:
        """Name of the package."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def date(self) -> str:
        """Date of the entry, as the operator reads it."""
    @date.setter
    def date(self, value: str) -> None: ...
    @property
    def distribution(self) -> str:
        """Distribution that the version is for."""
    @distribution.setter
    def distribution(self, value: str) -> None: ...
    @property
    def version(self) -> str:
        """Version of the package."""
    @version.setter
    def version(self, value: str) -> None: ...
    @property
    def urgency_str(self) -> str:
        """Urgency: low, medium, high, or another word."""
    @urgency_str.setter
    def urgency_str(self, value: str) -> None: ...
    @property
    def changes(self) -> list[str]:
        """The changes, in order."""
    @changes.setter
    def changes(self, value: list[str]) -> None: ...
