"""The changelogs of the packages: where to get them, and the temporary files that this takes."""

import shutil
import tempfile
from pathlib import Path
from typing import Final

from .changelog import Entry, UnreadableChangelog, read, up_to
from .manager import PackageManager
from .server import PackageError, Server
from .source import Package

#: Of a changelog, kB.
SIZE: Final = 40
READ_SECS: Final = 0.4


class Changelogs:
    """Finds changelogs. Belongs to one thread."""

    def __init__(self, manager: PackageManager, server: Server) -> None:
        self._manager = manager
        self._server = server
        self._cache: Path | None = None

    async def offered(self, name: str) -> list[Entry]:
        """That of the version on offer, downloaded unless it has been before. Raises PackageError."""
        package, changelog = self._known(name)
        try:
            cached = self._folder() / changelog.name
            if not cached.exists():
                await self._server.fetch(1, f"{name} Changelog", SIZE)
                # Clearing may have taken the folder away meanwhile.
                cached = self._folder() / changelog.name
                _copy(changelog, cached)
        except OSError as error:
            raise PackageError(f"{name}: Das Changelog lässt sich nicht holen: {error}") from error
        return _entries(cached, self._manager.candidate(package))

    async def local(self, name: str) -> list[Entry]:
        """That of the installed version. Raises PackageError."""
        _, changelog = self._known(name)
        await self._server.sleep(READ_SECS)
        return _entries(changelog, self._manager.installed[name])

    def clear(self) -> None:
        """Leaves no file behind. Raises PackageError; the next time tries again."""
        if self._cache is None:
            return
        try:
            shutil.rmtree(self._cache)
        except FileNotFoundError:
            pass  # Somebody has been here before.
        except OSError as error:
            raise PackageError(f"Der Cache lässt sich nicht leeren: {error}") from error
        self._cache = None

    def _folder(self) -> Path:
        if self._cache is None or not self._cache.exists():
            self._cache = Path(tempfile.mkdtemp(prefix="kubelor-demo-"))
        return self._cache

    def _known(self, name: str) -> tuple[Package, Path]:
        package = self._manager.packages.get(name)
        if package is None or package.changelog is None:
            raise PackageError(f"Zu {name} gibt es kein Changelog.")
        return package, package.changelog


def _copy(file: Path, target: Path) -> None:
    """All of it or nothing: half a file would pass for the whole one the next time."""
    part = target.with_suffix(".part")
    shutil.copyfile(file, part)
    part.replace(target)


def _entries(path: Path, version: str) -> list[Entry]:
    try:
        return up_to(version, read(path))
    except UnreadableChangelog as error:
        raise PackageError(f"{path.stem}: {error}") from error
