"""Runs of a whole program without a screen."""

import subprocess
import tempfile
import unittest
from pathlib import Path

PATIENCE = 100


class ProgramCase(unittest.TestCase):
    """A folder for each run's settings, commands and environment file."""

    host: str
    backends: str
    python: str

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

    def variables(self, backend: str) -> dict[str, str]:
        """The whole environment of a run."""
        return {
            "HOME": str(self.folder),
            "XDG_CONFIG_HOME": str(self.folder / "config"),
            "PATH": f"{self.folder}/bin:/usr/bin:/bin",
            "QT_QPA_PLATFORM": "offscreen",
            "QT_QUICK_BACKEND": "software",
            "PYTHONDONTWRITEBYTECODE": "1",
            "TEST_BACKEND": backend,
            "TEST_BACKEND_DIR": self.backends,
            "TEST_PYTHON": self.python,
            "TEST_ENVIRONMENT": str(self.folder / "environment"),
            "TEST_SOCKET": str(self.folder / "raise.sock"),
        }

    def run_program(
        self, *arguments: str, backend: str = "ending", **environment: str
    ) -> subprocess.CompletedProcess[str]:
        """Runs the program to its end."""
        return subprocess.run(
            [self.host, *arguments],
            capture_output=True,
            encoding="utf-8",
            env=self.variables(backend) | environment,
            timeout=PATIENCE,
            check=False,
        )
