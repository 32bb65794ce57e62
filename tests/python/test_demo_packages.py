"""Updates of the demo machine, from the operator's action to what the screens show."""

import json
import tempfile
import time
import unittest
from pathlib import Path
from typing import Any
from unittest.mock import patch

import _probe
from brovik.actuator import ActuatorEnum
from brovik.auto import Auto, AutoEnum
from brovik.gui import Gui, PageEnum
from brovik.sensor import SensorEnum
from brovik.shell import Shell, ShellActionEnum
from brovik.wifi import Wifi, WifiActionEnum, WifiStateEnum

from demo_support import RunningCase, outputs_on
import controller
from controller.packages.manager import PackageManager
from controller.packages.source import FOLDER
from controller.packages.updates import UPGRADED, WRONG_PASSWORD
from controller.storage import PACKAGES

PASSWORD = "vorab-2026"
BROKEN = "brovik-waage"
RECORD = {"arch": "all", "description": "x", "delivered": "1.0", "offered": {"stable": "1.1"}, "size": 10}
CONSOLE = ("appendStdout", "appendStderr")


class UpdateCase(RunningCase):
    """A machine whose updates are watched."""

    def setUp(self) -> None:
        super().setUp()
        self.shell = _probe.SignalLog("Shell", ["lockedChanged", "changelogsChanged", *CONSOLE])

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
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        folder = Path(directory.name)
        for name in names:
            (folder / f"{name}.json").write_text(json.dumps(RECORD), encoding="utf-8")
        patched = patch("controller.maintenance.FOLDER", folder)
        patched.start()
        self.addCleanup(patched.stop)
        return folder


class SearchTest(UpdateCase):
    """Looking for updates."""

    def test_at_the_start(self) -> None:
        """What is installed is known, and in which colours urgencies appear; what is on offer is not."""
        self.start()
        colors = (
            Shell.color_urgency_low,
            Shell.color_urgency_medium,
            Shell.color_urgency_high,
            Shell.color_urgency_other,
        )
        self.assertEqual(len(set(colors)), 4)
        self.assertNotIn("#000000", colors)
        self.assertEqual(len(Shell.installed), 7)
        self.assertEqual(
            Shell.installed[0],
            {
                "name": "brovik-bedienung",
                "version": "2.3.1",
                "arch": "arm64",
                "description": "Bedienprogramm der Fassreinigung",
                "name2": "brovik-bedienung",
            },
        )
        self.assertEqual({r["name"]: r["name2"] for r in Shell.installed}["brovik-tastatur"], "")
        self.assertEqual((Shell.upgradables, Shell.locked, Shell.testing_repo_enabled), ([], False, False))

    def test_search(self) -> None:
        """Locks, prints on both streams, shows what it has found, unlocks: in this order."""
        self.start()
        self.work(ShellActionEnum.Update)
        self.assertEqual((self.shell.names[0], self.shell.names[-1]), ("lockedChanged", "lockedChanged"))
        self.assertTrue(self.printed("appendStdout") and self.printed("appendStderr"))
        self.assertFalse(Shell.locked)
        by_name = {record["name"]: record for record in Shell.upgradables}
        self.assertEqual(
            by_name["brovik-steuerung"],
            {
                "name": "brovik-steuerung",
                "versionNew": "1.9.0",
                "versionOld": "1.8.2",
                "urgency": "high",
                "lastChange": [
                    "Heizung bleibt aus, solange der Füllstand unterschritten ist",
                    "Dichtheitsprobe erkennt auch einen langsamen Druckverlust",
                ],
                "changelogAvailable": "brovik-steuerung",
            },
        )
        self.assertEqual({r["urgency"] for r in Shell.upgradables}, {"low", "medium", "high", "critical", ""})
        self.assertEqual(by_name["brovik-tastatur"]["changelogAvailable"], "")
        self.assertEqual(Gui.page, PageEnum.Auto)

    def test_takes_visible_time(self) -> None:
        """The screens stay locked meanwhile, and the entry function has long returned."""
        self.start(factor=0.01)
        self.act(ShellActionEnum.Update)
        self.until(lambda: self.printed("appendStdout"), "first line")
        self.services_handled()
        self.assertTrue(Shell.locked)
        self.assertEqual(Shell.upgradables, [])

    def test_one_at_a_time(self) -> None:
        """A second press is refused, and disturbs nothing."""
        self.start(factor=5)
        self.act(ShellActionEnum.Update)
        for enum, value in (
            (ShellActionEnum.Update, None),
            (ShellActionEnum.Upgrade, None),
            (ShellActionEnum.ClearCache, None),
            (ShellActionEnum.ToggleTesting, PASSWORD),
        ):
            self.act(enum, value)
        self.until(lambda: self.locks() == 2, "end of the work")
        self.assertEqual(
            [text for text, _ in self.signals("toastWarn")], ["Es läuft bereits ein Vorgang"] * 4
        )
        self.assertTrue(Shell.upgradables)
        self.assertFalse(Shell.testing_repo_enabled)

    def test_without_network(self) -> None:
        """The operator is told, the list stays, and the screens are unlocked."""
        self.start()
        self.work(ShellActionEnum.Update)
        known = Shell.upgradables
        self.cut_network()
        self.work(ShellActionEnum.Update)
        (title, text, category, _) = self.signals("message")[0]
        self.assertEqual((title, category), ("Updates", "error"))
        self.assertIn("Netzwerkverbindung", text)
        self.assertEqual((Shell.upgradables, Shell.locked), (known, False))

    def test_fault_of_the_program(self) -> None:
        """Is shown, unlocks, and leaves the next search to succeed."""
        self.start()
        with patch.object(PackageManager, "search", side_effect=ValueError("schlecht")):
            self.work(ShellActionEnum.Update)
        self.until(lambda: self.signals("exception"), "exception")
        self.assertEqual(self.signals("exception")[0][0]["type"], "ValueError")
        self.assertFalse(Shell.locked)
        self.work(ShellActionEnum.Update)
        self.assertTrue(Shell.upgradables)

    def test_names_of_strangers(self) -> None:
        """What a source tells appears on the console as text, not as markup."""
        folder = self.use_packages("a")
        (folder / "<b>.json").write_text("{", encoding="utf-8")
        self.start()
        self.work(ShellActionEnum.Update)
        self.assertTrue(any("&lt;b&gt;.json" in line for line in self.printed("appendStderr")))
        self.assertEqual(list(self.offers()), ["a"])

    def test_refused_during_a_run(self) -> None:
        """With a word, whichever job is running."""
        self.start()
        for name in ("active", "lw_saure_active", "lw_lauge_active"):
            with self.subTest(name):
                self.gui.clear()
                setattr(Auto, name, True)
                self.work(ShellActionEnum.Update)
                self.assertEqual(len(self.signals("toastWarn")), 1)
                self.assertEqual(Shell.upgradables, [])
                setattr(Auto, name, False)


