"""The chart in memory and the list of saved charts as the backend sees them."""

import contextlib
import gc
import math
import operator
import os
import tempfile
import threading
import unittest
from collections.abc import Iterator
from typing import Any

import _probe
from brovik import chart
from brovik.actuator import ActuatorEnum
from brovik.chart import ChartEnum, ChartMetaData, ChartMetaDataList, LineEnum
from shared_properties import Attribute, check_initial_values, check_read_only, check_writes

CRITICAL = 2

CHART = chart.Chart

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

ATTRIBUTES = [
    Attribute("active", "active", False, True),
    Attribute("savable", "savable", False, True),
    Attribute("current_name", "currentName", "Kein Chart geladen", "Lauf <b>1</b>"),
    Attribute("assigned_names", "assignedNames", [], ["a", "ä"]),
    Attribute("step_names", "stepNames", [], ["Spülen", "Prüfen"]),
    Attribute("actuator_names", "actuatorNames", [], ["Lauge IN"]),
]


def record(name: str, duration: int = 60) -> ChartMetaData:
    """A record of this name."""
    return ChartMetaData(
        filename=name, result="success", status="gut", datetime_str="1.2.2025 10:00", duration=duration
    )


def fields(saved: ChartMetaData) -> tuple[str, str, str, str, int]:
    """All fields of a record."""
    return saved.name, saved.result, saved.status, saved.datetime_str, saved.duration


def names(charts: ChartMetaDataList) -> list[str]:
    """The names in a list."""
    return [charts[index].name for index in range(charts.size())]


def list_of(*members: str) -> ChartMetaDataList:
    """A list with records of these names."""
    made = ChartMetaDataList()
    for name in members:
        made.append(record(name))
    return made


@contextlib.contextmanager
def printed() -> Iterator[list[str]]:
    """The lines that native code writes to standard output meanwhile."""
    lines: list[str] = []
    with tempfile.TemporaryFile() as file:
        kept = os.dup(1)
        os.dup2(file.fileno(), 1)
        try:
            yield lines
        finally:
            os.dup2(kept, 1)
            os.close(kept)
            file.seek(0)
            lines.extend(file.read().decode().splitlines())


class ChartCase(unittest.TestCase):
    """Leaves the chart as it was made."""

    def setUp(self) -> None:
        self.addCleanup(self.restore)

    def restore(self) -> None:
        """The state at start."""
        CHART.clear()
        CHART.meta_data_list = ChartMetaDataList()
        for attribute in ATTRIBUTES:
            setattr(CHART, attribute.name, attribute.initial)
        _probe.settle()


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


class MetaDataTest(ChartCase):
    """Records of saved charts."""

    def test_empty(self) -> None:
        """Without arguments all fields are empty."""
        self.assertEqual(fields(ChartMetaData()), ("", "", "", "", 0))

    def test_named_arguments(self) -> None:
        """All five are required; the file name is the name."""
        made = ChartMetaData(filename="a", result="error", status="b", datetime_str="c", duration=7)
        self.assertEqual(fields(made), ("a", "error", "b", "c", 7))
        with self.assertRaises(TypeError):
            ChartMetaData(filename="a", result="error", status="b", datetime_str="c")
        with self.assertRaises(TypeError):
            ChartMetaData(filename="a", result="error", status="b", datetime_str="c", duration="7")

    def test_fields(self) -> None:
        """All fields can be written."""
        made = ChartMetaData()
        made.name, made.result, made.status, made.datetime_str, made.duration = "a", "b", "c", "d", -1
        self.assertEqual(fields(made), ("a", "b", "c", "d", -1))
        with self.assertRaises(TypeError):
            made.duration = 1.5
        with self.assertRaises(AttributeError):
            made.filename = "x"


