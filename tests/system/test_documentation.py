"""What the documentation shows works as it stands."""

import os
import re
import signal
import subprocess
import sys
import tempfile
import textwrap
import unittest
from pathlib import Path

from support import panel
from support.automatic import ABORT, START
from support.panel import Panel

ROOT = Path(__file__).parents[2]
GUIDE = ROOT / "docs" / "backend.md"

# The signals that ask for the end.
SIGNALS = ("SIGTERM", "SIGHUP", "SIGINT")

IMPORTS = """
import asyncio
from typing import Any
from brovik import *
from brovik.actuator import *
from brovik.auto import *
from brovik.chart import *
from brovik.gui import *
from brovik.settings import *
from brovik.shell import *
from brovik.wifi import *
"""


def examples() -> dict[str, list[str]]:
    """The examples of the guide in Python, by the heading that they stand under."""
    found: dict[str, list[str]] = {}
    for section in re.split(r"^##+ ", GUIDE.read_text("utf-8"), flags=re.M)[1:]:
        heading, _, text = section.partition("\n")
        if blocks := re.findall(r"^```python\n(.*?)^```", text, re.M | re.S):
            found[heading] = blocks
    return found


class GuideTest(unittest.TestCase):
    """The examples as such."""

    def test_each_has_its_test(self) -> None:
        """The tests below run these, and there are no others."""
        self.assertEqual(
            {heading: len(blocks) for heading, blocks in examples().items()},
            {
                "The smallest backend": 1,
                "What the screens expect": 4,
                "Recording a chart": 1,
                "Keeping things": 1,
                "Threads": 2,
                # By the tests of the kit.
                "Testing a backend": 1,
            },
        )

    def test_whole_backends_are_typed(self) -> None:
        """They pass the check that the guide asks for."""
        for heading in ("The smallest backend", "Threads"):
            with self.subTest(heading), tempfile.TemporaryDirectory() as directory:
                _write_backend(directory, examples()[heading][0])
                checked = subprocess.run(
                    [sys.executable, "-m", "mypy", "--strict", "--cache-dir", directory, "controller"],
                    cwd=directory,
                    env=os.environ | {"MYPYPATH": str(ROOT / "demo" / "stubs")},
                    capture_output=True,
                    text=True,
                    check=False,
                )
                self.assertEqual(checked.returncode, 0, checked.stdout + checked.stderr)


def _write_backend(directory: str, text: str) -> None:
    package = Path(directory) / "controller"
    package.mkdir()
    (package / "__init__.py").write_text(text, encoding="utf-8")


class BackendTest(unittest.TestCase):
    """The guide's whole backends, run by the real program."""

    def start(self, heading: str) -> Panel:
        """The program with the first example under this heading."""
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        directory = self.enterContext(folder)
        _write_backend(directory, examples()[heading][0])
        program: Panel = self.enterContext(Panel(Path(directory)))
        program.wait_until_shown("Bereit")
        return program

    def test_smallest(self) -> None:
        """It comes up, and the operator can start and abort."""
        program = self.start("The smallest backend")
        program.press_and_hold(START)
        program.wait_until_shown(ABORT)
        program.press_and_hold(ABORT)
        program.wait_until_shown(START)
        self.assertEqual(program.close(), 0)

    def test_thread(self) -> None:
        """It says where its threads stand when asked, and farewell at the end."""
        program = self.start("Threads")
        program.press_and_hold(START)
        program.wait_until_shown(ABORT)
        program.process.send_signal(signal.SIGUSR1)
        program.wait_for_log("in _drive")
        self.assertEqual(program.close(), 0)
        self.assertTrue(any("Alle Ausgänge sind aus" in line for line in program.log))

    def test_signals(self) -> None:
        """Each that asks for the end is told in the log, and leaves time for the farewell."""
        for name in SIGNALS:
            with self.subTest(name):
                program = self.start("Threads")
                program.process.send_signal(signal.Signals[name])
                self.assertEqual(program.wait_for_end(), 0)
                for told in (f"{name}: Das Programm wird beendet.", "Alle Ausgänge sind aus"):
                    self.assertTrue(any(told in line for line in program.log), told)

    def test_demo(self) -> None:
        """The demo machine says where its threads stand, too."""
        with panel.demo(1) as program:
            program.wait_until_shown("Bereit")
            program.process.send_signal(signal.SIGUSR1)
            program.wait_for_log('machine_thread.py", line')
            program.wait_until_shown("Bereit")
            program.process.send_signal(signal.SIGTERM)
            self.assertEqual(program.wait_for_end(), 0)


