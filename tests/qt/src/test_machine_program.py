"""The program as it is installed on the machine: test_machine_program.py <program>."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM = sys.argv.pop(1)
BACKEND = Path("/opt/brovik/kb/py")
PATIENCE = 100


class MachineProgramTest(unittest.TestCase):
    """Its own paths, which nothing outside of it changes."""

    @unittest.skipIf(BACKEND.exists(), "the machine's backend would run")
    def test_looks_for_the_backend_of_the_machine(self) -> None:
        """Whatever the demo's variables say. A stub run, which asks nobody and shows nothing."""
        with tempfile.TemporaryDirectory() as folder:
            run = subprocess.run(
                [PROGRAM, "--make-stubs"],
                capture_output=True,
                encoding="utf-8",
                env={
                    "HOME": folder,
                    "PATH": "",
                    "QT_QPA_PLATFORM": "offscreen",
                    "KUBELOR_DEMO_BACKEND": folder,
                },
                timeout=PATIENCE,
                check=False,
            )
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertIn(f"] BROVIK_PY_DIR: {BACKEND}\n", run.stderr)
        self.assertIn("ModuleNotFoundError: No module named 'controller'", run.stderr)


if __name__ == "__main__":
    unittest.main(verbosity=2)
