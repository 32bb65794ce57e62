"""The update facility, as the operator sees it."""

from collections.abc import Awaitable, Callable, Coroutine, Iterable, Mapping
from html import escape
from typing import Any, Final, TypeAlias

from brovik import Logger
from brovik.gui import Gui, IconEnum, PageEnum
from brovik.shell import Shell, ShellActionEnum

from .. import notices
from ..jobs import job_running
from ..journal import JOURNAL, Event, Kind
from ..service_thread import ServiceThread, Task
from ..storage import PACKAGES, Change, StorageWriter
from . import testing
from .changelog_page import ChangelogPage
from .changelogs import Changelogs
from .manager import PackageManager, Update
from .records import installed_record, upgradable_record
from .server import PackageError, Server
from .source import Source

Work: TypeAlias = Callable[[], Coroutine[Any, Any, None]]

TITLE: Final = "Updates"
UPGRADED: Final = "Das Upgrade ist abgeschlossen. Bitte die Maschine neu starten."
WRONG_PASSWORD: Final = "Das Passwort ist falsch."
TESTING_COMPONENT: Final = "Testing-Komponente"

#: Keys of what is stored.
INSTALLED_KEY: Final = "installed"
TESTING_KEY: Final = "testing"


class Updates:
    """Does what the operator asks for on the update pages. Belongs to the services' thread.

    One piece of work at a time holds the lock of the screens; a changelog may be read beside it.
    """

    def __init__(  # pylint: disable=too-many-arguments
        self,
        source: Source,
        server: Server,
        stored: Mapping[str, object],
        writer: StorageWriter,
        services: ServiceThread,
        reserve: Callable[[], Awaitable[bool]],
    ) -> None:
        """`reserve` keeps the machine from running; False if it runs already."""
        self._server = server
        self._manager = PackageManager(source, server)
        self._changelog_page = ChangelogPage(Changelogs(self._manager, server), services)
        self._writer = writer
        self._services = services
        self._reserve = reserve
        self._work: Task | None = None
        self._restore(stored)
        self._show_colors()
        self._show_installed()

    def act(self, enum: ShellActionEnum, value: object) -> None:
        """Does what the operator has asked for. `value` may be a password: it goes into no message."""
        match enum, value:
            case ShellActionEnum.Update, None:
                self._begin(self._search)
            case ShellActionEnum.Upgrade, None:
                self._begin(self._upgrade)
            case ShellActionEnum.Changelog, str(name):
                self._changelog_page.show_offered(name)
            case ShellActionEnum.LocalChangelog, str(name):
                self._changelog_page.show_local(name)
            case ShellActionEnum.ClearCache, None:
                self._begin(self._clear_cache)
            case ShellActionEnum.TestConsole, None:
                self._test_console()
            case ShellActionEnum.ToggleTesting, str(password):
                self._begin(lambda: self._toggle_testing(password))
            case _:
                Logger.warning(f"Update-Aktion {enum.name}: der Wert passt nicht dazu")

    def close(self) -> None:
        """Leaves no file behind. For the time after the services' thread."""
        try:
            self._changelog_page.clear_cache()
        except PackageError as error:
            Logger.warning(f"{TITLE}: {error}")

    # What locks the screens.

    def _begin(self, work: Work) -> None:
        if self._work is not None and not self._work.done():
            notices.warn("Es läuft bereits ein Vorgang")
        else:
            self._work = self._services.spawn(self._locked(work))

    async def _locked(self, work: Work) -> None:
        Shell.locked = True
        try:
            await work()
        except PackageError as error:
            notices.message(TITLE, escape(str(error)), "error")
        finally:
            Shell.locked = False

    async def _search(self) -> None:
        if self._may_search():
            await self._fetch_lists()

    async def _fetch_lists(self) -> None:
        await self._manager.search()
        self._show_upgradables()

    @staticmethod
    def _may_search() -> bool:
        running = job_running()
        if running:
            notices.warn("Während eines Laufs wird nicht nach Updates gesucht")
        return not running

    async def _upgrade(self) -> None:
        if not self._manager.updates():
            notices.warn("Es gibt nichts zu aktualisieren")
            return
        # Before the machine is kept from running for nothing.
        self._server.check()
        if not await self._reserve():
            notices.warn("Während eines Laufs ist kein Upgrade möglich")
        else:
            await self._upgrade_on_console()

    async def _upgrade_on_console(self) -> None:
        Gui.page = PageEnum.UpdatesShell
        before = self._manager.installed
        JOURNAL.add(Kind.UPDATE, Event.BEGUN, TITLE, details=_versions(self._manager.updates()))
        try:
            await self._manager.upgrade()
        finally:
            JOURNAL.add(Kind.UPDATE, Event.ENDED, TITLE, details=self._changed_since(before))
            # Also what was installed before a failure.
            self._store(INSTALLED_KEY, self._manager.kept)
            self._show_installed()
            self._show_upgradables()
        notices.message(TITLE, UPGRADED, "success")

    def _changed_since(self, before: Mapping[str, str]) -> dict[str, object]:
        """What has another version than before, by name."""
        now = self._manager.installed.items()
        return {name: [before[name], version] for name, version in now if before[name] != version}

    async def _toggle_testing(self, password: str) -> None:
        fits = testing.fits(password)
        JOURNAL.add(
            Kind.LOGIN, Event.CAME, TESTING_COMPONENT, "" if fits else WRONG_PASSWORD, {"accepted": fits}
        )
        if not fits:
            raise PackageError(WRONG_PASSWORD)
        if self._may_search():
            on = not Shell.testing_repo_enabled
            JOURNAL.add(Kind.UPDATE, Event.CHANGED, TESTING_COMPONENT, details={"old": not on, "new": on})
            self._switch_testing(on)
            self._store(TESTING_KEY, Shell.testing_repo_enabled)
            await self._fetch_lists()

    @property
    def installed(self) -> Mapping[str, str]:
        """The installed version of each package."""
        return self._manager.installed

    def _switch_testing(self, on: bool) -> None:
        self._manager.switch_testing(on)
        Shell.testing_repo_enabled = on
        self._show_upgradables()

    async def _clear_cache(self) -> None:
        self._changelog_page.clear_cache()
        Gui.toast_notify("Cache gelöscht", IconEnum.Info)

    def _test_console(self) -> None:
        for number in range(1, 6):
            self._server.console.out(f"{number}: Ausgabe mit <Klammern>, Umlauten äöüß & mehr")
            self._server.console.err(f"{number}: Fehlerausgabe")

    # The host's state and the file.

    def _restore(self, stored: Mapping[str, object]) -> None:
        self._switch_testing(stored.get(TESTING_KEY) is True)
        installed = stored.get(INSTALLED_KEY)
        if isinstance(installed, Mapping):
            self._manager.restore(installed)

    def _store(self, key: str, value: object) -> None:
        self._writer.submit(Change(PACKAGES, {key: value}))

    def _show_colors(self) -> None:
        Shell.color_urgency_low = "#43a047"
        Shell.color_urgency_medium = "#fb8c00"
        Shell.color_urgency_high = "#e53935"
        Shell.color_urgency_other = "#ab47bc"

    def _show_installed(self) -> None:
        installed = self._manager.installed
        Shell.installed = [installed_record(p, installed[name]) for name, p in self._manager.packages.items()]

    def _show_upgradables(self) -> None:
        Shell.upgradables = [upgradable_record(update) for update in self._manager.updates()]


def _versions(updates: Iterable[Update]) -> dict[str, object]:
    """Old and new version by name."""
    return {update.package.name: [update.old, update.new] for update in updates}
