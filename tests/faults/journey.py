"""What an operator does with the demo's backend in an ordinary Python, and what comes of it.

The machine's time passes as fast as it can; the storage's thread is the real one. All that begins and all
that has been acknowledged is told at once, so that it is known whenever the process ends.
"""

# pylint: disable=protected-access  # as the tests of the backend do

import random
import threading
from collections.abc import Callable, Iterable, Iterator
from functools import partial
from pathlib import Path
from typing import Any, Final

import watching
from brovik.auto import Auto, AutoEnum
from brovik.chart import Chart, ChartEnum, ChartMetaDataList
from brovik.settings import SettingsEnum

from child import Tell
from demo_support import STEP_SECS, reset_host
from ledger import Ledger, STEPS, digest
from controller.backend import Backend
from controller.dialogs import DialogId
from controller.hardware_choice import HardwareChoice
from controller.program_errors import LOGGED
from controller.recording import all_lines
from controller.saved_charts import SavedChart
from controller.simulation.hardware import SimulatedHardware
from controller.storage import Storage

WAIT_SECS: Final = 30.0
#: How the operator is told that something has gone wrong.
NOTICES: Final = ("message", "toastWarn", "exception")
#: Whole numbers that no run of this machine depends on.
SETTINGS: Final = ("steam_sterilization_secs", "cold_kreis_fill_secs_legacy", "hot_kreis_clean_secs_legacy")
LOWEST, HIGHEST = 15, 20
#: What the backend says if what is done now will be forgotten.
NOT_KEPT: Final = "gelten bis zum Beenden"


class Journey:
    """A life of the program. `tell` hears of what is begun, done or failed."""

    def __init__(self, directory: Path, tell: Tell) -> None:
        """Starts the backend."""
        self._tell = tell
        self._tell({"starts": True})
        self._gui = watching.SignalLog("Gui", NOTICES)
        self._log = watching.LogCapture()
        self._earlier: list[str] = []
        watching.screens_loaded()
        reset_host()
        Chart.clear()
        Chart.active = Chart.savable = False
        Chart.assigned_names, Chart.meta_data_list = [], ChartMetaDataList()
        simulated = SimulatedHardware(frozenset())
        self._backend = Backend(directory, 1.0, lambda: HardwareChoice(simulated, simulated))
        self._operation = self._backend.operation
        # What was told at the start was told; that later changes are not kept has to be known.
        notices = self.notices()
        self._tell({"opened": True, "kept": not any(NOT_KEPT in text for text in notices)})

    def notices(self) -> list[str]:
        """What the operator or the log has been told of failures, all in all."""
        return self._earlier + self._new_notices()

    def _new_notices(self) -> list[str]:
        shown = [" ".join(map(str, values)) for _, _, values in self._gui.emissions]
        logged = [text for level, text in self._log.messages if level in ("warning", "critical")]
        return shown + logged

    def _forget_notices(self) -> None:
        """Begins anew: the log keeps the newest lines alone."""
        self._earlier = self.notices()
        self._gui.clear()
        self._log.clear()

    # What the operator does.

    def change_setting(self, key: str, value: int) -> None:
        """Another value of a parameter."""
        self._do(
            "setting",
            [key, value],
            lambda: self._backend.settings.wish(SettingsEnum.__members__[key], float(value)),
        )

    def save_chart(self, name: str) -> None:
        """Records a chart by hand and saves it."""
        self._backend.charts.act(ChartEnum.Hand, None)
        self._pass(3.0)
        self._backend.charts.act(ChartEnum.Hand, None)
        info = self._backend.charts.recorder.info
        assert info is not None
        lines = {key: line.data for key, line in all_lines().items()}
        saved = SavedChart(info, Chart.step_names, Chart.actuator_names, lines)
        self._do("chart", [name, digest(saved)], lambda: self._backend.charts.act(ChartEnum.Save, name))

    def rename_chart(self, old: str, new: str) -> None:
        """Gives a saved chart another name."""
        self._do("rename", [old, new], lambda: self._backend.charts.act(ChartEnum.Rename, [old, new]))

    def delete_chart(self, name: str) -> None:
        """Deletes a saved chart."""
        self._do("delete", [name], lambda: self._backend.charts.act(ChartEnum.Delete, name))

    def begin_run(self) -> None:
        """Starts a run and lets it come to its first step."""
        self._do("draft", [], self._start_run)

    def end_run(self) -> None:
        """Lets the run go on to its end."""
        self._do("record", [True], self._until_the_end)

    def abort_run(self) -> None:
        """Ends the run at once."""
        self._do("record", [False], lambda: self._operation.toggle(AutoEnum.Toggle))

    def decide_on_interrupted(self, goes_on: bool) -> None:
        """Answers the question whether to go on with a run that the end of the program has cut short."""
        note = self._backend._note
        if note is None:
            return
        self._backend._note = None
        self._operation.offer_to_continue(note)
        report = {str(int(DialogId.CONTINUE_RUN)): {"a": goes_on}}
        if goes_on:
            self._do("draft", [], partial(self._go_on, report))
            self.end_run()
        else:
            self._do("record", [False], lambda: self._operation.take_report(report))

    def stop(self) -> None:
        """Ends the program in good order."""
        self._backend.stop()

    @property
    def charts(self) -> list[str]:
        """Names of the saved charts, as the screens show them."""
        return list(Chart.assigned_names)

    def _do(self, name: str, values: list[object], action: Callable[[], object]) -> None:
        """Does it, waits until it is in the file, and tells whether that went well."""
        self._forget_notices()
        self._tell({"begin": name, "values": values})
        action()
        journal = self._settled()
        news = self._new_notices()
        if len(self.notices()) >= LOGGED:
            # From then on the log only counts what fails again and again.
            news.append("perhaps the same error once more")
        self._tell({"failed": news} if news else {"done": name, "values": values, "journal": journal})

    def _settled(self) -> int:
        """Waits until the file has all that was to be written. How many lines its journal has."""
        lines = 0
        written = threading.Event()

        def look(storage: Storage) -> None:
            nonlocal lines
            try:
                (lines,) = storage._connection.execute("SELECT count(*) FROM journal").fetchone()
            finally:
                written.set()

        self._backend._writer.perform(look)
        assert written.wait(WAIT_SECS), "the storage's thread stands"
        self._backend.machine._run_waiting_commands()
        watching.settle()
        return lines

    def _start_run(self) -> None:
        self._operation.toggle(AutoEnum.Toggle)
        self._pass(0.5)

    def _go_on(self, report: object) -> None:
        self._operation.take_report(report)
        self._pass(0.5)

    def _pass(self, secs: float) -> None:
        for _ in range(round(secs / STEP_SECS)):
            self._operation.advance(STEP_SECS)

    def _until_the_end(self) -> None:
        for _ in range(100_000):
            if not Auto.active:
                return
            self._operation.advance(STEP_SECS)
        raise AssertionError("the run does not end")


