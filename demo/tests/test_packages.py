"""The package source, the package manager, and changelogs."""

import asyncio
import errno
import json
import re
import shutil
import tempfile
import unittest
from pathlib import Path
from typing import Any
from unittest.mock import patch

from controller.packages import testing
from controller.packages.changelog import Entry, UnreadableChangelog, is_version, read, up_to
from controller.packages.changelogs import Changelogs
from controller.packages.manager import PackageManager
from controller.packages.server import UNREACHABLE, PackageError, Server
from controller.packages.source import FOLDER, Source, read_source

from .service_rig import Clock, Printed

CHANGELOG = """\
a (1.1) stable; urgency=high

  [ Someone ]
  * One change
  * Another one, which
    goes on here

 -- A B <a@b.example>  Mon, 02 Nov 2026 14:05:00 +0100

a (1.0~rc1) testing; urgency=medium

  * First

 -- A B <a@b.example>  Thu, 01 Jan 2026 00:00:00 +0000
"""
RECORD: dict[str, Any] = {
    "arch": "arm64",
    "description": "Ä <b>",
    "delivered": "1.0",
    "offered": {"stable": "1.1", "testing": "1.2~rc1"},
    "size": 100,
}
BROKEN = "brovik-waage"


class FolderCase(unittest.TestCase):
    """A folder to put packages into."""

    def setUp(self) -> None:
        # addCleanup() ends it with the test.
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        self.folder = Path(directory.name)

    def write(self, name: str, text: str) -> Path:
        """Writes a file."""
        path = self.folder / name
        path.write_text(text, encoding="utf-8")
        return path

    def package(self, name: str, changelog: str = "", **values: Any) -> None:
        """Puts a package into the folder."""
        self.write(f"{name}.json", json.dumps(RECORD | values))
        if changelog:
            self.write(f"{name}.changelog", changelog)


class ChangelogTest(FolderCase):
    """Debian's format."""

    def test_entries(self) -> None:
        """Newest first; a change that goes on over several lines is one text."""
        entries = read(self.write("a", CHANGELOG))
        self.assertEqual(
            entries[0],
            Entry(
                package="a",
                version="1.1",
                distribution="stable",
                urgency="high",
                date="02.11.2026 14:05",
                changes=("[ Someone ]", "One change", "Another one, which goes on here"),
            ),
        )
        self.assertEqual([entry.version for entry in entries], ["1.1", "1.0~rc1"])

    def test_up_to(self) -> None:
        """A preliminary version comes before the version that it precedes."""
        entries = read(self.write("a", CHANGELOG))
        for version, expected in (("1.1", 2), ("1.0", 1), ("1.0~rc1", 1), ("0.9", 0), ("2:0.1", 2)):
            with self.subTest(version):
                self.assertEqual(len(up_to(version, entries)), expected)

    def test_unreadable(self) -> None:
        """What is no changelog is told as such, whatever is wrong with it."""
        self.assertRaises(UnreadableChangelog, read, self.folder / "nicht-da")
        (self.folder / "bytes").write_bytes(b"\xff\xfe\x00")
        self.assertRaises(UnreadableChangelog, read, self.folder / "bytes")
        for text in (
            "",
            "Text",
            CHANGELOG.replace("(1.1)", "(1.1"),
            CHANGELOG.replace("(1.1)", "(_)"),
            CHANGELOG.replace(" -- A B", "-- A B"),
            CHANGELOG.replace("02 Nov", "42 Nov"),
        ):
            with self.subTest(text):
                self.assertRaises(UnreadableChangelog, read, self.write("a", text))

    def test_versions(self) -> None:
        """What a version looks like."""
        self.assertTrue(is_version("2:1.0~rc1-3"))
        self.assertFalse(is_version(""))
        self.assertFalse(is_version("1 0"))


