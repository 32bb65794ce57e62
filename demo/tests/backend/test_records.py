"""What a run leaves behind: one record, however it has ended."""

# pylint: disable=protected-access  # tests look inside

import math
import sys
import threading
import time
import unittest
from collections.abc import Callable
from contextlib import ExitStack
from typing import Any
from unittest.mock import patch

import watching
from brovik.auto import Auto, AutoEnum
from brovik.chart import Chart
from brovik.gui import Gui
from brovik.settings import SettingsEnum, SettingsValues

from demo_logbook import RecordCase, counters, curves, details
from controller import configuration, notices
from controller.configuration import KEPT_CURVES
from controller.jobs import PROGRAM_ERROR, Outcome
from controller.process.steps import Flow
from controller.recording import all_lines
from controller.run_log import INTERRUPTED
from controller.simulation.faults import PlantFault
from controller.storage import MACHINE, RUN
from controller.settings_table import HOST_SETTINGS
from controller.settings_titles import TITLES
from logbook.place import FILE_NAME
import logbook.curves
import logbook.writer
from logbook.records import RunRecord

#: What the end of a run may take from the machine's thread, seconds.
END_SECS = 0.001


class WholeRunTest(RecordCase):
    """A cleaning that goes well."""

    def test_record(self) -> None:
        """Says all that was in force, done and measured."""
        self.configure(machine_name="Halle 2")
        self.make()
        SettingsValues.secs_pump = 7
        self.run_whole()
        (record,) = self.written()
        self.assertEqual(
            (
                record.number,
                record.result,
                record.reason,
                record.program,
                record.machine,
                record.machine_version,
            ),
            (1, "success", "Das Fass ist gereinigt und vorgespannt.", "Automatikbetrieb", "Halle 2", "_2024"),
        )
        self.assertRegex(f"{record.program_version} {record.backend_version}", r"^\d\S* \d\S*$")
        self.assertLessEqual(record.begun, record.ended)
        parameters = {parameter.key: parameter for parameter in record.parameters}
        self.assertEqual(parameters.keys(), HOST_SETTINGS.keys())
        pump = parameters["secs_pump"]
        self.assertEqual(
            (pump.value, pump.default, pump.unit, pump.title), (7, 5, "s", "Spülen je Durchgang")
        )
        self.assertIn(("has_level_switch", True), [(item.key, item.value) for item in record.equipment])
        self.assertEqual((record.interruptions, record.messages, record.questions), ((), (), ()))
        self.assertEqual(len(record.step_names), 11)
        self.assertEqual(record.actuator_names, tuple(Chart.actuator_names))

    def test_steps(self) -> None:
        """One after the other without a gap, each with what it has measured and checked."""
        self.make()
        self.run_whole()
        (record,) = self.written()
        self.assertEqual([step.title for step in record.steps], list(record.step_names))
        self.assertEqual([step.number for step in record.steps], list(range(1, 12)))
        self.assertEqual({step.result for step in record.steps}, {"done"})
        ends = [0.0, *(step.ended_secs for step in record.steps)]
        self.assertEqual([step.begun_secs for step in record.steps], ends[:-1])
        self.assertEqual(ends[-1], record.secs)
        leak, lye = record.steps[0], record.steps[3]
        pressure = leak.ranges[0]
        self.assertEqual((pressure.name, pressure.unit), ("Druck", "bar"))
        self.assertLess(pressure.lowest, 0.15)
        self.assertAlmostEqual(pressure.highest, SettingsValues.leakage_p_fill, delta=0.02)
        self.assertEqual([r.name for r in lye.ranges], ["Druck", "Leitwert", "Laugentemperatur"])
        checks = {check.name: check for check in leak.checks}
        self.assertEqual(checks["Druckverlust"].limit, SettingsValues.leakage_p_max_loss)
        rise = checks["Druckanstieg"]
        self.assertAlmostEqual(rise.value, 0.05, delta=0.005)
        self.assertEqual((rise.unit, rise.limit), ("bar/s", SettingsValues.leakage_p_inc_rate))
        (peak,) = (check for check in lye.checks if check.name.startswith("Höchster"))
        self.assertAlmostEqual(peak.value, 58.0, delta=0.1)

    def test_baths(self) -> None:
        """Concentrations against what was wished."""
        self.make(PlantFault.WEAK_BATH)
        self.run_whole()
        (record,) = self.written()
        self.assertEqual(record.result, "warning")
        baths = {bath.name: bath for bath in record.baths}
        self.assertEqual((baths["Lauge"].set_point, baths["Lauge"].minimum), (60.0, 30.0))
        self.assertTrue(baths["Lauge"].too_low and baths["Säure"].too_low)
        self.assertAlmostEqual(baths["Lauge"].peak, 5.0, delta=0.1)
        (message,) = record.messages
        self.assertEqual(
            (message.title, message.text, message.urgency), ("Automatikbetrieb", record.reason, "warning")
        )

    def test_curves(self) -> None:
        """Those of the chart, point by point."""
        self.make()
        self.run_whole()
        shown = {name: line.data for name, line in all_lines().items() if line.data}
        self.written()
        stored = curves(self.directory / FILE_NAME, 1)
        self.assertEqual(stored.lines, shown)
        self.assertGreater(len(shown["P"]), 500)

    def test_two_runs(self) -> None:
        """Each has its own record, and they hang together."""
        self.make()
        self.run_whole()
        self.run_to("Reinigen mit Lauge")
        self.operation.toggle(AutoEnum.Toggle)
        first, second = self.written()
        self.assertEqual((first.number, second.number), (1, 2))
        self.assertEqual((first.result, second.result), ("success", "neutral"))
        self.assertEqual((len(first.steps), len(second.steps)), (11, 4))

    def test_a_test_of_a_bath(self) -> None:
        """Is no run, and an operation by hand is none either."""
        self.make()
        self.operation.toggle(AutoEnum.ToggleLwTestLauge)
        self.operation.advance(0.1)
        self.operation.toggle(AutoEnum.ToggleLwTestLauge)
        self.assertEqual(self.written(), [])


