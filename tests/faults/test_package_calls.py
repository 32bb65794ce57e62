"""Each call for the package source and for what was downloaded fails once: it is told, and nothing is lost.

KUBELOR_FAULTS_EVERY says how many calls to go on to the next one; 1 takes all of them.
"""

import json
import os
import shutil
import tempfile
import threading
import unittest
from collections.abc import Callable
from pathlib import Path
from typing import Any, Final
from unittest.mock import patch

import layer
import watching
from brovik.shell import Shell, ShellActionEnum

from child import Child, Tell
from demo_support import reset_host
from folders import new_folder
from layer import Call, Way
from controller.backend import Backend
from controller.hardware_choice import HardwareChoice
from controller.packages.source import FOLDER
from controller.simulation.hardware import SimulatedHardware

EVERY: Final = int(os.environ.get("KUBELOR_FAULTS_EVERY", "13"))
LIMIT_SECS: Final = 20.0
#: The folder of all that the calls are about.
WATCHED: Final = "kubelor-faults"
#: Upgraded in an earlier life; has an update; comes without a changelog.
UPGRADED, OFFERED, PLAIN = "brovik-bedienung", "brovik-fernwartung", "brovik-tastatur"
NOTICES: Final = ("message", "toastWarn", "exception")


class Visit:
    """A life of the program, in which somebody looks for updates, reads about them and installs them."""

    def __init__(self, directory: Path, source: Path) -> None:
        watching.screens_loaded()
        reset_host()
        self._gui = watching.SignalLog("Gui", NOTICES)
        self._log = watching.LogCapture()
        self._shell = watching.SignalLog("Shell", ("lockedChanged", "appendStderr"))
        simulated = SimulatedHardware(frozenset())
        with patch("controller.maintenance.FOLDER", source):
            self._backend = Backend(directory, 500.0, lambda: HardwareChoice(simulated, simulated))
        self._backend.start()

    def tour(self) -> dict[str, Any]:
        """Everything once. What was to be seen."""
        seen: dict[str, Any] = {"found": self.installed()}
        self.work(ShellActionEnum.Update)
        seen["offers"] = {record["name"]: record["versionNew"] for record in Shell.upgradables}
        seen["changes"] = {record["name"]: record["lastChange"] for record in Shell.upgradables}
        seen["changelogs"] = self.changelogs()
        self.work(ShellActionEnum.ClearCache)
        seen["again"] = self.changelogs()
        self.work(ShellActionEnum.Upgrade)
        seen["installed"] = self.installed()
        return seen

    def installed(self) -> dict[str, str]:
        """The installed version of each package."""
        return {record["name"]: record["version"] for record in Shell.installed}

    def changelogs(self) -> list[list[str]]:
        """What the two that there are tell; the second one is that of the version on offer, read twice."""
        actions = (
            (ShellActionEnum.LocalChangelog, UPGRADED),
            (ShellActionEnum.Changelog, OFFERED),
            (ShellActionEnum.Changelog, OFFERED),
        )
        return [self.changelog(enum, name) for enum, name in actions]

    def changelog(self, enum: ShellActionEnum, name: str) -> list[str]:
        """The changes of a changelog; none if the operator is told something else."""
        told = len(self._gui.emissions)
        self.act(enum, name)
        self._until(lambda: len(Shell.changelogs) > 0 or len(self._gui.emissions) > told)
        return [f"{entry.version} {entry.changes}" for entry in Shell.changelogs]

    def work(self, enum: ShellActionEnum) -> None:
        """An action, up to the end of the work that it starts."""
        before = self._locks()
        self.act(enum, None)
        self._until(lambda: self._locks() == before + 2)

    def act(self, enum: ShellActionEnum, value: object) -> None:
        """What the screens send, taken up by the services."""
        taken = threading.Event()
        self._backend.maintenance.update_action(enum, value)
        self._backend.maintenance.services.post(taken.set)
        assert taken.wait(LIMIT_SECS)

    def told(self) -> list[str]:
        """What the operator or the log has been told of failures."""
        shown = [" ".join(map(str, values)) for _, _, values in self._gui.emissions]
        logged = [text for level, text in self._log.messages if level in ("warning", "critical")]
        printed = [values[0] for name, _, values in self._shell.emissions if name == "appendStderr"]
        return shown + logged + printed

    def stop(self) -> None:
        """Ends the program."""
        self._backend.stop()

    def _locks(self) -> int:
        """How often the screens were locked or unlocked."""
        return int(self._shell.names.count("lockedChanged"))

    @staticmethod
    def _until(condition: Callable[[], bool]) -> None:
        pause = threading.Event()
        for _ in range(round(LIMIT_SECS / 0.002)):
            if condition():
                return
            pause.wait(0.002)
        raise AssertionError("nothing came of it, and nothing was told")


