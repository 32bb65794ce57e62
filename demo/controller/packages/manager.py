"""The package manager: what is installed, what is on offer, and upgrades.

It stands where a real machine runs `apt-get`: there, each function here starts a process with
`asyncio.create_subprocess_exec`, copies both of its streams to the console and ends it in a
`finally`.
"""

from collections.abc import Mapping, Sequence
from dataclasses import dataclass
from typing import Any, Final

from .changelog import is_version
from .server import PackageError, Server
from .source import Package, Source

#: The components of the source.
STABLE: Final = "stable"
TESTING: Final = "testing"

#: Of the list of a component, kB.
LIST_SIZE: Final = 1500
READ_SECS: Final = 0.4
UNPACK_SECS: Final = 0.8
SET_UP_SECS: Final = 1.0


@dataclass(frozen=True)
class Update:
    """A newer version of an installed package."""

    package: Package
    old: str
    new: str


class PackageManager:
    """Knows the versions of all packages. Belongs to one thread."""

    def __init__(self, source: Source, server: Server) -> None:
        self._source = source
        #: The version of each package that has been upgraded, those included that the source has lost.
        self._upgraded: dict[str, str] = {}
        self._server = server
        self._console = server.console
        self._components: Sequence[str] = (STABLE,)
        #: The components whose lists are here.
        self._listed: Sequence[str] = ()

    @property
    def packages(self) -> Mapping[str, Package]:
        """All packages by name."""
        return self._source.packages

    @property
    def installed(self) -> dict[str, str]:
        """The installed version of each package of the source."""
        return {name: self._upgraded.get(name, p.delivered) for name, p in self.packages.items()}

    @property
    def kept(self) -> dict[str, str]:
        """What `restore` takes. A package that cannot be read just now has not lost its version."""
        return self._upgraded | self.installed

    def restore(self, kept: Mapping[Any, object]) -> None:
        """Takes over what was installed when the program ended."""
        for name, version in kept.items():
            if isinstance(name, str) and isinstance(version, str) and is_version(version):
                self._upgraded[name] = version

    def switch_testing(self, on: bool) -> None:
        """Takes the testing component in or out. The lists then have to be fetched anew."""
        self._components = (STABLE, TESTING) if on else (STABLE,)
        self._listed = ()

    # Updates.

    async def search(self) -> None:
        """Fetches the lists. Raises PackageError."""
        for number, component in enumerate(self._components, start=1):
            await self._server.fetch(number, f"bookworm/{component} Packages", LIST_SIZE)
        self._console.err(
            "W: Der Schlüssel der Paketquelle ist in einem veralteten Schlüsselbund gespeichert"
        )
        for problem in self._source.problems:
            self._console.err(f"W: {problem}")
        self._console.out("Paketlisten werden gelesen …")
        await self._server.sleep(READ_SECS)
        self._listed = self._components
        self._console.out(f"Aktualisierbare Pakete: {len(self.updates())}")

    def updates(self) -> list[Update]:
        """What has an update, as far as the lists tell."""
        offers = ((p, self.installed[p.name], self._offer(p)) for p in self.packages.values())
        return [Update(package, old, new) for package, old, new in offers if new]

    def candidate(self, package: Package) -> str:
        """The version that an upgrade would install or leave."""
        return self._offer(package) or self.installed[package.name]

    def _offer(self, package: Package) -> str | None:
        return package.offer(self.installed[package.name], self._listed)

    # Upgrade.

    async def upgrade(self) -> None:
        """Installs all updates. Raises PackageError if not all of them could be."""
        updates = self.updates()
        self._console.out("Die folgenden Pakete werden aktualisiert (Upgrade):")
        self._console.out(" ".join(update.package.name for update in updates))
        for number, update in enumerate(updates, start=1):
            package = update.package
            await self._server.fetch(number, f"{package.name} {package.arch} {update.new}", package.size)
        for update in updates:
            await self._unpack(update)
        failed = [update.package.name for update in updates if not await self._set_up(update)]
        self._console.out(f"{len(updates) - len(failed)} von {len(updates)} Paketen sind aktualisiert.")
        if failed:
            self._console.err(f"Fehler traten auf beim Bearbeiten von: {' '.join(failed)}")
            self._console.err("E: Unterprozess /usr/bin/dpkg hat Fehlercode zurückgegeben (1)")
            raise PackageError(f"Nicht eingerichtet: {', '.join(failed)}. Siehe Ausgabekonsole.")

    async def _unpack(self, update: Update) -> None:
        self._console.out(f"Entpacken von {update.package.name} ({update.new}) über ({update.old}) …")
        await self._server.sleep(UNPACK_SECS)

    async def _set_up(self, update: Update) -> bool:
        """Makes a package ready for use. False if it has a fault."""
        name = update.package.name
        self._console.out(f"{name} ({update.new}) wird eingerichtet …")
        await self._server.sleep(SET_UP_SECS)
        if update.package.broken:
            self._console.err(f"dpkg: Fehler beim Bearbeiten des Paketes {name} (--configure):")
            self._console.err("»installiertes post-installation-Skript« gab den Fehlerwert 1 zurück")
            return False
        self._upgraded[name] = update.new
        return True
