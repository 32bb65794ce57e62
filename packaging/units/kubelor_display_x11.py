#!/usr/bin/python3
"""Runs an X server with a window manager on it, and tells the service manager when the display is there.

Started by kubelor-display-x11.service. One process stays between the two and the service manager, which
listens only to the main process of the unit: all others belong to the login session.
"""

import os
import signal
import socket
import subprocess
import sys
from types import FrameType

RUNTIME = os.environ["RUNTIME_DIRECTORY"]
# Neither the server (-s 0) nor the panel (-dpms) ever blanks. All that the server logs goes to the journal.
SERVER = ["Xorg", ":0", "vt1", "-keeptty", "-noreset", "-nolisten", "tcp", "-s", "0", "-dpms"]
SERVER += ["-logfile", "/dev/null", "-verbose", "3", "-configdir", f"{RUNTIME}/xorg.conf.d"]
MANAGER = ["openbox", "--sm-disable", "--config-file", "/usr/share/kubelor/openbox.xml"]


def tell(state: str) -> None:
    """Tells the service manager, if one has started this."""
    if address := os.environ.get("NOTIFY_SOCKET"):
        with socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as manager:
            manager.sendto(state.encode(), f"\0{address[1:]}" if address.startswith("@") else address)


def end(_number: int, _frame: FrameType | None) -> None:
    """Leaves in order."""
    sys.exit(0)


def main() -> str:
    """Runs until one of the two ends, and says which."""
    signal.signal(signal.SIGTERM, end)
    ready, told = os.pipe()
    with subprocess.Popen([*SERVER, "-displayfd", str(told)], pass_fds=[told]) as server:
        try:
            os.close(told)
            if not os.read(ready, 1):
                return "Der X-Server startet nicht."
            with subprocess.Popen(MANAGER, env=os.environ | {"DISPLAY": ":0"}) as manager:
                try:
                    tell("READY=1")
                    os.waitid(os.P_ALL, 0, os.WEXITED | os.WNOWAIT)
                    return f"{'openbox' if server.poll() is None else 'Der X-Server'} ist zu Ende."
                finally:
                    manager.terminate()
        finally:
            server.terminate()


if __name__ == "__main__":
    sys.exit(main())