class EndTest(RecordCase):
    """Each way in which a run may end."""

    def test_failed(self) -> None:
        """The step that has failed says why; the message is in the record."""
        self.make(PlantFault.LEAK)
        self.run_whole()
        (record,) = self.written()
        self.assertEqual(record.result, "error")
        self.assertRegex(record.reason, "^Undicht: ")
        (step,) = record.steps
        self.assertEqual((step.result, step.reason), ("failed", record.reason))
        check = step.checks[-1]
        self.assertGreater(check.value, check.limit or math.inf)
        self.assertEqual([(m.text, m.urgency) for m in record.messages], [(record.reason, "error")])

    def test_aborted(self) -> None:
        """By the operator."""
        self.make()
        self.run_to("Reinigen mit Lauge")
        self.operation.toggle(AutoEnum.Toggle)
        (record,) = self.written()
        self.assertEqual((record.result, record.reason), ("neutral", "abgebrochen"))
        self.assertEqual([step.result for step in record.steps], ["done"] * 3 + ["aborted"])
        (acid,) = (bath for bath in record.baths if bath.name == "Säure")
        self.assertTrue(math.isnan(acid.peak))

    def test_program_error(self) -> None:
        """In a step, and in the tick."""
        self.make()
        self.run_to("Reinigen mit Lauge")
        with patch.object(Flow, "check", side_effect=ValueError("schlecht")):
            self.run_until(lambda: not Auto.active)
        self.begin()
        self.operation.advance(0.1)
        self.operation.halt()
        first, second = self.written()
        self.assertEqual((first.result, first.reason), ("error", PROGRAM_ERROR))
        self.assertEqual((first.messages[0].title, first.messages[0].urgency), ("ValueError", "error"))
        self.assertEqual(
            (second.result, second.reason, second.steps[0].result), ("error", PROGRAM_ERROR, "failed")
        )

    def test_end_of_the_program(self) -> None:
        """Leaves a draft, and no record yet: the operator may go on with the run."""
        self.make()
        self.run_to("Reinigen mit Säure")
        self.assertEqual(self.written(), [])
        self.assertEqual(self.in_file(RUN)["step"], "acid")


