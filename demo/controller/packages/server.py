"""The server of the packages."""

from collections.abc import Awaitable, Callable
from typing import Final, Protocol, TypeAlias

Sleep: TypeAlias = Callable[[float], Awaitable[None]]

ADDRESS: Final = "https://pakete.brovik.example"
UNREACHABLE: Final = "Die Paketquelle ist nicht erreichbar. Bitte die Netzwerkverbindung prüfen."
LEAST_SECS: Final = 0.5
KB_PER_SEC: Final = 4000.0


class PackageError(Exception):
    """Something has not succeeded. The message is for the operator."""


class Printer(Protocol):
    """Where lines get printed."""

    def out(self, text: str) -> None:
        """A line of the standard output."""

    def err(self, text: str) -> None:
        """A line of the error output."""


class Server:
    """Downloads from it take time, and fail without a network."""

    def __init__(self, console: Printer, sleep: Sleep, online: Callable[[], bool]) -> None:
        """`sleep` lets time pass, `online` tells whether there is a network."""
        self.console = console
        self.sleep = sleep
        self._online = online

    async def fetch(self, number: int, what: str, size: int) -> None:
        """Downloads something of `size` kB. Raises PackageError."""
        self.console.out(f"Holen:{number} {ADDRESS} {what} [{size} kB]")
        await self.sleep(LEAST_SECS + size / KB_PER_SEC)
        self.check()

    def check(self) -> None:
        """Raises PackageError if the server cannot be reached."""
        if not self._online():
            self.console.err(f"E: Fehlschlag beim Holen von {ADDRESS}: Zeitüberschreitung")
            raise PackageError(UNREACHABLE)
