#!/usr/bin/python3
"""A tour of all pages and dialogs, with a picture of each: tour.py <folder> <look>...

A look is a size of the window with a theme, such as 800x1200-dunkel. A warning in the log is a failure.
"""

import sys
import tempfile
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path

from support import desktop, panel, tour_dialogs, tour_starts
from support.accessible import Node
from support.album import Album
from support.automatic import ABORT, START, progress
from support.complaints import complaints
from support.controls import spin_box
from support.desktop import Desktop
from support.look import LOOKS, Look
from support.panel import Panel

_TIME_FACTOR = 20
#: Pages of the settings: name of the picture, entry of the selection box, and what is to be clicked there.
_SETTINGS: tuple[tuple[str, ...], ...] = (
    ("reinigungsprozess", "Reinigungsprozess"),
    ("leitwertpruefung", "Leitwertprüfung"),
    ("sonstige-einstellungen", "Sonstige Einstellungen"),
    ("wlan-anmeldung", "Netzwerk", "Suche nach WLAN-Netzen", "Verbinden"),
    ("netzwerk", "Netzwerk"),
    ("updates", "Updates", "Übersicht", "Suche nach Updates"),
    ("updates-verfuegbar", "Updates", "Verfügbar"),
    ("updates-changelog", "Updates", "Verfügbar", "Changelog"),
    ("updates-installiert", "Updates", "Installiert"),
    ("updates-ausgabekonsole", "Updates", "Ausgabekonsole"),
    ("erscheinungsbild", "Erscheinungsbild"),
)
_THRESHOLD = "Leitwert in mS/cm, ab dem das Medium als Wasser erkannt wird"
_CHECK = "Prüfe während Spülen auf Kaltwasser"
#: A run that goes on after the screens have gone still has points to draw.
_LATE_POINTS = "keine LineSeries zugeordnet"
_WHEEL_CLICKS = 30


