"""`kubelor-backend run`: the demo program with a backend, started anew when a file of it changes."""

import os
import subprocess
import time
from pathlib import Path
from typing import Final, TypeAlias

from .places import SHELL_SITE, demo_program

#: How often files are looked at, seconds.
LOOK_SECS: Final = 0.5
#: The program leaves by itself after ten.
END_SECS: Final = 20.0

Seen: TypeAlias = dict[Path, tuple[int, int]]


def run_backend(folder: Path, watch: bool) -> int:
    """Runs until the window is closed. Returns the program's exit code."""
    environment = os.environ | {
        "KUBELOR_DEMO_BACKEND": str(folder.resolve()),
        "PYTHONDONTWRITEBYTECODE": "1",
        "PYTHONPATH": os.pathsep.join(filter(None, (str(SHELL_SITE), os.environ.get("PYTHONPATH")))),
    }
    command = [str(demo_program())]
    if not watch:
        return subprocess.run(command, env=environment, check=False).returncode
    while True:
        seen = look(folder)
        with subprocess.Popen(command, env=environment) as process:
            changed = _wait(process, folder, seen)
            if not changed:
                if process.returncode == 0:
                    return 0
                print(f"The program has ended with {process.returncode}. Waiting for a change.", flush=True)
                _wait_for_change(folder, seen)
            print("A file has changed: starting anew.", flush=True)
            _end(process)


def look(folder: Path) -> Seen:
    """Time and size of each file of the backend; what Python leaves behind does not count."""
    found: Seen = {}
    for path in folder.rglob("*"):
        if path.suffix == ".pyc" or any(part.startswith(".") for part in path.relative_to(folder).parts):
            continue
        try:
            status = path.stat()
        except OSError:  # gone meanwhile
            continue
        if path.is_file():
            found[path] = (status.st_mtime_ns, status.st_size)
    return found


def _wait(process: "subprocess.Popen[bytes]", folder: Path, seen: Seen) -> bool:
    """Waits for the end of the program, or for a change. True if it is a change."""
    while look(folder) == seen:
        try:
            process.wait(LOOK_SECS)
            return False
        except subprocess.TimeoutExpired:
            pass
    return True


def _wait_for_change(folder: Path, seen: Seen) -> None:
    while look(folder) == seen:
        time.sleep(LOOK_SECS)


def _end(process: "subprocess.Popen[bytes]") -> None:
    process.terminate()
    try:
        process.wait(END_SECS)
    except subprocess.TimeoutExpired:
        process.kill()
