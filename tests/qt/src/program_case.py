"""Runs of the program's entry as a whole without a screen.

The test's command line: <entry host> <folder of the backend> <python>.
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

HOST, BACKEND, PYTHON = sys.argv.pop(1), sys.argv.pop(1), sys.argv.pop(1)
PATIENCE = 100
READY = "gui_value_from_cpp GuiEnum.Ready None"


class ProgramCase(unittest.TestCase):
    """Runs of the program, each with a folder of its own for settings, commands and environment file."""

    def setUp(self) -> None:
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
        return {
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
        } | environment

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
