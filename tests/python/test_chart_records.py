"""The list of saved charts as the backend sees it."""

import unittest

import _probe
from brovik.chart import ChartMetaData, ChartMetaDataList
import list_rules
from chart_support import CHART, ChartCase


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


class ListTest(list_rules.ListRules):
    """The list of records."""

    list_class = ChartMetaDataList

    def record(self, name: str) -> ChartMetaData:
        return record(name)

    def test_index_gives_the_element(self) -> None:
        """What an index gives is the record in the list."""
        made = list_of("a", "b")
        made[-1].name = "x"
        self.assertEqual(names(made), ["a", "x"])

    def test_remove_compares_all_fields(self) -> None:
        """A record that differs in one field, be it in case, is another one."""
        made = list_of("a")
        others = [record("A"), record("a", 61), record("a"), record("a"), record("a")]
        others[2].result, others[3].status, others[4].datetime_str = "Success", "", "x"
        for other in others:
            with self.assertRaisesRegex(ValueError, "^Element nicht vorhanden$"):
                made.remove(other)
        self.assertEqual(made.size(), 1)


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
