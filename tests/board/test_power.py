"""Switching the machine off, and restarting it, at the panel."""

import unittest

from board_case import BoardCase

#: The button of the panel, its two choices, and the consent to them.
POWER, SHUT_DOWN, RESTART, YES = (24, 155), (400, 573), (400, 625), (457, 671)
#: The rectangles of the choices, and of the question's title.
CHOICES, TITLE = (320, 560, 160, 80), (190, 507, 420, 30)
SHOWN_SHARE = 0.1


class PowerTest(BoardCase):
    """What the program does as the service's user, without root's rights."""

    def choose(self, choice: tuple[int, int]) -> None:
        """Touches the button and a choice of its dialog, and consents."""
        self.board.plug_in_touch()
        for name, place, shown in (("popup", POWER, CHOICES), ("question", choice, TITLE)):
            before = self.board.picture().part(*shown)
            self.board.touch(*place)
            self.board.wait_for_picture(
                name, lambda picture: picture.part(*shown).changed(before) > SHOWN_SHARE
            )
            self.board.wait_until_still()
            self.board.keep_picture(name)
        self.board.touch(*YES)

    def test_power_off(self) -> None:
        """The operator switches the machine off: it ends in order, and is off."""
        self.choose(SHUT_DOWN)
        self.assertEqual(self.board.wait_for_end(), 0)
        self.assertRegex(self.board.serial(), "reboot: Power down")
        self.evidence("reboot: Power down")

    def test_restart(self) -> None:
        """The operator restarts the machine: it ends in order, and the panel comes up again."""
        before = self.board.boot_id()
        self.board.let_restart()
        self.choose(RESTART)
        self.board.wait_until_restarted(before)
        self.assertRegex(self.board.serial(), "reboot: Restarting system")
        self.evidence("reboot: Restarting system")
        self.board.wait_until_up()
        self.evidence(self.board.wait_for_journal("Started kubelor.service", "--boot"))
        self.board.keep_picture("panel")
        self.assertEqual(self.board.shell("systemctl --failed --no-legend"), "")


if __name__ == "__main__":
    unittest.main()
