"""Reading changelogs."""

import tempfile
import unittest
from pathlib import Path
from typing import Any

import watching
from brovik.shell import Shell, ShellActionEnum

from update_case import BROKEN, UpdateCase


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
        toasts = watching.SignalLog("Gui", ["toastNotify"])
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


if __name__ == "__main__":
    unittest.main()
