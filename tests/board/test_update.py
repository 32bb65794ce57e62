"""Updates of the program on the running board, and the way back."""

import unittest

from board_case import PROGRAM, BoardCase, note

UPDATES = "/packages/updates"


class UpdateTest(BoardCase):
    """Packages that are well, and others that are not."""

    def setUp(self) -> None:
        super().setUp()
        self.board.shell("kubelor-update keep /packages/kubelor_*.deb")
        self.before = self.version()

    def version(self) -> str:
        """The version of the program that is installed."""
        return self.board.shell("dpkg-query --show --showformat='${Version} ${db:Status-Status}' kubelor")

    def update(self, name: str) -> str:
        """Installs an update as a service of its own, and gives what it has come to."""
        unit = "kubelor-update"
        command = (
            f"systemd-run --quiet --wait --unit={unit} kubelor-update install {UPDATES}/kubelor_{name}.deb"
        )
        begin = self.board.uptime()
        self.board.shell.run(command)
        note(f"update that is {name}", seconds=round(self.board.uptime() - begin, 1))
        result = self.board.shell("cat /var/lib/kubelor-update/result")
        self.evidence(result)
        self.evidence(self.board.journal(f"-u {unit}"))
        return result

    def test_good(self) -> None:
        """The new version runs and is the way back from now on."""
        self.assertRegex(self.update("good"), "^installed ")
        self.assertRegex(self.version(), r"\+good installed$")
        self.board.wait_until_up()
        self.board.keep_picture("updated")
        self.assertRegex(self.board.shell("ls /var/lib/kubelor-update/kept"), "kubelor_good.deb")

    def check_way_back(self, name: str) -> None:
        """An update that is not well leaves the panel as it was."""
        self.assertRegex(self.update(name), "^restored ")
        self.assertEqual(self.version(), self.before)
        self.board.wait_until_up()
        self.assertEqual(self.board.value("kubelor-fallback.service", "ActiveState"), "inactive")
        self.assertEqual(self.board.shell(f"systemctl is-active {PROGRAM}"), "active")
        self.board.keep_picture("restored")

    def test_program_ends(self) -> None:
        """The new program ends at once."""
        self.check_way_back("ends")

    def test_program_hangs(self) -> None:
        """The new program says that it is ready, and does nothing more."""
        self.check_way_back("hangs")

    def test_not_to_be_installed(self) -> None:
        """The new package's own script fails."""
        self.check_way_back("refuses")


if __name__ == "__main__":
    unittest.main()
