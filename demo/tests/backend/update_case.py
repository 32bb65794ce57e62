"""What the tests of the update facility have in common."""

import json
import tempfile
from pathlib import Path
from unittest.mock import patch

import watching
from brovik.shell import Shell, ShellActionEnum
from brovik.wifi import Wifi, WifiActionEnum, WifiStateEnum

from demo_support import RunningCase
import controller

PASSWORD = "vorab-2026"
BROKEN = "brovik-waage"
RECORD = {"arch": "all", "description": "x", "delivered": "1.0", "offered": {"stable": "1.1"}, "size": 10}
CONSOLE = ("appendStdout", "appendStderr")


class UpdateCase(RunningCase):
    """A machine whose updates are watched."""

    def setUp(self) -> None:
        super().setUp()
        self.shell = watching.SignalLog("Shell", ["lockedChanged", "changelogsChanged", *CONSOLE])

    def act(self, enum: ShellActionEnum, value: object = None) -> None:
        """What the screens send."""
        controller.shell_action_from_cpp(enum, value)

    def work(self, enum: ShellActionEnum, value: object = None) -> None:
        """An action, up to the end of the work that it starts."""
        before = self.locks()
        self.act(enum, value)
        self.until(lambda: self.locks() == before + 2, "end of the work")

    def locks(self) -> int:
        """How often the screens were locked or unlocked."""
        return int(self.shell.names.count("lockedChanged"))

    def printed(self, signal: str) -> list[str]:
        """The lines of one stream of the console."""
        return [values[0] for name, _, values in self.shell.emissions if name == signal]

    def offers(self) -> dict[str, str]:
        """The version on offer of each package that has an update."""
        return {record["name"]: record["versionNew"] for record in Shell.upgradables}

    def installed(self) -> dict[str, str]:
        """The installed version of each package."""
        return {record["name"]: record["version"] for record in Shell.installed}

    def cut_network(self) -> None:
        """Takes the machine off the network."""
        controller.wifi_action_from_cpp(WifiActionEnum.Disconnect, None)
        self.until(lambda: Wifi.state == WifiStateEnum.Disconnected, "disconnection")

    def use_packages(self, *names: str) -> Path:
        """Lets the next backend have a source with these packages. Returns its folder."""
        # addCleanup() ends it with the test.
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        folder = Path(directory.name)
        for name in names:
            (folder / f"{name}.json").write_text(json.dumps(RECORD), encoding="utf-8")
        patched = patch("controller.maintenance.FOLDER", folder)
        patched.start()
        self.addCleanup(patched.stop)
        return folder
