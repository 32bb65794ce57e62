"""Which saved charts go first."""

import unittest
from datetime import datetime, timedelta

from controller.chart_limits import ChartLimits, is_unnamed
from controller.saved_charts import RECORDED, ChartInfo

NOW = datetime(2026, 11, 22, 12)


def chart(name: str, days: int) -> ChartInfo:
    """A chart with a name of its own."""
    return ChartInfo(name, "success", "", (NOW - timedelta(days=days)).strftime(RECORDED), 300)


def unnamed(days: int) -> ChartInfo:
    """A chart with the name that was proposed."""
    recorded = (NOW - timedelta(days=days)).strftime(RECORDED)
    return chart(f"Automatikbetrieb {recorded}:07", days)


class ChartLimitsTest(unittest.TestCase):
    """Number, age and order."""

    def test_names(self) -> None:
        """The proposed name is that of the recording's start."""
        self.assertTrue(is_unnamed(unnamed(3)))
        self.assertFalse(is_unnamed(chart("Fass 7", 3)))
        self.assertFalse(is_unnamed(chart("Fass 01.02.2020 10:00:00", 3)))
        self.assertFalse(is_unnamed(ChartInfo("a", "", "", "", 0)))

    def test_number(self) -> None:
        """Unnamed ones go before named ones, the oldest first."""
        charts = [chart("neu", 1), chart("alt", 9), unnamed(2), unnamed(5)]
        surplus = [unnamed(5).name, unnamed(2).name, "alt", "neu"]
        for number in range(1, 6):
            with self.subTest(number):
                limits = ChartLimits(number, 0)
                self.assertEqual(limits.surplus(charts, NOW), surplus[: max(0, 4 - number)])

    def test_age(self) -> None:
        """What is older goes, whatever its name; to the minute."""
        charts = [chart("neu", 9), chart("genau", 10), chart("alt", 11), unnamed(12)]
        self.assertEqual(ChartLimits(0, 10).surplus(charts, NOW), [unnamed(12).name, "alt"])
        later = NOW + timedelta(minutes=1)
        self.assertEqual(ChartLimits(0, 10).surplus(charts[:3], later), ["alt", "genau"])

    def test_a_clock_that_is_ahead(self) -> None:
        """It costs two charts for each one that is saved under it, not all that there are."""
        charts = [chart(str(days), days) for days in range(1, 9)]
        for years_ahead in (1, 100):
            with self.subTest(years_ahead):
                wrong = NOW + timedelta(days=365 * years_ahead)
                self.assertEqual(ChartLimits(0, 10).surplus(charts, wrong), ["8", "7"])
                self.assertEqual(ChartLimits(4, 10).surplus(charts, wrong), ["8", "7", "6", "5"])

    def test_both(self) -> None:
        """What goes by its age makes room."""
        charts = [chart("a", 1), chart("b", 2), chart("alt", 11)]
        self.assertEqual(ChartLimits(2, 10).surplus(charts, NOW), ["alt"])

    def test_no_limit(self) -> None:
        """0 keeps all."""
        self.assertEqual(ChartLimits(0, 0).surplus([chart(str(n), n * 1000) for n in range(9)], NOW), [])

    def test_without_a_date(self) -> None:
        """What bears none has no age, and goes before others of its kind if there are too many."""
        strange = ChartInfo("x", "", "", "irgendwann", 0)
        self.assertEqual(ChartLimits(0, 10).surplus([strange], NOW), [])
        self.assertEqual(ChartLimits(1, 10).surplus([chart("a", 9), strange], NOW), ["x"])


if __name__ == "__main__":
    unittest.main()
