"""`brovik.testing`: what the objects tell of, and what they are."""

# Wrong types are handed over on purpose, and attributes are set that a module of its own does not declare.
# mypy: disable-error-code="arg-type,attr-defined,assignment,index"

import threading
import unittest
from typing import TYPE_CHECKING

from plain_backend import BackendCase

import brovik
from brovik import testing
from brovik.actuator import Actuator
from brovik.auto import Auto, AutoEnum, ProgressColor
from brovik.chart import Chart, ChartMetaData
from brovik.config import Config
from brovik.gui import Gui
from brovik.sensor import Sensor
from brovik.settings import SettingsValues
from brovik.shell import Shell
from brovik.simulator import Simulator

if TYPE_CHECKING:
    from brovik.records import InstalledPackage

INSTALLED: "InstalledPackage" = {"name": "x", "version": "1", "arch": "all", "description": "", "name2": ""}


class SignalsTest(BackendCase):
    """signals()."""

    def test_order_value_and_thread(self) -> None:
        """Each change in its order, with the thread that wrote."""
        with testing.signals(Auto, Gui, Actuator.pumpe, Sensor.start, Chart.p) as changes:
            Auto.active = True
            Auto.active = True

            def write() -> None:
                Gui.status = "läuft"
                Actuator.pumpe.state = True
                Chart.p.add_point((0.5, 1.25))
                Auto.progress_color = ProgressColor.Error

            thread = threading.Thread(target=write, name="maschine")
            thread.start()
            thread.join()
            Sensor.start.state = True
            Gui.message("Titel", "Text", "info")
        change = testing.Change
        self.assertEqual(
            changes.all,
            [
                change("Auto", "active", True, "MainThread"),
                change("Gui", "status", "läuft", "maschine"),
                change("Pumpe", "state", True, "maschine"),
                change("p", "pointAdded", ((0.5, 1.25),), "maschine"),
                change("Auto", "progress_color", int(ProgressColor.Error), "maschine"),
                change("Start", "state", True, "MainThread"),
                change("Gui", "message", ("Titel", "Text", "info", 0), "MainThread"),
            ],
        )
        self.assertEqual(changes.names[:2], ["Auto.active", "Gui.status"])
        self.assertEqual([entry.value for entry in changes.named("Gui.status")], ["läuft"])
        changes.clear()
        self.assertEqual(changes.all, [])

    def test_value_at_that_moment(self) -> None:
        """Not the last one."""
        with testing.signals(SettingsValues) as changes:
            for seconds in (6, 7, 8):
                SettingsValues.secs_pump = seconds
        self.assertEqual([change.value for change in changes.named("Settings.secs_pump")], [6, 7, 8])

    def test_names_are_those_of_python(self) -> None:
        """All attributes with a type that can be shown are told by their own names."""
        with testing.signals(Simulator, Config, Gui, Shell) as changes:
            Simulator.a_in_0 = 3
            Config.has_steam_valve = True
            Gui.fsize_xs = 3.0
            Shell.installed = [INSTALLED]
        self.assertEqual(
            [(change.name, change.value) for change in changes.all],
            [("a_in_0", 3), ("has_steam_valve", True), ("fsize_xs", 3.0), ("installed", [INSTALLED])],
        )

    def test_many_threads(self) -> None:
        """No change is lost, and each has its thread."""
        writes = 300

        def write() -> None:
            for count in range(writes):
                Gui.status = f"{threading.current_thread().name} {count}"

        with testing.signals(Gui) as changes:
            threads = [threading.Thread(target=write, name=f"t{number}") for number in range(4)]
            for thread in threads:
                thread.start()
            for thread in threads:
                thread.join()
        told = changes.named("Gui.status")
        self.assertEqual(len(told), 4 * writes)
        self.assertTrue(all(change.value.startswith(f"{change.thread} ") for change in told))

    def test_wrong_input(self) -> None:
        """Is refused."""
        for wrong in (5, None, AutoEnum.Toggle, brovik.gui):
            with self.subTest(wrong=wrong), self.assertRaisesRegex(
                TypeError, "^An object of brovik is wanted"
            ):
                with testing.signals(wrong):
                    pass


