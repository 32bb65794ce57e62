"""What the window keeps from one run of the program to the next."""

import os
import re
import signal
import subprocess
import tempfile
import unittest
from pathlib import Path

from support import desktop, panel
from support.accessible import Box
from support.automatic import START
from support.look import TO_DARK, TO_LIGHT
from support.panel import Panel
from support.waiting import wait_for


# As multiprocessing does it, when the operator starts a run.
FORK = """
import os
import signal
import controller

def fork(enum, value=None):
    del controller.answers["auto_value_from_cpp"]
    child = os.fork()
    if not child:
        signal.pause()
    print(f"child {child}\\n", end="")

controller.answers["auto_value_from_cpp"] = fork
"""


def geometry(program: Panel) -> tuple[int, ...]:
    """Position and size of the window without its frame."""
    text = desktop.xdotool("getwindowgeometry", "--shell", program.window)
    values = dict(re.findall(r"(\w+)=(-?\d+)", text))
    return tuple(int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))


def windows_of(program: Panel) -> list[str]:
    """The titles of its windows, in their order."""
    listed = subprocess.run(["wmctrl", "-l", "-p"], capture_output=True, text=True, check=True).stdout
    lines = [line.split(maxsplit=4) for line in listed.splitlines()]
    return sorted(line[4] for line in lines if line[2] == str(program.process.pid))


