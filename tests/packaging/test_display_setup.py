"""What the display is started with."""

import configparser
import os
import tempfile
import unittest
from pathlib import Path

from units import UNITS, run_script

SCRIPT = UNITS / "kubelor-display-setup"
TURNS = {
    "0": ("normal", "normal", (1, 0, 0, 0, 1, 0)),
    "90": ("rotate-270", "right", (0, 1, 0, -1, 0, 1)),
    "180": ("rotate-180", "inverted", (-1, 0, 1, 0, -1, 1)),
    "270": ("rotate-90", "left", (0, -1, 1, 1, 0, 0)),
}


class DisplaySetupTest(unittest.TestCase):
    """The script in front of each display."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.folder = Path(self.enterContext(folder))
        self.settings = self.folder / "display.conf"

    def _write(self, display: str, settings: str | None) -> str:
        """Runs the script, and gives its complaints."""
        if settings is not None:
            self.settings.write_text(settings, "utf-8")
        run = run_script(
            SCRIPT, display, RUNTIME_DIRECTORY=str(self.folder), KUBELOR_DISPLAY_CONF=str(self.settings)
        )
        self.assertEqual(run.returncode, 0, run.stderr)
        return run.stderr

    def _weston(self) -> configparser.ConfigParser:
        parser = configparser.ConfigParser()
        parser.read(self.folder / "weston.ini", "utf-8")
        return parser

    def _environment(self) -> dict[str, str]:
        lines = (self.folder / "environment").read_text("utf-8").splitlines()
        return dict(line.split("=", 1) for line in lines)  # type: ignore[misc]

    def test_wayland(self) -> None:
        """A compositor for one program that never blanks, and a program that finds it."""
        for rotation, (name, _, _) in TURNS.items():
            with self.subTest(rotation):
                complaints = self._write("wayland", f'ROTATION="{rotation}"\nOUTPUT="HDMI-A-1"\n')
                self.assertEqual(complaints, "")
                self.assertEqual(dict(self._weston()["output"]), {"name": "HDMI-A-1", "transform": name})
        core = self._weston()["core"]
        self.assertEqual([core["shell"], core["idle-time"]], ["kiosk-shell.so", "0"])
        self.assertEqual(core["use-pixman"], "false")
        self.assertEqual(self._environment()["QT_QPA_PLATFORM"], "wayland")
        self.assertEqual(self._environment()["WAYLAND_DISPLAY"], f"/run/user/{os.getuid()}/wayland-0")

    def test_x11(self) -> None:
        """The picture turns, and the touch with it."""
        for rotation, (_, name, matrix) in TURNS.items():
            with self.subTest(rotation):
                self._write("x11", f"ROTATION={rotation}\n")
                text = (self.folder / "xorg.conf.d/60-kubelor.conf").read_text("utf-8")
                self.assertIn(f'Option "Rotate" "{name}"', text)
                numbers = " ".join(map(str, matrix))
                self.assertIn(f'Option "TransformationMatrix" "{numbers} 0 0 1"', text)
        self.assertEqual(self._environment(), {"QT_QPA_PLATFORM": "xcb", "DISPLAY": ":0"})

    def test_touch_follows_the_picture(self) -> None:
        """Where the finger is on the turned picture: corners of the panel, clockwise turns."""
        # The panel's upper left corner shows, after a turn by 90 degrees, the picture's lower left one.
        corners = {"0": (0, 0), "90": (0, 1), "180": (1, 1), "270": (1, 0)}
        for rotation, corner in corners.items():
            matrix = TURNS[rotation][2]
            self.assertEqual((matrix[2], matrix[5]), corner, rotation)

    def test_wrong_settings(self) -> None:
        """What is wrong is told, and the standard holds; nothing of it gets into the files."""
        for settings in ('ROTATION="45"', 'OUTPUT="a b"', 'RENDERER="$(reboot)"', 'OUTPUT="x\n[core]"'):
            with self.subTest(settings):
                complaints = self._write("wayland", settings)
                self.assertEqual("nicht zu gebrauchen" in complaints, "\n" not in settings)
                self.assertEqual(self._weston()["output"]["transform"], "normal")
                self.assertNotIn("reboot", (self.folder / "weston.ini").read_text("utf-8"))

    def test_no_settings(self) -> None:
        """Without a file there is a picture all the same."""
        self.assertIn("fehlt", self._write("wayland", None))
        self.assertEqual(self._weston()["output"]["name"], "DSI-1")

    def test_given_settings(self) -> None:
        """The file that is installed says nothing wrong."""
        self.assertEqual(self._write("wayland", (UNITS / "display.conf").read_text("utf-8")), "")

    def test_usage(self) -> None:
        """Another display is an error."""
        self.assertEqual(run_script(SCRIPT, "mir", RUNTIME_DIRECTORY=str(self.folder)).returncode, 2)


if __name__ == "__main__":
    unittest.main()