class UpgradeTest(UpdateCase):
    """Installing updates."""

    def upgrade(self) -> None:
        """Searches and upgrades."""
        self.work(ShellActionEnum.Update)
        self.shell.clear()
        self.work(ShellActionEnum.Upgrade)

    def test_upgrade_with_a_fault(self) -> None:
        """The console comes to the front; what can be installed is; the screens are unlocked."""
        self.start()
        self.work(ShellActionEnum.Update)
        offers = self.offers()
        self.shell.clear()
        self.work(ShellActionEnum.Upgrade)
        self.assertEqual(Gui.page, PageEnum.UpdatesShell)
        self.assertTrue(Shell.upgrade_in_progress_or_finished)
        self.assertFalse(Shell.locked)
        self.assertEqual((self.shell.names[0], self.shell.names[-1]), ("lockedChanged", "lockedChanged"))
        self.assertTrue(any(BROKEN in line for line in self.printed("appendStderr")))
        self.assertEqual(list(self.offers()), [BROKEN])
        self.assertEqual(self.installed()["brovik-bedienung"], offers["brovik-bedienung"])
        (title, text, category, _) = self.signals("message")[0]
        self.assertEqual((title, category), ("Updates", "error"))
        self.assertIn(BROKEN, text)

    def test_upgrade_without_faults(self) -> None:
        """Ends with the request to restart the machine."""
        self.use_packages("a", "b")
        self.start()
        self.upgrade()
        self.assertEqual(self.signals("message"), [["Updates", UPGRADED, "success", 0]])
        self.assertEqual((self.installed(), Shell.upgradables), ({"a": "1.1", "b": "1.1"}, []))

    def test_survives_the_end_of_the_program(self) -> None:
        """Installed versions are those of the time before; what is on offer has to be looked for."""
        self.start()
        self.upgrade()
        installed = self.installed()
        self.stop()
        Shell.installed, Shell.upgradables = [], []
        self.start()
        self.assertEqual((self.installed(), Shell.upgradables), (installed, []))
        self.work(ShellActionEnum.Update)
        self.assertEqual(list(self.offers()), [BROKEN])

    def test_nothing_to_install(self) -> None:
        """Is said, and the machine can still run."""
        self.start()
        self.work(ShellActionEnum.Upgrade)
        self.assertEqual(len(self.signals("toastWarn")), 1)
        self.assertFalse(Shell.upgrade_in_progress_or_finished)

    def test_without_network(self) -> None:
        """Nothing is begun, and the machine can still run."""
        self.start()
        self.work(ShellActionEnum.Update)
        self.cut_network()
        self.work(ShellActionEnum.Upgrade)
        self.assertIn("Netzwerkverbindung", self.signals("message")[0][1])
        self.assertFalse(Shell.upgrade_in_progress_or_finished)

    def test_network_lost(self) -> None:
        """An upgrade whose downloads fail leaves all as it was, and the screens unlocked."""
        self.start(factor=5)
        self.work(ShellActionEnum.Update)
        before = self.installed()
        self.act(ShellActionEnum.Upgrade)
        self.until(lambda: Shell.upgrade_in_progress_or_finished, "begin")
        self.cut_network()
        self.until(lambda: self.locks() == 4, "end of the upgrade")
        self.assertIn("Netzwerkverbindung", self.signals("message")[0][1])
        self.assertEqual(self.installed(), before)

    def test_refused_during_a_run(self) -> None:
        """The run goes on, and nothing is installed."""
        self.start(factor=5)
        self.work(ShellActionEnum.Update)
        for enum, name in (
            (AutoEnum.Toggle, "active"),
            (AutoEnum.ToggleLwTestSaure, "lw_saure_active"),
            (AutoEnum.ToggleLwTestLauge, "lw_lauge_active"),
        ):
            with self.subTest(name):
                self.gui.clear()
                controller.auto_value_from_cpp(enum, None)
                self.until(lambda: getattr(Auto, name), "start")
                self.work(ShellActionEnum.Upgrade)
                self.assertIn("Während eines Laufs", self.signals("toastWarn")[0][0])
                self.assertFalse(Shell.upgrade_in_progress_or_finished)
                self.assertTrue(getattr(Auto, name))
                controller.auto_value_from_cpp(enum, None)
                self.until(lambda: not getattr(Auto, name), "end")

    def test_no_run_afterwards(self) -> None:
        """From nowhere can one be started: neither screens nor push button."""
        self.use_packages("a")
        self.start()
        self.upgrade()
        self.gui.clear()
        for enum in (AutoEnum.Toggle, AutoEnum.ToggleLwTestSaure, AutoEnum.ToggleLwTestLauge):
            controller.auto_value_from_cpp(enum, None)
        controller.sensor_value_from_cpp(SensorEnum.Start, True)
        self.handled()
        self.assertEqual(len(self.signals("toastWarn")), 4)
        self.assertFalse(Auto.active or Auto.lw_saure_active or Auto.lw_lauge_active)
        controller.actuator_toggle_from_cpp(ActuatorEnum.MvKalt)
        self.until(outputs_on, "operation by hand")

    def test_end_of_the_program(self) -> None:
        """Breaks it off at once; what had been set up by then stays so."""
        self.start(factor=20)
        self.work(ShellActionEnum.Update)
        self.act(ShellActionEnum.Upgrade)
        self.until(lambda: any("eingerichtet" in line for line in self.printed("appendStdout")), "set-up")
        started = time.monotonic()
        self.stop()
        self.assertLess(time.monotonic() - started, 2.0)
        self.assertFalse(Shell.locked)
        self.assertEqual(self.in_file(PACKAGES)["installed"], self.installed())
        self.assertEqual(self.signals("exception"), [])

    def test_file_that_makes_no_sense(self) -> None:
        """Counts as if nothing had been stored."""
        rows: tuple[dict[str, object], ...] = (
            {"installed": 5, "testing": "ja"},
            {"installed": {BROKEN: None, "nicht-da": "1.0"}},
        )
        for stored in rows:
            with self.subTest(stored=stored):
                self.put_into_file(PACKAGES, stored)
                self.start()
                self.assertEqual(self.installed()[BROKEN], "0.4.0")
                self.assertFalse(Shell.testing_repo_enabled)
                self.stop()


