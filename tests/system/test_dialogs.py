"""Dialogs that the backend asks for, on the real window."""

import unittest
from typing import Any

from support import desktop, panel
from support.dialogs import IMPORT, dialog_data


class DialogTest(unittest.TestCase):
    """Questions, messages and what they answer."""

    def setUp(self) -> None:
        self.program = self.enterContext(panel.remote())
        self.program.wait_until_shown(panel.READY)

    def _wait_for_data(self, *expected: Any) -> None:
        self.program.wait_for(
            f"{len(expected)} reports", lambda: len(dialog_data(self.program)) >= len(expected)
        )
        self.assertEqual(dialog_data(self.program), list(expected))

    def test_question_answered(self) -> None:
        """A question with an id answers at once on the button and again when it has closed."""
        self.program.backend(
            IMPORT + "gui.Gui.question('Fass', 'Weiter?', {'id': 7, 'yes': 'Ja', 'no': 'Nein'})"
        )
        self.program.wait_until_shown("Weiter?")
        self.program.wait_until_shown("Nein")
        self.program.click("Ja")
        self._wait_for_data({"current": [7, None]}, {"7": {"a": True}}, {"7": {"a": True}, "current": None})
        self.program.wait_until_gone("Weiter?")

    def test_question_refused_by_escape(self) -> None:
        """Escape is the answer no."""
        self.program.backend(IMPORT + "gui.Gui.question('Fass', 'Weiter?', {'id': 7, 'no': 'Nein'})")
        self.program.wait_until_shown("Weiter?")
        desktop.press_key("Escape")
        self._wait_for_data({"current": [7, None]}, {"7": {"a": False}}, {"7": {"a": False}, "current": None})

    def test_backend_closes_the_lower_of_two(self) -> None:
        """The upper question stays, and is what the reply names as current."""
        for identity in (5, 6):
            self.program.backend(
                IMPORT + f"gui.Gui.question('Frage', 'Nummer {identity}', {{'id': {identity}}})"
            )
            self.program.wait_until_shown(f"Nummer {identity}")
        self.program.backend(IMPORT + "gui.Gui.close_dialog(5, True)")
        self.program.wait_until_gone("Nummer 5")
        self.program.wait_until_shown("Nummer 6")
        self._wait_for_data(
            {"current": [5, None]},
            {"current": [6, None]},
            {"5": {"a": True}},
            {"5": {"a": True}, "current": [6, None]},
        )

    def test_exception_shows_traceback(self) -> None:
        """A forwarded exception is a dialog whose traceback opens on demand."""
        self.program.backend(
            "import brovik\ntry:\n    {}['fehlt']\nexcept KeyError:\n    brovik.forward_exception()"
        )
        self.program.wait_until_shown("KeyError")
        self.assertIsNone(self.program.find("Traceback (letzter Aufruf zum Schluss):"))
        self.program.click("Traceback")
        self.program.wait_until_shown("Traceback (letzter Aufruf zum Schluss):")
        self.program.click("OK")
        self.program.wait_until_gone("KeyError")

    def test_markup_is_shown_as_text(self) -> None:
        """Where the screens declare no rich text, markup stands as it was written."""
        markup = "<b>fett</b> & <img src='http://127.0.0.1/x.png'>"
        for attribute in ("status", "status2", "status3"):
            self.program.backend(IMPORT + f"gui.Gui.{attribute} = {attribute + markup!r}")
            self.program.wait_until_shown(attribute + markup)
        self.program.backend(f"from brovik import auto; auto.Auto.progress_str = {markup!r}")
        self.program.wait_until_shown(markup)
        self.program.backend(IMPORT + f"gui.Gui.message({'Titel' + markup!r}, 'Text', 'info')")
        self.program.wait_until_shown("Titel" + markup)
        yes, no = "Ja" + markup, "Nein" + markup
        self.program.backend(IMPORT + f"gui.Gui.question('Frage', 'Text', {{'yes': {yes!r}, 'no': {no!r}}})")
        self.program.wait_until_shown(yes)
        self.program.wait_until_shown(no)
        self.program.backend(IMPORT + f"gui.Gui.toast_warn({'Toast' + markup!r}, 60000)")
        self.program.wait_until_shown("Toast" + markup)

    def test_popup_opened_again_while_it_fades_out(self) -> None:
        """The power popup that the backend closes and opens in one breath answers as any other."""
        program = self.program
        program.backend(IMPORT + "gui.Gui.show_poweroff_dialog()")
        self._wait_for_popup(True)
        program.backend(IMPORT + "gui.Gui.close_current_dialog(False); gui.Gui.show_poweroff_dialog()")
        self._wait_for_popup(True, False, True)
        desktop.press_key("Escape")
        self._wait_for_popup(True, False, True, False)
        program.wait_until_gone("Neu starten")
        (first,), (second,) = ([key for key in data if key != "current"] for data in dialog_data(program))
        self.assertNotEqual(first, second)
        gone = {"a": False}
        self.assertEqual(
            dialog_data(program), [{first: gone, "current": None}, {second: gone, "current": None}]
        )

    def _wait_for_popup(self, *opened: bool) -> None:
        expected = [f"GuiEnum.PopupOpened {state}" for state in opened]

        def calls() -> list[str]:
            return [call for call in self.program.calls("gui_value_from_cpp") if "PopupOpened" in call]

        self.program.wait_for(f"{expected}", lambda: calls() == expected)

    def test_hardware_keyboard_stays_in_the_input(self) -> None:
        """Tab goes round in a dialog that asks for a text, Space presses there alone, Escape closes it."""
        program = self.program
        program.open_settings("Updates")
        for tabs in range(5):
            program.click("Testing aktivieren")
            program.wait_until_shown("Abbrechen")
            desktop.type_text("geheim")
            for _ in range(tabs):
                desktop.press_key("Tab")
            desktop.press_key("Escape")
            program.wait_until_gone("Abbrechen")
        program.click("Testing aktivieren")
        program.wait_until_shown("Abbrechen")
        # Over the eye, which shows what is typed, to the button that is the way out; from there nothing else.
        for key in ("Tab", "space", "Tab", "Tab", "Tab", "shift+Tab", "shift+Tab", "space"):
            desktop.press_key(key)
        program.wait_until_gone("Abbrechen")
        self.assertEqual(program.calls("shell_action_from_cpp"), [])