class ListTest(ChartCase):
    """The list wrapper, on lists of its own and on the model's."""

    def test_append_copies(self) -> None:
        """The list has a record of its own."""
        made, entry = ChartMetaDataList(), record("a")
        made.append(entry)
        entry.name = "b"
        self.assertEqual(names(made), ["a"])
        for wrong in (None, "a", made):
            with self.subTest(wrong), self.assertRaises(TypeError):
                made.append(wrong)

    def test_references(self) -> None:
        """Index, at and iteration give the records in the list."""
        made = list_of("a", "b", "c")
        made[0].name = "x"
        made.at(1).name = "y"
        for entry in made:
            entry.duration = 5
        self.assertEqual([fields(made[i])[::4] for i in range(3)], [("x", 5), ("y", 5), ("c", 5)])

    def test_index(self) -> None:
        """Negative indices count from the end."""
        made = list_of("a", "b", "c")
        self.assertEqual([made[index].name for index in (0, 2, -1, -3)], ["a", "c", "c", "a"])
        made[-1] = record("z")
        made[0] = record("y")
        self.assertEqual(names(made), ["y", "b", "z"])

    def test_index_out_of_range(self) -> None:
        """The error names the legal indices."""
        made = list_of("a", "b", "c")
        for index in (3, 99, -4):
            text = f"Ungültiger Index {index}. Gültige Indices sind 0...2 (-1...-3).\n"
            for name, access in self.accesses(made).items():
                with self.subTest(name, index=index), self.assertRaises(IndexError) as caught:
                    access(index)
                self.assertEqual(str(caught.exception), text)
        with self.assertRaises(IndexError):
            made.at(-1)
        self.assertEqual(names(made), ["a", "b", "c"])

    def test_index_of_an_empty_list(self) -> None:
        """An empty list has no legal index."""
        for index in (0, -1):
            for name, access in self.accesses(ChartMetaDataList()).items():
                with self.subTest(name, index=index), self.assertRaises(IndexError) as caught:
                    access(index)
                self.assertEqual(str(caught.exception), f"Ungültiger Index {index}. Die Liste ist leer.\n")

    @staticmethod
    def accesses(made: ChartMetaDataList) -> dict[str, Any]:
        """All that takes an index."""
        return {
            "get": lambda index: made[index],
            "set": lambda index: operator.setitem(made, index, record("x")),
            "at": made.at,
        }

    def test_remove(self) -> None:
        """A new record with the same five values removes the first such one."""
        made = list_of("a", "b", "a")
        made[2].status = "schlecht"
        with printed() as lines:
            made.remove(record("a"))
        self.assertEqual(names(made), ["b", "a"])
        self.assertRegex(lines[0], r"^Element entfernt \(prev: 3, after: 2, Adresse: 0x[0-9a-f]+\)$")
        self.assertEqual(len(lines), 1)

    def test_remove_compares_all_fields(self) -> None:
        """A record that differs in one field, be it in case, is another one."""
        made = list_of("a")
        others = [record("A"), record("a", 61), record("a"), record("a"), record("a")]
        others[2].result, others[3].status, others[4].datetime_str = "Success", "", "x"
        for other in others:
            with self.assertRaisesRegex(ValueError, "^Element nicht vorhanden$"):
                made.remove(other)
        self.assertEqual(made.size(), 1)

    def test_length(self) -> None:
        """The length is printed, the size is not."""
        made = list_of("a", "b")
        with printed() as lines:
            self.assertEqual((made.size(), bool(made), bool(ChartMetaDataList())), (2, True, False))
        self.assertEqual(lines, [])
        with printed() as lines:
            self.assertEqual(len(made), 2)
        self.assertRegex("\n".join(lines), r"^aktuelle len: 2, Adresse: 0x[0-9a-f]+$")

    def test_iteration(self) -> None:
        """The iterator is one itself and ends; the list may change meanwhile."""
        made = list_of("a", "b")
        walk = iter(made)
        self.assertIs(iter(walk), walk)
        self.assertEqual(type(walk).__qualname__, "ChartMetaDataList.iterator")
        self.assertEqual(next(walk).name, "a")
        made.append(record("c"))
        self.assertEqual([entry.name for entry in walk], ["b", "c"])
        with self.assertRaises(StopIteration):
            next(walk)

    def test_iterator_keeps_its_list(self) -> None:
        """The list lives as long as who walks it."""
        walk = iter(list_of("a"))
        gc.collect()
        self.assertEqual([entry.name for entry in walk], ["a"])

    def test_references_outlive_the_list(self) -> None:
        """A record that Python holds stays, whatever happens to its list."""
        made = list_of("a", "b")
        kept = made[1]
        made.remove(record("b"))
        for index in range(1000):
            made.append(record(str(index)))
        kept.name = "kept"
        del made
        gc.collect()
        self.assertEqual(fields(kept)[0], "kept")


