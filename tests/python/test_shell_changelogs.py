"""Changelogs as the backend writes them."""

import threading
import unittest
from typing import Any

import _probe
from brovik.shell import ChangelogEntry, ChangelogEntryVector, Shell
import list_rules

FIELDS = ["name", "date", "distribution", "version", "urgency_str"]


def entry(name: str) -> ChangelogEntry:
    """An entry of this name that equals no other name's."""
    made = ChangelogEntry(Shell)
    for field in FIELDS:
        setattr(made, field, f"{field} of {name}")
    made.name = name
    made.changes = [f"{name} 1", f"{name} 2"]
    return made


def list_of(*members: str) -> ChangelogEntryVector:
    """A list with entries of these names."""
    made = ChangelogEntryVector()
    for name in members:
        made.append(entry(name))
    return made


def names(entries: ChangelogEntryVector) -> list[str]:
    """The names in a list."""
    return [entries.at(index).name for index in range(entries.size())]


class EntryTest(unittest.TestCase):
    """Entries by themselves."""

    def test_empty(self) -> None:
        """A new entry is empty."""
        made = ChangelogEntry(Shell)
        self.assertEqual([getattr(made, field) for field in FIELDS], [""] * 5)
        self.assertEqual(made.changes, [])
        self.assertEqual(str(made), "name=, date=, distribution=, version=, urgency=, changes=[]")

    def test_constructors(self) -> None:
        """An entry is made of the Shell or of another entry, and of nothing else."""
        wrong: list[list[Any]] = [[], [None], ["x"], [5], [[]], [Shell, Shell]]
        for arguments in wrong:
            with self.subTest(arguments), self.assertRaises(TypeError):
                ChangelogEntry(*arguments)
        self.assertEqual(str(ChangelogEntry(other=ChangelogEntry(shell=Shell)))[:5], "name=")

    def test_copy(self) -> None:
        """A copy has the fields, and is another one."""
        made = entry("a")
        copy = ChangelogEntry(made)
        self.assertEqual(str(copy), str(made))
        copy.name = "b"
        copy.changes = []
        self.assertEqual((made.name, made.changes), ("a", ["a 1", "a 2"]))

    def test_text(self) -> None:
        """All fields in their order, whatever stands in them."""
        made = ChangelogEntry(Shell)
        for number, field in enumerate(FIELDS, 1):
            setattr(made, field, f"%{number} ä")
        made.changes = ["%1", "<b>"]
        text = "name=%1 ä, date=%2 ä, distribution=%3 ä, version=%4 ä, urgency=%5 ä, changes=[%1, <b>]"
        self.assertEqual(str(made), text)
        self.assertEqual(repr(made), f"ChangelogEntry({text})")

    def test_any_object_is_a_text(self) -> None:
        """A text takes the text of whatever is written."""
        made = ChangelogEntry(Shell)
        for field in FIELDS:
            for value, text in ((5, "5"), (None, "None"), ("", "")):
                setattr(made, field, value)
                self.assertEqual(getattr(made, field), text)

    def test_changes_that_are_no_list(self) -> None:
        """Something that is no sequence raises TypeError and changes nothing."""
        made = entry("a")
        for wrong in (None, 5, True, made):
            with self.subTest(wrong), self.assertRaises(TypeError):
                made.changes = wrong
        self.assertEqual(made.changes, ["a 1", "a 2"])
        made.changes = (1, None)
        self.assertEqual(made.changes, ["1", "None"])

    def test_attributes(self) -> None:
        """The colour follows from the urgency and is none of them."""
        self.assertEqual(
            [name for name, value in vars(ChangelogEntry).items() if isinstance(value, property)],
            [*FIELDS, "changes"],
        )
        with self.assertRaises(AttributeError):
            ChangelogEntry(Shell).color = "red"

    def test_one_common_field_makes_two_equal(self) -> None:
        """Any of the five will do, also the date alone."""
        for field in FIELDS:
            with self.subTest(field):
                one, other = entry("a"), entry("b")
                self.assertFalse(one == other)
                setattr(other, field, getattr(one, field))
                self.assertTrue(one == other)
                self.assertFalse(one != other)
                self.assertTrue(ChangelogEntry(one) == other)

    def test_changes_do_not_make_two_equal(self) -> None:
        """They take no part."""
        one, other = entry("a"), entry("b")
        other.changes = one.changes
        self.assertFalse(one == other)

    def test_comparison_with_something_else(self) -> None:
        """It is not equal, and no error."""
        for other in (None, "a", 5, Shell, ChangelogEntryVector()):
            with self.subTest(other):
                self.assertFalse(entry("a") == other)
                self.assertTrue(entry("a") != other)


