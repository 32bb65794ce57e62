"""The display goes while the program is there."""

import os
import unittest
from unittest.mock import patch

from support import panel
from support.desktop import Desktop


class DisplayLostTest(unittest.TestCase):
    """A display server that crashes."""

    def test_backend_says_farewell(self) -> None:
        """The program ends with it, and so does the backend, in order: the machine is switched off."""
        with patch.dict(os.environ), Desktop() as own, panel.remote() as program:
            program.wait_until_shown(panel.READY)
            program.backend("import atexit; atexit.register(print, 'Abschied', flush=True)")
            own.kill_display()
            self.assertEqual(program.wait_for_end(), 1)
            (line,) = (line for line in program.log if "Das Programm wird beendet." in line)
            self.assertRegex(line, r"^\[INFO \].* exit\(1\): ")
            self.assertIn("Abschied", program.log)
            self.assertFalse([line for line in program.log if "Das Ende wartet" in line])


if __name__ == "__main__":
    unittest.main()