class SavedChartsTest(ChartCase):
    """The model's list."""

    def setUp(self) -> None:
        super().setUp()
        self.log = _probe.SignalLog("Chart")

    def test_changes_act_at_once_and_are_silent(self) -> None:
        """The attribute is the list itself."""
        CHART.meta_data_list.append(record("a"))
        CHART.meta_data_list.append(record("b"))
        CHART.meta_data_list[0].status = "neu"
        self.assertEqual(names(CHART.meta_data_list), ["a", "b"])
        self.assertEqual(CHART.meta_data_list[0].status, "neu")
        CHART.meta_data_list.remove(record("b"))
        self.assertEqual(self.log.names, [])
        CHART.emit_meta_data_list_changed()
        self.assertEqual(self.log.emissions, [("metaDataListChanged", False, [])])

    def test_assign(self) -> None:
        """A whole list is copied and announced, unless it is equal."""
        made = list_of("a", "b")
        CHART.meta_data_list = made
        CHART.meta_data_list = list_of("a", "b")
        CHART.meta_data_list = CHART.meta_data_list
        self.assertEqual(self.log.names, ["metaDataListChanged"])
        made[0].name = "x"
        self.assertEqual(names(CHART.meta_data_list), ["a", "b"])
        CHART.meta_data_list = made
        self.assertEqual(self.log.names, ["metaDataListChanged"] * 2)

    def test_assign_wrong(self) -> None:
        """Only a list of records will do."""
        CHART.meta_data_list = list_of("a")
        self.log.clear()
        for wrong in ([], [record("b")], None, record("b")):
            with self.subTest(wrong), self.assertRaises(TypeError):
                CHART.meta_data_list = wrong
        self.assertEqual((names(CHART.meta_data_list), self.log.names), (["a"], []))

    def test_find(self) -> None:
        """The first record of exactly the name, by reference."""
        CHART.meta_data_list = list_of("a", "B", "a")
        found = CHART.find_meta_data_by_name("a")
        found.duration = 7
        self.assertEqual([CHART.meta_data_list[i].duration for i in range(3)], [7, 60, 60])
        self.assertIsNone(CHART.find_meta_data_by_name("b"))
        self.assertIsNone(CHART.find_meta_data_by_name("A"))
        self.assertIsNone(CHART.find_meta_data_by_name(""))

    def test_found_record_may_go(self) -> None:
        """A record found and then removed can still be written."""
        CHART.meta_data_list = list_of("a", "b")
        found = CHART.find_meta_data_by_name("a")
        CHART.meta_data_list.remove(record("a"))
        found.name = "weg"
        self.assertEqual(names(CHART.meta_data_list), ["b"])

    def test_sort(self) -> None:
        """By name, whatever the case, and announced once."""
        CHART.meta_data_list = list_of("b", "A", "c")
        self.log.clear()
        CHART.sort_and_emit_meta_data_list_changed()
        self.assertEqual(names(CHART.meta_data_list), ["A", "b", "c"])
        self.assertEqual(self.log.emissions, [("metaDataListChanged", False, [])])

    def test_sort_many(self) -> None:
        """Names that differ only in case are neighbours."""
        members = [name for index in range(500) for name in (f"n{index:03}", f"N{index:03}")]
        CHART.meta_data_list = list_of(*reversed(members))
        CHART.sort_and_emit_meta_data_list_changed()
        self.assertEqual(
            [name.lower() for name in names(CHART.meta_data_list)], [name.lower() for name in members]
        )


if __name__ == "__main__":
    unittest.main()
