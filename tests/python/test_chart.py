"""The chart in memory as the backend sees it."""

import math
import threading
import unittest
from typing import Any

import _probe
from brovik import chart
from brovik.actuator import ActuatorEnum
from brovik.chart import ChartEnum, LineEnum
from chart_support import ATTRIBUTES, CHART, ChartCase
from shared_properties import Attribute, check_initial_values, check_read_only, check_writes

CRITICAL = 2

# Python name of a line, its QML name, its enumerator; in the order of their numbers.
LINES = [
    ("co2", "co2", LineEnum.Co2),
    ("heiss", "heiss", LineEnum.Heiss),
    ("kalt", "kalt", LineEnum.Kalt),
    ("kanal", "kanal", LineEnum.Kanal),
    ("kreis", "kreis", LineEnum.Kreis),
    ("l_in", "lIn", LineEnum.LIn),
    ("l_out", "lOut", LineEnum.LOut),
    ("luft", "luft", LineEnum.Luft),
    ("lw", "lw", LineEnum.Lw),
    ("p", "p", LineEnum.P),
    ("pumpe", "pumpe", LineEnum.Pumpe),
    ("s_in", "sIn", LineEnum.SIn),
    ("s_out", "sOut", LineEnum.SOut),
    ("steam", "steam", LineEnum.Steam),
    ("step", "step", LineEnum.Step),
]

LINES_OF_ACTUATORS = {
    ActuatorEnum.MvLaugeIn: "l_in",
    ActuatorEnum.MvSaureIn: "s_in",
    ActuatorEnum.MvKalt: "kalt",
    ActuatorEnum.MvHeiss: "heiss",
    ActuatorEnum.MvKreis: "kreis",
    ActuatorEnum.MvSaureOut: "s_out",
    ActuatorEnum.MvLaugeOut: "l_out",
    ActuatorEnum.MvLuft: "luft",
    ActuatorEnum.MvCo2: "co2",
    ActuatorEnum.MvKanal: "kanal",
    ActuatorEnum.Pumpe: "pumpe",
    ActuatorEnum.MvSteam: "steam",
    ActuatorEnum.Heat1: None,
    ActuatorEnum.ToggleManualHeating: None,
}


class ModuleTest(ChartCase):
    """Content of the module, attributes, enumerations."""

    def test_content(self) -> None:
        """What the module holds, in its order."""
        self.assertEqual(
            [name for name in vars(chart) if not name.startswith("__")],
            [
                "ChartMetaDataList",
                "ChartEnum",
                "LineEnum",
                "ChartMetaData",
                "ChartLineClass",
                "ChartClass",
                "Chart",
            ],
        )

    def test_enum_numbers(self) -> None:
        """Names and numbers of the enumerations."""
        self.assertEqual(
            {name: int(value) for name, value in ChartEnum.__members__.items()},
            {"Invalid": 0, "Save": 1, "Load": 2, "Delete": 3, "Rename": 4, "Hand": 5},
        )
        self.assertEqual(
            list(LineEnum.__members__.values()), [LineEnum.Invalid, *(enum for *_, enum in LINES)]
        )
        self.assertEqual([int(enum) for *_, enum in LINES], list(range(1, 16)))

    def test_initial_values(self) -> None:
        """Every attribute starts as documented: a fresh program has the title "Kein Chart geladen"."""
        check_initial_values(self, CHART, ATTRIBUTES)

    def test_writes(self) -> None:
        """Every attribute can be written and notifies once."""
        check_writes(self, "Chart", CHART, ATTRIBUTES)

    def test_the_view_belongs_to_the_screens(self) -> None:
        """What the screens keep of the view is not visible here."""
        for name in ("shown_secs", "prev_x_min", "prev_x_max"):
            self.assertFalse(hasattr(CHART, name), name)

    def test_lines_are_read_only(self) -> None:
        """The fifteen lines never change, and each starts with its QML name."""
        check_read_only(self, CHART, {name: getattr(CHART, name) for name, *_ in LINES})
        self.assertEqual([getattr(CHART, name).name for name, *_ in LINES], [qml for _, qml, _ in LINES])

    def test_no_constructors(self) -> None:
        """Python makes neither lines nor charts."""
        for cls in (chart.ChartLineClass, chart.ChartClass):
            with self.subTest(cls), self.assertRaises(TypeError):
                cls()


class LookupTest(ChartCase):
    """Lines by enumerators."""

    def test_line_from_line_enum(self) -> None:
        """Every line by its enumerator, and None for what is no line."""
        for name, _, enum in LINES:
            self.assertIs(CHART.line_from_line_enum(enum), getattr(CHART, name))
        for number in (0, 16, -1, 99):
            self.assertIsNone(CHART.line_from_line_enum(LineEnum(number)), number)
        with self.assertRaises(TypeError):
            CHART.line_from_line_enum(3)

    def test_line_from_actuator_enum(self) -> None:
        """The line of every output; the heater has none."""
        self.assertEqual(set(LINES_OF_ACTUATORS), set(ActuatorEnum.__members__.values()))
        for enum, name in LINES_OF_ACTUATORS.items():
            with self.subTest(enum):
                expected = None if name is None else getattr(CHART, name)
                self.assertIs(CHART.line_from_actuator_enum(enum), expected)
        self.assertIsNone(CHART.line_from_actuator_enum(ActuatorEnum(99)))
        with self.assertRaises(TypeError):
            CHART.line_from_actuator_enum(LineEnum.Kalt)


