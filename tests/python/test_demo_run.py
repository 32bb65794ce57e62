"""A whole run of the demo machine, as the screens see it."""

import unittest

import demo_path  # pylint: disable=unused-import
import _probe
from brovik.auto import Auto, AutoEnum

from demo_support import RunningCase
import controller


class ThreadedRunTest(RunningCase):
    """Through `init`, the entry functions and the machine's own thread."""

    def test_whole_run(self) -> None:
        """One press, and some moments later 100 percent on the screens."""
        self.start(factor=1000)
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(lambda: Auto.active, "start")
        self.until(lambda: not Auto.active, "end")
        # The end is shown piece by piece, and from here on nothing else is.
        self.handled()
        _probe.settle()
        self.assertEqual(_probe.qml("Auto", "progress"), 100)
        self.assertEqual(_probe.qml("Gui", "status"), "Bereit")


if __name__ == "__main__":
    unittest.main()
