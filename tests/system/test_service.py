"""The program as a service: its watchdog on a real display."""

import socket
import tempfile
import unittest
from pathlib import Path

from support import desktop, panel
from support.waiting import DEADLINE_SECS

# Long enough for drawing that two busy cores do.
PERIOD_SECS = 8
WATCHDOG = b"WATCHDOG=1"
STANDS = "Bleibt es dabei"


class ServiceTest(unittest.TestCase):
    """With a stand-in of the service manager."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        address = str(Path(self.enterContext(folder)) / "notify")
        self.manager = self.enterContext(socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM))
        self.manager.bind(address)
        self.manager.settimeout(DEADLINE_SECS)
        self.program = self.enterContext(
            panel.remote(NOTIFY_SOCKET=address, WATCHDOG_USEC=str(PERIOD_SECS * 1_000_000))
        )

    def _receive(self, wanted: bytes) -> None:
        """Receives up to a message that holds this line."""
        while wanted not in self.manager.recv(4096).split(b"\n"):
            pass

    def _is_fed(self) -> None:
        """The watchdog is fed with what is asked from now on: the next but one feed."""
        for _ in range(3):
            self._receive(WATCHDOG)
        self.assertFalse([line for line in self.program.log if STANDS in line])

    def test_window_that_nobody_sees(self) -> None:
        """A window that draws no frames needs none; back on the screen it draws them again."""
        self._receive(b"READY=1")
        self.program.wait_until_shown(panel.READY)
        self._is_fed()
        window = self.program.window
        desktop.xdotool("windowminimize", "--sync", window)
        self._is_fed()
        desktop.activate(window)
        self._is_fed()
        self.program.backend("from brovik.gui import Gui; Gui.message('Titel', 'Text', 'info')")
        self.program.wait_until_shown("Titel")
        self._is_fed()
        self.assertEqual(self.program.close(), 0)
        self._receive(b"STOPPING=1")
