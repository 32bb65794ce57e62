#!/usr/bin/python3
"""A tour of all pages and dialogs on the demo machine, with a picture of each: tour.py <folder>.

Each picture is taken in both themes and in both sizes of the window. A warning in the program's log
is a failure.
"""

import sys
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path

import desktop
import panel
from album import Album, to_dark, to_light
from demo_run import ABORT, START, progress
from desktop import Desktop
from panel import Panel

_TIME_FACTOR = 20
_SIZES = ((800, 1200), (720, 950))
_SELECTION = "Seite der Einstellungen"
#: Entries of the selection box, with the name of their picture.
_SETTINGS = {
    "Reinigungsprozess": "reinigungsprozess",
    "Leitwertprüfung": "leitwertpruefung",
    "Sonstige Einstellungen": "sonstige-einstellungen",
    "Erscheinungsbild": "erscheinungsbild",
    "Handbetrieb": "handbetrieb",
}
#: What the log may tell beside the ordinary, because this machine is not the real one: it has no session
#: directory, and no dictionaries for the on-screen keyboard.
_EXPECTED = ("XDG_RUNTIME_DIR", "Hunspell dictionary is missing")


class Tour:  # pylint: disable=too-few-public-methods
    """The way through the program. It begins and ends on the automatic page."""

    def __init__(self, program: Panel, album: Album) -> None:
        self._program = program
        self._album = album

    def walk(self) -> None:
        """Goes the whole way."""
        self._album.take("automatik-bereit")
        with self._run():
            self._charts_while_recording()
        self._saving()
        self._saved_charts()
        self._settings()
        self._tab("Automatik")
        self._power()

    @contextmanager
    def _run(self) -> Iterator[None]:
        """A run that is well under way, and aborted afterwards."""
        program = self._program
        program.press_and_hold(START)
        program.wait_for("30 %", lambda: progress(program) >= 30)
        self._album.take("automatik-reinigung")
        yield
        self._tab("Automatik")
        program.press_and_hold(ABORT)
        program.wait_until_shown(START)
        self._album.take("automatik-abgebrochen")

    def _charts_while_recording(self) -> None:
        self._tab("Chart")
        self._album.take("chart-aufzeichnung")
        self._program.click("mehr Optionen")
        self._program.wait_until_shown("weniger Optionen")
        self._program.wait_until_shown("zeige Achse")
        self._album.take("chart-optionen")
        self._program.click("weniger Optionen")
        self._program.wait_until_shown("mehr Optionen")

    def _saving(self) -> None:
        self._tab("Chart")
        self._program.click("Speichern")
        self._program.wait_until_shown("Chart Name")
        self._album.take("chart-speichern")
        self._answer("OK", "Chart Name")

    def _saved_charts(self) -> None:
        program = self._program
        program.click("Chart-Browser")
        program.wait_until_shown("löschen")
        self._album.take("chart-browser")
        self._ask("löschen", "Chart löschen", "chart-loeschen")
        self._ask("umbenennen", "Bitte einen neuen Namen für das Chart eingeben:", "chart-umbenennen")
        program.click("Zurück zum Chart")
        program.wait_until_shown("mehr Optionen")

    def _ask(self, button: str, text: str, name: str) -> None:
        self._program.click(button)
        self._program.wait_until_shown(text)
        self._album.take(name)
        self._answer("Abbrechen", text)

    def _answer(self, button: str, text: str) -> None:
        self._program.click(button)
        self._program.wait_until_gone(text)

    def _settings(self) -> None:
        self._tab("Settings")
        for title, name in _SETTINGS.items():
            self._program.click(_SELECTION)
            self._program.click(title, "menu item")
            self._program.wait_until_gone(title, "menu item")
            self._album.take(f"settings-{name}")

    def _power(self) -> None:
        self._program.click("Herunterfahren oder neu starten")
        self._program.wait_until_shown("Neu starten")
        self._album.take("herunterfahren")
        desktop.xdotool("key", "Escape")
        self._program.wait_until_gone("Neu starten")
        self._program.wait_until_still()

    def _tab(self, title: str) -> None:
        self._program.click(title, "page tab")


def take_tours(program: Panel, folder: Path) -> None:
    """Goes round once for each size and theme."""
    program.wait_until_shown(START)
    for width, height in _SIZES:
        program.resize(width, height)
        Tour(program, Album(program, folder / f"{width}x{height}-dunkel")).walk()
        to_light(program)
        Tour(program, Album(program, folder / f"{width}x{height}-hell")).walk()
        to_dark(program)


def complaints(program: Panel) -> list[str]:
    """Lines of the log that a tour without a fault does not write."""
    lines = (line for line in program.log if line.startswith(("[WARN", "[CRIT", "[FATAL")))
    return [line for line in lines if not any(known in line for known in _EXPECTED)]


def main() -> int:
    """Gives the exit code."""
    with Desktop(), panel.demo(_TIME_FACTOR) as program:
        take_tours(program, Path(sys.argv[1]))
        found = complaints(program)
        print("\n".join(["The log complains:", *found] if found else ["The log has no complaint."]))
        return program.close() or len(found)


if __name__ == "__main__":
    sys.exit(main())