class ChangelogTest(UpdateCase):
    """Reading changelogs."""

    def read(self, enum: ShellActionEnum, name: str) -> list[Any]:
        """Asks for a changelog and waits for it."""
        self.act(enum, name)
        # By then the list of before is gone.
        self.services_handled()
        self.until(lambda: [e for e in Shell.changelogs if e.name == name], "changelog")
        return list(Shell.changelogs)

    def test_entries(self) -> None:
        """All that Debian's format tells."""
        self.start()
        self.work(ShellActionEnum.Update)
        entries = self.read(ShellActionEnum.Changelog, "brovik-bedienung")
        self.assertEqual([entry.version for entry in entries], ["2.4.0", "2.3.1", "2.3.0", "2.2.0"])
        newest = entries[0]
        self.assertEqual(
            (newest.name, newest.distribution, newest.urgency_str, newest.date, newest.changes[1]),
            (
                "brovik-bedienung",
                "stable",
                "medium",
                "02.11.2026 14:05",
                "Der Balken des Fortschritts zeigt jetzt auch die Leitwertprüfung und ihre Dauer",
            ),
        )
        self.assertIn("Holen", self.printed("appendStdout")[-1])

    def test_local(self) -> None:
        """Ends with the installed version, and needs no network."""
        self.start()
        self.cut_network()
        entries = self.read(ShellActionEnum.LocalChangelog, "brovik-bedienung")
        self.assertEqual(entries[0].version, "2.3.1")

    def test_another_of_the_same_length(self) -> None:
        """Takes the place of the first, though their entries have much in common."""
        self.start()
        self.read(ShellActionEnum.LocalChangelog, "brovik-waage")
        self.shell.clear()
        entries = self.read(ShellActionEnum.LocalChangelog, "brovik-fernwartung")
        self.assertEqual([entry.name for entry in entries], ["brovik-fernwartung"])
        self.assertEqual(self.shell.names.count("changelogsChanged"), 2)

    def test_the_one_asked_for_last(self) -> None:
        """Is shown, whichever would have come first."""
        self.start(factor=20)
        self.act(ShellActionEnum.Changelog, "brovik-bedienung")
        entries = self.read(ShellActionEnum.LocalChangelog, "brovik-waage")
        self.read(ShellActionEnum.Changelog, "brovik-fernwartung")
        self.assertEqual([entry.name for entry in entries], ["brovik-waage"])
        self.assertEqual({entry.name for entry in Shell.changelogs}, {"brovik-fernwartung"})

    def test_during_a_search(self) -> None:
        """Can be read all the same."""
        self.start(factor=5)
        self.act(ShellActionEnum.Update)
        self.until(lambda: Shell.locked, "search")
        self.read(ShellActionEnum.LocalChangelog, "brovik-waage")
        self.assertTrue(Shell.locked)

    def test_none(self) -> None:
        """The operator is told; a name is no markup."""
        self.start()
        for number, name in enumerate(("brovik-tastatur", "<img src=x>"), start=1):
            self.act(ShellActionEnum.Changelog, name)
            self.until(lambda: len(self.signals("message")) == number, "message")
        self.assertEqual(self.signals("message")[1][1], "Zu &lt;img src=x&gt; gibt es kein Changelog.")
        self.assertEqual(len(Shell.changelogs), 0)

    def test_cache(self) -> None:
        """A changelog is downloaded again after clearing, and the end of the program leaves no file."""
        before = set(Path(tempfile.gettempdir()).glob("kubelor-demo-*"))
        toasts = _probe.SignalLog("Gui", ["toastNotify"])
        self.start()
        self.read(ShellActionEnum.Changelog, BROKEN)
        self.work(ShellActionEnum.ClearCache)
        self.until(lambda: toasts.emissions, "toast")
        self.assertEqual(toasts.emissions[0][2][0], "Cache gelöscht")
        for expected in (2, 2):
            self.read(ShellActionEnum.Changelog, BROKEN)
            self.assertEqual(sum("Changelog" in line for line in self.printed("appendStdout")), expected)
        self.stop()
        self.assertEqual(set(Path(tempfile.gettempdir()).glob("kubelor-demo-*")) - before, set())


