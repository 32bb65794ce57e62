"""The X server and its window manager, as stand-ins, and what the service manager hears of them."""

import os
import select
import signal
import socket
import subprocess
import tempfile
import unittest
from pathlib import Path

from units import UNITS

SCRIPT = UNITS / "kubelor_display_x11.py"
PATIENCE_SECS = 60
#: Tells that it is ready, on the descriptor that it was given, as soon as a line allows it to.
SERVER = """
while [[ $1 != -displayfd ]]; do shift; done
echo $$ >"$FOLDER/server"
read -r allowed <"$FOLDER/allow"
[[ $allowed == yes ]] || exit 1
echo 0 >&"$2"
exec cat "$FOLDER/never"
"""
#: Runs until its pipe is closed.
MANAGER = """
exec cat "$FOLDER/$DISPLAY"
"""


class DisplayTest(unittest.TestCase):
    """One process for the service manager, which looks after two."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.folder = Path(self.enterContext(folder))
        for name in ("allow", "never", ":0"):
            os.mkfifo(self.folder / name)
        for name, text in {"Xorg": SERVER, "openbox": MANAGER}.items():
            (self.folder / name).write_text(f"#!/bin/bash\n{text}", "utf-8")
            (self.folder / name).chmod(0o755)
        self.heard = self.enterContext(socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM))
        self.heard.bind(str(self.folder / "notify"))
        self.heard.settimeout(PATIENCE_SECS)
        # It is waited for in each test.
        # pylint: disable-next=consider-using-with
        self.display = subprocess.Popen(
            [SCRIPT],
            env=os.environ
            | {
                "FOLDER": str(self.folder),
                "NOTIFY_SOCKET": str(self.folder / "notify"),
                "PATH": f"{self.folder}:{os.environ['PATH']}",
                "RUNTIME_DIRECTORY": str(self.folder),
            },
            stderr=subprocess.PIPE,
            encoding="utf-8",
        )
        self.addCleanup(self.display.kill)

    def allow(self, answer: str) -> None:
        """Lets the server be ready, or fail, when it has come so far; nothing has been told before."""
        with (self.folder / "allow").open("w", encoding="utf-8") as pipe:
            self.assertEqual(self.told(), b"")
            pipe.write(f"{answer}\n")

    def told(self) -> bytes:
        """What the service manager has heard, without waiting for it."""
        waiting, _, _ = select.select([self.heard], [], [], 0)
        return self.heard.recv(100) if waiting else b""

    def start(self) -> int:
        """Waits until the display is there; the open pipe of the window manager."""
        self.allow("yes")
        self.assertEqual(self.heard.recv(100), b"READY=1")
        return os.open(self.folder / ":0", os.O_WRONLY)

    def check_end(self, code: int, said: str) -> None:
        """It waits for both before it ends."""
        self.assertEqual(self.display.communicate(timeout=PATIENCE_SECS)[1], said)
        self.assertEqual(self.display.returncode, code)
        self.assertFalse(Path("/proc", (self.folder / "server").read_text("utf-8").strip()).exists())
        self.assertEqual(self.told(), b"")

    def test_window_manager_ends(self) -> None:
        """The display ends with its window manager."""
        os.close(self.start())
        self.check_end(1, "openbox ist zu Ende.\n")

    def test_server_ends(self) -> None:
        """The display ends with its server."""
        self.addCleanup(os.close, self.start())
        os.kill(int((self.folder / "server").read_text("utf-8")), signal.SIGKILL)
        self.check_end(1, "Der X-Server ist zu Ende.\n")

    def test_stopped(self) -> None:
        """An ordered end is none of these."""
        self.addCleanup(os.close, self.start())
        self.display.terminate()
        self.check_end(0, "")

    def test_server_fails(self) -> None:
        """A server that does not come up is no display."""
        self.allow("no")
        self.check_end(1, "Der X-Server startet nicht.\n")


if __name__ == "__main__":
    unittest.main()
