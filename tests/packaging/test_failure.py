"""What follows a failure of the program or its display."""

import os
import tempfile
import unittest
from pathlib import Path

from units import UNITS, run_script

SCRIPT = UNITS / "kubelor-failure"
# States are files, one for each unit, which hold the state and the job.
SYSTEMCTL = """
case "$1" in
show)
    read -r state job <"$UNITS/$4"
    case "$3" in
    --property=ActiveState) echo "$state" ;;
    --property=Job) [ -z "$job" ] || echo "$job" ;;
    esac
    ;;
*) echo "$*" >>"$UNITS/calls" ;;
esac
"""
FALLBACK = "--no-block start kubelor-fallback.service\n"


class FailureTest(unittest.TestCase):
    """With a service manager of the test's."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.folder = Path(self.enterContext(folder))
        command = self.folder / "systemctl"
        command.write_text("#!/bin/sh\n" + SYSTEMCTL, "utf-8")
        command.chmod(0o755)
        self.calls = self.folder / "calls"

    def _calls(self, program: str, display: str) -> str:
        self.calls.write_text("", "utf-8")
        for unit, state in {"kubelor": program, "kubelor-display": display}.items():
            (self.folder / f"{unit}.service").write_text(f"{state}\n", "utf-8")
        run = run_script(SCRIPT, UNITS=str(self.folder), PATH=f"{self.folder}:{os.environ['PATH']}")
        self.assertEqual([run.returncode, run.stderr], [0, ""])
        return self.calls.read_text("utf-8")

    def test_given_up(self) -> None:
        """Neither the program on its display nor the display is started any more: the fall-back screen."""
        for program, display in (("failed", "active"), ("inactive", "failed"), ("failed", "failed")):
            with self.subTest(program=program, display=display):
                self.assertEqual(self._calls(program, display), FALLBACK)

    def test_comes_back(self) -> None:
        """A program that fails with its display comes back with it; what is about to start is no failure."""
        for program, display in (
            ("failed", "activating"),
            ("failed", "activating 12"),
            ("failed 7", "active"),
            ("activating", "active"),
            ("inactive", "failed 12"),
            ("active", "active"),
        ):
            with self.subTest(program=program, display=display):
                self.assertEqual(self._calls(program, display), "")


if __name__ == "__main__":
    unittest.main()
