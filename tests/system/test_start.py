"""The program comes up, and goes, as it should."""

import unittest

import panel


class StartTest(unittest.TestCase):
    """Start and end with a working backend."""

    def test_window_comes_up_and_closes(self) -> None:
        """The window shows what the backend wrote; closing it ends the program with 0."""
        with panel.remote() as program:
            program.wait_until_shown("Testbackend bereit")
            self.assertEqual(program.calls("gui_value_from_cpp"), ["GuiEnum.Ready None"])
            self.assertEqual(program.close(), 0)
