"""Charts of the demo machine: what gets recorded, and what is kept."""

import unittest
from collections.abc import Callable
from datetime import datetime, timedelta
from itertools import pairwise
from typing import Any

import watching
from brovik.actuator import ActuatorEnum
from brovik.auto import Auto, AutoEnum
from brovik.chart import Chart, ChartEnum, ChartMetaDataList
from brovik.gui import Gui

from demo_support import RunningCase, SteppedCase
import controller
from controller.recording import all_lines
from controller.simulation.faults import PlantFault
from controller.recording import SAMPLE_SECS
from controller.saved_charts import RECORDED, ChartInfo, SavedChart
from controller.storage import Storage
from logbook.place import FILE_NAME


def reset_chart() -> None:
    """Puts `Chart` back to what it is at the start of the program."""
    Chart.clear()
    Chart.active = Chart.savable = False
    Chart.current_name = "Kein Chart geladen"
    Chart.assigned_names, Chart.step_names, Chart.actuator_names = [], [], []
    Chart.meta_data_list = ChartMetaDataList()


class RecordingTest(SteppedCase):
    """Lines of a run, and of operation by hand."""

    def setUp(self) -> None:
        super().setUp()
        reset_chart()

    def run_to_the_end(self) -> None:
        """From the press to the end of the run."""
        self.operation.toggle(AutoEnum.Toggle)
        self.assertTrue(Chart.active)
        self.assertFalse(Chart.savable)
        self.run_until(lambda: not Auto.active, "end of the run")

    def info(self) -> ChartInfo:
        """What the list would show of the recording."""
        info = self.backend.charts.recorder.info
        assert info is not None
        return info

    def test_samples(self) -> None:
        """Both measured lines have a point every half second, from the start to the end."""
        self.make()
        self.run_to_the_end()
        self.assertEqual((Chart.active, Chart.savable), (False, True))
        for line in (Chart.p, Chart.lw):
            times = [x for x, _ in line.data]
            self.assertEqual(times[0], 0.0)
            self.assertGreater(len(times), 100)
            for earlier, later in pairwise(times[:-1]):
                self.assertAlmostEqual(later - earlier, SAMPLE_SECS)
            self.assertAlmostEqual(times[-1], self.info().duration, delta=1.0)
        self.assertGreater(max(y for _, y in Chart.p.data), 0.1)
        self.assertGreater(max(y for _, y in Chart.lw.data), 1.0)

    def test_steps(self) -> None:
        """The step line counts through the names on its axis and reaches up to the end."""
        self.make()
        self.run_to_the_end()
        numbers = [y for _, y in Chart.step.data]
        self.assertEqual(numbers[:-1], [float(n) for n in range(1, len(Chart.step_names) + 1)])
        self.assertEqual(numbers[-1], numbers[-2])
        self.assertEqual(Chart.step.data[-1][0], Chart.p.data[-1][0])
        self.assertEqual(Chart.step_names[0], "Dichtheitsprobe")

    def test_outputs(self) -> None:
        """An output is on at the height of its label, off at 0, by turns, and off at the end."""
        self.configure(has_steam_valve=True)
        self.make()
        self.run_to_the_end()
        self.assertEqual(len(Chart.actuator_names), 12)
        heights = set()
        for enum in ActuatorEnum.__members__.values():
            line = Chart.line_from_actuator_enum(enum)
            values = [] if line is None else [y for _, y in line.data]
            for on, off in zip(values[::2], values[1::2]):
                self.assertGreater(on, 0.0)
                self.assertEqual(off, 0.0)
                heights.add(on)
            self.assertEqual(len(values) % 2, 0, enum)
            self.assertLessEqual(len(set(values)), 2, enum)
        self.assertLessEqual(heights, set(map(float, range(1, 13))))
        self.assertGreater(len(heights), 8)

    def test_machine_without_steam(self) -> None:
        """It has no label for the valve that it lacks."""
        self.make()
        self.run_to_the_end()
        self.assertEqual(len(Chart.actuator_names), 11)
        self.assertEqual(Chart.steam.data, [])

    def test_outcomes(self) -> None:
        """Each kind of ending has its word and its text."""
        for faults, result in (
            ((), "success"),
            ((PlantFault.WEAK_BATH,), "warning"),
            ((PlantFault.LEAK,), "error"),
        ):
            with self.subTest(result=result):
                backend = self.make(*faults)
                self.run_to_the_end()
                self.assertEqual(self.info().result, result)
                self.assertEqual(self.info().status, Gui.status3)
                backend.stop()

    def test_abort(self) -> None:
        """An aborted run can be saved, too."""
        self.make()
        self.operation.toggle(AutoEnum.Toggle)
        self.run_until(lambda: len(Chart.p.data) > 10, "points")
        self.operation.toggle(AutoEnum.Toggle)
        self.assertEqual((self.info().result, self.info().status), ("neutral", "abgebrochen"))
        self.assertTrue(Chart.savable)

    def test_by_hand(self) -> None:
        """A recording runs while the operator switches outputs, and no step is in it."""
        self.make()
        charts = self.backend.charts
        charts.act(ChartEnum.Hand, None)
        self.assertTrue(Chart.active)
        self.operation.toggle_output(ActuatorEnum.MvKalt)
        self.run_until(lambda: len(Chart.p.data) == 5, "points")
        charts.act(ChartEnum.Hand, None)
        self.assertEqual(Chart.kalt.data, [(0.0, Chart.kalt.data[0][1])])
        self.assertEqual(Chart.actuator_names[int(Chart.kalt.data[0][1]) - 1], "Wasser kalt")
        self.assertEqual((Chart.step.data, Chart.step_names), ([], []))
        self.assertEqual((self.info().result, self.info().status), ("neutral", "Handbetrieb"))

    def test_run_takes_over(self) -> None:
        """A run begins a record of its own, and the operator cannot end it by hand."""
        self.make()
        self.backend.charts.act(ChartEnum.Hand, None)
        self.run_until(lambda: len(Chart.p.data) == 5, "points")
        self.operation.toggle(AutoEnum.Toggle)
        self.assertEqual(Chart.p.data, [])
        self.backend.charts.act(ChartEnum.Hand, None)
        self.assertTrue(Chart.active)
        self.assertEqual(
            [text for text, _ in self.signals("toastWarn")],
            ["Der Automatikbetrieb wird bereits aufgezeichnet"],
        )

    def test_each_signal_once(self) -> None:
        """Start and end of a recording are one change each for the screens."""
        self.make()
        log = watching.SignalLog("Chart", ["activeChanged", "savableChanged"])
        self.run_to_the_end()
        self.assertEqual([name for name, _, _ in log.emissions], ["activeChanged"] * 2 + ["savableChanged"])


