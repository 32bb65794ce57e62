"""What the tests read of the screens is what any program is told on the accessibility bus."""

import unittest
from collections.abc import Iterator
from typing import Any

import gi

gi.require_version("Atspi", "2.0")
# pylint: disable=wrong-import-position  # the version is chosen before
from gi.repository import Atspi, GLib

from support import panel
from support.dialogs import IMPORT
from support.waiting import wait_for

Shown = list[tuple[str, str]]


def application(pid: int) -> Any:
    """The program with that process id, if it has come to the bus."""
    desktop = Atspi.get_desktop(0)
    desktop.set_cache_mask(Atspi.Cache.NONE)
    programs = (desktop.get_child_at_index(index) for index in range(desktop.get_child_count()))
    return next((program for program in programs if program and program.get_process_id() == pid), None)


def shown_below(node: Any) -> Iterator[tuple[str, str]]:
    """Role and name of all that shows below, in the order of the tree."""
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None and child.get_state_set().contains(Atspi.StateType.SHOWING):
            yield child.get_role_name(), child.get_name()
            yield from shown_below(child)


class AccessibilityTest(unittest.TestCase):
    """A program that has found the bus."""

    def setUp(self) -> None:
        # Two who call up the bus at once may miss each other for good.
        Atspi.get_desktop(0).get_child_count()
        self.program = self.enterContext(panel.remote(QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1"))
        self.program.wait_until_shown(panel.READY)

    def told_on_the_bus(self) -> Shown:
        """What shows; nothing while it changes."""
        try:
            program = application(self.program.process.pid)
            return list(shown_below(program)) if program else []
        except GLib.Error:
            return []

    def compare(self, *wanted: str) -> None:
        """Waits until the bus tells what the tests read, these names among them."""

        def read() -> Shown:
            return [(node.role, node.name) for node in self.program.nodes()]

        try:
            wait_for("the same", lambda: (told := self.told_on_the_bus()) and told == read())
        except AssertionError:
            self.assertEqual(self.told_on_the_bus(), read())
        self.assertLessEqual(set(wanted), {name for _, name in read()})

    def test_pages(self) -> None:
        """Labels, buttons, tabs, switches, spin boxes and their menu."""
        self.compare(panel.READY, "Automatikbetrieb starten", "Settings")
        self.program.open_settings("Reinigungsprozess")
        self.compare("Leitwert in mS/cm, ab dem das Medium als Wasser erkannt wird")
        self.program.click("Seite der Einstellungen")
        self.compare("Handbetrieb", "Netzwerk")

    def test_dialog(self) -> None:
        """A question before a page."""
        self.program.backend(IMPORT + "gui.Gui.message('Titel', 'Text', 'success')")
        self.program.wait_until_shown("Titel")
        self.compare("Titel", "Text", "OK")


if __name__ == "__main__":
    unittest.main()
