"""A panel that is not mounted the way its display is made."""

import unittest

from board_case import DISPLAY, RESULTS, THEME, Board, BoardCase, boot, saved_panel
from picture import Picture

SETTINGS = "/etc/kubelor/display.conf"
#: What differs at least between the two looks of the panel.
OTHER_SHARE = 0.5


class RotationCase(BoardCase):
    """Turns the panel by its file, as the guide says it."""

    #: What may differ from the panel as it is drawn upright by the usual display.
    same_share = 0.01

    def check_rotation(self, quarters: int) -> None:
        """ROTATION turns the picture clockwise by so many quarters, and the touch with it."""
        expected, (x, y) = Picture.read(saved_panel(self.drawing) / "screen.ppm"), THEME
        for _ in range(quarters):
            x, y = expected.height - 1 - y, x
            expected = expected.turned()
        self.board.shell(f"sed -i 's/^ROTATION=.*/ROTATION=\"{90 * quarters}\"/' {SETTINGS}")
        self.board.shell(f"systemctl restart {DISPLAY}")
        self.board.wait_until_up()
        self.wait_for_panel(expected)
        before = self.board.keep_picture(f"turned by {90 * quarters}")
        self.board.touch(x, y)
        self.board.wait_for_picture("the other look", lambda now: now.changed(before) > OTHER_SHARE)
        self.board.keep_picture(f"touched, turned by {90 * quarters}")
        # The program remembers its look.
        self.board.touch(x, y)
        self.wait_for_panel(expected)

    def wait_for_panel(self, expected: Picture) -> None:
        """Waits until the panel looks like this."""
        self.board.wait_for_picture("a turned panel", lambda now: now.changed(expected) < self.same_share)


class UpsideDownTest(RotationCase):
    """A display whose upper edge is below."""

    def test_rotation(self) -> None:
        """Half a turn."""
        self.board.plug_in_touch()
        self.check_rotation(2)


class LyingBoard(Board):
    """A board whose display is wider than high."""

    display = (1200, 800)


class LyingCase(RotationCase):
    """A display that is wider than high, mounted upright."""

    kind: type[LyingBoard] = LyingBoard

    def begin(self) -> Board:
        saved_panel(self.drawing)
        return boot(RESULTS / self.id(), self.drawing, kind=self.kind)

    def setUp(self) -> None:
        super().setUp()
        self.board.shell.wait()
        self.board.wait_until_up()

    def check_quarters(self) -> None:
        """A quarter, to either side."""
        self.board.keep_picture("lying")
        self.board.plug_in_touch()
        for quarters in (1, 3):
            with self.subTest(quarters=quarters):
                self.check_rotation(quarters)


class LyingTest(LyingCase):
    """The usual display."""

    def test_rotation(self) -> None:
        """A quarter, to either side."""
        self.check_quarters()


if __name__ == "__main__":
    unittest.main()
