"""Looking for updates, and what the console and odd values do."""

import unittest
from unittest.mock import patch

import watching
from brovik.auto import Auto
from brovik.gui import Gui, PageEnum
from brovik.shell import Shell, ShellActionEnum

from update_case import CONSOLE, PASSWORD, UpdateCase
from controller.packages.manager import PackageManager
from controller.packages.source import FOLDER


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
        log = watching.LogCapture()
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
