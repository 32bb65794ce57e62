# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple
import brovik.records

class WifiStateEnum:
    """States of the wireless connection."""
    __members__: ClassVar[dict[str, WifiStateEnum]]
    Connected: ClassVar[WifiStateEnum]
    Connecting: ClassVar[WifiStateEnum]
    Disconnected: ClassVar[WifiStateEnum]
    Aborted: ClassVar[WifiStateEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class WifiActionEnum:
    """Requests of the operator."""
    __members__: ClassVar[dict[str, WifiActionEnum]]
    Scan: ClassVar[WifiActionEnum]
    IPData: ClassVar[WifiActionEnum]
    Connect: ClassVar[WifiActionEnum]
    Disconnect: ClassVar[WifiActionEnum]
    Login: ClassVar[WifiActionEnum]
    RestartWireguard: ClassVar[WifiActionEnum]
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    @property
    def name(self) -> str: ...
    @property
    def value(self) -> int: ...

class WifiClass:
    """State of the network."""
    @property
    def state(self) -> WifiStateEnum:
        """State of the wireless connection."""
    @state.setter
    def state(self, value: WifiStateEnum) -> None: ...
    @property
    def ssid(self) -> str:
        """Name of the connected network."""
    @ssid.setter
    def ssid(self, value: str) -> None: ...
    @property
    def quality_percantage(self) -> int:
        """Quality of the signal, percent."""
    @quality_percantage.setter
    def quality_percantage(self, value: int) -> None: ...
    @property
    def is_5_ghz(self) -> bool:
        """The connection uses the 5 GHz band."""
    @is_5_ghz.setter
    def is_5_ghz(self, value: bool) -> None: ...
    @property
    def ip_map_list(self) -> list[brovik.records.NetworkInterface]:
        """The network interfaces, one record each."""
    @ip_map_list.setter
    def ip_map_list(self, value: list[brovik.records.NetworkInterface]) -> None: ...
    @property
    def scan_results(self) -> dict[str, brovik.records.FoundNetwork]:
        """The networks found, by name."""
    @scan_results.setter
    def scan_results(self, value: dict[str, brovik.records.FoundNetwork]) -> None: ...
    def set_login_data(self, ssid: str, psk: str) -> None:
        """Opens the login page for a network, with this password in its field."""
    def abort_wifi_scan(self) -> None:
        """Ends the wait for a scan that has no results."""
    def set_scan_results(self, results: dict[str, brovik.records.FoundNetwork]) -> None:
        """Ends the wait for a scan: the networks found, by name, each with its `quality` and `is5GHz`."""

Wifi: WifiClass