class ListTest(list_rules.ListRules):
    """The list of entries."""

    list_class = ChangelogEntryVector

    def record(self, name: str) -> ChangelogEntry:
        return entry(name)

    def test_index_gives_a_copy(self) -> None:
        """What is done to it does not reach the list."""
        made = list_of("a", "b")
        made[0].name = "x"
        made[-1].changes = []
        self.assertEqual(names(made), ["a", "b"])
        self.assertEqual(made[1].changes, ["b 1", "b 2"])

    def test_set_assigns(self) -> None:
        """The element stays the same object and takes all fields."""
        made = list_of("a", "b")
        element, other = made.at(0), entry("c")
        made[0] = other
        self.assertEqual(str(element), str(other))
        other.name = "d"
        self.assertEqual(element.name, "c")

    def test_remove_takes_the_first_with_one_common_field(self) -> None:
        """As entries compare."""
        made = list_of("a", "b", "c")
        wanted = entry("x")
        wanted.version = made[1].version
        made.remove(wanted)
        self.assertEqual(names(made), ["a", "c"])


class ChangelogsTest(unittest.TestCase):
    """The list of the Shell."""

    def setUp(self) -> None:
        self.addCleanup(setattr, Shell, "changelogs", ChangelogEntryVector())
        Shell.changelogs = list_of("a", "b")
        self.log = _probe.SignalLog("Shell")

    def test_reader_gets_a_copy(self) -> None:
        """Changes of it do not reach the Shell until it is written back."""
        copy = Shell.changelogs
        copy.append(entry("c"))
        copy.at(0).name = "x"
        self.assertEqual((names(Shell.changelogs), self.log.names), (["a", "b"], []))
        Shell.changelogs = copy
        self.assertEqual(names(Shell.changelogs), ["x", "b", "c"])
        copy.at(1).name = "y"
        self.assertEqual(names(Shell.changelogs), ["x", "b", "c"])
        self.assertEqual(self.log.emissions, [("changelogsChanged", False, [])])

    def test_another_length_is_always_taken(self) -> None:
        """However equal the entries are."""
        lists: list[list[str]] = [["a"], ["a", "b"], [], ["a", "b", "c"]]
        for members in lists:
            Shell.changelogs = list_of(*members)
            self.assertEqual(names(Shell.changelogs), members)
        self.assertEqual(self.log.names, ["changelogsChanged"] * 4)

    def test_equal_lists_are_not_taken(self) -> None:
        """Empty ones, the same one, and those that have one field in common at each position."""
        Shell.changelogs = Shell.changelogs
        similar = list_of("c", "d")
        for index in range(2):
            similar.at(index).distribution = Shell.changelogs[index].distribution
        Shell.changelogs = similar
        self.assertEqual((names(Shell.changelogs), self.log.names), (["a", "b"], []))
        Shell.changelogs = ChangelogEntryVector()
        Shell.changelogs = ChangelogEntryVector()
        self.assertEqual(self.log.names, ["changelogsChanged"])

    def test_one_unequal_pair_is_enough(self) -> None:
        """Entries are compared position by position."""
        Shell.changelogs = list_of("b", "a")
        Shell.changelogs = list_of("b", "c")
        self.assertEqual(names(Shell.changelogs), ["b", "c"])
        self.assertEqual(self.log.names, ["changelogsChanged"] * 2)

    def test_wrong_types(self) -> None:
        """Only a list of entries will do."""
        for wrong in (None, [], [entry("c")], entry("c"), "ab", 5, Shell):
            with self.subTest(wrong), self.assertRaises(TypeError):
                Shell.changelogs = wrong
        self.assertEqual((names(Shell.changelogs), self.log.names), (["a", "b"], []))

    def test_written_by_any_thread(self) -> None:
        """Entries may come from a thread that has ended."""
        made: list[ChangelogEntryVector] = []
        thread = threading.Thread(target=lambda: made.append(list_of("c", "d", "e")))
        thread.start()
        thread.join()
        made[0].at(0).urgency_str = "high"
        Shell.changelogs = made[0]
        made.clear()
        self.assertEqual(names(Shell.changelogs), ["c", "d", "e"])


if __name__ == "__main__":
    unittest.main()
