"""Values as words and figures."""

import math
import unittest

from bericht import wording
from bericht.content import differs
from logbook.records import ParameterRecord, Value


class NumberTest(unittest.TestCase):
    """Figures."""

    def test_numbers(self) -> None:
        """Commas, and no more decimals than there are."""
        for value, text in (
            (0.0, "0"),
            (-0.0, "0"),
            (-0.0001, "0"),
            (1234.0, "1234"),
            (100.0, "100"),
            (0.1, "0,1"),
            (0.30000000000000004, "0,3"),
            (-1.25, "-1,25"),
            (2.0004, "2"),
            (1e15, "1,000e+15"),
            (math.nan, "–"),
            (-math.inf, "–"),
        ):
            self.assertEqual(wording.number(value), text)
        self.assertEqual(wording.number(1.0, 2), "1,00")
        self.assertEqual(wording.number(-0.001, 2), "0,00")
        self.assertEqual(wording.quantity(0.1, "bar"), "0,1 bar")
        self.assertEqual(wording.quantity(3, ""), "3")

    def test_settings(self) -> None:
        """Switches, numbers, names."""
        values: tuple[tuple[Value, str], ...] = (
            (True, "ein"),
            (False, "aus"),
            (5, "5"),
            (0.5, "0,5"),
            ("a", "a"),
        )
        for value, text in values:
            self.assertEqual(wording.setting(value), text)

    def test_differs(self) -> None:
        """Not by the last bit of a number, but by the kind of a value."""
        values: tuple[tuple[Value, Value, bool], ...] = (
            (0.1 + 0.2, 0.3, False),
            (5.0, 5, False),
            (5, 6, True),
            (0.3, 0.31, True),
            (True, False, True),
            ("a", "a", False),
            ("", "a", True),
            (math.nan, 1.0, True),
        )
        for value, default, expected in values:
            self.assertIs(differs(ParameterRecord("k", "t", value, default)), expected, (value, default))


class TimeTest(unittest.TestCase):
    """Times and durations."""

    def test_durations(self) -> None:
        """Rounded to seconds, hours only if there are any."""
        for secs, text in (
            (0.0, "0:00 min"),
            (59.6, "1:00 min"),
            (3599.0, "59:59 min"),
            (3723.0, "1:02:03 h"),
            (-5.0, "0:00 min"),
            (math.nan, "–"),
            (1e300, "–"),
        ):
            self.assertEqual(wording.duration(secs), text)

    def test_times(self) -> None:
        """With the day where it is another one; what is no time stays as it is."""
        time = "2026-11-21T14:00:05+01:00"
        self.assertEqual(wording.full_time(time), "21.11.2026 14:00:05")
        self.assertEqual(wording.clock(time, "2026-11-21T00:00:00+01:00"), "14:00:05")
        self.assertEqual(wording.clock(time, "2026-11-20T23:59:59+01:00"), "21.11.2026 14:00:05")
        self.assertEqual(wording.zone(time), "UTC+01:00")
        self.assertEqual(wording.zone("2026-11-21T14:00:05"), "")
        self.assertEqual(
            (wording.full_time("heute"), wording.full_time(""), wording.zone("x")), ("heute", "–", "")
        )


class TextTest(unittest.TestCase):
    """Texts of strangers."""

    def test_one_line(self) -> None:
        """No breaks, controls, directions, halves of letters; all else stays."""
        text = "a\n\nb\tc\x1b[31m\x9b1m\u202ed\u2028e\ud800f\u200dg ü 🍺\0"
        self.assertEqual(wording.one_line(text), "a b c [31m 1md efg ü 🍺")

    def test_shortened(self) -> None:
        """A sign says that there was more."""
        self.assertEqual(wording.shortened("abcdef", 6), "abcdef")
        self.assertEqual(wording.shortened("abcdefg", 6), "abcde…")


if __name__ == "__main__":
    unittest.main()
