"""What a long run is blamed for."""

import tempfile
import unittest
from dataclasses import replace
from pathlib import Path

from samples import Sample, Stall, read_stalls, write_table
from verdict import findings, growth

STILL = Sample(0.0, 200_000, 20, 40, 0, 100, 0)


def days(*megabytes: float) -> list[Sample]:
    """A sample at noon of each day."""
    return [replace(STILL, hours=24.0 * day + 12, memory=int(mb * 1024)) for day, mb in enumerate(megabytes)]


class VerdictTest(unittest.TestCase):
    """Memory, stalls, actions and log."""

    def test_growth(self) -> None:
        """The first day does not count."""
        self.assertAlmostEqual(growth(days(100, 200, 202, 204)), 2.0, places=2)
        self.assertEqual(growth(days(100, 200)), 0.0)
        self.assertEqual(findings(days(100, 200, 200.9, 201.8), [], [], 1, 0), [])
        (found,) = findings(days(100, 200, 201.1, 202.2), [], [], 1, 0)
        self.assertIn("1.10 MB", found)

    def test_stalls(self) -> None:
        """What the machine was busy with is nobody's fault."""
        self.assertEqual(findings([], [Stall(1.0, 500, 90, 400), Stall(2.0, 100, 100, 0)], [], 1, 0), [])
        (found,) = findings([], [Stall(1.0, 500, 90, 399), Stall(2.0, 120, 1, 0)], [], 1, 0)
        self.assertIn("2 times, once for 120 of 120 ms", found)

    def test_missed_actions(self) -> None:
        """An operator who achieves little proves little."""
        self.assertEqual(findings([], [], [], 3, 1), [])
        self.assertEqual(findings([], [], [], 2, 1), ["1 of 3 actions came to nothing"])

    def test_log(self) -> None:
        """Each complaint is one."""
        self.assertEqual(findings([], [], ["[WARN ] x"], 1, 0), ["In the log: [WARN ] x"])


class FilesTest(unittest.TestCase):
    """What is read and written."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.folder = Path(self.enterContext(folder))

    def test_stalls(self) -> None:
        """A line without its end is still being written."""
        file = self.folder / "stalls"
        self.assertEqual(read_stalls(file), [])
        file.write_text("1.500 60 50 7\n2.5 1", "utf-8")
        self.assertEqual(read_stalls(file), [Stall(1.5, 60, 50, 7)])

    def test_table(self) -> None:
        """Names first."""
        write_table([STILL], self.folder / "table.csv")
        lines = (self.folder / "table.csv").read_text("utf-8").splitlines()
        self.assertEqual(lines[0], "hours,memory,threads,descriptors,stall,database,database_log")
        self.assertEqual(lines[1:], ["0.0,200000,20,40,0,100,0"])


if __name__ == "__main__":
    unittest.main()