def wander(journey: Journey, chance: random.Random) -> Iterator[str]:
    """Does something, again and again, for ever. The name of what comes next."""
    number = 0
    journey.decide_on_interrupted(chance.random() < 0.5)
    while True:
        number += 1
        name = f"Chart {chance.randrange(10**9)}"
        action = chance.choice(("setting", "setting", "save", "rename", "delete", "run", "abort"))
        yield action
        charts = journey.charts
        if action == "setting":
            journey.change_setting(chance.choice(SETTINGS), chance.randint(LOWEST, HIGHEST))
        elif action == "save" or not charts:
            journey.save_chart(name)
        elif action == "rename":
            journey.rename_chart(chance.choice(charts), name)
        elif action == "delete":
            journey.delete_chart(chance.choice(charts))
        elif action == "run":
            journey.begin_run()
            journey.end_run()
        else:
            journey.begin_run()
            journey.abort_run()


def first_life(journey: Journey) -> None:
    """Leaves a bit of everything, and a run in progress."""
    journey.change_setting(SETTINGS[0], HIGHEST)
    journey.save_chart("Eins von früher")
    journey.begin_run()
    journey.end_run()
    journey.begin_run()
    journey.stop()


def round_trip(journey: Journey) -> None:
    """Each thing once."""
    journey.decide_on_interrupted(False)
    journey.change_setting(SETTINGS[0], LOWEST)
    journey.save_chart("Eins")
    journey.save_chart("Zwei")
    journey.rename_chart("Eins", "Drei")
    journey.delete_chart("Zwei")
    journey.begin_run()
    journey.end_run()
    journey.change_setting(SETTINGS[1], HIGHEST)
    journey.begin_run()
    journey.abort_run()
    journey.stop()


def enter(ledger: Ledger, told: Iterable[Any]) -> None:
    """Enters what lives have told. What is not kept, as was told at the start, does not count."""
    for line in told:
        if "starts" in line:
            ledger.begins()
        elif "opened" in line:
            ledger.keeps = line["kept"]
        elif ledger.keeps and "begin" in line:
            ledger.begun(STEPS[line["begin"]](*line["values"]))
        elif ledger.keeps and "done" in line:
            ledger.done(STEPS[line["done"]](*line["values"]))
            ledger.journal = max(ledger.journal, line["journal"])
