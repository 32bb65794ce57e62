"""Whoever refreshes a bath."""

import unittest

from controller.simulation.dosing import MARGIN, RATE, Dosing
from controller.simulation.plant import Liquid


class DosingTest(unittest.TestCase):
    """From the beginning of a test to its end."""

    def setUp(self) -> None:
        self.bath = Liquid(80.0, 20.0)
        self.dosing = Dosing()

    def advance(self, secs: float) -> None:
        """Lets seconds pass."""
        for _ in range(round(secs * 10)):
            self.dosing.advance(0.1)

    def test_nobody_there(self) -> None:
        """Nothing is added before the beginning and after the end."""
        self.advance(10.0)
        self.dosing.begin(self.bath, 60.0)
        self.dosing.end()
        self.advance(10.0)
        self.assertEqual(self.bath, Liquid(80.0, 20.0))

    def test_rate(self) -> None:
        """The conductivity rises steadily."""
        self.dosing.begin(self.bath, 60.0)
        self.advance(10.0)
        self.assertAlmostEqual(self.bath.conductivity, 20.0 + 10.0 * RATE)

    def test_stops_at_its_aim(self) -> None:
        """A little above the set point, and not beyond."""
        self.dosing.begin(self.bath, 21.0)
        self.advance(60.0)
        self.assertEqual(self.bath.conductivity, 21.0 + MARGIN)

    def test_strong_bath(self) -> None:
        """One that has enough is left alone."""
        self.dosing.begin(self.bath, 10.0)
        self.advance(10.0)
        self.assertEqual(self.bath.conductivity, 20.0)


if __name__ == "__main__":
    unittest.main()