class TestingTest(UpdateCase):
    """The component with preliminary versions."""

    def test_wrong_password(self) -> None:
        """Is told, and nothing changes."""
        self.start()
        for password in ("", "falsch", PASSWORD.upper(), "\ud800"):
            with self.subTest(password):
                self.gui.clear()
                self.work(ShellActionEnum.ToggleTesting, password)
                self.assertEqual(self.signals("message"), [["Updates", WRONG_PASSWORD, "error", 0]])
                self.assertFalse(Shell.testing_repo_enabled or Shell.locked)

    def test_on_and_off(self) -> None:
        """Its versions are there at once, and gone at once; it survives the end of the program."""
        self.start()
        self.work(ShellActionEnum.ToggleTesting, PASSWORD)
        self.assertTrue(Shell.testing_repo_enabled)
        self.assertEqual(self.offers()["brovik-bedienung"], "2.5.0~rc1")
        self.stop()
        Shell.testing_repo_enabled = False
        self.start()
        self.assertTrue(Shell.testing_repo_enabled)
        self.work(ShellActionEnum.ToggleTesting, PASSWORD)
        self.assertFalse(Shell.testing_repo_enabled)
        self.assertEqual(self.offers()["brovik-bedienung"], "2.4.0")

    def test_without_network(self) -> None:
        """It is switched all the same; the old list, which says nothing any more, goes."""
        self.start()
        self.work(ShellActionEnum.Update)
        self.cut_network()
        self.work(ShellActionEnum.ToggleTesting, PASSWORD)
        self.assertEqual((Shell.testing_repo_enabled, Shell.upgradables), (True, []))
        self.assertEqual(len(self.signals("message")), 1)

    def test_refused_during_a_run(self) -> None:
        """Nothing changes."""
        self.start()
        Auto.active = True
        self.work(ShellActionEnum.ToggleTesting, PASSWORD)
        self.assertFalse(Shell.testing_repo_enabled)

    def test_password_is_never_logged(self) -> None:
        """Neither a right one nor a wrong one, nor one in a place where none belongs."""
        log = _probe.LogCapture()
        self.start()
        self.work(ShellActionEnum.ToggleTesting, PASSWORD)
        self.work(ShellActionEnum.ToggleTesting, "falsch-4711")
        self.act(ShellActionEnum.ToggleTesting, ["falsch-4711"])
        self.act(ShellActionEnum.Update, PASSWORD)
        self.services_handled()
        self.stop()
        told = str(log.messages) + str(self.shell.emissions) + str(self.gui.emissions)
        self.assertIn("ToggleTesting", told)
        for path in self.directory.iterdir():
            told += path.read_bytes().decode("latin-1")
        self.assertNotIn(PASSWORD, told)
        self.assertNotIn("4711", told)


