"""The network, as the operator sees it."""

from collections.abc import Iterable, Mapping
from html import escape
from typing import TYPE_CHECKING, Final

from brovik import Logger
from brovik.gui import Gui, IconEnum
from brovik.wifi import Wifi, WifiActionEnum, WifiStateEnum

from .. import notices
from ..service_thread import ServiceThread, Task
from ..storage import NETWORK, Change, StorageWriter
from .interfaces import Interfaces
from .radio import AccessPoint, ConnectError, Radio

if TYPE_CHECKING:
    from brovik.records import FoundNetwork

TITLE: Final = "Netzwerk"
RESTART_SECS: Final = 2.0
#: Key of the network that the machine was connected to last.
LAST: Final = "last"
#: Key of the passwords by network.
PASSWORDS: Final = "passwords"


class Network:
    """Does what the operator asks for on the network pages. Belongs to the services' thread.

    Passwords go into the file and into the field of the login page, and nowhere else.
    """

    def __init__(
        self,
        radio: Radio,
        stored: Mapping[str, object],
        writer: StorageWriter,
        services: ServiceThread,
    ) -> None:
        self._radio = radio
        self._interfaces = Interfaces(lambda: services.now)
        self._writer = writer
        self._services = services
        self._scan: Task | None = None
        self._attempt: Task | None = None
        self._passwords = {s.ssid: s.password for s in radio.access_points if s.known}
        self._passwords |= _texts(stored.get(PASSWORDS))
        self._connect_as_before(stored.get(LAST))

    @property
    def online(self) -> bool:
        """Whether the world can be reached."""
        return self._interfaces.link is not None

    def act(self, enum: WifiActionEnum, value: object) -> None:
        """Does what the operator has asked for. `value` may hold a password: it goes into no message."""
        match enum, value:
            case WifiActionEnum.Scan, None:
                self._begin_scan()
            case WifiActionEnum.IPData, None:
                self._show_connection()
            case WifiActionEnum.Connect, [str(ssid), str(password)]:
                self._begin_attempt(ssid, password)
            case WifiActionEnum.Disconnect, None:
                self._disconnect()
            case WifiActionEnum.Login, str(ssid):
                Wifi.set_login_data(ssid, self._passwords.get(ssid, ""))
            case WifiActionEnum.RestartWireguard, str(name):
                self._restart(name)
            case _:
                Logger.warning(f"Netzwerk-Aktion {enum.name}: der Wert passt nicht dazu")

    # Scan.

    def _begin_scan(self) -> None:
        if _going_on(self._attempt):
            # The radio cannot do both.
            Wifi.abort_wifi_scan()
        elif not _going_on(self._scan):
            self._scan = self._services.spawn(self._show_found())

    async def _show_found(self) -> None:
        """Even if it fails, the screen hears of the end: it waits for nothing else."""
        try:
            found = self._by_name(await self._radio.scan())
        except Exception:
            Wifi.abort_wifi_scan()
            raise
        Wifi.set_scan_results(found)

    def _by_name(self, senders: Iterable[AccessPoint]) -> "dict[str, FoundNetwork]":
        return {s.ssid: {"quality": self._radio.quality(s), "is5GHz": s.is_5_ghz} for s in senders}

    def _abort_scan(self) -> None:
        if self._scan is not None and self._scan.cancel():
            self._scan = None
            Wifi.abort_wifi_scan()
            notices.warn("Die Suche nach WLAN-Netzen wurde abgebrochen")

    # Connecting.

    def _connect_as_before(self, last: object) -> None:
        """The network service has long connected when the program starts."""
        known = next(iter(self._passwords), None)
        sender = self._radio.find(last if isinstance(last, str) else known or "")
        if sender is not None and sender.answers:
            self._connected(sender)
        else:
            self._unconnected(WifiStateEnum.Disconnected)

    def _begin_attempt(self, ssid: str, password: str) -> None:
        self._abort_scan()
        if self._attempt is not None:
            self._attempt.cancel()
        self._attempt = self._services.spawn(self._connect(ssid, password))

    async def _connect(self, ssid: str, password: str) -> None:
        self._unconnected(WifiStateEnum.Connecting)
        try:
            sender = await self._radio.connect(ssid, password)
        except ConnectError as error:
            self._unconnected(WifiStateEnum.Disconnected)
            notices.message(TITLE, escape(str(error)), "error")
        else:
            self._connected(sender)
            self._remember(ssid, password)
            Gui.toast_notify(f"Verbunden mit {ssid}", IconEnum.Info)

    def _disconnect(self) -> None:
        """Ends the connection, or the attempt to get one."""
        self._abort_scan()
        if self._attempt is not None and self._attempt.cancel():
            self._attempt = None
            self._unconnected(WifiStateEnum.Aborted)
        else:
            self._unconnected(WifiStateEnum.Disconnected)

    def _remember(self, ssid: str, password: str) -> None:
        self._passwords[ssid] = password
        self._writer.submit(Change(NETWORK, {LAST: ssid, PASSWORDS: dict(self._passwords)}))

    # WireGuard.

    def _restart(self, name: str) -> None:
        tunnel = self._interfaces.tunnels.get(name)
        if tunnel is None:
            notices.warn(f"Es gibt keine WireGuard-Schnittstelle {name}")
        elif tunnel.is_up:
            tunnel.is_up = False
            self._services.spawn(self._bring_up(name))

    async def _bring_up(self, name: str) -> None:
        self._show_connection()
        await self._services.sleep(RESTART_SECS)
        self._interfaces.tunnels[name].is_up = True
        self._show_connection()
        Gui.toast_notify(f"Schnittstelle {name} neu gestartet", IconEnum.Info)

    # The host's state.

    def _connected(self, sender: AccessPoint) -> None:
        self._interfaces.connect(sender)
        Wifi.is_5_ghz = sender.is_5_ghz
        self._show(WifiStateEnum.Connected, sender.ssid, self._radio.quality(sender))

    def _unconnected(self, state: WifiStateEnum) -> None:
        self._interfaces.link = None
        Wifi.is_5_ghz = False
        self._show(state, "", 0)

    def _show(self, state: WifiStateEnum, ssid: str, quality: int) -> None:
        Wifi.ssid = ssid
        Wifi.state = state
        # After a change of state the icon waits for the next change of quality: there has to be one.
        Wifi.quality_percantage = 0 if quality else 1
        Wifi.quality_percantage = quality
        Wifi.ip_map_list = self._interfaces.records()

    def _show_connection(self) -> None:
        """What changes by itself."""
        if self._interfaces.link is not None:
            Wifi.quality_percantage = self._radio.quality(self._interfaces.link.sender)
        Wifi.ip_map_list = self._interfaces.records()


def _going_on(task: Task | None) -> bool:
    return task is not None and not task.done()


def _texts(value: object) -> dict[str, str]:
    """What is text by name in a stored value."""
    if not isinstance(value, Mapping):
        return {}
    return {str(key): text for key, text in value.items() if isinstance(text, str)}
