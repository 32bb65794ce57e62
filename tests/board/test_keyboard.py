"""The keyboard on the screen, which comes with the finger."""

import unittest

from board_case import BoardCase, Drawing
from picture import Picture

#: The least conductivity of the acid, a number on the first page, and the rectangle of its digits.
FIELD, DIGITS = (107, 882), (64, 866, 88, 34)
#: The key of the keyboard that takes a digit away.
KEY = (492, 984)
#: The cursor that blinks is less of the digits' rectangle.
DIGIT_SHARE = 0.03


class KeyboardCase(BoardCase):
    """A finger writes."""

    def check_keyboard(self) -> None:
        """A field that is touched brings the keyboard, and a key of it takes a digit away."""
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

        def lacks_digit(picture: Picture) -> bool:
            return picture.part(*DIGITS).changed(shown.part(*DIGITS)) > DIGIT_SHARE

        self.board.wait_for_picture("one digit less", lacks_digit)
        self.board.keep_picture("written")


class KeyboardTest(KeyboardCase):
    """The keyboard on the usual display."""

    drawing = Drawing.OPENGL

    def test_number(self) -> None:
        """One digit of a number is taken away."""
        self.check_keyboard()


if __name__ == "__main__":
    unittest.main()
