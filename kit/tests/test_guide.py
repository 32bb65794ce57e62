"""What docs/backend.md says of the tool and of tests works as it stands."""

import os
import re
import shlex
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TREE = Path(__file__).resolve().parents[2]
PATIENCE = 250
#: They need a window, or a running program; test_tool has them.
INTERACTIVE = ("run", "shell")


def section(heading: str) -> str:
    """The text under a heading."""
    text = (TREE / "docs" / "backend.md").read_text("utf-8")
    return text.partition(f"\n## {heading}\n")[2].partition("\n## ")[0]


def blocks(heading: str, language: str) -> list[str]:
    """The blocks under a heading."""
    return re.findall(rf"^```{language}\n(.*?)^```", section(heading), re.M | re.S)


class GuideTest(unittest.TestCase):
    """The commands in a folder of their own, with the tool of this tree."""

    def setUp(self) -> None:
        # Until the end of the test.
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        self.folder = Path(directory.name)
        programs = self.folder / "bin"
        programs.mkdir()
        # Another Python may stand first on the path.
        tool = str(TREE / "kit" / "kubelor-backend")
        for name, command in (("python3", [sys.executable]), ("kubelor-backend", [sys.executable, tool])):
            (programs / name).write_text(f'#!/bin/sh\nexec {shlex.join(command)} "$@"\n', "utf-8")
            (programs / name).chmod(0o755)
        self.environment = os.environ | {
            "PATH": f"{programs}{os.pathsep}{os.environ['PATH']}",
            "MYPYPATH": os.environ["PYTHONPATH"].split(os.pathsep, maxsplit=1)[0],
        }

    def run_here(self, *command: str) -> str:
        """Runs a command that has to succeed. Returns what it has said."""
        ended = subprocess.run(
            command,
            cwd=self.folder,
            env=self.environment,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
            timeout=PATIENCE,
            check=False,
        )
        self.assertEqual(ended.returncode, 0, ended.stdout)
        return ended.stdout

    def test_begin(self) -> None:
        """From nothing to a backend that is tested and has its types checked."""
        commands = blocks("Begin", "")[0].splitlines()
        self.assertEqual(commands[0], "kubelor-backend new fass")
        left_out = [command for command in commands if command.split()[1] in INTERACTIVE]
        self.assertEqual(left_out, ["kubelor-backend run . --watch"])
        said = self.run_here(
            "sh", "-e", "-c", "\n".join(command for command in commands if command not in left_out)
        )
        for part in ("\nOK\n", "Success: no issues found in 8 source files\n", "No fault found.\n"):
            self.assertIn(part, said)

    def test_commands_of_the_tool(self) -> None:
        """The guide names each of them, and no other."""
        in_help = set(re.findall(r"^    (\w+) ", self.run_here("kubelor-backend", "--help"), re.M))
        in_guide = set(re.findall(r"^kubelor-backend (\w+)", section("Begin"), re.M))
        self.assertEqual(in_guide, in_help)

    def test_example_of_a_test(self) -> None:
        """It passes with the backend that it names, and fits its types."""
        backend, (test,) = blocks("Threads", "python")[0], blocks("Testing a backend", "python")
        (self.folder / "controller").mkdir()
        (self.folder / "controller" / "__init__.py").write_text(backend, "utf-8")
        (self.folder / "test_example.py").write_text(test, "utf-8")
        self.assertIn("Ran 1 test ", self.run_here("python3", "-m", "unittest", "test_example"))
        self.run_here("python3", "-m", "mypy", "--strict", "test_example.py")

    def test_functions_of_the_table(self) -> None:
        """The guide tells of every function of the module."""
        named = set(re.findall(r"`(\w+)[(\[]", section("Testing a backend")))
        listed = self.run_here(
            "python3",
            "-c",
            "from brovik import testing\nprint(*(name for name in testing.__all__ if name[0].islower()))",
        )
        self.assertEqual(set(listed.split()) - named, set())


if __name__ == "__main__":
    unittest.main()
