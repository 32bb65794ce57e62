"""A desktop of its own for one test process: display, window manager, D-Bus session and input."""

import os
import shutil
import subprocess
import tempfile
from pathlib import Path
from types import TracebackType

from support.waiting import hold, wait_for

_SIZE = (1000, 1400)
_SCREEN = f"{_SIZE[0]}x{_SIZE[1]}x24"


class Desktop:
    """Xvfb, openbox and a D-Bus session, to which this process' environment points; a context manager."""

    def __init__(self) -> None:
        self.directory = Path(tempfile.mkdtemp(prefix="kubelor-desktop-"))
        self._servers: list[subprocess.Popen[bytes]] = []

    def __enter__(self) -> "Desktop":
        os.environ |= {
            "XDG_CACHE_HOME": str(self._folder("cache")),
            "XDG_CONFIG_HOME": str(self._folder("config")),
            "XDG_DATA_HOME": str(self._folder("data")),
            "XDG_RUNTIME_DIR": str(self._folder("runtime")),
            "QT_QPA_PLATFORM": "xcb",
            "QT_ENABLE_HIGHDPI_SCALING": "0",
            "QSG_RHI_BACKEND": "opengl",
            "LIBGL_ALWAYS_SOFTWARE": "1",
        }
        # A session that is there already must not be used, nor found by what is started here.
        for name in ("WAYLAND_DISPLAY", "SESSION_MANAGER", "AT_SPI_BUS_ADDRESS"):
            os.environ.pop(name, None)
        try:
            # A reset after its last client has gone would take a client along that is just coming.
            os.environ["DISPLAY"] = ":" + self._start_reporting(
                "Xvfb", "-screen", "0", _SCREEN, "-nolisten", "tcp", "-noreset", report="-displayfd {}"
            )
            os.environ["DBUS_SESSION_BUS_ADDRESS"] = self._start_reporting(
                "dbus-daemon", "--session", "--nofork", report="--print-address={}"
            )
            self._start("openbox", "--sm-disable")
            wait_for("the window manager", lambda: _succeeds("wmctrl", "-m"))
        except BaseException:
            self._stop()
            raise
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        self._stop()

    def kill_display(self) -> None:
        """Ends the X server as if it had crashed."""
        self._servers[0].kill()

    def _folder(self, name: str) -> Path:
        folder = self.directory / name
        folder.mkdir(mode=0o700)
        return folder

    def _start(self, *command: str, keep: tuple[int, ...] = ()) -> None:
        log = (self.directory / f"{command[0]}.log").open("wb")
        with log:
            self._servers.append(
                # They run until the desktop ends.
                subprocess.Popen(  # pylint: disable=consider-using-with
                    command, stdin=subprocess.DEVNULL, stdout=log, stderr=log, pass_fds=keep
                )
            )

    def _start_reporting(self, *command: str, report: str) -> str:
        """Starts a server that writes its address to a descriptor when it is ready; gives the address."""
        reading, writing = os.pipe()
        with open(reading, encoding="ascii") as answer:
            try:
                self._start(*command, *report.format(writing).split(), keep=(writing,))
            finally:
                os.close(writing)
            address = answer.readline().strip()
        if not address:
            raise AssertionError(f"{command[0]} did not start, see {self.directory}")
        return address

    def _stop(self) -> None:
        for server in reversed(self._servers):
            server.terminate()
            server.wait()
        shutil.rmtree(self.directory, ignore_errors=True)


def _succeeds(*command: str) -> bool:
    return subprocess.run(command, capture_output=True, check=False).returncode == 0


def xdotool(*arguments: str | int) -> str:
    """Sends real X events or asks the server; gives what xdotool prints."""
    command = ["xdotool", *map(str, arguments)]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def screenshot(path: Path, window: str = "root") -> None:
    """Saves a picture of the screen or of the window with that id."""
    subprocess.run(["import", "-window", window, str(path)], check=True)


def pixels(window: str) -> bytes:
    """What the window with that id shows."""
    return subprocess.run(["import", "-window", window, "rgb:-"], check=True, capture_output=True).stdout


def wait_until_still(window: str) -> None:
    """Waits until two pictures in a row are the same: a popup on its way out takes clicks along."""
    seen = [b""]

    def still() -> bool:
        seen.append(pixels(window))
        return seen[-1] == seen[-2]

    wait_for("the end of an animation", still)


def click(x: int, y: int) -> None:
    """Presses and releases the left button there."""
    xdotool("mousemove", x, y, "click", 1)


def scroll(x: int, y: int, clicks: int) -> None:
    """Turns the wheel there, down if `clicks` is positive."""
    button = 5 if clicks > 0 else 4
    xdotool("mousemove", x, y, "click", "--repeat", abs(clicks), "--delay", 5, button)


def activate(window: str) -> None:
    """Brings the window with that id before the others."""
    xdotool("windowactivate", "--sync", window)


def park_pointer() -> None:
    """Moves the pointer to the last pixel of the screen, where no window is."""
    xdotool("mousemove", *(side - 1 for side in _SIZE))


def press_and_hold(x: int, y: int, seconds: float) -> None:
    """Presses the left button there for that long and releases it."""
    xdotool("mousemove", x, y, "mousedown", 1)
    try:
        hold(seconds)
    finally:
        xdotool("mouseup", 1)


def type_text(text: str) -> None:
    """Types on the keyboard."""
    xdotool("type", "--delay", 20, text)


def press_key(name: str) -> None:
    """Presses a key by its X name, such as Return."""
    xdotool("key", name)