class SourceTest(FolderCase):
    """The folder with the packages."""

    def test_package(self) -> None:
        """All that its file tells, and whether it has a changelog."""
        self.package("a", CHANGELOG)
        self.package("b", broken=True)
        source = read_source(self.folder)
        self.assertEqual(source.problems, ())
        self.assertEqual(list(source.packages), ["a", "b"])
        first, second = source.packages.values()
        texts = (first.name, first.arch, first.description, first.delivered)
        self.assertEqual(texts, ("a", "arm64", "Ä <b>", "1.0"))
        self.assertEqual((first.changelog, second.changelog), (self.folder / "a.changelog", None))
        self.assertEqual((first.broken, second.broken), (False, True))

    def test_offers(self) -> None:
        """Only what is newer, and only from the components that count."""
        self.package("a")
        package = read_source(self.folder).packages["a"]
        rows = [
            ("1.0", (), None),
            ("1.0", ("stable",), "1.1"),
            ("1.0", ("stable", "testing"), "1.2~rc1"),
            ("1.1", ("stable",), None),
            ("1.2", ("stable", "testing"), None),
            ("1.0", ("sid",), None),
        ]
        for installed, components, expected in rows:
            with self.subTest(installed=installed, components=components):
                self.assertEqual(package.offer(installed, components), expected)

    def test_files_that_make_no_sense(self) -> None:
        """Each becomes a problem, and the others are there."""
        self.package("a")
        lacking = {key: value for key, value in RECORD.items() if key != "arch"}
        self.write("lacking.json", json.dumps(lacking))
        self.write("list.json", "[]")
        self.write("text.json", "{")
        self.package("number", delivered=1)
        self.package("version", delivered="a b")
        self.package("offer", offered=["1.1"])
        self.package("size", size=None)
        (self.folder / "bytes.json").write_bytes(b"\xff")
        (self.folder / "folder.json").mkdir()
        source = read_source(self.folder)
        self.assertEqual(list(source.packages), ["a"])
        self.assertEqual(len(source.problems), 9)

    def test_no_folder(self) -> None:
        """There are no packages then."""
        self.assertEqual(read_source(self.folder / "nicht-da"), Source({}, ()))

    def test_folder_that_nobody_may_read(self) -> None:
        """Is a problem, and no error that leaves the machine without its backend."""
        with patch("os.listdir", side_effect=PermissionError(errno.EACCES, "verboten")):
            source = read_source(self.folder)
        self.assertEqual(source.packages, {})
        self.assertRegex(source.problems[0], f"^{self.folder.name}: PermissionError: .*verboten$")

    def test_own_packages(self) -> None:
        """They show all urgencies, a fault, a package without updates and one without changelog."""
        source = read_source(FOLDER)
        self.assertEqual(source.problems, ())
        urgencies = set()
        for package in source.packages.values():
            if package.changelog is not None:
                entries = read(package.changelog)
                self.assertEqual({entry.package for entry in entries}, {package.name})
                urgencies |= {entry.urgency for entry in entries}
                versions = {entry.version for entry in entries}
                self.assertLessEqual({package.delivered, *package.offered.values()}, versions)
        self.assertEqual(urgencies, {"low", "medium", "high", "critical"})
        packages = source.packages.values()
        self.assertEqual([package.name for package in packages if package.broken], [BROKEN])
        self.assertTrue(any(package.changelog is None for package in packages))
        self.assertTrue(any(not package.offer(package.delivered, ("stable",)) for package in packages))
        self.assertTrue(any("testing" in package.offered for package in packages))


class ManagerCase(FolderCase):
    """A package manager whose network can be cut."""

    def setUp(self) -> None:
        super().setUp()
        self.clock = Clock()
        self.printed = Printed()
        self.online = True
        self.server = Server(self.printed, self.clock.sleep, lambda: self.online)

    def make(self, source: Source) -> PackageManager:
        """A manager of these packages."""
        return PackageManager(source, self.server)

    def demo(self) -> PackageManager:
        """A manager of the packages that come with the tree."""
        return self.make(read_source(FOLDER))

    @staticmethod
    def offers(manager: PackageManager) -> dict[str, str]:
        """The version that each package can be updated to."""
        return {update.package.name: update.new for update in manager.updates()}


class SearchTest(ManagerCase):
    """Looking for updates."""

    def test_search(self) -> None:
        """Nothing is known before; it takes a while, and prints on both streams."""
        manager = self.demo()
        self.assertEqual(manager.updates(), [])
        asyncio.run(manager.search())
        self.assertEqual(self.offers(manager)["brovik-steuerung"], "1.9.0")
        self.assertNotIn("brovik-dokumentation", self.offers(manager))
        self.assertGreater(self.clock.now(), 1.0)
        self.assertEqual({stream for stream, _ in self.printed.lines}, {"out", "err"})

    def test_testing(self) -> None:
        """The component brings preliminary versions, and takes them away again."""
        manager = self.demo()
        manager.switch_testing(True)
        asyncio.run(manager.search())
        self.assertEqual(self.offers(manager)["brovik-bedienung"], "2.5.0~rc1")
        manager.switch_testing(False)
        self.assertEqual(manager.updates(), [])
        asyncio.run(manager.search())
        self.assertEqual(self.offers(manager)["brovik-bedienung"], "2.4.0")

    def test_without_network(self) -> None:
        """Fails with a line on the error output, and leaves what was known."""
        manager = self.demo()
        asyncio.run(manager.search())
        known = manager.updates()
        self.online = False
        with self.assertRaisesRegex(PackageError, UNREACHABLE):
            asyncio.run(manager.search())
        self.assertTrue(self.printed.lines[-1][1].startswith("E: "))
        self.assertEqual(manager.updates(), known)

    def test_problems_of_the_source(self) -> None:
        """They are printed, and the rest is there."""
        self.package("a")
        self.write("b.json", "{")
        manager = self.make(read_source(self.folder))
        asyncio.run(manager.search())
        self.assertEqual(list(self.offers(manager)), ["a"])
        self.assertIn("W: b.json", self.printed.stream("err"))