class LibraryTest(RunningCase):
    """Saving, loading, deleting and renaming."""

    def setUp(self) -> None:
        super().setUp()
        reset_chart()

    def act(self, enum: ChartEnum, value: object) -> None:
        """What the screens send."""
        controller.chart_action_from_cpp(enum, value)

    def record(self) -> None:
        """Leaves a recording by hand that can be saved."""
        self.act(ChartEnum.Hand, None)
        self.until(lambda: Chart.active and len(Chart.p.data) > 5, "points")
        self.act(ChartEnum.Hand, None)
        self.until(lambda: Chart.savable, "end of the recording")

    def save(self, name: str) -> None:
        """Records and saves."""
        self.record()
        self.act(ChartEnum.Save, name)
        self.until(lambda: name in Chart.assigned_names, "saving")

    def refused(self, signal: str, action: Callable[[], None]) -> list[Any]:
        """What the operator is told about an action; nothing else may happen."""
        before, names = len(self.signals(signal)), list(Chart.assigned_names)
        action()
        self.until(lambda: len(self.signals(signal)) > before, signal)
        self.assertEqual(list(Chart.assigned_names), names)
        return self.signals(signal)[before]

    def test_save_and_load(self) -> None:
        """A chart comes back as it was, to the last bit, even after a restart."""
        self.start()
        self.save("Fass 1")
        self.assertEqual((Chart.current_name, Chart.savable), ("Fass 1", False))
        lines = {name: line.data for name, line in all_lines().items()}
        actuators = list(Chart.actuator_names)
        self.stop()
        reset_chart()
        self.start()
        self.assertEqual([record.name for record in Chart.meta_data_list], ["Fass 1"])
        self.act(ChartEnum.Load, "Fass 1")
        self.until(lambda: Chart.current_name == "Fass 1", "loading")
        self.assertEqual({name: line.data for name, line in all_lines().items()}, lines)
        self.assertEqual(list(Chart.actuator_names), actuators)
        self.assertFalse(Chart.savable)

    def test_list(self) -> None:
        """It is sorted without regard to case, and says what there is to say."""
        self.start()
        for name in ("b", "A", "c"):
            self.save(name)
        records = list(Chart.meta_data_list)
        self.assertEqual([record.name for record in records], ["A", "b", "c"])
        self.assertEqual({record.result for record in records}, {"neutral"})
        self.assertEqual({record.status for record in records}, {"Handbetrieb"})
        self.assertTrue(all(record.datetime_str and record.duration >= 2 for record in records))

    def test_delete(self) -> None:
        """Gone from the list and from the file; the shown chart stays."""
        self.start()
        self.save("a")
        points = Chart.p.data
        self.act(ChartEnum.Delete, "a")
        self.until(lambda: not list(Chart.assigned_names), "deleting")
        self.assertEqual(list(Chart.meta_data_list), [])
        self.assertEqual(Chart.p.data, points)
        self.stop()
        storage = Storage(self.directory / FILE_NAME)
        self.addCleanup(storage.close)
        self.assertEqual(storage.charts.infos(), [])
        self.assertRaises(KeyError, storage.charts.load, "a")

    def test_rename(self) -> None:
        """The chart that is shown bears its new name, and letters may change their case."""
        self.start()
        self.save("fass")
        self.act(ChartEnum.Rename, ["fass", "Fass"])
        self.until(lambda: list(Chart.assigned_names) == ["Fass"], "renaming")
        self.until(lambda: Chart.current_name == "Fass", "title")
        self.act(ChartEnum.Load, "Fass")
        self.until(lambda: Chart.p.data, "loading")

    def test_names_that_are_refused(self) -> None:
        """No chart is overwritten, and none is without a name."""
        self.start()
        self.save("a")
        self.save("b")
        self.record()
        for action in (
            lambda: self.act(ChartEnum.Save, "a"),
            lambda: self.act(ChartEnum.Rename, ["b", "a"]),
            lambda: self.act(ChartEnum.Save, "  "),
        ):
            self.assertEqual(self.refused("message", action)[0], "Chart Name")
        self.assertTrue(Chart.savable)

    def test_nothing_there(self) -> None:
        """Actions on a chart that does not exist, and saving without a recording."""
        self.start()
        for action in (
            lambda: self.act(ChartEnum.Load, "x"),
            lambda: self.act(ChartEnum.Delete, "x"),
            lambda: self.act(ChartEnum.Rename, ["x", "y"]),
            lambda: self.act(ChartEnum.Save, "x"),
        ):
            self.refused("toastWarn", action)

    def test_loading_waits_for_the_recording(self) -> None:
        """What is being recorded is not replaced."""
        self.start()
        self.save("a")
        self.act(ChartEnum.Hand, None)
        self.until(lambda: Chart.active, "recording")
        text, _ = self.refused("toastWarn", lambda: self.act(ChartEnum.Load, "a"))
        self.assertEqual(text, "Zuerst die Aufzeichnung beenden")

    def test_values_that_make_no_sense(self) -> None:
        """They are logged, and nothing happens."""
        self.start()
        log = watching.LogCapture()
        for enum, value in (
            (ChartEnum.Save, None),
            (ChartEnum.Rename, "a"),
            (ChartEnum.Rename, ["a", 5]),
            (ChartEnum.Load, {"name": "a"}),
            (ChartEnum.Invalid, None),
        ):
            self.act(enum, value)
        self.handled()
        self.assertEqual(sum("wird ignoriert" in message[1] for message in log.messages), 5)
        self.assertEqual(list(Chart.assigned_names), [])

    def test_thousand_charts(self) -> None:
        """They are all in the list from the start."""
        storage = Storage(self.directory / FILE_NAME)
        for number in range(1000):
            info = ChartInfo(f"Fass {number:04}", "success", "", f"{datetime.now():{RECORDED}}", 300)
            storage.charts.save(SavedChart(info, [], [], {"P": [(0.0, 1.0)]}))
        storage.close()
        self.start()
        self.assertEqual(Chart.meta_data_list.size(), 1000)
        self.assertEqual(Chart.assigned_names[999], "Fass 0999")

    def put_charts(self, *names: str) -> None:
        """Leaves charts in the file, each recorded a day after the one before it."""
        storage = Storage(self.directory / FILE_NAME)
        for number, name in enumerate(names):
            recorded = f"{datetime.now() - timedelta(days=len(names) - number):{RECORDED}}"
            info = ChartInfo(name.replace("*", f"{recorded}:00"), "success", "", recorded, 300)
            storage.charts.save(SavedChart(info, [], [], {"P": [(0.0, 1.0)]}))
        storage.close()

    def test_too_many(self) -> None:
        """The oldest that has no name of its own makes room, and the operator is told once and for all."""
        self.configure(kept_charts=3)
        self.put_charts("alt", "Handbetrieb *", "Automatikbetrieb *")
        self.start()
        self.save("neu")
        self.until(lambda: len(Chart.assigned_names) == 3, "removal")
        self.assertEqual(
            {name.split()[0] for name in Chart.assigned_names}, {"alt", "Automatikbetrieb", "neu"}
        )
        ((title, text, category, _),) = self.signals("message")
        self.assertEqual((title, category), ("Charts", "info"))
        self.assertIn("höchstens 3 und keine älteren als 3650 Tage", text)
        self.assertIn("„Handbetrieb ", text)
        self.save("neuer")
        self.until(lambda: len(Chart.assigned_names) == 3, "removal")
        self.stop()
        self.start()
        self.save("noch neuer")
        self.until(lambda: sorted(Chart.assigned_names) == ["neu", "neuer", "noch neuer"], "removal")
        self.assertEqual(len(self.signals("message")), 1)
        self.stop()
        storage = Storage(self.directory / FILE_NAME)
        self.addCleanup(storage.close)
        self.assertEqual({info.name for info in storage.charts.infos()}, {"neu", "neuer", "noch neuer"})

    def test_too_old(self) -> None:
        """A start takes nothing, each chart that is saved takes two: the clock may be wrong."""
        self.configure(kept_charts_days=1, kept_charts=0)
        self.put_charts("a", "b", "c", "gestern")
        self.start()
        self.assertEqual(sorted(Chart.assigned_names), ["a", "b", "c", "gestern"])
        self.save("neu")
        self.until(lambda: sorted(Chart.assigned_names) == ["c", "gestern", "neu"], "removal")
        self.save("neuer")
        self.until(lambda: sorted(Chart.assigned_names) == ["neu", "neuer"], "removal")
        ((_, text, _, _),) = self.signals("message")
        self.assertIn("für immer: keine älteren als 1 Tage.", text)


if __name__ == "__main__":
    unittest.main()
