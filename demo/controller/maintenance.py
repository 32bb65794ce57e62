"""The maintenance of the machine, updates and network, and the thread that it happens on."""

from collections.abc import Awaitable, Callable, Mapping

from brovik import Logger
from brovik.shell import ShellActionEnum
from brovik.wifi import WifiActionEnum

from .network.network import Network
from .network.radio import FILE, AccessPoint, Radio, read_access_points
from .packages.console import Console
from .packages.server import Server
from .packages.source import FOLDER, read_source
from .packages.updates import Updates
from .service_thread import ServiceThread
from .storage import NETWORK, PACKAGES, Storage, StorageWriter


def read_stored(storage: Storage) -> Mapping[str, Mapping[str, object]]:
    """What maintenance has in the file."""
    return {section: storage.read(section) for section in (PACKAGES, NETWORK)}


class Maintenance:
    """Takes the operator's actions on any thread, and has them done on its own."""

    def __init__(
        self,
        stored: Mapping[str, Mapping[str, object]],
        writer: StorageWriter,
        services: ServiceThread,
        reserve: Callable[[], Awaitable[bool]],
    ) -> None:
        """`reserve` keeps the machine from running, for an upgrade; False if it runs already."""
        self.services = services
        radio = Radio(_access_points(), services.sleep, lambda: services.now)
        self._network = Network(radio, stored[NETWORK], writer, services)
        server = Server(Console(), services.sleep, lambda: self._network.online)
        source = read_source(FOLDER)
        for problem in source.problems:
            Logger.warning(f"Paketquelle: {problem}")
        self._updates = Updates(source, server, stored[PACKAGES], writer, services, reserve)

    @property
    def installed(self) -> Mapping[str, str]:
        """The installed version of each package. Before `start`, or on the services' thread."""
        return self._updates.installed

    def start(self) -> None:
        """Starts the thread."""
        self.services.start()

    def stop(self) -> None:
        """Breaks off whatever is going on, and ends the thread."""
        self.services.stop()
        self._updates.close()

    def update_action(self, enum: ShellActionEnum, value: object) -> None:
        """An action on the update pages."""
        self.services.post(lambda: self._updates.act(enum, value))

    def network_action(self, enum: WifiActionEnum, value: object) -> None:
        """An action on the network pages."""
        self.services.post(lambda: self._network.act(enum, value))


def _access_points() -> tuple[AccessPoint, ...]:
    try:
        return read_access_points(FILE)
    except (OSError, ValueError, KeyError, TypeError) as error:
        Logger.warning(f"{FILE} wird ignoriert: {type(error).__name__}: {error}")
        return ()