class UpgradeTest(ManagerCase):
    """Installing updates."""

    def test_upgrade_with_a_fault(self) -> None:
        """All packages but the broken one are new; that one is named."""
        manager = self.demo()
        asyncio.run(manager.search())
        offers = self.offers(manager)
        with self.assertRaisesRegex(PackageError, BROKEN):
            asyncio.run(manager.upgrade())
        self.assertEqual(list(self.offers(manager)), [BROKEN])
        for name, version in offers.items():
            expected = manager.packages[name].delivered if name == BROKEN else version
            self.assertEqual(manager.installed[name], expected)
        self.assertIn(BROKEN, self.printed.stream("err"))
        self.assertIn("5 von 6 Paketen", self.printed.stream("out"))
        self.assertGreater(self.clock.now(), 10.0)

    def test_upgrade_without_faults(self) -> None:
        """Ends without an error."""
        self.package("a")
        manager = self.make(read_source(self.folder))
        asyncio.run(manager.search())
        asyncio.run(manager.upgrade())
        self.assertEqual((manager.installed, manager.updates()), ({"a": "1.1"}, []))

    def test_network_lost(self) -> None:
        """Nothing gets installed of what has been downloaded only in part."""
        manager = self.demo()
        asyncio.run(manager.search())
        before = dict(manager.installed)
        self.online = False
        self.assertRaises(PackageError, asyncio.run, manager.upgrade())
        self.assertEqual(manager.installed, before)

    def test_broken_off(self) -> None:
        """What was set up by then stays so; nothing more follows."""
        manager = self.demo()

        async def break_off() -> None:
            await manager.search()
            work = asyncio.create_task(manager.upgrade())
            while manager.installed["brovik-bedienung"] == "2.3.1":
                await asyncio.sleep(0)
            work.cancel()
            await asyncio.gather(work, return_exceptions=True)
            self.assertTrue(work.cancelled())

        asyncio.run(break_off())
        self.assertEqual(manager.installed["brovik-bedienung"], "2.4.0")
        self.assertEqual(manager.installed["brovik-waage"], "0.4.0")

    def test_restore(self) -> None:
        """Versions of known packages come back; anything else is left alone."""
        manager = self.demo()
        before = dict(manager.installed)
        manager.restore({"nicht-da": "1.0", "brovik-waage": 5, 7: "1.0", "brovik-tastatur": "a b"})
        self.assertEqual(manager.installed, before)
        manager.restore({"brovik-waage": "0.4.1"})
        self.assertEqual(manager.installed, before | {"brovik-waage": "0.4.1"})

    def test_lost_for_a_while(self) -> None:
        """A package that cannot be read keeps its version for the day on which it can."""
        self.package("a")
        self.package("b")
        manager = self.make(read_source(self.folder))
        manager.restore({"a": "1.1"})
        (self.folder / "a.json").rename(self.folder / "a.json.weg")
        without = self.make(read_source(self.folder))
        without.restore(manager.kept)
        self.assertEqual(set(without.installed), {"b"})
        self.assertEqual(without.kept["a"], "1.1")


