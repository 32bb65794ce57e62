"""The chart page under real fingers, and with a backend that fails."""

import re
import unittest
from typing import NamedTuple

from support import panel, tuio

SHOW_ALL = "Zeige alles"
SHOW_LESS = "Zeige weniger"
LENGTH = 300.0
SHOWN = 60.0
# Of gestures that are made again and again.
FINGERS_DEADLINE_SECS = 180.0

# A curve of five minutes, of which the last one shows.
RECORD = f"""
from brovik.chart import Chart
Chart.p.data = [(second, 1.0 + second % 7) for second in range({LENGTH:.0f} + 1)]
"""

FAILING_BACKEND = """
import brovik
import controller
from brovik import chart
from brovik.chart import Chart

def load(enum, value):
    if enum == chart.ChartEnum.Load:
        try:
            raise OSError(f"Chart unlesbar: {value}")
        except OSError:
            brovik.forward_exception()

controller.answers["chart_action_from_cpp"] = load
Chart.p.data = [(0.0, 1.0), (30.0, 1.0)]
records = chart.ChartMetaDataList()
records.append(chart.ChartMetaData("Fass 1", "success", "gut", "heute", 30))
Chart.meta_data_list = records
"""


class View(NamedTuple):
    """The visible stretch of time, as the page tells it to a tenth of a second."""

    start: float
    end: float
    length: float

    @property
    def width(self) -> float:
        """In seconds."""
        return self.end - self.start


