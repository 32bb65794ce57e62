# Written by the program's option --make-stubs.
import typing
from collections.abc import Iterable
from typing import Any, ClassVar, Dict, List, Optional, Set, Tuple

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

Wifi: WifiClass