class StateTest(BackendCase):
    """What can be read, and reset()."""

    def test_outputs(self) -> None:
        """Those that are on, and those that the page shows."""
        Actuator.pumpe.state = Actuator.mv_luft.state = True
        self.assertEqual(testing.outputs(), {"Pumpe", "MvLuft"})
        Actuator.set_dout_model([Actuator.mv_luft, Actuator.pumpe])
        self.assertEqual(testing.shown_outputs(), ["MvLuft", "Pumpe"])

    def test_chart(self) -> None:
        """The points of lines that have any. Nothing is logged, for the screens are there."""
        Chart.p.add_point((0.5, 1.0))
        Chart.step.data = [(0.0, 1.0), (2.0, 2.0)]
        self.assertEqual(testing.chart(), {"P": [(0.5, 1.0)], "Step": [(0.0, 1.0), (2.0, 2.0)]})
        self.assertEqual(testing.log(), [])

    def test_log(self) -> None:
        """Level and text."""
        brovik.Logger.info("eins")
        SettingsValues.secs_pump = 10_000
        self.assertEqual(testing.log()[0], ("info", "eins"))
        self.assertEqual(testing.log()[1][0], "critical")

    def test_wait_until(self) -> None:
        """Waits for another thread, and not for ever."""
        begin = threading.Event()

        def write() -> None:
            begin.wait()
            Auto.progress = 50

        thread = threading.Thread(target=write)
        thread.start()
        begin.set()
        testing.wait_until(lambda: Auto.progress == 50)
        thread.join()
        Gui.toast_warn("x")
        testing.wait_until(lambda: True)
        self.assertEqual([toast.text for toast in testing.toasts()], ["x"])
        with self.assertRaisesRegex(AssertionError, r"^This did not come about within 0\.01 s"):
            testing.wait_until(lambda: Auto.progress == 51, 0.01)
        with self.assertRaisesRegex(TypeError, "^A condition is a function, not False$"):
            testing.wait_until(False)

    def test_reset(self) -> None:
        """Everything is as at the import."""
        before = Gui.status, SettingsValues.secs_pump, SettingsValues.secs_pump_max, Auto.progress_color
        Gui.status = "x"
        SettingsValues.secs_pump_max = 500
        SettingsValues.secs_pump = 400
        Auto.progress_color = ProgressColor.Error
        Actuator.pumpe.state = Actuator.pumpe.blocked = True
        Actuator.set_dout_model(Actuator.all_douts)
        Sensor.set_p_without_offset(2.0)
        Sensor.start.state = True
        Chart.p.add_point((0.0, 1.0))
        Chart.meta_data_list.append(ChartMetaData())
        Gui.apply_items_scale(2.0)
        Gui.message("x", "y", "info")
        Gui.toast_warn("z")
        testing.answers[5] = True
        brovik.Logger.info("w")
        testing.process_events()
        testing.reset()
        after = Gui.status, SettingsValues.secs_pump, SettingsValues.secs_pump_max, Auto.progress_color
        self.assertEqual(after, before)
        self.assertEqual((testing.outputs(), testing.shown_outputs(), testing.chart()), (set(), [], {}))
        self.assertEqual((Actuator.pumpe.blocked, Sensor.druck, Sensor.start.state), (False, 0.0, False))
        self.assertEqual((Chart.meta_data_list.size(), Gui.fsize_xs), (0, 12.0))
        self.assertEqual((testing.dialogs(), testing.messages(), testing.toasts()), ([], [], []))
        self.assertEqual((dict(testing.answers), testing.log()), ({}, []))

    def test_reset_of_the_scale(self) -> None:
        """That of the controls has no attribute."""
        with testing.signals(Gui) as changes:
            Gui.apply_items_scale(2.0)
            testing.reset()
        self.assertEqual([change.value for change in changes.named("Gui.itemsScaleFactor")], [2.0, 1.0])


if __name__ == "__main__":
    unittest.main()