class ChangelogsTest(ManagerCase):
    """Where changelogs come from."""

    def setUp(self) -> None:
        super().setUp()
        self.manager = self.demo()
        self.changelogs = Changelogs(self.manager, self.server)
        self.addCleanup(self.changelogs.clear)

    def offered(self, name: str) -> list[str]:
        """The versions in the changelog on offer."""
        return [entry.version for entry in asyncio.run(self.changelogs.offered(name))]

    def local(self, name: str) -> list[str]:
        """The versions in the changelog of what is installed."""
        return [entry.version for entry in asyncio.run(self.changelogs.local(name))]

    def test_versions(self) -> None:
        """They reach up to the version that is meant."""
        asyncio.run(self.manager.search())
        self.assertEqual(self.local("brovik-bedienung"), ["2.3.1", "2.3.0", "2.2.0"])
        self.assertEqual(self.offered("brovik-bedienung"), ["2.4.0", "2.3.1", "2.3.0", "2.2.0"])
        self.manager.switch_testing(True)
        asyncio.run(self.manager.search())
        self.assertEqual(self.offered("brovik-bedienung")[0], "2.5.0~rc1")

    def test_downloaded_once(self) -> None:
        """The second time it is there at once, also without a network, until the cache is cleared."""
        self.offered("brovik-waage")
        secs = self.clock.now()
        self.assertGreater(secs, 0.0)
        self.online = False
        self.offered("brovik-waage")
        self.assertEqual(self.clock.now(), secs)
        self.changelogs.clear()
        self.assertRaises(PackageError, self.offered, "brovik-waage")

    def test_local_needs_no_network(self) -> None:
        """It comes with the package."""
        self.online = False
        self.assertEqual(self.local("brovik-waage"), ["0.4.0"])

    def test_cleared_during_a_download(self) -> None:
        """The download comes to its end, and leaves no file outside the cache."""

        async def download() -> list[Entry]:
            work = asyncio.create_task(self.changelogs.offered("brovik-waage"))
            await asyncio.sleep(0)
            self.changelogs.clear()
            return await work

        self.assertEqual(len(asyncio.run(download())), 1)

    def test_no_file_is_left(self) -> None:
        """The temporary files are gone after clearing."""
        before = set(Path(tempfile.gettempdir()).glob("kubelor-demo-*"))
        self.offered("brovik-waage")
        after = set(Path(tempfile.gettempdir()).glob("kubelor-demo-*"))
        self.assertEqual(len(after - before), 1)
        self.changelogs.clear()
        self.assertFalse(any(path.exists() for path in after - before))

    def test_download_that_breaks_off(self) -> None:
        """Is told, and half a file never passes for the whole one."""

        def half(file: Path, target: Path) -> None:
            target.write_bytes(file.read_bytes()[:300])
            raise OSError(errno.ENOSPC, "voll")

        with patch("shutil.copyfile", half), self.assertRaisesRegex(PackageError, "nicht holen: .*voll"):
            self.offered("brovik-bedienung")
        self.assertEqual(self.offered("brovik-bedienung"), ["2.3.1", "2.3.0", "2.2.0"])

    def test_no_room_for_a_cache(self) -> None:
        """Is told."""
        with patch("tempfile.mkdtemp", side_effect=OSError(errno.EROFS, "schreibgeschützt")):
            self.assertRaisesRegex(PackageError, "schreibgeschützt", self.offered, "brovik-waage")

    def test_cache_that_somebody_else_has_cleared(self) -> None:
        """There is a new one, or nothing to clear."""
        for _ in range(2):
            before = set(Path(tempfile.gettempdir()).glob("kubelor-demo-*"))
            self.offered("brovik-waage")
            (folder,) = set(Path(tempfile.gettempdir()).glob("kubelor-demo-*")) - before
            shutil.rmtree(folder)
        self.changelogs.clear()

    def test_cache_that_cannot_be_cleared(self) -> None:
        """Is told, and the next time leaves no file behind."""
        before = set(Path(tempfile.gettempdir()).glob("kubelor-demo-*"))
        self.offered("brovik-waage")
        with patch("shutil.rmtree", side_effect=OSError(errno.EIO, "Fehler")):
            self.assertRaisesRegex(PackageError, "nicht leeren: .*Fehler", self.changelogs.clear)
        self.changelogs.clear()
        self.assertEqual(set(Path(tempfile.gettempdir()).glob("kubelor-demo-*")) - before, set())

    def test_none(self) -> None:
        """Packages without changelog, and no packages."""
        for name in ("brovik-tastatur", "nicht-da", "", "../../etc/passwd"):
            with self.subTest(name):
                self.assertRaisesRegex(PackageError, "kein Changelog", self.offered, name)
                self.assertRaisesRegex(PackageError, "kein Changelog", self.local, name)

    def test_damaged(self) -> None:
        """Is told in words for the operator."""
        self.package("a", "kein Changelog")
        changelogs = Changelogs(self.make(read_source(self.folder)), self.server)
        self.addCleanup(changelogs.clear)
        with self.assertRaisesRegex(PackageError, "a: Das Changelog ist nicht lesbar"):
            asyncio.run(changelogs.local("a"))


class PasswordTest(unittest.TestCase):
    """The password of the testing component."""

    def test_the_one_in_the_readme(self) -> None:
        """Is the right one."""
        readme = (FOLDER.parent / "README.md").read_text(encoding="utf-8")
        told = re.search("testing component has the password `(.+?)`", " ".join(readme.split()))
        assert told is not None
        self.assertTrue(testing.fits(told[1]))

    def test_wrong_ones(self) -> None:
        """Anything else is wrong, whatever characters it has."""
        for password in ("", "VORAB-2026", "vorab-2026 ", "ä" * 5000, "\ud800", "\0"):
            with self.subTest(password):
                self.assertFalse(testing.fits(password))


if __name__ == "__main__":
    unittest.main()