class PackageCallsTest(unittest.TestCase):
    """Lives in which one call fails, and the lives after them."""

    def setUp(self) -> None:
        self.scratch = new_folder(self)
        self.directory, self.used = self.scratch / "config", self.scratch / "used"
        self.source = self.scratch / WATCHED / "source"
        self.source.mkdir(parents=True)
        for name in (UPGRADED, OFFERED, PLAIN):
            for file in FOLDER.glob(f"{name}.*"):
                shutil.copy(file, self.source)
        self.log = self.scratch / "calls"

    def test_each_call(self) -> None:
        """Of a machine that has been upgraded before, and has a new update."""
        self.live(self.used, 0, Way.BROKEN)
        self.offer(OFFERED, "1.2.2")
        usual = self.life(0, Way.BROKEN)
        after = self.life_after()
        lives = 0
        for way in (Way.BROKEN, Way.REFUSED):
            self.life(0, way)
            number = len(layer.read_calls(self.log))
            self.assertGreater(number, 30)
            for at in range(1 + way, number + 1, EVERY):
                with self.subTest(way=way.name, at=at):
                    self.judge(self.life(at, way), usual, after)
                    lives += 1
        print(f"{lives} lives")

    def judge(self, seen: dict[str, Any], usual: dict[str, Any], after: dict[str, Any]) -> None:
        """What is missing was told, and was there as soon as nothing failed any more."""
        failed = next((call for call in layer.read_calls(self.log) if call.error), None)
        missing = [key for key, value in usual["seen"].items() if seen["seen"][key] != value]
        if missing:
            self.assertGreater(len(seen["told"]), len(usual["told"]), f"{failed} hid {missing}")
        if seen["left"]:
            self.assertGreater(len(seen["told"]), len(usual["told"]), f"{failed} left {seen['left']}")
        shown = self.life_after()["seen"]["found"]
        for name, version in usual["seen"]["found"].items():
            version = seen["seen"]["installed"].get(name, version)
            self.assertEqual(shown[name], version, f"{failed} lost the version of {name}")
        self.assertEqual(set(shown), set(after["seen"]["found"]))

    def offer(self, name: str, version: str) -> None:
        """Has the source offer another version of a package."""
        file = self.source / f"{name}.json"
        record = json.loads(file.read_text("utf-8"))
        record["offered"]["stable"] = version
        file.write_text(json.dumps(record), "utf-8")

    def life(self, at: int, way: Way) -> Any:
        """A life of the used machine in which that call fails. What was seen and told."""
        shutil.rmtree(self.directory, ignore_errors=True)
        shutil.copytree(self.used, self.directory)
        return self.live(self.directory, at, way)

    def life_after(self) -> Any:
        """The next life, in which nothing fails."""
        return self.live(self.directory, 0, Way.BROKEN)

    def live(self, directory: Path, at: int, way: Way) -> Any:
        """A life in a process of its own."""
        self.log.unlink(missing_ok=True)
        child = Child(lambda tell: self.visit(directory, at, way, tell))
        code = child.wait(LIMIT_SECS)
        if code is None:
            child.kill()
        self.assertEqual(code, 0, [str(call) for call in self.failed()])
        return child.told[-1]

    def visit(self, directory: Path, at: int, way: Way, tell: Tell) -> None:
        """What happens in the child."""
        cache = self.scratch / WATCHED / "cache"
        cache.mkdir(exist_ok=True)
        with patch.object(tempfile, "tempdir", str(cache)):
            layer.begin(WATCHED, at=at, way=way, log=self.log)
            visit = Visit(directory, self.source)
            seen = visit.tour()
            visit.stop()
            layer.end()
        left = [file.name for file in cache.rglob("*")]
        shutil.rmtree(cache)
        tell({"seen": seen, "told": visit.told(), "left": left})

    def failed(self) -> list[Call]:
        """The calls that were made to fail."""
        return [call for call in layer.read_calls(self.log) if call.error]


if __name__ == "__main__":
    unittest.main(verbosity=2)
