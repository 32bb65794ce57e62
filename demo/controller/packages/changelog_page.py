"""The changelog that the operator reads."""

from collections.abc import Awaitable, Callable
from html import escape
from typing import TypeAlias

from brovik.shell import ChangelogEntryVector, Shell

from .. import notices
from ..service_thread import ServiceThread, Task
from .changelog import Entry
from .changelogs import Changelogs
from .records import changelog_vector
from .server import PackageError

Read: TypeAlias = Callable[[], Awaitable[list[Entry]]]


class ChangelogPage:
    """Shows one changelog at a time: the one asked for last. Belongs to the services' thread."""

    def __init__(self, changelogs: Changelogs, services: ServiceThread) -> None:
        self._changelogs = changelogs
        self._services = services
        self._reading: Task | None = None

    def show_offered(self, name: str) -> None:
        """Shows the changelog of the version on offer."""
        self._begin(lambda: self._changelogs.offered(name))

    def show_local(self, name: str) -> None:
        """Shows the changelog of the installed version."""
        self._begin(lambda: self._changelogs.local(name))

    def clear_cache(self) -> None:
        """Deletes what has been downloaded."""
        self._changelogs.clear()

    def _begin(self, read: Read) -> None:
        if self._reading is not None:
            self._reading.cancel()
        # The operator must not take the old one for it. Besides, the host keeps a list in place of a
        # new one as long if each two entries have but one attribute in common.
        Shell.changelogs = ChangelogEntryVector()
        self._reading = self._services.spawn(self._show(read))

    @staticmethod
    async def _show(read: Read) -> None:
        try:
            Shell.changelogs = changelog_vector(await read())
        except PackageError as error:
            notices.message("Changelog", escape(str(error)), "error")
