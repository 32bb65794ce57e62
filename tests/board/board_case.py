"""What the tests on the board are made of: a panel that is up, saved once, from which each test goes on."""

import base64
import fcntl
import json
import os
import re
import shutil
import unittest
from collections.abc import Callable, Iterator
from contextlib import contextmanager
from enum import Enum
from pathlib import Path
from typing import Any

from machine import Machine
from picture import Picture
from waiting import wait_for

IMAGE = Path(os.environ["KUBELOR_BOARD"])
RESULTS = IMAGE / "results"
PROGRAM, DISPLAY = "kubelor.service", "kubelor-display.service"
#: The panel has more colours than the grey of an empty compositor, or a console.
PANEL_COLOURS = 30
#: Seconds of the board's clock after which what moves looks other than before.
STILL_SECS = 0.3
#: Where the automatic page has its button, and the look of the panel its own.
START, THEME = (400, 280), (776, 155)


class Drawing(Enum):
    """How the board draws. By software it draws quicker, and leaves out what has an effect."""

    SOFTWARE = "software"
    OPENGL = "rhi"

    @property
    def parameter(self) -> str:
        """What the kernel is told for it."""
        return f"systemd.setenv=QT_QUICK_BACKEND={self.value}"


def is_panel(picture: Picture) -> bool:
    """Whether this is the program's window, and not an empty screen."""
    return picture.colours() >= PANEL_COLOURS


class Board(Machine):
    """A machine with what the tests ask of it."""

    def show(self, unit: str, *names: str) -> dict[str, str]:
        """What the service manager knows of a unit."""
        text = self.shell(f"systemctl show {unit} {' '.join(f'-p {name}' for name in names)}")
        return dict(re.findall(r"(?m)^(\w+)=(.*)$", text))

    def value(self, unit: str, name: str) -> str:
        """One of these values."""
        return self.show(unit, name)[name]

    def memory(self, unit: str) -> int:
        """Bytes of memory that a unit has, with that of the session that its process is in."""
        group = self.shell(f"cut -d: -f3 /proc/{self.value(unit, 'MainPID')}/cgroup")
        return int(self.shell(f"cat /sys/fs/cgroup{group}/memory.current"))

    def uptime(self) -> float:
        """Seconds since the kernel's start, by the board's clock."""
        return float(self.shell("cut -d' ' -f1 /proc/uptime"))

    def since_boot(self, unit: str, name: str) -> float:
        """When something happened to a unit, in seconds since the kernel's start."""
        return int(self.value(unit, f"{name}TimestampMonotonic")) / 1e6

    def boot_id(self) -> str:
        """What tells this start of the kernel from all others."""
        return self.shell("cat /proc/sys/kernel/random/boot_id")

    def wait_until_restarted(self, before: str) -> None:
        """Waits for another start of the kernel than the one with this id."""

        def answers() -> bool:
            try:
                return self.shell.run("cat /proc/sys/kernel/random/boot_id", 10)[1] not in {"", before}
            except TimeoutError:
                return False

        wait_for("a restart", answers)

    def journal(self, *arguments: str) -> str:
        """Lines of the journal, with the seconds since the kernel's start."""
        return self.shell(f"journalctl --no-pager --quiet --output=short-monotonic {' '.join(arguments)}")

    def wait_for_journal(self, pattern: str, *arguments: str) -> str:
        """Waits for lines in the journal, and gives the first of them."""

        def line() -> str | None:
            found = re.search(f"(?m)^.*(?:{pattern}).*$", self.journal(*arguments))
            return found[0] if found else None

        return wait_for(f"in the journal: {pattern}", line)

    def wait_until_up(self, another_than: str = "") -> None:
        """Waits until the program is ready, in another process than this one."""

        def is_up() -> bool:
            state = self.show(PROGRAM, "ActiveState", "MainPID")
            return state["ActiveState"] == "active" and state["MainPID"] != another_than

        wait_for("the program is ready", is_up)
        self.wait_for_picture("the panel", is_panel)

    def plug_in_touch(self) -> None:
        """Connects the touch sensor, and waits until the display listens to it."""
        super().plug_in_touch()
        self.wait_for_journal("tagged by udev as: Touchscreen", "-t kubelor-display")

    def touch(self, x: int, y: int, seconds: float = 0.2) -> None:
        """Lays a finger on the panel, and lifts it after so many seconds of the board's clock."""
        self.lay_finger(x, y)
        self.let_pass(seconds)
        self.lift_finger()

    def let_pass(self, seconds: float) -> None:
        """Waits until so many seconds have passed by the board's clock."""
        end = self.uptime() + seconds
        wait_for(f"{seconds} s of the board", lambda: self.uptime() >= end)

    def wait_until_still(self) -> Picture:
        """Waits until nothing moves on the panel any more."""
        last = [self.picture()]

        def stands() -> bool:
            self.let_pass(STILL_SECS)
            last.append(self.picture())
            return last[-1].changed(last.pop(0)) == 0

        wait_for("a panel that stands still", stands)
        return last[0]

    def wait_for(self, what: str, condition: Callable[[], bool]) -> None:
        """Waits until something holds on the board."""
        wait_for(what, condition)

    def put(self, path: str, text: str) -> None:
        """Writes a file on the board."""
        encoded = base64.b64encode(text.encode()).decode()
        self.shell(f"mkdir -p $(dirname {path})\n: >{path}.base64")
        # A line of a console is no longer than 4095 characters.
        for start in range(0, len(encoded), 3000):
            self.shell(f"echo {encoded[start:start + 3000]} >>{path}.base64")
        self.shell(f"base64 -d <{path}.base64 >{path}; rm {path}.base64")