class InterruptedTest(RecordCase):
    """A run that the end of the program has cut short, at the next start."""

    def interrupt(self, step: str = "Reinigen mit Säure") -> None:
        """Ends the program during a run, and starts it again."""
        self.make()
        self.run_to(step)
        notices.warn("Vor dem Ende")
        self.restart()

    def restart(self) -> None:
        """Ends the program, and starts it again."""
        self.backend.stop()
        self.make()

    def offer(self) -> None:
        """What `Ready` has the machine thread do."""
        note = self.backend._note
        assert note is not None
        self.operation.offer_to_continue(note)

    def assert_cut_short(self, record: RunRecord) -> None:
        """The record of a run that nobody went on with."""
        self.assertEqual((record.result, record.reason), ("error", INTERRUPTED))
        self.assertEqual([step.result for step in record.steps], ["done"] * 6 + ["cut short"])
        (interruption,) = record.interruptions
        self.assertEqual((interruption.step, interruption.went_on), (7, ""))

    def test_gone_on(self) -> None:
        """One record with an interruption: steps, messages and curves of both parts."""
        self.interrupt()
        self.offer()
        self.answer(1, True)
        self.run_until(lambda: not Auto.active)
        (record,) = self.written()
        self.assertEqual(record.result, "success")
        numbers = [step.number for step in record.steps]
        self.assertEqual(numbers, [1, 2, 3, 4, 5, 6, 7, 7, 8, 9, 10, 11])
        self.assertEqual((record.steps[6].result, record.steps[7].result), ("cut short", "done"))
        self.assertEqual(record.steps[7].begun_secs, record.steps[6].ended_secs)
        (interruption,) = record.interruptions
        self.assertEqual(interruption.step, 7)
        self.assertGreaterEqual(interruption.went_on, interruption.time)
        self.assertEqual([message.title for message in record.messages], ["Vor dem Ende"])
        peaks = {bath.name: bath.peak for bath in record.baths}
        self.assertAlmostEqual(peaks["Lauge"], 58.0, delta=0.1)
        self.assertAlmostEqual(peaks["Säure"], 19.0, delta=0.1)
        pressure = curves(self.directory / FILE_NAME, 1).lines["P"]
        seconds = [x for x, _ in pressure]
        self.assertEqual((seconds[0], seconds), (0.0, sorted(seconds)))
        self.assertLess(max(b - a for a, b in zip(seconds, seconds[1:])), 1.01)
        self.assertAlmostEqual(seconds[-1], record.secs, delta=0.2)

    def test_twice_interrupted(self) -> None:
        """Still one record."""
        self.interrupt()
        self.offer()
        self.answer(1, True)
        self.run_until(lambda: Gui.status.endswith("Vorspannen mit CO2"))
        self.restart()
        self.offer()
        self.answer(1, True)
        self.run_until(lambda: not Auto.active)
        (record,) = self.written()
        self.assertEqual([(i.step, bool(i.went_on)) for i in record.interruptions], [(7, True), (11, True)])
        self.assertEqual(record.result, "success")

    def test_discarded(self) -> None:
        """Its record is written, once."""
        self.interrupt()
        self.offer()
        self.answer(1, False)
        self.restart()
        (record,) = self.written()
        self.assert_cut_short(record)
        self.assertEqual(self.in_file(RUN), {})

    def test_left_open(self) -> None:
        """Nothing is decided: the draft stays for the next start."""
        self.interrupt()
        self.offer()
        self.restart()
        self.offer()
        self.restart()
        self.offer()
        self.answer(1, False)
        (record,) = self.written()
        self.assert_cut_short(record)

    def test_overtaken_by_another_run(self) -> None:
        """Both have their records, in their order."""
        self.interrupt()
        self.offer()
        self.run_whole()
        first, second = self.written()
        self.assert_cut_short(first)
        self.assertEqual((second.result, second.interruptions, len(second.steps)), ("success", (), 11))

    def test_a_step_that_this_machine_has_not(self) -> None:
        """Is not offered; the record is written."""
        self.configure(machine_version="Legacy")
        self.interrupt("Kreislauf mit Heißwasser spülen")
        self.backend.stop()
        self.configure(machine_version="_2024")
        self.make()
        self.offer()
        (record,) = self.written()
        self.assertEqual((record.reason, record.machine_version), (INTERRUPTED, "Legacy"))

    def test_note_lost(self) -> None:
        """The record does not wait for an answer that nobody can give."""
        self.make()
        self.run_to("Reinigen mit Säure")
        self.backend.stop()
        self.put_into_file(RUN, {"step": 5})
        self.make()
        (record,) = self.written()
        self.assert_cut_short(record)

    def test_draft_lost(self) -> None:
        """The run goes on by its note, and its record begins there."""
        self.put_into_file(RUN, {"step": "acid", "lengthening": 1.0, "steam": False})
        self.make()
        self.offer()
        self.answer(1, True)
        self.run_until(lambda: not Auto.active)
        (record,) = self.written()
        self.assertEqual((record.result, record.steps[0].number), ("success", 7))


class RetentionTest(RecordCase):
    """Records stay for ever, curves do not."""

    def test_oldest_first(self) -> None:
        """The newest runs keep their curves."""
        self.configure(kept_curves=2)
        self.make()
        for _ in range(4):
            self.begin()
            self.operation.advance(0.1)
            self.operation.toggle(AutoEnum.Toggle)
        self.assertEqual(len(self.written()), 4)
        kept = [bool(curves(self.directory / FILE_NAME, number).lines) for number in (1, 2, 3, 4)]
        self.assertEqual(kept, [False, False, True, True])

    def test_nonsense(self) -> None:
        """Is logged, and the default holds."""
        log = watching.LogCapture()
        for value in (-1, "viel", 2.5, None, True):
            with self.subTest(value):
                log.clear()
                self.assertEqual(configuration.apply({"kept_curves": value}).kept_curves, KEPT_CURVES)
                self.assertEqual(len(log.messages), 1)

    def test_found_in_the_file(self) -> None:
        """The owner finds the limit there, to edit it."""
        self.make()
        self.backend.stop()
        self.assertEqual(self.in_file(MACHINE)["kept_curves"], KEPT_CURVES)


