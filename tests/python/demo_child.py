"""The backend in a process of its own, changing one parameter until it is killed."""

import threading
import unittest
from itertools import count

import demo_path  # pylint: disable=unused-import
import controller
from brovik.settings import SettingsEnum, SettingsValues


class Child(unittest.TestCase):
    """Counts on from the number that is stored."""

    def test_until_killed(self) -> None:
        """Sends as an operator does, but faster."""
        controller.init(False)
        stored = SettingsValues.lw_lauge_name
        pause = threading.Event()
        for number in count(int(stored) + 1 if stored.isdigit() else 1):
            controller.settings_from_cpp(SettingsEnum.lw_lauge_name, str(number))
            pause.wait(0.0005)
