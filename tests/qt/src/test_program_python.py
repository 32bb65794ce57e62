"""Python inside the whole program: test_program_python.py <entry host> <backend> <python>."""

import os
import signal
import subprocess
import sys
import unittest

from program_case import HOST, PATIENCE, PYTHON, READY, ProgramCase


class PythonTest(ProgramCase):
    """What the interpreter is given by the program around it."""

    def test_virtual_environment(self) -> None:
        """Prefix and packages are those of the environment that the interpreter's path lies in."""
        home = os.path.dirname(os.path.realpath(PYTHON))
        self.write("venv/pyvenv.cfg", f"home = {home}\ninclude-system-site-packages = false\n")
        packages = f"venv/lib/python{sys.version_info.major}.{sys.version_info.minor}/site-packages"
        package = self.write(f"{packages}/package_of_the_environment.py", "")
        interpreter = self.folder / "venv/bin/python3"
        interpreter.parent.mkdir()
        interpreter.symlink_to(PYTHON)
        run = self.run_program("--make-stubs", backend="environment", TEST_PYTHON=str(interpreter))
        self.assertEqual(run.returncode, 0, run.stderr)
        for line in (
            f"argv {interpreter}",
            f"executable {interpreter}",
            f"prefix {self.folder}/venv",
            f"base prefix {sys.base_prefix}",
            f"package {package}",
        ):
            self.assertIn(line, run.stdout.splitlines())

    def test_print_is_seen_at_once(self) -> None:
        """Who reads the program's streams has a text, even half a line, by the time that print() is back."""
        streams = {name: os.pipe() for name in ("stdout", "stderr")}
        reading = {f"TEST_{name.upper()}": str(ends[0]) for name, ends in streams.items()}
        report = self.folder / "report"
        try:
            subprocess.run(
                [HOST, "--make-stubs"],
                stdout=streams["stdout"][1],
                stderr=streams["stderr"][1],
                pass_fds=[ends[0] for ends in streams.values()],
                env=self.variables("printing", TEST_REPORT=str(report), **reading),
                timeout=PATIENCE,
                check=True,
            )
        finally:
            for ends in streams.values():
                os.close(ends[0])
                os.close(ends[1])
        self.assertEqual(report.read_text("utf-8"), "stdout: sofort\nstderr: sofort\n")

    def test_crash_leaves_the_stacks(self) -> None:
        """Of all threads of Python, also if the backend has closed the file object of the stream."""
        for name in ("open", "closed"):
            with self.subTest(name):
                run = self.run_program(backend="crashing", **{f"TEST_{name.upper()}": "1"})
                self.assertEqual(run.returncode, -signal.SIGSEGV, run.stderr)
                stacks = run.stderr[run.stderr.index("Fatal Python error: Segmentation fault") :]
                self.assertRegex(stacks, r'crashing\.py", line \d+ in gui_value_from_cpp')
                self.assertRegex(stacks, r'crashing\.py", line \d+ in _wait')

    def test_full_screen_is_decided_before_ready(self) -> None:
        """The backend's first call finds the window's title and state set."""
        lines = self.run_program("-f").stdout.splitlines()
        told = [line for line in lines if line.startswith(("title", "fullscreen", READY))]
        self.assertEqual(told, ["fullscreen: ", "title: Brovik Kubelor", READY])

    def test_backend_may_write_the_environment(self) -> None:
        """While the screens load, whose libraries read it wherever they are."""
        run = self.run_program(backend="writing_environment")
        self.assertEqual(run.returncode, 7, run.stderr)


if __name__ == "__main__":
    unittest.main(verbosity=2)
