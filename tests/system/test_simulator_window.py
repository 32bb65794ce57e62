"""The simulator's window on a real desktop."""

import subprocess
import unittest

from support import desktop, panel
from support.panel import Panel

TITLE = "Simulator"


def ask(*command: str) -> list[str]:
    """The X ids that xdotool answers with; none if there are none."""
    return subprocess.run(["xdotool", *command], capture_output=True, text=True, check=False).stdout.split()


def is_visible(window: str) -> bool:
    """Whether a window with the simulator's title is there and not minimised."""
    return window in ask("search", "--onlyvisible", "--name", f"^{TITLE}$")


def has_focus(window: str) -> bool:
    """Whether keys go to that window."""
    return ask("getactivewindow") == [window]


class SimulatorWindowTest(unittest.TestCase):
    """How it comes and how it comes back."""

    def start(self) -> tuple[Panel, str]:
        """The program with the simulator, and the X id of its window."""
        program = self.enterContext(panel.remote())
        program.wait_until_shown(panel.READY)
        program.backend("from brovik.simulator import Simulator; Simulator.enabled = True")
        return program, program.window_titled(TITLE)

    def test_gear_brings_a_minimised_window_back(self) -> None:
        """It shows again, and has the focus."""
        program, window = self.start()
        desktop.xdotool("windowminimize", "--sync", window)
        program.wait_for("its disappearance", lambda: not is_visible(window))
        program.click("Simulator", "push button")
        program.wait_for("its return", lambda: is_visible(window))
        program.wait_for("its focus", lambda: has_focus(window))

    def test_gear_brings_a_covered_window_back(self) -> None:
        """It comes before the main window."""
        program, window = self.start()
        desktop.activate(program.window)
        program.click("Simulator", "push button")
        program.wait_for("its focus", lambda: has_focus(window))


if __name__ == "__main__":
    unittest.main()
