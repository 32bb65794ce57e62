"""The commands of the guide to setting a board up: those that need neither a network nor another board."""

import re
import unittest
from pathlib import Path

from board_case import PROGRAM, BoardCase

GUIDE = Path(__file__).parents[2] / "docs/einrichten.md"
#: Blocks of this language are run here; those without one need what this board has not.
COMMANDS = re.compile(r"(?ms)^```sh\n(.*?)^```$")


class CommissioningTest(BoardCase):
    """The guide is followed from its beginning to its end."""

    def test_guide(self) -> None:
        """Each command works, in this order, and at the end there is a panel."""
        blocks = COMMANDS.findall(GUIDE.read_text("utf-8"))
        self.assertGreater(len(blocks), 5)
        for line in "".join(blocks).splitlines():
            with self.subTest(line):
                self.evidence(f"# {line}")
                self.evidence(self.board.shell(line))
        self.board.wait_until_up()
        self.board.keep_picture("panel")
        self.assertEqual(self.board.value(PROGRAM, "NRestarts"), "0")


if __name__ == "__main__":
    unittest.main()