class WindowCase(unittest.TestCase):
    """A configuration directory that outlives the program."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.configuration = Path(self.enterContext(folder))
        self.file = self.configuration / panel.SETTINGS_FILE

    def start(self) -> Panel:
        """The program with that directory, and the backend that does what the test says."""
        program = self.enterContext(panel.remote(XDG_CONFIG_HOME=str(self.configuration)))
        program.wait_until_shown(panel.READY)
        return program

    def wait_for_geometry(self, program: Panel, expected: tuple[int, ...]) -> None:
        """Waits until the window stands there in that size."""
        try:
            program.wait_for(f"geometry {expected}", lambda: geometry(program) == expected)
        except AssertionError as error:
            raise AssertionError(f"{error}, not {geometry(program)}") from None

    def wait_for_size(self, program: Panel, width: int, height: int) -> None:
        """Waits until the window has that size."""
        program.wait_for("the size", lambda: geometry(program)[2:] == (width, height))

    def wait_until_stored(self, line: str) -> None:
        """Waits until the file has that line."""
        wait_for(line, lambda: self.file.exists() and line in self.file.read_text("utf-8").splitlines())


class GeometryTest(WindowCase):
    """Position and size."""

    def test_default(self) -> None:
        """Without a file the window takes 720 by 950."""
        self.wait_for_size(self.start(), 720, 950)

    def test_restart(self) -> None:
        """The window comes back where it was closed, though nobody opens its page, and does not wander."""
        program = self.start()
        window = program.window
        desktop.xdotool("windowsize", "--sync", window, 640, 800)
        desktop.xdotool("windowmove", "--sync", window, 120, 150)
        self.wait_for_size(program, 640, 800)
        kept = geometry(program)
        self.assertEqual(program.close(), 0)
        for _ in range(2):
            program = self.start()
            self.wait_for_geometry(program, kept)
            self.assertEqual(program.close(), 0)

    def test_closed_by_its_own_button(self) -> None:
        """The page of the window closes it, and that is no different."""
        program = self.start()
        desktop.xdotool("windowsize", "--sync", program.window, 700, 900)
        program.open_settings("Erscheinungsbild")
        program.wait_until_shown("Aktuelle Auflösung des Fensters: 700x900")
        program.press_and_hold("App schließen")
        self.assertEqual(program.wait_for_end(), 0)
        self.wait_until_stored("width=700")
        self.wait_until_stored("height=900")

    def test_closed_by_a_signal(self) -> None:
        """So does who stops the program from outside, with the window of the simulator open as well."""
        program = self.start()
        desktop.xdotool("windowsize", "--sync", program.window, 690, 880)
        program.backend("from brovik.simulator import Simulator; Simulator.enabled = True")
        program.window_titled("Simulator")
        program.process.terminate()
        self.assertEqual(program.wait_for_end(), 0)
        self.wait_until_stored("width=690")
        self.wait_until_stored("height=880")

    def test_kill(self) -> None:
        """Who is killed has written nothing, and the last good file holds."""
        program = self.start()
        desktop.xdotool("windowsize", "--sync", program.window, 640, 800)
        self.wait_for_size(program, 640, 800)
        self.assertEqual(program.close(), 0)
        content = self.file.read_bytes()

        program = self.start()
        self.wait_for_size(program, 640, 800)
        desktop.xdotool("windowsize", "--sync", program.window, 700, 900)
        self.wait_for_size(program, 700, 900)
        program.process.kill()
        program.process.wait()
        self.assertEqual(self.file.read_bytes(), content)
        self.wait_for_size(self.start(), 640, 800)


class ForkedChildTest(WindowCase):
    """A process of the backend that outlives the program."""

    def test_kill(self) -> None:
        """It does not keep the window, which would pass for a running program."""
        program = self.start()
        program.backend(FORK)
        program.press_and_hold(START)
        child = int(program.wait_for_log("child ").split()[-1])
        self.addCleanup(os.kill, child, signal.SIGKILL)
        self.assertEqual(windows_of(program), [panel.TITLE])
        program.process.kill()
        wait_for("the end of the window", lambda: not windows_of(program))
        os.kill(child, 0)


class ThemeTest(WindowCase):
    """Dark or light."""

    def test_restart(self) -> None:
        """The theme comes back."""
        program = self.start()
        program.click(TO_LIGHT)
        program.wait_until_shown(TO_DARK)
        self.assertEqual(program.close(), 0)
        program = self.start()
        program.click(TO_DARK)
        program.wait_until_shown(TO_LIGHT)

    def test_kill(self) -> None:
        """The theme is written at once, so a kill does not take it back."""
        program = self.start()
        program.click(TO_LIGHT)
        self.wait_until_stored("dark=false")
        program.process.kill()
        program.process.wait()
        self.start().wait_until_shown(TO_DARK)


class DamagedFileTest(WindowCase):
    """What is no settings file, or holds nonsense."""

    def _put_aside(self, content: bytes) -> None:
        """The program takes its defaults, tells of the file, keeps it, and begins a new one."""
        panel.store_window(self.configuration, content)
        program = self.start()
        program.wait_until_shown("Einstellungen")
        self.assertIn("ist beschädigt", program.wait_for_log(str(self.file)))
        self.wait_for_size(program, 720, 950)
        (aside,) = self.file.parent.glob("*.damaged-*")
        self.assertEqual(aside.read_bytes(), content)
        program.click("OK")
        program.wait_until_gone("Einstellungen")
        self.assertEqual(program.close(), 0)
        self.wait_until_stored("width=720")

    def test_other_bytes(self) -> None:
        """Not a text at all."""
        self._put_aside(bytes(range(256)) * 4)

    def test_half_a_heading(self) -> None:
        """A group without its end."""
        self._put_aside(b"[window\nwidth=300\n")

    def test_half_a_line(self) -> None:
        """Cut off in the middle of a key."""
        self._put_aside(b"[window]\nwidth=300\nheight")

    def test_nonsense(self) -> None:
        """A value that is no size is left alone with a line in the log."""
        panel.store_window(self.configuration, b"[window]\nwidth=viel\nheight=800\ndark=false\n")
        program = self.start()
        program.wait_for_log("Gespeicherter Wert von window/width wird ignoriert: viel")
        self.wait_for_size(program, 720, 800)
        program.wait_until_shown(TO_DARK)


class SimulatorTest(unittest.TestCase):
    """The simulator's window beside that of the demo machine."""

    def test_closes_with_the_main_window(self) -> None:
        """It does not keep the program alive."""
        with panel.demo(1, BROVIK_DEMO_SIMULATOR="1") as program:
            program.wait_for("both windows", lambda: len(windows_of(program)) == 2)
            self.assertTrue(windows_of(program)[1].endswith("Simulator"))
            self.assertEqual(program.close(), 0)

    def test_plays_the_machine(self) -> None:
        """Its push buttons start and stop a run, its level switch follows."""
        with panel.demo(1, BROVIK_DEMO_SIMULATOR="1") as program:
            program.click("Schwimmer")
            program.wait_for("the level", lambda: any("unterschritten" in name for name in program.names()))
            program.click("Taster grün")
            program.wait_until_shown("Automatikbetrieb abbrechen")
            program.click("Taster rot")
            program.wait_until_shown(START)

    def _pressure(self, program: Panel) -> float:
        texts = (re.fullmatch(r"Druck:\n(-?[\d.]+) bar", name) for name in program.names())
        return next((float(match[1]) for match in texts if match), 0.0)

    def test_sliders_move_the_machine(self) -> None:
        """By the raw input, which the backend converts, and by the measured value itself."""
        with panel.demo(1, BROVIK_DEMO_SIMULATOR="1") as program:
            program.click("A-In 0 (20 %)", "slider")
            program.wait_for("a pressure", lambda: 1.5 < self._pressure(program) < 2.2)
            slider = program.wait_for("the slider", lambda: self._pressure_slider(program))
            desktop.click(slider.x + slider.width * 4 // 5, slider.middle[1])
            program.wait_for("a higher pressure", lambda: self._pressure(program) > 3)

    def _pressure_slider(self, program: Panel) -> Box | None:
        names = (name for name in program.names() if name.startswith("Druck ("))
        found = program.find(next(names, ""), "slider")
        return found.box if found else None

    def test_not_there_unless_wanted(self) -> None:
        """One window alone, and no button for another."""
        with panel.demo(1) as program:
            program.wait_until_shown(START)
            self.assertEqual(len(windows_of(program)), 1)
            self.assertIsNone(program.find("Simulator"))


if __name__ == "__main__":
    unittest.main()