class LineTest(ChartCase):
    """Points of a line."""

    def setUp(self) -> None:
        super().setUp()
        self.log = _probe.SignalLog("Chart.p")

    def test_add_point_without_a_page(self) -> None:
        """Each point stays, is announced once, and is complained about once with the line's name."""
        capture = _probe.LogCapture()
        CHART.p.add_point((1, 2.5))
        CHART.p.add_point([2.0, 3.0])
        self.assertEqual(CHART.p.data, [(1.0, 2.5), (2.0, 3.0)])
        self.assertEqual(self.log.threads, [("pointAdded", False)] * 2)
        text = (
            'Der ChartLine "p" wurde noch keine LineSeries zugeordnet, daher kann der Punkt QPointF({},{})'
            " nicht hinzugefügt werden"
        )
        self.assertEqual(capture.messages, [(CRITICAL, text.format(1, 2.5)), (CRITICAL, text.format(2, 3))])

    def test_the_complaint_has_the_present_name(self) -> None:
        """The name is what the backend made of it."""
        capture = _probe.LogCapture()
        CHART.p.name = "Druck"
        CHART.p.add_point((0, 0))
        CHART.p.name = "p"
        self.assertIn('Der ChartLine "Druck" wurde', capture.messages[0][1])

    def test_name(self) -> None:
        """The name notifies once."""
        attributes = [Attribute("name", "name", "p", "Druck")]
        check_initial_values(self, CHART.p, attributes)
        check_writes(self, "Chart.p", CHART.p, attributes)

    def test_data(self) -> None:
        """A list replaces all points and is announced as a whole; the same points are no change."""
        CHART.p.data = [(0, 1), (0.5, 2)]
        self.assertEqual(CHART.p.data, [(0.0, 1.0), (0.5, 2.0)])
        CHART.p.data = ((0.0, 1.0), [0.5, 2.0])
        CHART.p.data = [(0.0, 1.0), (0.5, 2.0 + 1e-13)]
        self.assertEqual(self.log.names, ["dataChanged"])
        self.assertEqual(CHART.p.data, [(0.0, 1.0), (0.5, 2.0)])
        CHART.p.data = [(0.0, 1.0), (0.5, 2.1)]
        self.assertEqual(self.log.threads, [("dataChanged", False)] * 2)

    def test_clear(self) -> None:
        """Clearing is writing an empty list: silent on an empty line."""
        CHART.p.clear()
        self.assertEqual(self.log.names, [])
        CHART.p.data = [(1, 1)]
        CHART.p.clear()
        CHART.p.clear()
        self.assertEqual(CHART.p.data, [])
        self.assertEqual(self.log.names, ["dataChanged"] * 2)

    def test_clear_all(self) -> None:
        """Fifteen empty lines raise nothing; each filled line is emptied."""
        logs = {name: _probe.SignalLog(f"Chart.{qml}") for name, qml, _ in LINES}
        CHART.clear()
        self.assertEqual([log.names for log in logs.values()], [[]] * 15)
        for name, *_ in LINES:
            getattr(CHART, name).data = [(0, 1)]
        CHART.clear()
        self.assertEqual([log.names for log in logs.values()], [["dataChanged"] * 2] * 15)
        self.assertEqual([getattr(CHART, name).data for name, *_ in LINES], [[]] * 15)

    def test_a_copy_is_handed_out(self) -> None:
        """What is done to the list that was read leaves the line alone."""
        CHART.p.data = [(0, 1)]
        CHART.p.data.append((1, 2))
        self.assertEqual(CHART.p.data, [(0.0, 1.0)])

    def test_strange_numbers_are_kept(self) -> None:
        """The record is exact, whatever the numbers are."""
        CHART.p.data = [(-1, math.inf), (5, -math.inf), (3, 1e300)]
        CHART.p.add_point((math.nan, 1))
        self.assertEqual(CHART.p.data[:3], [(-1.0, math.inf), (5.0, -math.inf), (3.0, 1e300)])
        self.assertTrue(math.isnan(CHART.p.data[3][0]))

    def test_wrong_points(self) -> None:
        """What is no point is a TypeError and changes nothing."""
        CHART.p.data = [(0, 1)]
        self.log.clear()
        capture = _probe.LogCapture()
        wrong_points: list[Any] = [None, 5, "ab", (1,), (), ("1", 2), (None, 1), (1j, 0), object()]
        for wrong in wrong_points:
            with self.subTest(wrong):
                with self.assertRaises(TypeError):
                    CHART.p.add_point(wrong)
                with self.assertRaises(TypeError):
                    CHART.p.data = [(1, 2), wrong]
        wrong_lists: list[Any] = [None, 5, {(1, 2)}, {}, iter([(1, 2)]), "ab"]
        for wrong in wrong_lists:
            with self.subTest(wrong), self.assertRaises(TypeError):
                CHART.p.data = wrong
        with self.assertRaises(TypeError):
            CHART.p.add_point(1, 2)
        self.assertEqual((CHART.p.data, self.log.names, capture.messages), ([(0.0, 1.0)], [], []))

    def test_burst_from_a_thread(self) -> None:
        """Ten thousand points in one go: none is lost and their order stays."""
        capture = _probe.LogCapture()
        points = [(index / 2, index % 7) for index in range(10_000)]

        def burst() -> None:
            for point in points:
                CHART.p.add_point(point)

        thread = threading.Thread(target=burst)
        thread.start()
        thread.join()
        self.assertEqual(CHART.p.data, points)
        self.assertEqual(self.log.threads, [("pointAdded", False)] * 10_000)
        self.assertEqual(len(capture.messages), 10_000)


if __name__ == "__main__":
    unittest.main()
