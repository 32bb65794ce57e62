#!/usr/bin/python3
"""The installed programs start, and find all that is loaded at run time."""

import os
import re
import shutil
import signal
import subprocess
import tempfile
import unittest
from pathlib import Path
from typing import Final

PATIENCE_SECS: Final = 120
#: What Qt logs of a picture that is there, and the program of its backend.
SIGNS: Final = {
    "first picture": "Frame rendered",
    "backend": "Interpreter mit Modul 'controller' initialisiert",
}
#: A module or a plug-in that is missing is told so.
FAULT: Final = re.compile(r"^\[(WARN |CRIT |FATAL)\]")


class ProgramsTest(unittest.TestCase):
    """Each program, for a user of its own."""

    def setUp(self) -> None:
        folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, folder)
        self.home = Path(folder)
        self.environment = {
            "HOME": folder,
            "LC_ALL": "C.UTF-8",
            "PATH": os.defpath,
            "QT_LOGGING_RULES": "qt.scenegraph.time.renderloop.debug=true",
            "QT_QPA_PLATFORM": "offscreen",
            "QT_QUICK_BACKEND": "software",
            "XDG_RUNTIME_DIR": folder,
        }

    def said(self, *command: str) -> str:
        """What a program says that comes to a good end."""
        done = subprocess.run(
            command, env=self.environment, capture_output=True, text=True, timeout=PATIENCE_SECS, check=False
        )
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    def test_versions(self) -> None:
        """Both programs are of one version."""
        versions = {self.said(name, "--version") for name in ("kubelor", "kubelor-demo")}
        self.assertEqual(len(versions), 1, versions)
        self.assertRegex(versions.pop(), r"^Kubelor \d+\n$")

    def test_demo(self) -> None:
        """The demo machine comes up with all its pictures and modules, and ends when it is told to."""
        with subprocess.Popen(
            ["kubelor-demo"], env=self.environment, stderr=subprocess.PIPE, text=True, encoding="utf-8"
        ) as program:
            signal.signal(signal.SIGALRM, lambda _number, _frame: program.kill())
            signal.alarm(PATIENCE_SECS)
            self.addCleanup(signal.alarm, 0)
            lines: list[str] = []
            awaited = set(SIGNS)
            assert program.stderr
            for line in program.stderr:
                lines.append(line)
                awaited -= {name for name, sign in SIGNS.items() if sign in line}
                if not awaited:
                    break
            program.terminate()
            lines += program.stderr
        log = "".join(lines)
        self.assertEqual((awaited, program.returncode), (set(), 0), log)
        self.assertEqual([line for line in lines if FAULT.match(line)], [])
        settings = self.home / ".config/kubelor-demo"
        self.assertTrue(settings.is_dir(), log)

    def test_reports(self) -> None:
        """The tool for reports finds its parts."""
        self.assertIn("BEFEHL", self.said("kubelor-bericht", "--help"))

    def test_kit(self) -> None:
        """A new backend passes its check, in an ordinary Python."""
        mine = str(self.home / "mine")
        self.said("kubelor-backend", "new", mine)
        self.assertIn("No fault found.", self.said("kubelor-backend", "check", mine))


if __name__ == "__main__":
    unittest.main(verbosity=2)
