"""The same record gives the same picture, be it drawn point by point as it comes or loaded as a whole."""

import math
import unittest

from support import desktop, panel

LENGTH = 300.0
ACTUATORS = "l_in s_in kalt heiss kreis s_out l_out luft co2 kanal pumpe steam".split()
FOLLOWING = f"Zeige alles (aktuell {LENGTH - 60} bis {LENGTH} von {LENGTH} Sekunden)"
ALL = f"Zeige weniger (aktuell {LENGTH} Sekunden)"
NOTHING = "Zeige alles (aktuell 0.0 bis 1.0 von -- Sekunden)"

Points = list[tuple[float, float]]


def record() -> dict[str, Points]:
    """A record of all lines. Whatever is drawn on while a recording runs ends with it."""
    times = [index * 0.5 for index in range(int(LENGTH * 2) + 1)]
    lines: dict[str, Points] = {
        "p": [(time, 2.0 + 1.5 * math.sin(time / 5) + 0.1 * (int(time * 2) * 7919 % 13)) for time in times],
        "lw": [(time, 30.0 + 25.0 * math.sin(time / 31)) for time in times],
        "step": [(25.0 * step, 1.0 + step) for step in range(12)] + [(LENGTH, 12.0)],
    }
    for height, line in enumerate(ACTUATORS, 1):
        changes = range(5 * height, int(LENGTH) - 10, 17 + height)
        on_off = [(float(time), float(height) * (index % 2 == 0)) for index, time in enumerate(changes)]
        lines[line] = on_off[: len(on_off) // 2 * 2]
    return lines


class ChartPictureTest(unittest.TestCase):
    """The part of the window between the buttons and the switches, with all lines shown."""

    def setUp(self) -> None:
        self.program = self.enterContext(panel.remote())
        self.program.wait_until_shown(panel.READY)
        self.program.backend(
            "from brovik.chart import Chart\n"
            f"Chart.actuator_names = {ACTUATORS!r}\n"
            "Chart.step_names = [f'Schritt {step}' for step in range(1, 13)]\n"
        )
        self.program.click("Chart", "page tab")
        for group in ("Aktoren", "Schritt"):
            heading = self.program.wait_until_shown(group).box
            desktop.click(heading.x + heading.height, heading.bottom + heading.height // 2)
        self._frame = self.program.wait_until_shown(panel.TITLE, "frame").box
        self._top = self.program.wait_until_shown("mehr Optionen").box.bottom
        self._bottom = self.program.wait_until_shown("AutoScroll").box.y

    def _picture(self, text: str) -> bytes:
        """The chart, once this tells what it shows, and nothing moves."""
        self.program.wait_until_shown(text)
        self.program.wait_until_still()
        pixels = desktop.pixels(self.program.window)
        row = len(pixels) // self._frame.height
        return pixels[row * (self._top - self._frame.y) : row * (self._bottom - self._frame.y)]

    def _differing(self, picture: bytes, other: bytes) -> int:
        """The number of pixels that are not the same."""
        size = len(picture) // (self._frame.width * (self._bottom - self._top))
        self.assertEqual(len(picture), len(other))
        return sum(
            picture[start : start + size] != other[start : start + size]
            for start in range(0, len(picture), size)
        )

    def _pictures(self) -> tuple[bytes, bytes]:
        """The end of the chart, and all of it."""
        following = self._picture(FOLLOWING)
        self.program.click(FOLLOWING)
        everything = self._picture(ALL)
        self.program.click(ALL)
        self.program.click("AutoScroll")
        self.assertTrue(self._picture(FOLLOWING) == following, "it is the same again")
        return following, everything

    def _live(self, lines: dict[str, Points]) -> None:
        """In the order of time; what comes at once is drawn at once, so it comes in many parts."""
        points = sorted((time, line, value) for line, data in lines.items() for time, value in data)
        size = len(points) // 40
        for start in range(0, len(points), size):
            part = points[start : start + size]
            self.program.backend(
                "from brovik.chart import Chart\n"
                f"for time, line, value in {part!r}:\n"
                "    getattr(Chart, line).add_point((time, value))\n"
            )

    def _clear(self) -> bytes:
        self.program.backend("from brovik.chart import Chart; Chart.clear()")
        return self._picture(NOTHING)

    def test_live_and_loaded(self) -> None:
        """Also after the other one, and not the picture of nothing."""
        lines = record()
        self._live(lines)
        live = self._pictures()
        empty = self._clear()
        self.program.backend(
            "from brovik.chart import Chart\n"
            f"for line, data in {lines!r}.items():\n"
            "    getattr(Chart, line).data = data\n"
        )
        # The line of the step goes on beyond the edge only while it is drawn live: a pixel at its end.
        for loaded, drawn in zip(self._pictures(), live):
            self.assertLessEqual(self._differing(loaded, drawn), 4)
        self.assertEqual(len({empty, *live}), 3)
        self.assertTrue(self._clear() == empty, "nothing is left")
        self._live(lines)
        self.assertTrue(self._pictures() == live, "drawn live again")
