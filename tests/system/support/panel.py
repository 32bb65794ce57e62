"""The program under test: its process, its log, its screens and its backend."""

import os
import shutil
import socket
import subprocess
import tempfile
import threading
from collections.abc import Callable
from pathlib import Path
from types import TracebackType

from support import accessible, desktop
from support.accessible import Node
from support.waiting import DEADLINE_SECS, T, wait_for

REMOTE_BACKEND = Path(__file__).parents[1] / "remote"
DEMO_MACHINE = Path(__file__).parents[3] / "demo"
TITLE = "Brovik Kubelor"
# What the backend `remote` shows when it has started.
READY = "Testbackend bereit"
# Below the configuration directory.
SETTINGS_FILE = Path("kubelor-demo/BrovikGmbH/Kubelor.ini")

# The page says one second; the margin is for a press that a busy machine handles late.
HOLD_SECS = 1.5


class Panel:
    """A run of `kubelor-demo` with the given backend, as a context manager: leaving it ends the process."""

    def __init__(self, backend: Path, *arguments: str, **environment: str) -> None:
        self.directory = Path(tempfile.mkdtemp(prefix="kubelor-panel-"))
        self._screen = self.directory / "screen.sock"
        self._command = [os.environ["KUBELOR_DEMO"], *arguments]
        preloaded = [os.environ["KUBELOR_SCREEN_READER"], *filter(None, [environment.pop("LD_PRELOAD", "")])]
        self._environment = os.environ | {
            "LD_PRELOAD": ":".join(preloaded),
            "KUBELOR_SCREEN": str(self._screen),
            # No question after a run because of a stick in this computer.
            "BROVIK_DEMO_STICK": "",
            "KUBELOR_DEMO_BACKEND": str(backend),
            "KUBELOR_DEMO_SOCKET": str(self.directory / "raise.sock"),
            "KUBELOR_TEST_SOCKET": str(self.directory / "remote.sock"),
            "XDG_CONFIG_HOME": str(self.directory),
            **environment,
        }
        self._lines: list[str] = []
        self._process: subprocess.Popen[str] | None = None
        self._reader = threading.Thread(target=self._read, daemon=True)

    def __enter__(self) -> "Panel":
        # It runs until __exit__().
        self._process = subprocess.Popen(  # pylint: disable=consider-using-with
            self._command,
            env=self._environment,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
            errors="replace",
        )
        self._reader.start()
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        if error is not None:
            print("\n".join(["The program's log:", *self._lines[-200:]]))
        self.process.kill()
        self.process.wait()
        self._reader.join()
        assert self.process.stdout is not None
        self.process.stdout.close()
        shutil.rmtree(self.directory, ignore_errors=True)

    @property
    def process(self) -> subprocess.Popen[str]:
        """The running or ended process."""
        assert self._process is not None, "the program was not started"
        return self._process

    def _read(self) -> None:
        assert self.process.stdout is not None
        for line in self.process.stdout:
            self._lines.append(line.rstrip("\n"))

    # The log

    @property
    def log(self) -> list[str]:
        """The lines that the program has printed so far."""
        return list(self._lines)

    def wait_for_log(self, text: str, deadline: float = DEADLINE_SECS) -> str:
        """Waits for a line that holds the text, and gives it."""
        return self.wait_for(
            f"log line with {text!r}",
            lambda: next((line for line in self.log if text in line), None),
            deadline,
        )

    def wait_for_end(self, deadline: float = DEADLINE_SECS) -> int:
        """Waits until the program has ended by itself, and gives its exit code."""
        code = self.process.wait(deadline)
        self._reader.join()
        return code

    # The screens

    def find(self, name: str, role: str | None = None) -> Node | None:
        """What shows under that exact name, if anything does."""
        return next((node for node in self.nodes() if node.name == name and role in (None, node.role)), None)

    def nodes(self) -> list[Node]:
        """All that shows, in the order of the screen's tree."""
        return accessible.read(self._screen)

    def wait_until_shown(self, name: str, role: str | None = None, deadline: float = DEADLINE_SECS) -> Node:
        """Waits until something shows under that exact name."""
        try:
            return self.wait_for(f"a {role or 'thing'} {name!r}", lambda: self.find(name, role), deadline)
        except AssertionError as error:
            raise AssertionError(f"{error}; there is {list(filter(None, self.names()))}") from None

    def wait_until_gone(self, name: str, role: str | None = None) -> None:
        """Waits until nothing shows under that name."""
        self.wait_for(f"the end of {name!r}", lambda: self.find(name, role) is None)

    def wait_for(self, what: str, condition: Callable[[], T | None], deadline: float = DEADLINE_SECS) -> T:
        """Waits for a condition on the running program; its end is a failure."""

        def holds() -> T | None:
            if self.process.poll() is not None:
                raise AssertionError(f"the program ended with {self.process.returncode}, before {what}")
            return condition()

        return wait_for(what, holds, deadline)

    def names(self) -> list[str]:
        """All texts that show."""
        return [node.name for node in self.nodes()]

    def click(self, name: str, role: str | None = None) -> None:
        """Waits for what has that name, and clicks on its middle."""
        desktop.click(*self.wait_until_shown(name, role).box.middle)

    def open_settings(self, page: str) -> None:
        """Shows that page of the settings."""
        self.click("Settings", "page tab")
        self.click("Seite der Einstellungen")
        self.click(page, "menu item")
        self.wait_until_gone(page, "menu item")

    def press_and_hold(self, name: str, seconds: float = HOLD_SECS) -> None:
        """Waits for what has that name, and holds the left button on it."""
        desktop.press_and_hold(*self.wait_until_shown(name).box.middle, seconds)

    @property
    def window(self) -> str:
        """The X id of the main window."""
        return self.window_titled(TITLE)

    def window_titled(self, title: str) -> str:
        """Waits for a window of the program with that title, and gives its X id."""
        return self.wait_for(f"the window {title}", lambda: self._search_windows(title))[0]

    def _search_windows(self, title: str) -> list[str]:
        command = [
            "xdotool",
            "search",
            "--all",
            "--onlyvisible",
            "--pid",
            str(self.process.pid),
            "--name",
            f"^{title}$",
        ]
        return subprocess.run(command, capture_output=True, text=True, check=False).stdout.split()

    def resize(self, width: int, height: int) -> None:
        """Gives the main window this size, and waits until it has it."""
        desktop.xdotool("windowsize", self.window, width, height)
        wanted = {f"WIDTH={width}", f"HEIGHT={height}"}
        geometry = ("getwindowgeometry", "--shell", self.window)
        self.wait_for("the window's size", lambda: wanted <= set(desktop.xdotool(*geometry).split()))

    def wait_until_still(self) -> None:
        """Waits until nothing moves in the main window."""
        desktop.wait_until_still(self.window)

    def close(self) -> int:
        """Closes the main window as the window manager does, and gives the exit code."""
        subprocess.run(["wmctrl", "-i", "-c", self.window], check=True)
        return self.wait_for_end()

    # The backend `remote`

    def backend(self, code: str, deadline: float = DEADLINE_SECS) -> str:
        """Runs Python code in the backend, on a thread of its own, and gives what it leaves in `result`."""
        with socket.socket(socket.AF_UNIX) as connection:
            connection.settimeout(deadline)
            connection.connect(self._environment["KUBELOR_TEST_SOCKET"])
            connection.sendall(code.encode())
            connection.shutdown(socket.SHUT_WR)
            with connection.makefile("r", encoding="utf-8") as stream:
                answer = stream.read()
        if not answer.startswith("ok "):
            raise AssertionError(f"in the backend: {answer}")
        return answer.removeprefix("ok ")

    def calls(self, function: str) -> list[str]:
        """The calls of that entry function in the log so far, as `Enum.Member value`."""
        start = f"CALL {function} "
        return [line.removeprefix(start) for line in self.log if line.startswith(start)]


def store_window(configuration: Path, content: bytes) -> Path:
    """Writes the settings file of a program with that configuration directory, and gives its path."""
    file = configuration / SETTINGS_FILE
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_bytes(content)
    return file


def remote(*arguments: str, **environment: str) -> Panel:
    """The program with the backend that does what the test says.

    With KUBELOR_TEST_RAISING in the environment all its entry functions fail and forward it.
    """
    return Panel(REMOTE_BACKEND, *arguments, **environment)


def demo(time_factor: int, *arguments: str, **environment: str) -> Panel:
    """The program with the demo machine, that many times faster than real."""
    return Panel(DEMO_MACHINE, *arguments, BROVIK_DEMO_TIME_FACTOR=str(time_factor), **environment)
