"""The automatic run on the demo machine, as the operator sees it."""

import tempfile
import unittest
from pathlib import Path

import demo_run
from support import panel
from support.album import Album
from support.automatic import ABORT, START, progress
from support.controls import is_on
from support.look import TO_DARK, TO_LIGHT

INTENSIVE = "Intensivreinigung durchführen"


class RunTest(unittest.TestCase):
    """Start, progress, abort."""

    def test_short_press_does_nothing(self) -> None:
        """A press that ends before the second has passed starts no run."""
        with panel.remote() as program:
            program.press_and_hold(START, 0.3)
            program.press_and_hold(START)
            program.wait_for("the press", lambda: program.calls("auto_value_from_cpp"))
            self.assertEqual(program.calls("auto_value_from_cpp"), ["AutoEnum.Toggle None"])

    def test_progress_and_abort(self) -> None:
        """The run goes on by itself until the operator aborts it, which leaves everything off and free."""
        with panel.demo(10) as program:
            program.press_and_hold(START)
            program.wait_until_shown(ABORT)
            first = program.wait_for("progress", lambda: max(progress(program), 0))
            program.wait_for("more progress", lambda: progress(program) > first)
            program.press_and_hold(ABORT)
            program.wait_until_shown(START)
            program.wait_until_shown("Bereit")
            self.assertLess(progress(program), 100)
            self.assertEqual(program.close(), 0)

    def test_switch_follows_the_backend(self) -> None:
        """The demo machine takes the wish; a backend that does not leaves the switch where it was."""
        with panel.demo(1) as program:
            program.click(INTENSIVE)
            program.wait_for("the switch", lambda: is_on(program, INTENSIVE))
            program.wait_until_shown("Intensivreinigung starten")
        with panel.remote() as program:
            program.click(INTENSIVE)
            program.wait_for("the wish", lambda: program.calls("settings_from_cpp"))
            self.assertEqual(program.calls("settings_from_cpp"), ["SettingsEnum.intense_cleaning True"])
            program.wait_for("the switch back", lambda: not is_on(program, INTENSIVE))
            program.wait_until_shown(START)

    def test_theme_is_switched(self) -> None:
        """The button beside the tabs switches the theme there and back."""
        with panel.remote() as program:
            program.click(TO_LIGHT)
            program.click(TO_DARK)
            program.wait_until_shown(TO_LIGHT)

    def test_whole_cleaning(self) -> None:
        """The run that the demo script shows reaches 100 %, with a picture in each theme at each stop."""
        # enterContext() ends it with the test.
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        folder = Path(self.enterContext(directory))
        with panel.demo(60) as program:
            demo_run.run_cleaning(program, Album(folder))
        pictures = sorted(path.name for path in folder.iterdir())
        self.assertEqual(len(pictures), 2 * (len(demo_run.STOPS) + 2))
        self.assertEqual(pictures[0], "01-bereit-dunkel.png")