class Tour:  # pylint: disable=too-few-public-methods
    """The way through the program. It begins and ends on the automatic page."""

    def __init__(self, program: Panel, album: Album) -> None:
        self._program = program
        self._album = album

    def walk(self) -> None:
        """Goes the whole way."""
        self._take_page("automatik-bereit")
        with self._run():
            self._chart_while_recording()
        self._chart_options()
        self._saving()
        self._saved_charts()
        self._settings()
        self._tab("Automatik")
        self._power()

    def _take(self, name: str) -> None:
        self._album.take(name, self._program.window)

    def _take_moving(self, name: str) -> None:
        self._album.take_moving(name, self._program.window)

    def _take_page(self, name: str) -> None:
        """Takes the page as it comes up, and its end if it is longer than the window. It must be at rest."""
        self._take(name)
        top = self._lower_half()
        self._scroll(_WHEEL_CLICKS)
        if self._lower_half() != top:
            self._take(f"{name}-ende")
            self._scroll(-_WHEEL_CLICKS)

    def _scroll(self, clicks: int) -> None:
        """Turns the wheel until there is no more to scroll."""
        frame = self._program.wait_until_shown(panel.TITLE, "frame").box
        before = b""
        while (now := self._lower_half()) != before:
            before = now
            desktop.scroll(frame.middle[0], frame.y + frame.height * 3 // 4, clicks)
            desktop.park_pointer()

    def _lower_half(self) -> bytes:
        """Where no header changes by itself."""
        self._program.wait_until_still()
        picture = desktop.pixels(self._program.window)
        return picture[len(picture) // 2 :]

    @contextmanager
    def _run(self) -> Iterator[None]:
        """A run that is well under way, and aborted afterwards."""
        program = self._program
        program.press_and_hold(START)
        program.wait_for("30 %", lambda: progress(program) >= 30)
        self._take_moving("automatik-reinigung")
        yield
        self._tab("Automatik")
        program.press_and_hold(ABORT)
        program.wait_until_shown(START)
        self._take("automatik-abgebrochen")

    def _chart_while_recording(self) -> None:
        self._tab("Chart")
        self._take_moving("chart-aufzeichnung")

    def _chart_options(self) -> None:
        self._tab("Chart")
        self._program.click("mehr Optionen")
        self._program.wait_until_shown("weniger Optionen")
        self._program.wait_until_shown("zeige Achse")
        self._turn_switches(True)
        self._take("chart-optionen")
        self._turn_switches(False)
        self._program.click("weniger Optionen")
        self._program.wait_until_shown("mehr Optionen")

    def _turn_switches(self, on: bool) -> None:
        """Outputs and steps, the last two of four, and the whole time, whose switch tells what it shows."""
        for name, position in (("anzeigen", 2), ("anzeigen", 3), ("Zeige ", 0)):
            self._turn_switch(name, position, on)

    def _turn_switch(self, name: str, position: int, on: bool) -> None:
        def switch() -> Node | None:
            found = [node for node in self._program.nodes() if node.name.startswith(name)]
            return found[position] if len(found) > position else None

        desktop.click(*self._program.wait_for(f"switch {name!r}", switch).box.middle)
        self._program.wait_for(f"turned {name!r}", lambda: (now := switch()) and now.checked == on)

    def _saving(self) -> None:
        self._tab("Chart")
        self._program.click("Speichern")
        self._program.wait_until_shown("Chart Name")
        self._take("chart-speichern")
        self._answer("OK", "Chart Name")

    def _saved_charts(self) -> None:
        program = self._program
        program.click("Chart-Browser")
        program.wait_until_shown("löschen")
        self._take("chart-browser")
        self._ask("löschen", "Chart löschen", "chart-loeschen")
        self._ask("umbenennen", "Bitte einen neuen Namen für das Chart eingeben:", "chart-umbenennen")
        program.click("Zurück zum Chart")
        program.wait_until_shown("mehr Optionen")

    def _ask(self, button: str, text: str, name: str) -> None:
        self._program.click(button)
        self._program.wait_until_shown(text)
        self._take(name)
        self._answer("Abbrechen", text)

    def _answer(self, button: str, text: str) -> None:
        self._program.click(button)
        self._program.wait_until_gone(text)

    def _settings(self) -> None:
        for name, entry, *clicks in _SETTINGS:
            self._program.open_settings(entry)
            for button in clicks:
                self._program.click(button)
            self._take_page(f"settings-{name}")
        self._hand_operation()

    def _hand_operation(self) -> None:
        """With an output that is on; the channel does an empty machine no harm."""
        self._program.open_settings("Handbetrieb")
        self._program.click("Kanal")
        self._take_page("settings-handbetrieb")
        self._program.click("Kanal")

    def _power(self) -> None:
        self._program.click("Herunterfahren oder neu starten")
        self._program.wait_until_shown("Neu starten")
        self._take("herunterfahren")
        desktop.xdotool("key", "Escape")
        self._program.wait_until_gone("Neu starten")
        self._program.wait_until_still()

    def _tab(self, title: str) -> None:
        self._program.click(title, "page tab")


def _leave_defaults(program: Panel) -> None:
    """Changes a number and a switch, so that the pages have something to mark."""
    program.open_settings("Reinigungsprozess")
    desktop.click(*spin_box(program, _THRESHOLD).box.plus)
    program.wait_until_gone(_THRESHOLD, "label")
    program.open_settings("Sonstige Einstellungen")
    program.click(_CHECK, "check box")
    program.wait_until_gone(_CHECK, "label")
    program.click("Automatik", "page tab")


def _take_pages(look: Look, album: Album, configuration: str) -> list[str]:
    """Goes round the pages, and leaves a run to be interrupted by the program's end."""
    with panel.demo(_TIME_FACTOR, XDG_CONFIG_HOME=configuration) as program:
        program.wait_until_shown(START)
        _leave_defaults(program)
        look.put_on(program)
        Tour(program, album).walk()
        program.press_and_hold(START)
        program.wait_for("30 %", lambda: progress(program) >= 30)
        return _ended(program, _LATE_POINTS)


def _ended(program: Panel, *expected: str) -> list[str]:
    code = program.close()
    return complaints(program, *expected) + ([f"exit code {code}"] if code else [])


def _take_all(look: Look, album: Album) -> Iterator[str]:
    """Takes all pictures of a look, and gives what is wrong with the logs."""
    with tempfile.TemporaryDirectory() as configuration:
        yield from _take_pages(look, album, configuration)
        with tour_starts.after_an_interruption(look, configuration) as program:
            tour_starts.take_interruption(program, album)
            yield from _ended(program, _LATE_POINTS)
    with tour_starts.with_damaged_storage(look) as program:
        tour_starts.take_failures(program, album)
        yield from _ended(program, "beschädigt", "fehlgeschlagen")
    with tour_dialogs.guest() as program:
        tour_dialogs.take_damaged_window(program, look, album)
        tour_dialogs.take_dialogs(program, look, album)
        yield from _ended(program, "beschädigt", "Traceback (most recent call last):")


def main() -> int:
    """Gives the exit code."""
    folder, *names = sys.argv[1:]
    with Desktop():
        found = [line for name in names for line in _take_all(LOOKS[name], Album(Path(folder) / name))]
        print("\n".join(["The log complains:", *found] if found else ["The log has no complaint."]))
        return len(found)


if __name__ == "__main__":
    sys.exit(main())
