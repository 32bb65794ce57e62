"""The radio: which networks there are, how well they are received, and connecting to them.

It stands where a real machine asks its network service.
"""

import json
import math
from collections.abc import Awaitable, Callable, Iterable
from dataclasses import dataclass, field
from pathlib import Path
from typing import Any, Final, TypeAlias

from ..values import fitting

Sleep: TypeAlias = Callable[[float], Awaitable[None]]

FILE: Final = Path(__file__).resolve().parents[2] / "networks.json"

SCAN_SECS: Final = 3.0
SEARCH_SECS: Final = 1.0
#: From one attempt to the next at a network that does not answer.
RETRY_SECS: Final = 60.0
LOGIN_SECS: Final = 1.5
ADDRESS_SECS: Final = 0.5

#: How far the quality moves up and down, percent, and how long that takes.
SWING: Final = 6.0
SWING_SECS: Final = 45.0


class ConnectError(Exception):
    """There is no connection. The message is for the operator."""


@dataclass(frozen=True)
class AccessPoint:  # pylint: disable=too-many-instance-attributes
    """A sender. Several may share a name, and one may hide it."""

    ssid: str
    #: Mean quality, percent. At 0 it is not known.
    quality: int
    is_5_ghz: bool
    #: Empty if the network is open.
    password: str = field(repr=False)
    #: The first three numbers of its addresses.
    subnet: str
    #: Whether attempts to connect come to an end.
    answers: bool
    #: Whether the machine is delivered with the password.
    known: bool


def read_access_points(file: Path) -> tuple[AccessPoint, ...]:
    """Reads the senders around the machine. Raises ValueError, KeyError, TypeError or OSError."""
    records: Any = json.loads(file.read_text(encoding="utf-8"))
    return tuple(_access_point(record) for record in records)


def _access_point(record: Any) -> AccessPoint:
    return AccessPoint(
        ssid=str(fitting(record["ssid"], "")),
        quality=int(fitting(record["quality"], 0)),
        is_5_ghz=bool(fitting(record["is_5_ghz"], False)),
        password=str(fitting(record["password"], "")),
        subnet=str(fitting(record["subnet"], "")),
        answers=bool(fitting(record.get("answers", True), True)),
        known=bool(fitting(record.get("known", False), False)),
    )


class Radio:
    """What is received, and how well. Belongs to one thread."""

    def __init__(self, access_points: Iterable[AccessPoint], sleep: Sleep, now: Callable[[], float]) -> None:
        """`sleep` lets time pass, `now` tells it in seconds."""
        self.access_points = tuple(access_points)
        self._sleep = sleep
        self._now = now

    def quality(self, sender: AccessPoint) -> int:
        """The present quality, 1 to 100 percent; 0 if it is not known."""
        if sender.quality == 0:
            return 0
        # Each sender has a phase of its own.
        phase = 2 * math.pi * self._now() / SWING_SECS + len(sender.ssid) + sender.quality
        return min(100, max(1, round(sender.quality + SWING * math.sin(phase))))

    def find(self, ssid: str) -> AccessPoint | None:
        """The best sender of a network. One that hides its name is not found."""
        senders = [sender for sender in self.access_points if sender.ssid == ssid and ssid]
        return max(senders, key=self.quality) if senders else None

    async def scan(self) -> list[AccessPoint]:
        """The best sender of each network that tells its name."""
        await self._sleep(SCAN_SECS)
        names = {sender.ssid for sender in self.access_points if sender.ssid}
        return [best for name in names if (best := self.find(name)) is not None]

    async def connect(self, ssid: str, password: str) -> AccessPoint:
        """Logs in to a network. Raises ConnectError. Goes on for ever where nobody answers."""
        await self._sleep(SEARCH_SECS)
        sender = self.find(ssid)
        if sender is None:
            raise ConnectError(f"Das Netz „{ssid}“ ist nicht in Reichweite.")
        while not sender.answers:
            await self._sleep(RETRY_SECS)
        await self._sleep(LOGIN_SECS)
        if sender.password and password != sender.password:
            raise ConnectError(f"Das Passwort für „{ssid}“ ist falsch.")
        await self._sleep(ADDRESS_SECS)
        return sender
