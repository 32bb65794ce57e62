"""The module `brovik` in an ordinary Python."""

import importlib
import inspect
import os
import subprocess
import sys
import unittest
from pathlib import Path
from types import ModuleType

import brovik

SUBMODULES = {
    "actuator": "Actuator",
    "auto": "Auto",
    "gpio": "GPIO",
    "gui": "Gui",
    "chart": "Chart",
    "config": "Config",
    "sensor": "Sensor",
    "shell": "Shell",
    "settings": "SettingsValues",
    "simulator": "Simulator",
    "wifi": "Wifi",
}


def run(code: str) -> subprocess.CompletedProcess[str]:
    """Runs a program of Python in a process of its own."""
    return subprocess.run(
        [sys.executable, "-c", code], capture_output=True, text=True, timeout=60, check=False
    )


class ImportTest(unittest.TestCase):
    """What is there is what the program has."""

    def test_a_package_from_a_file(self) -> None:
        """It is no built-in module, and knows its types."""
        self.assertNotIn("brovik", sys.builtin_module_names)
        folder = Path(str(brovik.__file__)).parent
        self.assertEqual(brovik.__path__, [str(folder)])
        self.assertTrue((folder / "py.typed").exists())
        self.assertTrue((folder / "gui.pyi").exists())

    def test_submodules(self) -> None:
        """Each imports by its name, has that name, and its one object."""
        for name, singleton in SUBMODULES.items():
            with self.subTest(name):
                module = importlib.import_module(f"brovik.{name}")
                self.assertIs(module, getattr(brovik, name))
                self.assertEqual(module.__name__, f"brovik.{name}")
                self.assertEqual(type(getattr(module, singleton)).__module__, f"brovik.{name}")

    def test_nothing_but_what_the_program_has(self) -> None:
        """Beside that there is what tests need, and it begins with an underscore."""
        submodules = {name for name, value in vars(brovik).items() if isinstance(value, ModuleType)}
        self.assertEqual(submodules - {"testing"}, {*SUBMODULES, "_kit", *submodules & {"_screens"}})
        others = {name for name in vars(brovik) if not name.startswith("_")} - submodules
        self.assertEqual(others, {"Logger", "forward_exception"})

    def test_docstrings(self) -> None:
        """Types and texts are those of the program's own module."""
        doc = str(inspect.getdoc(brovik.gui.GuiClass.question))
        self.assertTrue(doc.startswith("question(self: brovik.gui.GuiClass, title: str, "), doc)

    def test_no_display_and_no_screens(self) -> None:
        """Neither is asked for, and the process ends by itself."""
        self.assertNotIn("DISPLAY", os.environ)
        ended = run("import brovik; brovik.gui.Gui.status = 'x'; print(brovik.gui.Gui.status)")
        self.assertEqual((ended.returncode, ended.stdout, ended.stderr), (0, "x\n", ""))

    def test_log_has_the_programs_format(self) -> None:
        """Lines go to stderr as the program writes them; a fatal one ends the process."""
        ended = run("from brovik import Logger; Logger.warning('leer'); Logger.fatal('aus'); print('nie')")
        self.assertEqual((ended.returncode, ended.stdout), (1, ""))
        self.assertRegex(
            ended.stderr, r"\A\[WARN \]\[.*\]\[0:0:\d+\]\[Py\] leer\n\[FATAL\]\[.*\]\[Py\] aus\n\Z"
        )

    def test_on_another_thread(self) -> None:
        """The objects belong to the main thread, so the import says where it belongs."""
        ended = run(
            "import threading\n"
            "def load():\n"
            "    try:\n"
            "        import brovik\n"
            "    except ImportError as error:\n"
            "        print(error)\n"
            "thread = threading.Thread(target=load)\n"
            "thread.start()\n"
            "thread.join()\n"
            "import brovik\n"
            "print(brovik.gui.Gui.status3 == '')\n"
        )
        self.assertEqual(
            (ended.returncode, ended.stdout), (0, "brovik is to be imported on Python's main thread\nTrue\n")
        )

    def test_end_with_a_busy_thread(self) -> None:
        """A daemon thread that writes until the end, and an exit function that writes too, do no harm."""
        ended = run(
            "import atexit, threading\n"
            "from brovik.gui import Gui\n"
            "from brovik.actuator import Actuator\n"
            "begun = threading.Event()\n"
            "def write():\n"
            "    count = 0\n"
            "    while True:\n"
            "        count += 1\n"
            "        Gui.status = str(count)\n"
            "        begun.set()\n"
            "threading.Thread(target=write, daemon=True).start()\n"
            "begun.wait()\n"
            "atexit.register(lambda: setattr(Actuator.pumpe, 'state', False))\n"
        )
        self.assertEqual((ended.returncode, ended.stderr), (0, ""))


if __name__ == "__main__":
    unittest.main()
