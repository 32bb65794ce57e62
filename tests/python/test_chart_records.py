"""The list of saved charts as the backend sees it."""

import contextlib
import gc
import operator
import os
import tempfile
import unittest
from collections.abc import Iterator
from typing import Any

import _probe
from brovik.chart import ChartMetaData, ChartMetaDataList
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
