"""`kubelor-backend`, as its user calls it."""

import os
import shutil
import signal
import subprocess
import sys
import tempfile
import textwrap
import threading
import unittest
from pathlib import Path

TOOL = Path(__file__).resolve().parents[1] / "kubelor-backend"
DEMO = Path(__file__).resolve().parents[2] / "demo"
PATIENCE = 200

# All but the function of which a test has another one.
PLAIN = """
from brovik.gui import Gui

def init(debug): Gui.status = "Bereit"
def actuator_toggle_from_cpp(enum): pass
def _ignore(enum, value): pass
auto_value_from_cpp = chart_action_from_cpp = gui_value_from_cpp = sensor_value_from_cpp = _ignore
shell_action_from_cpp = simulator_value_from_cpp = settings_from_cpp = wifi_action_from_cpp = _ignore
"""


def tool(*arguments: object, **environment: str) -> subprocess.CompletedProcess[str]:
    """Runs the tool to its end."""
    return subprocess.run(
        [sys.executable, str(TOOL), *map(str, arguments)],
        capture_output=True,
        text=True,
        timeout=PATIENCE,
        env=os.environ | environment,
        check=False,
    )


class ToolCase(unittest.TestCase):
    """A folder of its own."""

    def setUp(self) -> None:
        # Until the end of the test.
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        self.folder = Path(directory.name) / "mine"

    def write(self, more: str) -> None:
        """A backend that is plain but for this."""
        package = self.folder / "controller"
        package.mkdir(parents=True, exist_ok=True)
        text = "# mypy: ignore-errors\n" + PLAIN + textwrap.dedent(more)
        (package / "__init__.py").write_text(text, "utf-8")


class NewTest(ToolCase):
    """kubelor-backend new"""

    def test_a_new_backend_is_complete(self) -> None:
        """Its tests pass, the check finds nothing, and nothing of the template's own name is left."""
        made = tool("new", self.folder)
        self.assertEqual((made.returncode, made.stderr), (0, ""))
        self.assertIn(f"{self.folder}/controller/__init__.py\n", made.stdout)
        self.assertIn('name = "mine"\n', (self.folder / "pyproject.toml").read_text("utf-8"))
        for file in self.folder.rglob("*.*"):
            self.assertNotIn("@NAME@", file.read_text("utf-8"), file)
        checked = tool("check", self.folder)
        self.assertEqual((checked.returncode, checked.stdout), (0, "No fault found.\n"))
        tests = subprocess.run(
            [sys.executable, "-m", "unittest"],
            cwd=self.folder,
            capture_output=True,
            text=True,
            timeout=PATIENCE,
            check=False,
        )
        self.assertEqual(tests.returncode, 0, tests.stderr)
        self.assertRegex(tests.stderr, r"Ran [1-9]\d* tests")
        typed = subprocess.run(
            [sys.executable, "-m", "mypy", "--cache-dir", str(self.folder / ".mypy")],
            cwd=self.folder,
            env=os.environ | {"MYPYPATH": os.environ["PYTHONPATH"].split(os.pathsep, maxsplit=1)[0]},
            capture_output=True,
            text=True,
            timeout=PATIENCE,
            check=False,
        )
        self.assertEqual(typed.returncode, 0, typed.stdout)

    def test_nothing_is_overwritten(self) -> None:
        """A folder with something in it stays as it is."""
        self.folder.mkdir()
        (self.folder / "mein").write_text("x", "utf-8")
        made = tool("new", self.folder)
        self.assertEqual((made.returncode, made.stdout), (2, ""))
        self.assertEqual(made.stderr, f"kubelor-backend: {self.folder} is there already, and not empty\n")
        self.assertEqual(os.listdir(self.folder), ["mein"])

    def test_name_without_letters(self) -> None:
        """There has to be a name for the project."""
        made = tool("new", self.folder.parent / "...-")
        self.assertEqual(made.returncode, 2)
        self.assertIn("gives no name for the project", made.stderr)


