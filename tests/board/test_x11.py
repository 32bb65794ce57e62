"""The other display: X.Org with openbox, in place of the compositor."""

import unittest

from board_case import STILL_SECS, BoardCase, note_start
from picture import Picture
from test_keyboard import KeyboardCase
from test_rotation import LyingBoard, LyingCase

#: What a second instance of the program ends with, when it has raised the first.
RAISED = 100
#: What runs something on the display, as the user of the service.
ON_DISPLAY = (
    "systemd-run --quiet --wait --pipe --collect --uid=kubelor --setenv=HOME=/tmp "
    "--property=EnvironmentFile=/run/kubelor-display/environment"
)


class X11Case(BoardCase):
    """A machine that was told to take the X server, and restarted."""

    def setUp(self) -> None:
        super().setUp()
        before = self.board.boot_id()
        self.board.let_restart()
        self.board.shell("systemctl enable kubelor-display-x11")
        self.board.shell("systemctl --no-block reboot")
        self.board.wait_until_restarted(before)
        self.board.wait_until_up()


class X11Test(X11Case, KeyboardCase):
    """An upright display."""

    def test_panel(self) -> None:
        """It comes up; a second instance of the program raises the first; a finger writes."""
        note_start("boot with X.Org", self.board)
        self.board.keep_picture("panel")
        self.assertRegex(self.board.shell("readlink /proc/$(pidof Xorg)/exe"), "Xorg$")
        self.assertEqual(self.board.shell("systemctl --failed --no-legend"), "")
        with self.subTest("guard"):
            self.check_guard()
        with self.subTest("keyboard"):
            self.check_keyboard()

    def check_guard(self) -> None:
        """Hides the window, and starts the program once more."""
        before = self.board.picture()
        self.board.shell(f"{ON_DISPLAY} wmctrl -k on")
        self.board.wait_for_picture("an empty screen", lambda picture: picture.colours() < 5)
        code, said = self.board.shell.run(f"{ON_DISPLAY} kubelor -f")
        self.evidence(said)
        self.assertEqual(code, RAISED)
        self.board.wait_for_picture("the panel again", lambda picture: picture.changed(before) < 0.01)
        self.board.keep_picture("raised")


class UntoldBoard(LyingBoard):
    """A board whose display is not told of what is drawn.

    The X server's driver is silent when it draws turned. A display that reads the memory of the picture all
    the time does not need to be told; the emulated one does.
    """

    def picture(self) -> Picture:
        # Who gets the terminal back shows all anew.
        self.shell("chvt 2; chvt 1")
        self.let_pass(STILL_SECS)
        return super().picture()


class LyingX11Test(X11Case, LyingCase):
    """A display that is wider than high, mounted upright."""

    kind = UntoldBoard
    # Text comes out a few pixels elsewhere. Turned the wrong way, four fifths would differ.
    same_share = 0.15

    def test_rotation(self) -> None:
        """A quarter, to either side."""
        self.check_quarters()


if __name__ == "__main__":
    unittest.main()
