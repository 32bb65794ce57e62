"""The state of the update facility as the backend sees it."""

import unittest

import _probe
from brovik import shell
from shared_properties import Attribute, check_initial_values, check_writes

PACKAGE = {"name": "a", "version": "1.0", "arch": "arm64", "description": "ä", "name2": ""}
UPGRADE = {"name": "a", "versionNew": "1.1", "versionOld": "1.0", "urgency": "low", "lastChange": ["x", "y"]}

STATE = [
    Attribute("testing_repo_enabled", "testingRepoEnabled", False, True),
    Attribute("locked", "locked", False, True),
    Attribute("upgrade_in_progress_or_finished", "upgradeInProgressOrFinished", False, True),
    Attribute("installed", "installed", [], [PACKAGE]),
    Attribute("upgradables", "upgradables", [], [UPGRADE, UPGRADE]),
]
COLORS = ["low", "medium", "high", "other"]


class ShellTest(unittest.TestCase):
    """Attributes and functions of brovik.shell.Shell."""

    def test_initial_values(self) -> None:
        """Every attribute starts as documented."""
        check_initial_values(self, shell.Shell, STATE)

    def test_writes(self) -> None:
        """Every attribute can be written and notifies once."""
        check_writes(self, "Shell", shell.Shell, STATE)

    def test_colors(self) -> None:
        """A colour is written by name and read as #rrggbb; the same one by another name is no change."""
        for urgency in COLORS:
            with self.subTest(urgency):
                name = f"color_urgency_{urgency}"
                log = _probe.SignalLog("Shell")
                setattr(shell.Shell, name, "red")
                setattr(shell.Shell, name, "#ff0000")
                self.assertEqual(getattr(shell.Shell, name), "#ff0000")
                self.assertEqual(log.emissions, [(f"colorUrgency{urgency.capitalize()}Changed", False, [])])

    def test_equal_list_notifies_nothing(self) -> None:
        """Lists are compared in depth."""
        shell.Shell.upgradables = [UPGRADE]
        log = _probe.SignalLog("Shell")
        shell.Shell.upgradables = [dict(UPGRADE, lastChange=["x", "y"])]
        self.assertEqual(log.names, [])
        shell.Shell.upgradables = [dict(UPGRADE, lastChange=["x", "z"])]
        self.assertEqual(log.names, ["upgradablesChanged"])
        shell.Shell.upgradables = []

    def test_records_compare_by_type_and_value(self) -> None:
        """3, "3" and 3.0 are three values, as are True and 1, however deep."""
        values = [3, "3", 3.0, True, 1, None, "", [3], [3.0], (), {"x": 3}, {"x": 3.0}]
        for name in ("installed", "upgradables"):
            log = _probe.SignalLog("Shell")
            for value in values:
                setattr(shell.Shell, name, [{"a": value}])
                setattr(shell.Shell, name, [{"a": value}])
            self.assertEqual(log.names, [f"{name}Changed"] * len(values))
            setattr(shell.Shell, name, [])

    def test_color_that_is_none(self) -> None:
        """What names no colour is the invalid one."""
        for wrong in ("keine Farbe", "#12", "", None, 5):
            with self.subTest(wrong):
                shell.Shell.color_urgency_low = "#ff0000"
                log = _probe.SignalLog("Shell")
                shell.Shell.color_urgency_low = wrong
                shell.Shell.color_urgency_low = wrong
                self.assertEqual(log.names, ["colorUrgencyLowChanged"])
                self.assertEqual(shell.Shell.color_urgency_low, "#000000")

    def test_records_of_any_content(self) -> None:
        """A record may lack keys, and have others, and values of other types."""
        records = [{}, {"name": None, "lastChange": 5}, {"x": [{"y": []}]}, {"": ""}]
        for name in ("installed", "upgradables"):
            setattr(shell.Shell, name, records)
            self.assertEqual(getattr(shell.Shell, name), records)
            self.assertEqual(_probe.qml("Shell", name), records)
            setattr(shell.Shell, name, [])

    def test_order_of_the_attributes(self) -> None:
        """As documented."""
        self.assertEqual(
            [name for name in vars(shell.ShellClass) if not name.startswith("_")],
            [
                *(f"color_urgency_{urgency}" for urgency in COLORS),
                "testing_repo_enabled",
                "locked",
                "upgrade_in_progress_or_finished",
                "installed",
                "changelogs",
                "upgradables",
                "append_stderr",
                "append_stdout",
            ],
        )
        self.assertEqual(
            [name for name in vars(shell) if not name.startswith("_")],
            ["ChangelogEntryVector", "ShellActionEnum", "ShellClass", "Shell", "ChangelogEntry"],
        )

    def test_list_that_is_none(self) -> None:
        """Something that is no sequence raises TypeError and changes nothing."""
        for wrong in (5, None, True):
            with self.subTest(wrong=wrong), self.assertRaises(TypeError):
                shell.Shell.installed = wrong
        self.assertEqual(shell.Shell.installed, [])

    def test_list_of_no_records(self) -> None:
        """An element that is no record is reported, and the list counts as empty."""
        shell.Shell.installed = [PACKAGE]
        capture = _probe.LogCapture()
        shell.Shell.installed = [5]
        self.assertEqual(shell.Shell.installed, [])
        reported, traceback = capture.messages
        self.assertIn("py::error_already_set: TypeError", reported[1])
        self.assertTrue(traceback[1].startswith("TypeError: "), traceback)

    def test_console_output(self) -> None:
        """Output goes out at once, piece by piece, on the writer's thread."""
        log = _probe.SignalLog("Shell")
        shell.Shell.append_stdout("a\n")
        shell.Shell.append_stderr("<b>")
        shell.Shell.append_stdout("a\n")
        self.assertEqual(
            log.emissions,
            [
                ("appendStdout", False, ["a\n"]),
                ("appendStderr", False, ["<b>"]),
                ("appendStdout", False, ["a\n"]),
            ],
        )

    def test_enum(self) -> None:
        """Names and numbers of the enumeration."""
        self.assertEqual(
            {name: int(value) for name, value in shell.ShellActionEnum.__members__.items()},
            {
                "Update": 0,
                "Upgrade": 1,
                "Changelog": 2,
                "LocalChangelog": 3,
                "ClearCache": 4,
                "TestConsole": 5,
                "ToggleTesting": 6,
            },
        )


if __name__ == "__main__":
    unittest.main()
