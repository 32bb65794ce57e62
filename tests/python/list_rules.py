"""What holds for every list of the host's records."""

import gc
import operator
import unittest
from collections.abc import Callable
from typing import Any, ClassVar

from native_output import printed


class ListRules(unittest.TestCase):
    """Import the module, not the class, or its tests run by themselves."""

    list_class: ClassVar[Any]

    def record(self, name: str) -> Any:
        """A record of this name that equals no other name's."""
        raise NotImplementedError

    def list_of(self, *members: str) -> Any:
        """A list with records of these names."""
        made = self.list_class()
        for name in members:
            made.append(self.record(name))
        return made

    @staticmethod
    def names(records: Any) -> list[str]:
        """The names in a list."""
        return [records.at(index).name for index in range(records.size())]

    def test_append_copies(self) -> None:
        """The list has a record of its own."""
        made, entry = self.list_class(), self.record("a")
        made.append(entry)
        entry.name = "b"
        self.assertEqual(self.names(made), ["a"])

    def test_wrong_elements(self) -> None:
        """Anything else than a record raises TypeError and changes nothing."""
        made = self.list_of("a")
        for wrong in (None, "a", 5, [], made):
            for name, access in (
                ("append", made.append),
                ("remove", made.remove),
                ("set", lambda element: operator.setitem(made, 0, element)),
            ):
                with self.subTest(name, wrong=wrong), self.assertRaises(TypeError):
                    access(wrong)
        self.assertEqual(self.names(made), ["a"])

    def test_wrong_indices(self) -> None:
        """Nothing but a whole number is an index."""
        made = self.list_of("a")
        for wrong in (None, "0", 0.0, slice(1), 2**70):
            for name, access in self.accesses(made).items():
                with self.subTest(name, wrong=wrong), self.assertRaises(TypeError):
                    access(wrong)
        self.assertEqual(self.names(made), ["a"])

    def test_position_and_iteration_give_the_element(self) -> None:
        """What they give is the record in the list."""
        made = self.list_of("a", "b", "c")
        made.at(0).name = "x"
        for entry in made:
            entry.name += "!"
        self.assertEqual(self.names(made), ["x!", "b!", "c!"])

    def test_index(self) -> None:
        """Negative indices count from the end."""
        made = self.list_of("a", "b", "c")
        self.assertEqual([made[index].name for index in (0, 2, -1, -3)], ["a", "c", "c", "a"])
        made[-1] = self.record("z")
        made[0] = self.record("y")
        self.assertEqual(self.names(made), ["y", "b", "z"])

    def test_index_out_of_range(self) -> None:
        """The error names the legal indices."""
        made = self.list_of("a", "b", "c")
        for index in (3, 99, -4):
            text = f"Ungültiger Index {index}. Gültige Indices sind 0...2 (-1...-3).\n"
            for name, access in self.accesses(made).items():
                with self.subTest(name, index=index), self.assertRaises(IndexError) as caught:
                    access(index)
                self.assertEqual(str(caught.exception), text)
        with self.assertRaises(IndexError):
            made.at(-1)
        self.assertEqual(self.names(made), ["a", "b", "c"])

    def test_index_of_an_empty_list(self) -> None:
        """An empty list has no legal index."""
        for index in (0, -1):
            for name, access in self.accesses(self.list_class()).items():
                with self.subTest(name, index=index), self.assertRaises(IndexError) as caught:
                    access(index)
                self.assertEqual(str(caught.exception), f"Ungültiger Index {index}. Die Liste ist leer.\n")

    def accesses(self, made: Any) -> dict[str, Callable[[Any], Any]]:
        """All that takes an index."""
        return {
            "get": lambda index: made[index],
            "set": lambda index: operator.setitem(made, index, self.record("x")),
            "at": made.at,
        }

    def test_remove(self) -> None:
        """An equal record removes the first such one, and a line says so."""
        made = self.list_of("a", "b", "a", "c")
        with printed() as lines:
            made.remove(self.record("a"))
        self.assertEqual(self.names(made), ["b", "a", "c"])
        self.assertRegex(lines[0], r"^Element entfernt \(prev: 4, after: 3, Adresse: 0x[0-9a-f]+\)$")
        self.assertEqual(len(lines), 1)

    def test_remove_what_is_not_there(self) -> None:
        """It is an error, and nothing is printed."""
        made = self.list_of("a", "b")
        with printed() as lines, self.assertRaisesRegex(ValueError, "^Element nicht vorhanden$"):
            made.remove(self.record("c"))
        self.assertEqual((self.names(made), lines), (["a", "b"], []))

    def test_length(self) -> None:
        """The length is printed, the size is not."""
        made = self.list_of("a", "b")
        with printed() as lines:
            self.assertEqual((made.size(), bool(made), bool(self.list_class())), (2, True, False))
        self.assertEqual(lines, [])
        with printed() as lines:
            self.assertEqual(len(made), 2)
        self.assertRegex("\n".join(lines), r"^aktuelle len: 2, Adresse: 0x[0-9a-f]+$")

    def test_iteration(self) -> None:
        """The iterator is one itself and ends; the list may change meanwhile."""
        made = self.list_of("a", "b")
        walk = iter(made)
        self.assertIs(iter(walk), walk)
        self.assertEqual(type(walk).__qualname__, f"{self.list_class.__name__}.iterator")
        self.assertEqual(next(walk).name, "a")
        made.append(self.record("c"))
        self.assertEqual([entry.name for entry in walk], ["b", "c"])
        with self.assertRaises(StopIteration):
            next(walk)

    def test_iterator_keeps_its_list(self) -> None:
        """The list lives as long as who walks it."""
        walk = iter(self.list_of("a"))
        gc.collect()
        self.assertEqual([entry.name for entry in walk], ["a"])

    def test_elements_outlive_the_list(self) -> None:
        """A record that Python holds stays, whatever happens to its list."""
        made = self.list_of("a", "b")
        kept = made.at(1)
        made.remove(self.record("b"))
        for index in range(1000):
            made.append(self.record(str(index)))
        kept.name = "kept"
        del made
        gc.collect()
        self.assertEqual(kept.name, "kept")
