"""Runs of the program's entry as a whole without a screen.

The test's command line: <entry host> <folder of the backend> <python>.
"""

import os
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from typing import IO, Self

HOST, BACKEND, PYTHON = sys.argv.pop(1), sys.argv.pop(1), sys.argv.pop(1)
PATIENCE = 100
# What a sanitizer's run is told.
SANITIZER = ("ASAN_OPTIONS", "UBSAN_OPTIONS", "LLVM_PROFILE_FILE")
READY = "gui_value_from_cpp GuiEnum.Ready None"


class Run:
    """A run of the program that a test talks to; leaving it ends the process."""

    def __init__(self, environment: dict[str, str]) -> None:
        # It lives as long as the run.
        self._process = subprocess.Popen(  # pylint: disable=consider-using-with
            [HOST],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            encoding="utf-8",
            env=environment,
        )
        self.lines: list[str] = []

    def __enter__(self) -> Self:
        return self

    def __exit__(self, *_reason: object) -> None:
        self._process.kill()
        self._process.communicate()

    @property
    def output(self) -> IO[str]:
        """All that the program writes, line by line."""
        assert self._process.stdout is not None
        return self._process.stdout

    def wait_for(self, text: str) -> str:
        """Reads on to the line that holds the text."""
        for line in self.output:
            self.lines.append(line)
            if text in line:
                return line
        raise AssertionError(f"{text!r} did not come:\n{''.join(self.lines)}")

    def send(self, number: signal.Signals) -> None:
        """Sends a signal."""
        self._process.send_signal(number)

    def tell(self, text: str) -> None:
        """Writes what the backend reads."""
        assert self._process.stdin is not None
        self._process.stdin.write(text)
        self._process.stdin.flush()

    def end(self) -> int:
        """Reads all that is left, and gives the exit code."""
        self.lines += self.output
        return self._process.wait(PATIENCE)


class ProgramCase(unittest.TestCase):
    """Runs of the program, each with a folder of its own for settings, commands and environment file."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.folder = Path(self.enterContext(folder))

    def write(self, name: str, text: str, mode: int = 0o644) -> Path:
        """Writes a file of the run."""
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, "utf-8")
        path.chmod(mode)
        return path

    def variables(self, backend: str, **environment: str) -> dict[str, str]:
        """The environment of a run."""
        return {name: os.environ[name] for name in SANITIZER if name in os.environ} | {
            "HOME": str(self.folder),
            "XDG_CONFIG_HOME": str(self.folder / "config"),
            "PATH": f"{self.folder}/bin:/usr/bin:/bin",
            "QT_QPA_PLATFORM": "offscreen",
            "QT_QUICK_BACKEND": "software",
            "PYTHONDONTWRITEBYTECODE": "1",
            "TEST_BACKEND": backend,
            "TEST_BACKEND_DIR": BACKEND,
            "TEST_PYTHON": PYTHON,
            "TEST_ENVIRONMENT": str(self.folder / "environment"),
            "TEST_SOCKET": str(self.folder / "raise.sock"),
            **environment,
        }

    def run_program(
        self, *arguments: str, backend: str = "ending", **environment: str
    ) -> subprocess.CompletedProcess[str]:
        """Runs the program to its end."""
        return subprocess.run(
            [HOST, *arguments],
            capture_output=True,
            encoding="utf-8",
            env=self.variables(backend, **environment),
            timeout=PATIENCE,
            check=False,
        )