class OtherTest(UpdateCase):
    """What is left."""

    def test_console(self) -> None:
        """The test of the console prints on both streams; markup appears as it is written."""
        self.start()
        self.act(ShellActionEnum.TestConsole)
        self.services_handled()
        self.assertEqual([len(self.printed(signal)) for signal in CONSOLE], [5, 5])
        self.assertIn("&lt;Klammern&gt;", self.printed("appendStdout")[0])

    def test_values_that_make_no_sense(self) -> None:
        """They are logged without the value, and nothing happens."""
        self.start()
        log = _probe.LogCapture()
        rows: tuple[tuple[ShellActionEnum, object], ...] = (
            (ShellActionEnum.Update, "x-x"),
            (ShellActionEnum.Changelog, None),
            (ShellActionEnum.LocalChangelog, 5.0),
            (ShellActionEnum.ToggleTesting, {"x-x": "x-x"}),
            (ShellActionEnum.Upgrade, []),
        )
        for enum, value in rows:
            self.act(enum, value)
        self.services_handled()
        self.assertEqual(sum("passt nicht" in message[1] for message in log.messages), 5)
        self.assertNotIn("x-x", str(log.messages))
        self.assertEqual(self.shell.names, [])

    def test_folder_of_the_tree(self) -> None:
        """Is the one that the machine uses."""
        self.start()
        self.assertEqual(set(self.installed()), {path.stem for path in FOLDER.glob("*.json")})


if __name__ == "__main__":
    unittest.main()
