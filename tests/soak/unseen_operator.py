"""An operator who does anything in any order, and never tires."""

import random
from collections import Counter
from collections.abc import Callable
from typing import Final

from support import desktop
from support.automatic import ABORT, START
from support.controls import spin_box
from support.look import TO_DARK, TO_LIGHT
from support.panel import HOLD_SECS, Panel

#: An action that takes longer comes to nothing.
PATIENCE_SECS: Final = 10.0
#: What answers a message or a question, in the order of preference.
ANSWERS: Final = ("OK", "Ja", "Später", "Nein", "Abbrechen")
THRESHOLD: Final = "Leitwert in mS/cm, ab dem das Medium als Wasser erkannt wird"
BACK_TO_CHART: Final = "Zurück zum Chart"
CHECK_START: Final = "Überprüfung starten"
CHECK_ENDS: Final = ("Überprüfung abschließen", "Überprüfung abbrechen")


# All it is asked for is the next action.
class Operator:  # pylint: disable=too-few-public-methods
    """One action after the other."""

    def __init__(self, program: Panel, seed: int) -> None:
        self.done: Counter[str] = Counter()
        self.missed: Counter[str] = Counter()
        self._program = program
        self._chance = random.Random(seed)
        self._actions: dict[str, Callable[[], None]] = {
            "cleaning": self._clean,
            "abort": self._abort,
            "bath test": self._test_bath,
            "hand operation": self._operate_by_hand,
            "chart by hand": self._record,
            "saved chart": self._save_chart,
            "chart browser": self._browse,
            "updates": self._look_for_updates,
            "network": self._look_for_networks,
            "theme": self._change_theme,
            "setting": self._change_setting,
        }

    def act(self) -> None:
        """Does something. What hinders it is set aside first; what comes to nothing is counted."""
        name = self._chance.choice(list(self._actions))
        try:
            self._answer_all()
            self._actions[name]()
            self.done[name] += 1
        except AssertionError as error:
            if self._program.process.poll() is not None:
                raise
            print(f"{name}: {error}", flush=True)
            self.missed[name] += 1
            desktop.press_key("Escape")

    # What the hand does.

    def _wait(self, name: str, role: str | None = None) -> None:
        self._program.wait_until_shown(name, role, PATIENCE_SECS)

    def _click(self, name: str, role: str | None = None) -> None:
        node = self._program.wait_until_shown(name, role, PATIENCE_SECS)
        desktop.click(*node.box.middle)

    def _hold(self, name: str) -> None:
        self._wait(name)
        self._program.press_and_hold(name)

    def _tab(self, title: str) -> None:
        self._click(title, "page tab")

    def _settings(self, page: str) -> None:
        self._tab("Settings")
        self._click("Seite der Einstellungen")
        self._click(page, "menu item")

    def _answer_all(self) -> None:
        """Answers what is asked, a few times over: one dialog may hide another."""
        for _ in range(5):
            found = next(
                (node for name in ANSWERS if (node := self._program.find(name, "push button"))), None
            )
            if found is None:
                return
            desktop.click(*found.box.middle)
            self._program.wait_until_still()

    # What the operator does.

    def _clean(self) -> None:
        self._start_run()
        self._wait(START)

    def _abort(self) -> None:
        self._start_run()
        self._hold(ABORT)
        self._wait(START)

    def _start_run(self) -> None:
        self._tab("Automatik")
        self._end_bath_test()
        self._hold(START)
        self._wait(ABORT)

    def _test_bath(self) -> None:
        self._tab("Automatik")
        self._end_bath_test()
        self._hold(CHECK_START)
        awaited = CHECK_ENDS[: self._chance.choice((1, 2))]
        self._program.wait_for(
            "the test", lambda: any(self._program.find(name) for name in awaited), PATIENCE_SECS
        )
        self._end_bath_test()

    def _end_bath_test(self) -> None:
        """If one runs. When the bath is as strong as it shall be, one button becomes the other."""

        def ended() -> bool:
            found = next((node for name in CHECK_ENDS if (node := self._program.find(name))), None)
            if found is not None:
                desktop.press_and_hold(*found.box.middle, HOLD_SECS)
            return found is None

        self._program.wait_for("the end of the test", ended, PATIENCE_SECS)

    def _operate_by_hand(self) -> None:
        self._settings("Handbetrieb")
        for _ in range(2):
            self._click("Kanal")

    def _record(self) -> None:
        self._tab("Chart")
        for name in ("Handbetrieb aufzeichnen", "Aufzeichnung beenden"):
            self._click(name)

    def _save_chart(self) -> None:
        self._clean()
        self._tab("Chart")
        self._click("Speichern")
        self._wait("Chart Name")
        self._click("OK")
        self._program.wait_until_gone("Chart Name")

    def _browse(self) -> None:
        if not self.done["saved chart"]:
            self._save_chart()
        self._tab("Chart")
        self._click("Chart-Browser")
        self._wait(BACK_TO_CHART)
        name = self._chance.choice(("laden", "löschen"))
        if self._program.find(name):
            self._click(name)
            self._answer_all()
        if self._program.find(BACK_TO_CHART):
            self._click(BACK_TO_CHART)

    def _look_for_updates(self) -> None:
        self._settings("Updates")
        self._click("Übersicht")
        self._click("Suche nach Updates")
        self._click(self._chance.choice(("Verfügbar", "Installiert", "Ausgabekonsole")))

    def _look_for_networks(self) -> None:
        self._settings("Netzwerk")
        self._click("Suche nach WLAN-Netzen")
        self._wait("Brovik-Büro")

    def _change_theme(self) -> None:
        self._click(TO_LIGHT if self._program.find(TO_LIGHT) else TO_DARK)

    def _change_setting(self) -> None:
        self._settings("Reinigungsprozess")
        box = spin_box(self._program, THRESHOLD).box
        desktop.click(*self._chance.choice((box.plus, box.minus)))