class CheckTest(ToolCase):
    """kubelor-backend check"""

    def faults(self, more: str, *options: str) -> str:
        """What is found in such a backend."""
        self.write(more)
        checked = tool("check", self.folder, "--no-types", *options)
        self.assertEqual((checked.returncode, checked.stderr), (1, ""), checked.stdout)
        return checked.stdout

    def test_good_ones(self) -> None:
        """The plain one and the demo machine's."""
        self.write("")
        for folder in (self.folder, DEMO):
            with self.subTest(folder):
                checked = tool("check", folder)
                self.assertEqual(
                    (checked.returncode, checked.stdout), (0, "No fault found.\n"), checked.stderr
                )

    def test_functions(self) -> None:
        """Each is there and takes what it is called with."""
        self.assertEqual(
            self.faults("del init, actuator_toggle_from_cpp\nwifi_action_from_cpp = 5"),
            "controller has no function init(). It is called with 1 argument.\n"
            "controller has no function actuator_toggle_from_cpp(). It is called with 1 argument.\n"
            "controller.wifi_action_from_cpp is no function but a int.\n",
        )
        self.assertEqual(
            self.faults(
                "def chart_action_from_cpp(enum): pass\ndef gui_value_from_cpp(*, enum, value): pass"
            ),
            "chart_action_from_cpp() is called with 2 arguments, by their position: too many positional "
            "arguments.\n"
            "gui_value_from_cpp() is called with 2 arguments, by their position: too many positional "
            "arguments.\n",
        )
        self.assertIn("nobody awaits it", self.faults("async def auto_value_from_cpp(enum, value): pass"))

    def test_exceptions(self) -> None:
        """In the import, in init and at Ready, forwarded or not; the sentence says where."""
        where = r" \(__init__.py, line \d+\)\n"
        self.assertRegex(self.faults("import there_is_none"), "It raised ModuleNotFoundError: .*" + where)
        self.assertRegex(self.faults("def init(debug): 1 / 0"), "It raised ZeroDivisionError: .*" + where)
        at_ready = "def gui_value_from_cpp(enum, value): raise KeyError('x')"
        self.assertRegex(self.faults(at_ready), "It raised KeyError: 'x'" + where)
        forwarded = """
            import brovik
            def init(debug):
                try:
                    raise ValueError("leer")
                except ValueError:
                    brovik.forward_exception()
            """
        self.assertIn("An exception was shown: ValueError: leer\n", self.faults(forwarded))

    def test_ends(self) -> None:
        """Who hangs, crashes or leaves is named."""
        hangs = "import threading\ndef init(debug): threading.Event().wait()"
        self.assertIn(
            "init(False) did not come to its end within 8 s.", self.faults(hangs, "--patience", "8")
        )
        thread = "import threading\nthreading.Thread(target=threading.Event().wait).start()"
        self.assertIn(
            "the end of Python did not come to its end within 8 s.", self.faults(thread, "--patience", "8")
        )
        crash = "import os, signal\ndef init(debug): os.kill(os.getpid(), signal.SIGSEGV)"
        self.assertIn("init(False) ended the process with SIGSEGV.", self.faults(crash))
        leaves = (
            "import os\ndef gui_value_from_cpp(enum, value): print('letzte Zeile', flush=True); os._exit(0)"
        )
        found = self.faults(leaves)
        self.assertIn("gui_value_from_cpp(GuiEnum.Ready, None) ended the process.\n", found)
        self.assertIn("  letzte Zeile\n", found)
        self.assertIn("It raised SystemExit: 3", self.faults("raise SystemExit(3)"))

    def test_types(self) -> None:
        """They are checked against what the program has."""
        self.write("")
        (self.folder / "controller" / "typed.py").write_text(
            "from brovik.gui import Gui\nGui.status = 5\n", "utf-8"
        )
        checked = tool("check", self.folder)
        self.assertEqual(checked.returncode, 1)
        self.assertIn("The types do not fit:\ncontroller/typed.py:2: error: ", checked.stdout)

    def test_types_of_the_functions(self) -> None:
        """Each has to take what the program hands over."""
        made = tool("new", self.folder)
        self.assertEqual(made.returncode, 0)
        file = self.folder / "controller" / "__init__.py"
        text = file.read_text("utf-8")
        wrong = text.replace(
            "simulator_value_from_cpp(enum: SimuEnum, value: object)",
            "simulator_value_from_cpp(enum: SimuEnum, value: str)",
        )
        self.assertNotEqual(text, wrong)
        file.write_text(wrong, "utf-8")
        checked = tool("check", self.folder)
        self.assertEqual(checked.returncode, 1)
        self.assertIn("def simulator_value_from_cpp(SimuEnum, float, /) -> None", checked.stdout)

    def test_remarks(self) -> None:
        """What is no fault, but worth a thought."""
        self.write("def init(debug): pass")
        checked = tool("check", self.folder, "--no-types")
        self.assertEqual(checked.returncode, 0)
        self.assertIn("Remark: Gui.status still reads as if there were no backend", checked.stdout)

    def test_no_backend(self) -> None:
        """A folder without one is named."""
        checked = tool("check", self.folder)
        self.assertEqual(
            (checked.returncode, checked.stdout), (1, f"{self.folder} has no package controller.\n")
        )

    def test_leaves_nothing_behind(self) -> None:
        """Neither bytecode nor caches."""
        self.write("")
        tool("check", self.folder)
        self.assertEqual([path.name for path in self.folder.rglob("*")], ["controller", "__init__.py"])