@contextmanager
def alone(name: str) -> Iterator[None]:
    """Keeps out the other tests that run at the same time, in processes of their own."""
    with (RESULTS / f"{name}.lock").open("w", encoding="utf-8") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        yield


def note(name: str, **figures: Any) -> None:
    """Keeps what was measured, for the table of the documentation."""
    path = RESULTS / "figures.json"
    with alone("figures"):
        kept = json.loads(path.read_text("utf-8")) if path.exists() else {}
        kept[name] = figures
        path.write_text(json.dumps(kept, indent=2, sort_keys=True) + "\n", "utf-8")
    print(f"{name}: " + ", ".join(f"{key} {value}" for key, value in figures.items()), flush=True)


def boot(work: Path, drawing: Drawing, kernel: str = "rw", kind: type[Board] = Board) -> Board:
    """A board that has been switched on just now."""
    shutil.rmtree(work, ignore_errors=True)
    return kind(IMAGE, work, kernel=f"{kernel} {drawing.parameter}")


def note_start(name: str, board: Board) -> None:
    """Keeps how long the board, which has come up, took to it, and its memory."""
    note(
        name,
        display_starts=board.since_boot(DISPLAY, "ExecMainStart"),
        display_ready=board.since_boot(DISPLAY, "ActiveEnter"),
        program_starts=board.since_boot(PROGRAM, "ExecMainStart"),
        first_picture=board.since_boot(PROGRAM, "ActiveEnter"),
        display_bytes=board.memory(DISPLAY),
        program_bytes=board.memory(PROGRAM),
    )


def saved_panel(drawing: Drawing) -> Path:
    """Where a board is saved whose panel is up; boots one if there is none."""
    folder = IMAGE / f"panel-{drawing.value}"
    with alone(folder.name):
        if not (folder / "saved").exists():
            save_panel(folder, drawing)
    return folder


def save_panel(folder: Path, drawing: Drawing) -> None:
    """Boots a board, and saves it there when its panel is up."""
    board = boot(folder, drawing)
    try:
        board.shell.wait()
        board.wait_until_up()
        board.keep_picture("panel")
        note_start(f"boot, drawn by {drawing.name.lower()}", board)
        (folder / "journal").write_text(board.journal("--boot"), "utf-8")
        board.save()
        (folder / "saved").touch()
    finally:
        board.close()


class BoardCase(unittest.TestCase):
    """Tests that each begin with a panel that is up. What they leave is in a folder of the results."""

    drawing = Drawing.SOFTWARE
    board: Board

    def setUp(self) -> None:
        RESULTS.mkdir(parents=True, exist_ok=True)
        self.work = RESULTS / self.id()
        shutil.rmtree(self.work, ignore_errors=True)
        self.board = self.begin()
        self.addCleanup(self.board.close)
        self.addCleanup(self._keep_journal)

    def begin(self) -> Board:
        """The board of a test."""
        # The kernel is told how to draw for the case that the board is started anew.
        return Board(IMAGE, self.work, saved_panel(self.drawing), kernel=f"rw {self.drawing.parameter}")

    def _keep_journal(self) -> None:
        (self.work / "disk.qcow2").unlink(missing_ok=True)
        if self.board.is_on:
            (self.work / "journal").write_text(self.board.journal("--boot"), "utf-8")

    def put_backend(self, folder: str, text: str) -> None:
        """Lets the board have this backend, and starts the program with it."""
        self.board.shell(f"rm -rf {folder}/controller")
        self.board.put(f"{folder}/controller/__init__.py", text)
        self.board.shell(f"systemctl restart {PROGRAM}")
        self.board.wait_until_up()

    def evidence(self, text: str) -> None:
        """Shows the line that proves it."""
        print(f"    {text}", flush=True)
