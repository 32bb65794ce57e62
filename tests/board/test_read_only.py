"""A board whose root cannot be written to."""

import unittest

from board_case import RESULTS, Board, BoardCase, Drawing, boot


class ReadOnlyTest(BoardCase):
    """The root is read-only, and what changes is in memory."""

    def begin(self) -> Board:
        return boot(RESULTS / self.id(), Drawing.SOFTWARE, kernel="ro systemd.volatile=state")

    def test_panel(self) -> None:
        """The panel comes up all the same."""
        self.board.shell.wait()
        self.board.wait_until_up()
        self.assertNotEqual(self.board.shell.run("touch /written")[0], 0)
        self.board.keep_picture("panel")
        for place, how in {"/": "ro", "/var": "rw"}.items():
            mounted = self.board.shell(f"findmnt --noheadings --output TARGET,FSTYPE,OPTIONS {place}")
            self.assertRegex(mounted, rf" {how},")
            self.evidence(mounted)
        self.assertEqual(self.board.shell("systemctl --failed --no-legend"), "")


if __name__ == "__main__":
    unittest.main()