class RunTest(ToolCase):
    """kubelor-backend run, with the program that the build has made, on no display."""

    def setUp(self) -> None:
        super().setUp()
        self.environment = os.environ | {
            "QT_QPA_PLATFORM": "offscreen",
            "HOME": str(self.folder.parent),
            "XDG_CONFIG_HOME": str(self.folder.parent / "config"),
            "XDG_RUNTIME_DIR": str(self.folder.parent),
        }
        # It tells on stdout which process of the program it is in.
        self.started = "import os\ndef init(debug): print('gestartet', os.getpid(), flush=True)\n"

    def run_tool(self, *options: str) -> "subprocess.Popen[str]":
        """Starts it; the lines of the backend come from its stdout."""
        process = subprocess.Popen(  # pylint: disable=consider-using-with  # lives longer than this block
            [sys.executable, str(TOOL), "run", str(self.folder), *options],
            env=self.environment,
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
            text=True,
        )
        self.addCleanup(process.wait)
        guard = threading.Timer(PATIENCE, process.kill)
        guard.start()
        self.addCleanup(guard.cancel)
        assert process.stdout is not None
        self.addCleanup(process.stdout.close)
        return process

    def line(self, process: "subprocess.Popen[str]", beginning: str) -> str:
        """The next line that begins so."""
        assert process.stdout is not None
        for line in process.stdout:
            if line.startswith(beginning):
                return line
        raise AssertionError(f"No line begins with {beginning!r}")

    def end(self, line: str) -> int:
        """Ends the program that the line tells of."""
        number = int(line.split()[1])
        os.kill(number, signal.SIGTERM)
        return number

    def test_run(self) -> None:
        """Ends with the program, and with its code."""
        self.write(self.started)
        process = self.run_tool()
        self.end(self.line(process, "gestartet"))
        self.assertEqual(process.wait(PATIENCE), 0)

    def test_watch(self) -> None:
        """A change ends the program and starts it anew; so it does after one that has failed."""
        self.write(self.started)
        process = self.run_tool("--watch")
        first = self.line(process, "gestartet")
        (self.folder / "controller" / "neu.py").write_text("", "utf-8")
        self.assertEqual(self.line(process, "A file"), "A file has changed: starting anew.\n")
        second = self.line(process, "gestartet")
        self.assertNotEqual(first, second)
        os.kill(int(second.split()[1]), signal.SIGKILL)
        self.assertEqual(
            self.line(process, "The program"), "The program has ended with -9. Waiting for a change.\n"
        )
        (self.folder / "controller" / "neu.py").write_text("X = 1\n", "utf-8")
        self.end(self.line(process, "gestartet"))
        self.assertEqual(process.wait(PATIENCE), 0)

    def shell(self, text: str) -> subprocess.CompletedProcess[str]:
        """What the shell says to this input."""
        return subprocess.run(
            [sys.executable, str(TOOL), "shell"],
            input=text,
            env=self.environment,
            capture_output=True,
            text=True,
            timeout=PATIENCE,
            check=False,
        )

    def test_shell(self) -> None:
        """A prompt in the running program. What it writes is written; its output goes to the prompt alone."""
        self.write(self.started + "def auto_value_from_cpp(enum, value): pass\nSEEN = []\n")
        process = self.run_tool()
        line = self.line(process, "gestartet")
        said = self.shell(
            "Gui.status = 'aus der Schale'\n"
            "print(controller.os.getpid())\n"
            "Gui.status\n"
            "if Auto.active is False:\n"
            "    print('still')\n"
            "\n"
            "1 / 0\n"
            "import subprocess, sys\n"
            "'brovik', 'brovik' in sys.builtin_module_names\n"
            "code = 'import sys; print([p for p in sys.path if \"demo_site\" in p])'\n"
            "subprocess.run([sys.executable, '-c', code], capture_output=True, text=True).stdout\n"
            "quit()\n"
        )
        self.assertEqual(said.returncode, 0, said.stderr)
        self.assertTrue(
            said.stdout.startswith("Python in kubelor-demo. Here are: controller, brovik, Actuator, ")
        )
        errors = "ZeroDivisionError: division by zero"
        # The package for an ordinary Python is on its path as well.
        self.assertIn("('brovik', True)", said.stdout)
        for part in (line.split()[1], "'aus der Schale'", "still", errors, "'[]\\n'"):
            self.assertIn(part, said.stdout)
        self.assertEqual(self.shell("Gui.status\n").stdout.count("'aus der Schale'"), 1)
        self.end(line)
        self.assertEqual(process.wait(PATIENCE), 0)
        assert process.stdout is not None
        self.assertNotIn("still", process.stdout.read())

    def test_shell_is_the_owners(self) -> None:
        """Folder and socket are open to nobody else, and both go with the program."""
        self.write(self.started)
        process = self.run_tool()
        line = self.line(process, "gestartet")
        path = self.folder.parent / "kubelor-demo" / "shell"
        self.assertEqual((path.stat().st_mode & 0o777, path.parent.stat().st_mode & 0o777), (0o600, 0o700))
        self.end(line)
        self.assertEqual(process.wait(PATIENCE), 0)
        self.assertFalse(path.exists())
        gone = self.shell("1\n")
        self.assertEqual((gone.returncode, gone.stdout), (2, ""))
        self.assertIn("kubelor-backend: No demo program with a shell runs", gone.stderr)

    def test_no_shell_in_a_folder_of_others(self) -> None:
        """The program runs without one then."""
        (self.folder.parent / "kubelor-demo").mkdir()
        (self.folder.parent / "kubelor-demo").chmod(0o755)
        self.write(self.started)
        process = self.run_tool()
        line = self.line(process, "gestartet")
        self.assertFalse((self.folder.parent / "kubelor-demo" / "shell").exists())
        self.end(line)
        self.assertEqual(process.wait(PATIENCE), 0)

    def test_shell_in_no_other_program(self) -> None:
        """Another Python with the same path opens none."""
        site = TOOL.parent / "kubelor_backend" / "demo_site"
        environment = self.environment | {"PYTHONPATH": str(site)}
        subprocess.run([sys.executable, "-c", "import sitecustomize"], env=environment, check=True)
        self.assertFalse((self.folder.parent / "kubelor-demo").exists())

    def test_no_program(self) -> None:
        """It says what is missing."""
        alone = self.folder.parent / "alone"
        shutil.copytree(TOOL.parent, alone, ignore=shutil.ignore_patterns("__pycache__"))
        self.write("")
        environment = {name: value for name, value in self.environment.items() if name != "KUBELOR_DEMO"}
        ended = subprocess.run(
            [sys.executable, str(alone / "kubelor-backend"), "run", str(self.folder)],
            env=environment | {"PATH": "", "PYTHONPATH": ""},
            capture_output=True,
            text=True,
            check=False,
        )
        self.assertEqual(ended.returncode, 2)
        self.assertIn("kubelor-backend: The program kubelor-demo is not there.", ended.stderr)


if __name__ == "__main__":
    unittest.main()
