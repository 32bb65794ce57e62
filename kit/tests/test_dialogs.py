"""`brovik.testing`: dialogs, and what the backend is told of them."""

# Wrong types are handed over on purpose, and attributes are set that a module of its own does not declare.
# mypy: disable-error-code="arg-type,attr-defined,assignment,index"

import threading
import unittest
from typing import Any

from plain_backend import BackendCase

import brovik
from brovik import testing
from brovik.gui import Gui, GuiEnum, IconEnum
from brovik.shell import Shell


class DialogTest(BackendCase):
    """Dialogs, and what the backend is told of them."""

    def ask(self, title: str = "Weiter?", **options: Any) -> None:
        """Opens a question."""
        Gui.question(title, "Text", options)
        testing.process_events()

    def test_question_with_an_id(self) -> None:
        """Opens, is answered, and closes: three reports."""
        self.ask(id=7, no="Nein", description="weiter", category="warning")
        (dialog,) = testing.dialogs()
        self.assertEqual(
            (dialog.id_, dialog.title, dialog.yes, dialog.no, dialog.category),
            (7, "Weiter?", "OK", "Nein", "warning"),
        )
        self.assertEqual(self.backend.reports(), [{"current": [7.0, "weiter"]}])
        testing.answer(True, 7)
        self.assertEqual(self.backend.reports(), [{"7": {"a": True}}, {"7": {"a": True}, "current": None}])
        self.assertEqual(testing.dialogs(), [])
        self.assertEqual(testing.questions(), [dialog])

    def test_question_without_an_id(self) -> None:
        """Reports its answer only when it has closed."""
        self.ask(yes=None)
        self.assertEqual(testing.dialogs()[0].yes, "")
        self.assertEqual(self.backend.reports(), [{"current": [-1.0, None]}])
        testing.answer(False)
        self.assertEqual(self.backend.reports(), [{"-1": {"a": False}, "current": None}])

    def test_stack(self) -> None:
        """What is below becomes the current one; an id that is open opens no second time."""
        self.ask("unten", id=1, description="u")
        self.ask("oben", id=2)
        self.ask("noch einmal", id=2)
        self.assertEqual([dialog.title for dialog in testing.dialogs()], ["unten", "oben"])
        self.backend.reports()
        testing.answer(True)
        self.assertEqual(self.backend.reports()[-1], {"2": {"a": True}, "current": [1.0, "u"]})

    def test_answers(self) -> None:
        """Dialogs that are in there are answered as they open, by id or title."""
        testing.answers[7] = True
        testing.answers["Neustart"] = False
        self.ask(id=7)
        self.ask("Neustart", id=8)
        self.ask("offen", id=9)
        self.assertEqual([dialog.id_ for dialog in testing.dialogs()], [9])
        replies = [report for report in self.backend.reports() if "current" not in report]
        self.assertEqual(replies, [{"7": {"a": True}}, {"8": {"a": False}}])

    def test_the_backend_asks_again(self) -> None:
        """A question that an answer leads to is shown too, also if the backend asks on another thread."""

        def take(_enum: GuiEnum, data: object) -> None:
            if data == {"1": {"a": True}}:
                thread = threading.Thread(target=Gui.question, args=("zweite", "", {"id": 2}))
                thread.start()
                thread.join()

        self.backend.gui_value_from_cpp = take
        testing.answers[1] = True
        self.ask("erste", id=1)
        self.assertEqual([dialog.title for dialog in testing.dialogs()], ["zweite"])

    def test_close_by_the_backend(self) -> None:
        """It answers as the operator would."""
        self.ask("erste", id=1)
        self.ask("zweite", id=2)
        self.backend.reports()
        Gui.close_dialog(1, True)
        Gui.close_current_dialog(False)
        Gui.close_dialog(5)
        testing.process_events()
        self.assertEqual(
            self.backend.reports(),
            [
                {"1": {"a": True}},
                {"1": {"a": True}, "current": [2.0, None]},
                {"2": {"a": False}},
                {"2": {"a": False}, "current": None},
            ],
        )

    def test_messages_toasts_and_console(self) -> None:
        """What was shown can be read, also when it is gone."""
        Gui.message("Titel", "Text", "success")
        Gui.toast_notify("gespeichert", IconEnum.Saved, duration=300)
        Gui.toast_warn("leer")
        Shell.append_stdout("Zeile")
        Shell.append_stderr("Fehler")
        (message,) = testing.messages()
        self.assertEqual((message.title, message.text, message.category), ("Titel", "Text", "success"))
        self.assertEqual(
            testing.toasts(),
            [testing.Toast("gespeichert", False, 300), testing.Toast("leer", True, 1000)],
        )
        self.assertEqual(testing.console(), [("stdout", "Zeile"), ("stderr", "Fehler")])
        testing.answer(True, "Titel")
        self.assertEqual(self.backend.reports()[-1], {"-1": {"a": False}, "current": None})

    def test_exceptions(self) -> None:
        """One that is forwarded is a dialog; one about that dialog is a toast."""

        def take(_enum: GuiEnum, _data: object) -> None:
            try:
                raise KeyError("zweiter")
            except KeyError:
                brovik.forward_exception()

        try:
            raise ValueError("erster")
        except ValueError:
            brovik.forward_exception()
        self.backend.gui_value_from_cpp = take
        testing.process_events()
        self.assertEqual(
            [(shown.title, shown.text) for shown in testing.exceptions()], [("ValueError", "erster")]
        )
        self.assertEqual([toast.text for toast in testing.toasts()], ["KeyError: zweiter"])
        self.assertEqual(testing.log()[0][0], "critical")

    def test_without_end(self) -> None:
        """A backend that answers each report with a new dialog is told of."""
        self.backend.gui_value_from_cpp = lambda _enum, _data: Gui.message("noch", "einer", "info")
        Gui.message("der", "erste", "info")
        with self.assertRaisesRegex(RuntimeError, "^The backend tells of something new each time"):
            testing.process_events()
        self.backend.gui_value_from_cpp = lambda _enum, _data: None

    def test_wrong_input(self) -> None:
        """Is refused."""
        for key, value in ((True, True), (1.5, True), (1, 1), ("x", None)):
            with self.subTest(key=key, value=value), self.assertRaises(TypeError):
                testing.answers[key] = value
        with self.assertRaisesRegex(TypeError, "^An answer is True or False, not 1$"):
            testing.answer(1)
        with self.assertRaisesRegex(LookupError, "^No dialog is open$"):
            testing.answer(True)
        self.ask(id=1)
        with self.assertRaisesRegex(LookupError, "^No dialog 'x' is open$"):
            testing.answer(True, "x")


if __name__ == "__main__":
    unittest.main()
