"""Switching the machine off at the panel."""

import unittest

from board_case import BoardCase

POWER, SHUT_DOWN, YES = (24, 155), (400, 573), (457, 671)


class PowerTest(BoardCase):
    """What the program does as the service's user, without root's rights."""

    def test_power_off(self) -> None:
        """The operator switches the machine off: it ends in order, and is off."""
        self.board.plug_in_touch()
        for name, place in (("popup", POWER), ("question", SHUT_DOWN)):
            before = self.board.picture()
            self.board.touch(*place)
            self.board.wait_for_picture(name, lambda picture: picture.changed(before) > 0.02)
            self.board.wait_until_still()
            self.board.keep_picture(name)
        self.board.touch(*YES)
        self.assertEqual(self.board.wait_for_end(), 0)
        self.assertRegex(self.board.serial(), "reboot: Power down")
        self.evidence("reboot: Power down")


if __name__ == "__main__":
    unittest.main()
