"""The keyboard on the screen, which comes with the finger."""

import unittest

from board_case import BoardCase, Drawing
from picture import Picture

#: The least conductivity of the acid, a number on the first page; where the keyboard then has a key.
FIELD, KEY = (107, 871), (130, 900)


class KeyboardTest(BoardCase):
    """A finger writes."""

    drawing = Drawing.OPENGL

    def test_number(self) -> None:
        """A field that is touched brings the keyboard, and a key of it writes into the field."""
        self.board.plug_in_touch()
        before = self.board.picture()
        self.board.touch(*FIELD)

        def has_keyboard(picture: Picture) -> bool:
            lower = (0, 800, picture.width, 400)
            return picture.part(*lower).changed(before.part(*lower)) > 0.5

        self.board.wait_for_picture("the keyboard", has_keyboard)
        shown = self.board.wait_until_still()
        shown.save(self.work / "keyboard.png")
        self.board.touch(*KEY)
        self.board.wait_for_picture("a digit", lambda picture: picture.changed(shown) > 0)
        self.board.wait_until_still()
        self.board.keep_picture("written")


if __name__ == "__main__":
    unittest.main()
