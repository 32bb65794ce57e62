"""The numbers of the steps: a run of the demo machine tells the same as the page of its settings."""

import re
import sqlite3
import tempfile
import unittest
from collections.abc import Iterator
from contextlib import closing
from itertools import product
from pathlib import Path
from typing import Final, NamedTuple

from support import panel
from support.automatic import START
from support.panel import Panel

#: A whole cleaning takes a second or two.
TIME_FACTOR: Final = 300
RUN_DEADLINE_SECS: Final = 120.0

#: What a run calls its steps, and the beginning of the text that the page has for each.
PAGE_TEXTS: Final = {
    "Dichtheitsprobe": "Es wird eine Dichtheitsprobe durchgeführt",
    "Fass in den Kanal entleeren": "Das Fass wird in den Kanal entleert",
    "Spülen mit Heißwasser": "Das Fass wird in drei Durchgängen mit Heißwasser gespült.",
    "Reinigen mit Lauge": "Das Fass wird mit Lauge gereinigt.",
    "Lauge zurückfördern": "Die Lauge wird mittels Druckluft in das Laugebecken zurückgefördert.",
    # The page has the text of the second step here.
    "Laugereste in den Kanal spülen": "Das Fass wird in den Kanal entleert",
    "Kreislauf mit Heißwasser spülen": "Der Kreislauf wird mit Heißwasser gespült.",
    "Nachspülen mit Heißwasser": "Das Fass wird in einem Durchgang mit Heißwasser gespült.",
    "Reinigen mit Säure": "Das Fass wird mit Säure gereinigt.",
    "Säure zurückfördern": "Die Säure wird mittels CO2 in das Säurebecken zurückgefördert.",
    "Spülen mit Kaltwasser": "Das Fass wird in drei Durchgängen mit Kaltwasser gespült.",
    "Kreislauf mit Kaltwasser spülen": "Der Kreislauf wird mit Kaltwasser gespült.",
    "Nachspülen mit Kaltwasser": "Das Fass wird in einem Durchgang mit Kaltwasser gespült.",
    "Sterilisieren mit Dampf": "Das Fass wird mit Wasserdampf sterilisiert.",
    "Luft mit CO2 austreiben": "Das Fass wird noch eine gewisse Zeit mit CO2 (getaktet) ausgeblasen",
    "Vorspannen mit CO2": "Das Fass wird mit CO2 auf einen gewissen Druck vorgespannt.",
}
STEAM: Final = "Sterilisieren mit Dampf"
LAST: Final = "Vorspannen mit CO2"
#: The page names the numbers of these once more, with the time that they have in common.
BLOWING: Final = (
    "Fass in den Kanal entleeren",
    "Lauge zurückfördern",
    "Säure zurückfördern",
    "Luft mit CO2 austreiben",
)
WHOLE_PAGE: Final = (800, 6000)


class Variant(NamedTuple):
    """What the numbers depend on."""

    version: str
    valve: bool
    steam: bool


class Step(NamedTuple):
    """A step as the run tells it: its number, how many there are, and its title."""

    number: int
    total: int
    title: str


VARIANTS: Final = tuple(
    Variant(*values) for values in product(("_2024", "Legacy"), (True, False), (True, False))
)


class StepNumbersTest(unittest.TestCase):
    """Both generations, with and without the valve, with the steam step wished and not."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self._configuration = Path(self.enterContext(folder))
        with self._program() as program:  # Makes its file.
            program.wait_until_shown(START)
            self.assertEqual(program.close(), 0)

    def test_run_and_page_agree(self) -> None:
        """Each step of the run has the number that stands before its text on the page; so has the last."""
        totals = []
        for variant in VARIANTS:
            with self.subTest(variant), self._machine(variant) as program:
                steps = list(self._run(program))
                page = self._page(program)
                self.assertEqual(program.close(), 0)
                self._compare(variant, steps, page)
                totals.append(len(steps))
        self.assertEqual(totals, [12, 11, 11, 11, 16, 15, 15, 15])

    def _compare(self, variant: Variant, steps: list[Step], page: list[str]) -> None:
        self.assertEqual([step.number for step in steps], list(range(1, len(steps) + 1)))
        self.assertEqual({step.total for step in steps}, {len(steps)})
        shown = [
            (int(number[:-1]), text) for number, text in zip(page, page[1:]) if re.fullmatch(r"\d+:", number)
        ]
        if variant.valve and not variant.steam:
            # The switch of the step is in its box. The next box bears the same number.
            (box,) = [entry for entry in shown if entry[1] == PAGE_TEXTS[STEAM]]
            shown.remove(box)
        self.assertEqual([number for number, _ in shown], [step.number for step in steps])
        for step, (_, text) in zip(steps, shown):
            self.assertTrue(text.startswith(PAGE_TEXTS[step.title]), (step, text))
        blowing = ", ".join(str(step.number) for step in steps if step.title in BLOWING)
        self.assertTrue(any(f"(Schritte {blowing})" in text for text in page), blowing)

    def _machine(self, variant: Variant) -> Panel:
        """The program on such a machine, not yet started."""
        values = (
            ("machine", "machine_version", f'"{variant.version}"'),
            ("machine", "has_steam_valve", str(variant.valve).lower()),
            ("settings", "do_steam_step", str(variant.steam).lower()),
        )
        (path,) = self._configuration.rglob("*.sqlite3")
        with closing(sqlite3.connect(path)) as connection:
            connection.executemany("INSERT OR REPLACE INTO entry VALUES (?, ?, ?)", values)
            connection.commit()
        return self._program()

    def _program(self) -> Panel:
        return panel.demo(TIME_FACTOR, XDG_CONFIG_HOME=str(self._configuration))

    def _run(self, program: Panel) -> Iterator[Step]:
        """Runs a whole cleaning."""
        program.press_and_hold(START)
        program.wait_until_shown("100 %", deadline=RUN_DEADLINE_SECS)
        for line in program.log:
            if match := re.search(r"Schritt (\d+) von (\d+): (.*)$", line):
                yield Step(int(match[1]), int(match[2]), match[3])

    def _page(self, program: Panel) -> list[str]:
        """All texts of the page, in a window that is high enough for them."""
        program.click("Settings", "page tab")
        program.resize(*WHOLE_PAGE)
        program.wait_until_shown(PAGE_TEXTS[LAST])
        program.wait_until_still()
        return program.names()


if __name__ == "__main__":
    unittest.main()
