"""The on-screen keyboard on the real window."""

import subprocess
import tempfile
import unittest
from pathlib import Path

from support import desktop, panel
from support.panel import Panel

FIELD = "Minimum Säure"
LAST_BUTTON = "Überprüfung starten"
PANEL_COLOUR = "#263238"


def panel_top(program: Panel, picture: Path) -> int | None:
    """The window's first row that belongs to the keyboard at its left edge; None while there is none."""
    desktop.screenshot(picture, program.window)
    column = ["convert", str(picture), "-crop", "1x0+2+0", "+repage", "-depth", "8", "txt:-"]
    rows = subprocess.run(column, check=True, capture_output=True, text=True).stdout.splitlines()[1:]
    return next((row for row, line in enumerate(rows) if PANEL_COLOUR in line), None)


class KeyboardTest(unittest.TestCase):
    """The keyboard comes up for a field, and the page gives way."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        folder = Path(self.enterContext(directory))
        self._picture = folder / "window.png"
        program = panel.remote()
        # As high as the page needs it.
        panel.store_window(program.directory, b"[window]\nwidth=800\nheight=1200\n")
        self.program = self.enterContext(program)
        self.program.wait_until_shown(panel.READY)

    def _raise_keyboard(self) -> int:
        """Clicks on the field. Gives the row at which the keyboard comes to rest."""
        self.program.click(FIELD)
        rows = [self.program.wait_for("the keyboard", lambda: panel_top(self.program, self._picture))]

        def at_rest() -> bool:
            rows.append(panel_top(self.program, self._picture) or 0)
            return rows[-1] == rows[-2]

        self.program.wait_for("the end of the animation", at_rest)
        return rows[-1]

    def _bottom(self) -> int:
        """Where the page's last button ends, as a row of the window."""
        top = self.program.wait_until_shown(panel.TITLE, "frame").box.y
        return self.program.wait_until_shown(LAST_BUTTON).box.bottom - top

    def _drag_up(self) -> None:
        x, y = self.program.wait_until_shown("0 %").box.middle
        desktop.xdotool("mousemove", x, y, "mousedown", 1)
        for step in range(20, 401, 20):
            desktop.xdotool("mousemove", x, y - step)
        desktop.xdotool("mouseup", 1)

    def test_page_ends_at_the_keyboard(self) -> None:
        """The page cannot be dragged while it fits. Above the keyboard it can, up to its last button."""
        self.assertIsNone(panel_top(self.program, self._picture))
        rest = self._bottom()
        self._drag_up()
        self.assertEqual(self._bottom(), rest)
        top = self._raise_keyboard()
        self.assertGreater(rest, top)
        self._drag_up()
        self.program.wait_for("the last button", lambda: self._bottom() <= top)

    def test_typed_value_reaches_the_backend(self) -> None:
        """A number typed into the field is a wish; the field shows what the backend makes of it."""
        self._raise_keyboard()
        desktop.press_key("ctrl+a")
        desktop.type_text("12")
        desktop.press_key("Return")
        self.program.wait_for("the wish", lambda: self.program.calls("settings_from_cpp"))
        self.assertEqual(self.program.calls("settings_from_cpp"), ["SettingsEnum.lw_saure_min 12.0"])
        self.program.wait_until_shown("10 mS/cm")
        self.program.backend("from brovik.settings import SettingsValues; SettingsValues.lw_saure_min = 13")
        self.program.wait_until_shown("13 mS/cm")