class PieceTest(unittest.TestCase):
    """The guide's pieces, run by a backend of the real program."""

    def setUp(self) -> None:
        self.program: Panel = self.enterContext(panel.remote())
        self.program.wait_until_shown(panel.READY)

    def run_piece(self, heading: str, number: int = 0, *, before: str = "", after: str = "") -> str:
        """Runs an example between other code, and gives what that leaves in `result`."""
        pieces = (IMPORTS, before, examples()[heading][number], textwrap.dedent(after))
        return self.program.backend("\n".join(pieces))

    def test_outputs(self) -> None:
        """The page has what the machine has."""
        self.run_piece("What the screens expect", 0)
        self.program.open_settings("Handbetrieb")
        self.program.wait_until_shown("Kanal")
        self.assertIsNone(self.program.find("Dampf"))

    def test_run(self) -> None:
        """The page shows what the run has begun with, whatever becomes of the settings."""
        minimum = "SettingsValues.lw_saure_min = {}"
        self.run_piece("What the screens expect", 1, before=minimum.format(12), after=minimum.format(13))
        self.program.wait_until_shown(ABORT)
        self.program.wait_until_shown("12 mS/cm")
        self.assertIsNone(self.program.find("13 mS/cm"))

    def test_records(self) -> None:
        """The pages show them."""
        typed, others = 2, 3
        self.run_piece("What the screens expect", typed)
        self.run_piece("What the screens expect", others)
        self.program.open_settings("Netzwerk")
        self.program.wait_until_shown("wg0 (WireGuard): 10.8.0.17")
        self.program.wait_until_shown("Werkstatt")
        self.program.open_settings("Updates")
        self.program.wait_until_shown("Es ist ein Update für ein Brovik-Paket verfügbar")
        self.program.click("Verfügbar", "page tab")
        self.program.wait_until_shown("1.5")

    def test_chart(self) -> None:
        """The points are in the chart."""
        code = "result = (Chart.p.data, Chart.step.data, Chart.pumpe.data, Chart.active)"
        lines = self.run_piece("Recording a chart", after=code)
        self.assertEqual(lines, "([(0.5, 1.02)], [(0.5, 1.0)], [(0.5, 1.0)], True)")

    def test_keeping(self) -> None:
        """The file holds what was kept last, in a folder that was not there, and nothing lies beside it."""
        code = """
            FILE = FILE.parent / "new folder" / FILE.name
            keep({"secs_pump": 7})
            keep({"secs_pump": 8})
            result = FILE.read_text("utf-8"), os.listdir(FILE.parent)
        """
        kept = self.run_piece("Keeping things", after=code)
        self.assertEqual(kept, "('{\"secs_pump\": 8}', ['controller.json'])")

    def test_frozen_window(self) -> None:
        """A signal has the function written that keeps the window waiting."""
        stand_still = """
            import controller, faulthandler, signal, sys, threading

            threading.go_on = threading.Event()

            def stand_still(*_arguments):
                threading.go_on.wait()

            faulthandler.register(signal.SIGUSR1, sys.__stderr__)
            controller.answers["auto_value_from_cpp"] = stand_still
        """
        self.program.backend(textwrap.dedent(stand_still))
        self.program.press_and_hold(START)
        self.program.wait_for_log("CALL auto_value_from_cpp")
        self.program.process.send_signal(signal.SIGUSR1)
        self.program.wait_for_log("in stand_still")
        self.program.backend("import threading; threading.go_on.set()")
        self.assertEqual(self.program.close(), 0)

    def test_asyncio(self) -> None:
        """A callback that fails is shown to the operator."""
        run = """
            loop.call_soon(lambda: [].pop())
            loop.call_soon(loop.stop)
            loop.run_forever()
            loop.close()
        """
        self.run_piece("Threads", 1, before="loop = asyncio.new_event_loop()", after=run)
        self.program.wait_until_shown("IndexError")


if __name__ == "__main__":
    unittest.main()
