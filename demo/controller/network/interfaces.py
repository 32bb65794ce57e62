"""The network interfaces and their addresses."""

from collections.abc import Callable
from dataclasses import dataclass
from typing import TYPE_CHECKING, Final

from .radio import AccessPoint

if TYPE_CHECKING:
    from brovik.records import NetworkInterface

NO_ADDRESS: Final = "keine Adresse"
#: How long an address of the wireless network holds.
LEASE_SECS: Final = 30.0
#: The last number of the first address, and how many there are.
FIRST_LEASE: Final = 20
LEASES: Final = 200


@dataclass
class Tunnel:
    """A WireGuard interface."""

    address: str
    #: As a record tells it. An interface may tell none.
    type_: str
    is_up: bool = True


@dataclass(frozen=True)
class Link:
    """The connection to a wireless network."""

    sender: AccessPoint
    #: Seconds of the machine's time.
    since: float


class Interfaces:
    """All interfaces of the machine. Belongs to one thread."""

    def __init__(self, now: Callable[[], float]) -> None:
        """`now` tells the time in seconds."""
        self.link: Link | None = None
        self.tunnels = {
            "wg0": Tunnel("10.8.0.17", "WireGuard"),
            "wg1": Tunnel("10.9.0.17", ""),
        }
        self._now = now

    def connect(self, sender: AccessPoint) -> None:
        """The wireless interface gets an address."""
        self.link = Link(sender, self._now())

    def records(self) -> "list[NetworkInterface]":
        """One record for each interface, as the screens read them."""
        records = [
            _record("eth0", "192.168.10.2", "Ethernet", False),
            _record("wlan0", self._wireless_address(), "WLAN", False),
        ]
        for name, tunnel in self.tunnels.items():
            records.append(_record(name, tunnel.address if tunnel.is_up else NO_ADDRESS, tunnel.type_, True))
        return records

    def _wireless_address(self) -> str:
        if self.link is None:
            return NO_ADDRESS
        lease = int((self._now() - self.link.since) / LEASE_SECS) % LEASES
        return f"{self.link.sender.subnet}.{FIRST_LEASE + lease}"


def _record(name: str, address: str, type_: str, is_wg: bool) -> "NetworkInterface":
    return {"name": name, "ip4": address, "type_": type_, "is_wg": is_wg}