class ChartTouchTest(unittest.TestCase):
    """One finger pans, two fingers zoom."""

    def setUp(self) -> None:
        port = tuio.free_port()
        self.program = self.enterContext(panel.remote(**tuio.environment(port)))
        self.program.wait_until_shown(panel.READY)
        self.program.click("Chart", "page tab")
        frame = self.program.wait_until_shown(panel.TITLE, "frame").box
        top = self.program.wait_until_shown("mehr Optionen").box.bottom
        bottom = self.program.wait_until_shown("AutoScroll").box.y
        self._y = (top + bottom) // 2 - frame.y
        self._middle = frame.width // 2
        self._marks = 0
        self.fingers = tuio.Fingers(port, frame.width, frame.height)
        self.program.backend(RECORD)
        self._wait_for(View(LENGTH - SHOWN, LENGTH, LENGTH))

    def _text(self) -> str:
        return next((name for name in self.program.names() if name.startswith((SHOW_ALL, SHOW_LESS))), "")

    def _view(self) -> View | None:
        numbers = re.findall(r"\d+\.\d", self._text())
        return View(*map(float, numbers)) if len(numbers) == 3 else None

    def _wait_for(self, view: View) -> None:
        self.program.wait_for(f"{view}", lambda: self._view() == view)

    def _current_view(self) -> View:
        """The view, once the screen can be read."""
        return self.program.wait_for("the view", self._view)

    def _changed_view(self, old: View) -> View:
        """The next view that differs from the old one."""
        return self.program.wait_for(
            f"another view than {old}", lambda: view if (view := self._view()) and view != old else None
        )

    def _rest(self) -> View:
        """The view when all fingers so far have had their effect, and are lifted."""
        self.fingers.lift()
        # A busy program may show the first mark before it has read of the fingers, but not the second, which
        # is sent when the first one shows.
        for _ in range(2):
            self._show_mark()
        return self._current_view()

    def _show_mark(self) -> None:
        self._marks += 1
        status = f"Ruhe {self._marks}"
        self.program.backend(f"from brovik.gui import Gui; Gui.status = {status!r}")
        self.program.wait_until_shown(status)

    def _at(self, offset: float) -> tuple[float, float]:
        return self._middle + offset, self._y

    def _drag(self, way: int) -> None:
        """Moves one finger that far, in steps."""
        step = 10 if way > 0 else -10
        for offset in range(0, way + step, step):
            self.fingers.put(a=self._at(offset))

    def _spread(self, gap: int, to_gap: int) -> None:
        """Moves two fingers apart or together, in steps."""
        step = 10 if to_gap > gap else -10
        for width in range(gap, to_gap + step, step):
            self.fingers.put(a=self._at(-width / 2), b=self._at(width / 2))

    def test_one_finger_pans(self) -> None:
        """The chart follows the finger, there and back, and keeps its width."""
        before = self._current_view()
        self._drag(100)
        panned = self._changed_view(before)
        self.assertLess(panned.start, before.start)
        panned = self._rest()
        self.assertAlmostEqual(panned.width, SHOWN, delta=0.11)
        self._drag(-50)
        back = self._changed_view(panned)
        back = self._rest()
        self.assertAlmostEqual(back.start - panned.start, (before.start - panned.start) / 2, delta=0.3)

    def test_pan_ends_at_the_edges(self) -> None:
        """Beyond the end of the chart the finger has no effect."""
        before = self._current_view()
        self._drag(-200)
        self.assertEqual(self._rest(), before)

        # A busy machine loses some of what the fingers tell.
        def near_the_start() -> bool:
            for _ in range(3):
                self._drag(250)
                self.fingers.lift()
            return self._rest().start < SHOWN / 2

        self.program.wait_for("the start of the chart", near_the_start, FINGERS_DEADLINE_SECS)
        for _ in range(3):
            self._drag(250)
            self.fingers.lift()
        view = self._rest()
        self.assertGreaterEqual(view.start, 0.0)
        self.assertLess(view.start, SHOWN / 2)
        self.assertAlmostEqual(view.width, SHOWN, delta=0.11)

    def test_two_fingers_zoom(self) -> None:
        """Fingers that part show less, fingers that close in show more, up to the whole chart."""
        before = self._current_view()
        self._spread(100, 200)
        self._changed_view(before)
        near = self._rest()
        self.assertLess(near.width, before.width * 0.9)
        self.assertGreater(near.start, before.start)
        self.assertLess(near.end, before.end)

        # A busy machine loses some of what the fingers tell.
        def widest() -> bool:
            for _ in range(3):
                self._spread(300, 50)
                self.fingers.lift()
            return self._rest() == View(0.0, LENGTH, LENGTH)

        self.program.wait_for("the whole chart", widest, FINGERS_DEADLINE_SECS)

    def test_zoom_ends_at_a_tenth_of_a_second(self) -> None:
        """Fingers that part further and further stop changing the view."""

        # A busy machine loses some of what the fingers tell.
        def narrowest() -> bool:
            self._spread(20, 300)
            return self._rest().width < 0.21

        self.program.wait_for("the narrowest view", narrowest, FINGERS_DEADLINE_SECS)
        view = self._rest()
        self.assertAlmostEqual(view.width, 0.1, delta=0.11)
        self._spread(20, 300)
        self.assertEqual(self._rest(), view)
        for _ in range(5):
            self._spread(300, 20)
            self.fingers.lift()
        self.assertGreater(self._rest().width, 1.0)

    def test_no_touch_while_all_is_shown(self) -> None:
        """The page does not react to fingers then, and comes back to what it showed before."""
        before = self._current_view()
        self.program.click(self.program.wait_for("the switch", self._text))
        self.program.wait_until_shown(f"{SHOW_LESS} (aktuell {LENGTH} Sekunden)")
        self._drag(100)
        self._spread(100, 200)
        self.fingers.lift()
        self.program.click(f"{SHOW_LESS} (aktuell {LENGTH} Sekunden)")
        self.program.wait_for("the former view", lambda: self._view() == before)

    def test_chart_shorter_than_the_view(self) -> None:
        """It cannot be panned."""
        self.program.backend("from brovik.chart import Chart; Chart.p.data = [(0.0, 1.0), (30.0, 1.0)]")
        view = View(0.0, 30.0, 30.0)
        self._wait_for(view)
        self._drag(100)
        self._drag(-100)
        self.assertEqual(self._rest(), view)

    def test_data_replaced_under_a_finger(self) -> None:
        """The finger goes on over the new chart; the view stays within it."""
        self._drag(50)
        for length in (5, 1000, 0, 120):
            self.program.backend(
                "from brovik.chart import Chart\n"
                f"Chart.p.data = [(second, 1.0) for second in range({length})]\n"
            )
            self._drag(100)
            self._drag(-100)
        view = self._rest()
        self.assertEqual(view.length, 119.0)
        self.assertGreaterEqual(view.start, 0.0)
        self.assertLessEqual(view.end, view.length)


class ChartBackendTest(unittest.TestCase):
    """A backend that answers with an exception."""

    def test_loading_fails(self) -> None:
        """The exception comes as a dialog; list and chart are as before, and the next request works."""
        with panel.remote() as program:
            program.wait_until_shown(panel.READY)
            program.backend(FAILING_BACKEND)
            program.click("Chart", "page tab")
            program.click("Chart-Browser")
            program.click("laden")
            program.wait_until_shown("Chart unlesbar: Fass 1")
            program.click("OK")
            program.wait_until_gone("Chart unlesbar: Fass 1")
            program.wait_until_shown("Fass 1 - gut")
            program.click("Zurück zum Chart")
            program.wait_until_shown("Zeige alles (aktuell 0.0 bis 30.0 von 30.0 Sekunden)")
            program.click("Handbetrieb aufzeichnen")
            program.wait_for("the next request", lambda: len(program.calls("chart_action_from_cpp")) == 2)
            self.assertEqual(
                program.calls("chart_action_from_cpp"), ["ChartEnum.Load Fass 1", "ChartEnum.Hand None"]
            )
            self.assertEqual(program.close(), 0)
