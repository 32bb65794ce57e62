"""The journal, and the dialogs that it follows."""

import json
import unittest
from typing import Any

from controller.dialog_watch import OPENING_SECS, DialogWatch
from controller.journal import EARLY, Event, Journal, Kind
from logbook.records import JournalEntry

#: What the screens report when the first, second... message opens.
FIRST: dict[str, Any] = {"current": [-1.0, None]}
SECOND: dict[str, Any] = {"current": [-2.0, None]}


class JournalTest(unittest.TestCase):
    """Entries and those who get them."""

    def setUp(self) -> None:
        self.journal = Journal()
        self.written: list[JournalEntry] = []

    def subjects(self) -> list[str]:
        """Of what has been written."""
        return [entry.subject for entry in self.written]

    def test_early(self) -> None:
        """What comes before there is a file is written when there is one, in its order."""
        self.journal.add(Kind.MESSAGE, Event.CAME, "a")
        self.journal.add(Kind.MESSAGE, Event.CAME, "b")
        self.journal.open(self.written.append)
        self.journal.add(Kind.MESSAGE, Event.CAME, "c")
        self.assertEqual(self.subjects(), ["a", "b", "c"])

    def test_too_early(self) -> None:
        """The newest are kept of what is more than that."""
        for number in range(EARLY + 5):
            self.journal.add(Kind.MESSAGE, Event.CAME, str(number))
        self.journal.open(self.written.append)
        self.assertEqual(self.subjects(), [str(number) for number in range(5, EARLY + 5)])

    def test_closed(self) -> None:
        """The next program begins with nothing."""
        heard: list[JournalEntry] = []
        self.journal.open(self.written.append)
        self.journal.listen(heard.append)
        self.journal.close()
        self.journal.add(Kind.TOAST, Event.CAME, "a")
        self.assertEqual((self.written, heard), ([], []))
        self.journal.close()
        self.journal.open(self.written.append)
        self.assertEqual(self.written, [])

    def test_listener(self) -> None:
        """Hears all, besides the file."""
        heard: list[JournalEntry] = []
        self.journal.open(self.written.append)
        self.journal.listen(heard.append)
        self.journal.add(Kind.TOAST, Event.CAME, "a", "b", {"c": 1})
        self.assertEqual(heard, self.written)
        self.assertEqual((heard[0].text, heard[0].details), ("b", '{"c":1}'))

    def test_strange_text(self) -> None:
        """Is such that a file takes it."""
        entry = self.journal.add(
            Kind.SETTING, Event.CHANGED, "\ud800", "ä\udfff", {"x": "\ud800", "y": float("nan")}
        )
        for text in (entry.subject, entry.text, entry.details):
            text.encode()
        self.assertIsNone(json.loads(entry.details)["y"])


class DialogCase(unittest.TestCase):
    """A journal, and the watch of dialogs that feeds it."""

    def setUp(self) -> None:
        self.now = 0.0
        self.written: list[JournalEntry] = []
        journal = Journal()
        journal.open(self.written.append)
        self.watch = DialogWatch(journal, lambda: self.now)

    def message(self, subject: str, kind: Kind = Kind.MESSAGE) -> None:
        """The backend shows something."""
        self.watch.show(kind, subject, "", {})

    def close(self, id_: int, **current: object) -> None:
        """The operator closes a dialog."""
        self.watch.take({str(id_): {"a": False}, "current": current.get("current")})

    def events(self) -> list[tuple[str, str]]:
        """What has become of what."""
        return [(entry.event, entry.subject) for entry in self.written]


class MessageTest(DialogCase):
    """Messages and exceptions, whose dialogs have numbers of the host."""

    def test_acknowledged(self) -> None:
        """In whatever order the operator closes them."""
        self.message("a")
        self.message("b")
        self.watch.take(FIRST)
        self.watch.take(SECOND)
        self.close(-2, current=[-1, None])
        self.close(-1)
        self.assertEqual(
            self.events(),
            [("came", "a"), ("came", "b"), ("acknowledged", "b"), ("acknowledged", "a")],
        )

    def test_dialog_of_a_screen(self) -> None:
        """Is nobody's message, with a description or without."""
        self.watch.take(FIRST)
        self.message("a")
        self.watch.take({"current": [-2, "poweroff"]})
        self.watch.take({"current": [-3, None]})
        for id_ in (-1, -2):
            self.close(id_, current=[-3, None])
        self.assertEqual(self.events(), [("came", "a")])
        self.close(-3)
        self.assertEqual(self.events()[1:], [("acknowledged", "a")])

    def test_closing_of_another(self) -> None:
        """What becomes the uppermost dialog by it has not opened just then."""
        self.message("a")
        self.close(-7, current=[-5, None])
        self.close(-5)
        self.assertEqual(self.events(), [("came", "a")])

    def test_one_that_never_opens(self) -> None:
        """Does not take the place of later ones for ever."""
        self.message("never")
        self.now = OPENING_SECS
        self.message("b")
        self.watch.take(FIRST)
        self.close(-1)
        self.assertEqual(self.events()[2:], [("acknowledged", "b")])

    def test_before_the_screens(self) -> None:
        """Messages open first, then exceptions, however long that takes."""
        self.message("e", Kind.EXCEPTION)
        self.message("m")
        self.now = 10 * OPENING_SECS
        self.watch.screens_ready()
        self.watch.take(FIRST)
        self.watch.take(SECOND)
        self.close(-1, current=[-2, None])
        self.close(-2)
        self.assertEqual(self.events()[2:], [("acknowledged", "m"), ("acknowledged", "e")])

    def test_strange_reports(self) -> None:
        """Change nothing."""
        self.message("a")
        reports: list[Any] = [None, [], {}, {"current": None}, {"current": [1]}, {"current": ["x", None]}]
        reports += [{"current": [5, None]}, {"x": {"a": True}}, {"-1": None}, {3: {"a": 1}}, {"9" * 5000: {}}]
        for report in reports:
            self.watch.take(report)
        self.assertEqual(self.events(), [("came", "a")])


class QuestionTest(DialogCase):
    """Questions, which have ids of the backend."""

    def setUp(self) -> None:
        super().setUp()
        self.watch.ask(7, "q", "?", "Ja", "Nein")

    def test_answer(self) -> None:
        """By the label of the button, and once."""
        self.watch.take({"current": [7.0, None]})
        self.watch.take({"7": {"a": True}})
        self.close(7)
        self.assertEqual(self.events(), [("came", "q"), ("acknowledged", "q")])
        self.assertEqual(json.loads(self.written[1].details), {"id": 7, "answer": "Ja"})

    def test_no(self) -> None:
        """Also by closing it."""
        self.close(7)
        self.assertEqual(json.loads(self.written[1].details)["answer"], "Nein")

    def test_withdrawn(self) -> None:
        """Is gone, and its answer none."""
        self.watch.withdraw(7)
        self.close(7)
        self.watch.withdraw(7)
        self.assertEqual(self.events(), [("came", "q"), ("gone", "q")])

    def test_end_of_the_program(self) -> None:
        """Dialogs go with it: ids begin anew."""
        self.watch.reset()
        self.close(7)
        self.assertEqual(self.events(), [("came", "q")])


if __name__ == "__main__":
    unittest.main()