class CounterTest(RecordCase):
    """What the machine has worked."""

    def test_after_a_run(self) -> None:
        """Barrels, hours, switchings, litres: kept, and counted on."""
        self.make()
        self.run_whole()
        self.operation.advance(0.1)
        self.backend.stop()
        first = counters(self.directory / FILE_NAME)
        self.assertEqual(first["Fässer"], 1.0)
        self.assertEqual(first["MV_LAUGE_IN, Schaltungen"], 1.0)
        self.assertAlmostEqual(first["MV_LAUGE_IN, Betriebsstunden"], 100 / 3600, delta=1 / 3600)
        self.assertAlmostEqual(first["Lauge, geschätzt"], 100.0, delta=1.0)
        self.assertAlmostEqual(first["Wasser, geschätzt"], 7 * 5.0, delta=1.0)
        self.assertGreater(first["HEAT_1, Betriebsstunden"], 0.0)
        self.make()
        self.run_whole()
        self.written()
        second = counters(self.directory / FILE_NAME)
        self.assertEqual(second["Fässer"], 2.0)
        self.assertAlmostEqual(second["Lauge, geschätzt"], 200.0, delta=2.0)

    def test_only_clean_barrels_count(self) -> None:
        """Neither an aborted run nor one that has failed makes a barrel clean."""
        self.make(PlantFault.LEAK)
        self.run_whole()
        self.begin()
        self.operation.toggle(AutoEnum.Toggle)
        self.backend.stop()
        self.assertEqual(counters(self.directory / FILE_NAME)["Fässer"], 0.0)


class CostTest(RecordCase):
    """The end of a run on the machine's thread."""

    def test_end(self) -> None:
        """Takes less than a millisecond.

        The time is the least of five runs, in processor time: what counts is what the end does, not what else
        this computer had to do.
        """
        if sys.gettrace() is not None:
            self.skipTest("Somebody watches each line, and that takes longer.")
        self.make()
        books = self.backend._books
        spent: list[float] = []
        end = books.end

        def timed(outcome: Outcome) -> None:
            begun = time.thread_time()
            end(outcome)
            spent.append(time.thread_time() - begun)

        with patch.object(books, "end", timed):
            for _ in range(5):
                self.run_whole()
        self.assertLess(min(spent), END_SECS)

    def test_elsewhere(self) -> None:
        """Packing the curves, making the document and the hash: all of it is done on the storage's thread."""
        self.make()
        threads: dict[str, set[str]] = {}

        def noting(name: str, function: Callable[..., Any]) -> Callable[..., Any]:
            def run(*arguments: Any) -> Any:
                threads.setdefault(name, set()).add(threading.current_thread().name)
                return function(*arguments)

            return run

        with ExitStack() as stack:
            for owner, name in (
                (logbook.curves, "packed"),
                (logbook.writer, "row_hash"),
                (RunRecord, "document"),
            ):
                stack.enter_context(patch.object(owner, name, noting(name, vars(owner)[name])))
            self.run_whole()
            self.backend.stop()
        self.assertEqual(threads, {name: {"demo-storage"} for name in ("packed", "row_hash", "document")})


class SettingsJournalTest(RecordCase):
    """Changes of parameters."""

    def test_from_the_screen(self) -> None:
        """Old and new value, as the host has made it of the wish; no change is no line."""
        self.make()
        for value in (9.0, 9.0, 25.0):
            self.backend.settings.wish(SettingsEnum.secs_pump, value)
        self.backend.settings.wish(SettingsEnum.lw_saure_name, "halb \ud800")
        self.backend.stop()
        lines = self.journal("setting")
        self.assertEqual(
            [line.subject for line in lines], [TITLES["secs_pump"].text] * 2 + [TITLES["lw_saure_name"].text]
        )
        self.assertEqual(details(lines[0]), {"key": "secs_pump", "old": 5, "new": 9, "source": "screen"})
        self.assertEqual(details(lines[1])["new"], 20)

    def test_from_the_backend(self) -> None:
        """A stored value that is not taken is told."""
        self.put_into_file("settings", {"secs_pump": 500})
        self.make()
        self.backend.stop()
        (line,) = self.journal("setting")
        self.assertEqual(details(line), {"key": "secs_pump", "old": 500, "new": 5, "source": "backend"})

    def test_titles(self) -> None:
        """Each parameter has one."""
        self.assertEqual(TITLES.keys(), HOST_SETTINGS.keys())


if __name__ == "__main__":
    unittest.main()
