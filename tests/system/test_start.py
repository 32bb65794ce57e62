"""The program comes up, and goes, as it should."""

import socket
import subprocess
import tempfile
import unittest
from pathlib import Path

from support import desktop, panel
from support.automatic import START
from support.panel import Panel
from support.waiting import wait_for


class StartTest(unittest.TestCase):
    """Start and end with a working backend."""

    def test_window_comes_up_and_closes(self) -> None:
        """The window shows what the backend wrote; closing it ends the program with 0."""
        with panel.remote() as program:
            program.wait_until_shown(panel.READY)
            program.wait_until_shown(START)
            for tab in ("Automatik", "Chart", "Settings"):
                program.wait_until_shown(tab, "page tab")
            self.assertEqual(program.calls("gui_value_from_cpp"), ["GuiEnum.Ready None"])
            self.assertEqual(program.close(), 0)

    def test_unknown_option_opens_dialog(self) -> None:
        """`--unknown` opens the main screen and then the dialog; OK closes it and the program runs on."""
        with panel.remote("--unknown") as program:
            program.wait_until_shown("Ungültige(r) Parameter")
            self.assertTrue(any("unknown" in name for name in program.names()))
            program.click("OK")
            program.wait_until_gone("Ungültige(r) Parameter")
            program.wait_until_shown(START)

    def test_help_and_version_start_no_interpreter(self) -> None:
        """`--help` and `--version` print and end with 0; the backend is not imported."""
        for option, text in (("--help", "Fullscreen-Modus"), ("--version", "2505211")):
            with self.subTest(option), panel.remote(option) as program:
                self.assertEqual(program.wait_for_end(), 0)
                self.assertTrue(any(text in line for line in program.log), program.log)
                self.assertFalse(any("BROVIK_PY_DIR" in line for line in program.log))

    def test_make_stubs_opens_no_window(self) -> None:
        """`--make-stubs` ends with 0 after the backend's import, without asking for a running instance."""
        with panel.remote() as first:
            first.wait_until_shown(panel.READY)
            with tempfile.TemporaryDirectory() as stubs, panel.remote("--make-stubs", "-", stubs) as second:
                self.assertEqual(second.wait_for_end(), 0)
                self.assertFalse(any("läuft das Programm bereits" in line for line in second.log))
                self.assertEqual(second.calls("gui_value_from_cpp"), [])

    def test_arguments_behind_separator_go_to_python(self) -> None:
        """`-f - --make-stubs` starts in full screen and passes the rest to Python."""
        with panel.remote("-f", "-", "--make-stubs") as program:
            program.wait_until_shown(panel.READY)
            self.assertEqual(program.backend("import sys; result = sys.argv[1:]"), "['--make-stubs']")
            geometry = desktop.xdotool("getdisplaygeometry").split()
            size = f"WIDTH={geometry[0]}\nHEIGHT={geometry[1]}\n"
            wait_for(
                "full screen",
                lambda: size in desktop.xdotool("getwindowgeometry", "--shell", program.window),
            )


class MissingBackendTest(unittest.TestCase):
    """No backend in its directory."""

    def test_dialog_and_critical_lines(self) -> None:
        """The window comes up with the exception; an action logs a critical line and does nothing else."""
        with tempfile.TemporaryDirectory() as empty, Panel(Path(empty)) as program:
            program.wait_until_shown("ModuleNotFoundError")
            self.assertTrue(any("No module named 'controller'" in name for name in program.names()))
            program.click("OK")
            program.wait_until_gone("ModuleNotFoundError")
            program.wait_until_shown("Python Backend nicht initialisiert")
            program.wait_until_shown("Keine Statusmeldungen vorhanden")
            program.press_and_hold(START)
            line = program.wait_for_log("auto_value_from_cpp() nicht gefunden")
            self.assertIn("[CRIT ]", line)
            self.assertEqual(program.close(), 0)


class SecondInstanceTest(unittest.TestCase):
    """A second start brings the running program to the front."""

    def test_second_instance_raises_the_first(self) -> None:
        """The second process imports its backend, ends with 100, and the first one's window is up again."""
        with panel.remote() as first:
            first.wait_until_shown(panel.READY)
            window = first.window
            desktop.xdotool("windowminimize", "--sync", window)
            with panel.remote() as second:
                self.assertEqual(second.wait_for_end(), 100)
                self.assertTrue(any("nach vorne zu bringen (wmctrl)" in line for line in second.log))
            wait_for("the first window on top", lambda: active_window() == window)
            self.assertIsNone(first.process.poll())

    def test_second_instance_asks_socket_first(self) -> None:
        """With a listener on the socket, that one is asked and the window list is not."""
        with tempfile.TemporaryDirectory() as folder, socket.socket(socket.AF_UNIX) as listener:
            path = f"{folder}/raise.sock"
            listener.bind(path)
            listener.listen()
            with panel.remote(KUBELOR_DEMO_SOCKET=path) as program:
                connection, _ = listener.accept()
                with connection, connection.makefile("rb") as stream:
                    self.assertEqual(program.wait_for_end(), 100)
                    self.assertEqual(stream.read(), b"fullscreen 1")
                self.assertFalse(any("(wmctrl)" in line for line in program.log))


def active_window() -> str:
    """The X id of the window that has the focus; empty if none has."""
    command = ["xdotool", "getactivewindow"]
    return subprocess.run(command, capture_output=True, text=True, check=False).stdout.strip()
