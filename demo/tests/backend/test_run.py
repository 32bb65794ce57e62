"""The automatic run of the demo machine."""

import gc
import unittest
from unittest.mock import patch

import watching
from brovik.actuator import Actuator
from brovik.auto import Auto, AutoEnum, ProgressColor
from brovik.gui import Gui
from brovik.sensor import Sensor
from brovik.settings import SettingsEnum, SettingsValues

from demo_support import RunningCase, SteppedCase, outputs_on, reset_host
import controller
from controller.simulation.faults import PlantFault

LEGACY = {"machine_version": "Legacy"}
STEAM = {"has_steam_valve": True}
CURRENT_STEPS = [
    "Dichtheitsprobe",
    "Fass in den Kanal entleeren",
    "Spülen mit Heißwasser",
    "Reinigen mit Lauge",
    "Lauge zurückfördern",
    "Laugereste in den Kanal spülen",
    "Reinigen mit Säure",
    "Säure zurückfördern",
    "Spülen mit Kaltwasser",
    "Sterilisieren mit Dampf",
    "Luft mit CO2 austreiben",
    "Vorspannen mit CO2",
]


class WholeRunTest(SteppedCase):
    """From the press to 100 percent."""

    def start(self) -> None:
        """The operator's press."""
        self.operation.toggle(AutoEnum.Toggle)
        self.assertTrue(Auto.active)
        self.operation.advance(0.1)

    def run_whole(self) -> list[str]:
        """Runs to the end. Returns the texts of the status line, one per step."""
        self.start()
        statuses: list[str] = []

        def ended() -> bool:
            if Auto.active and Gui.status not in statuses:
                statuses.append(Gui.status)
            return not Auto.active

        self.run_until(ended, "end of the run")
        return statuses

    def assert_success(self) -> None:
        """The barrel is done."""
        self.assert_clean()
        self.assertEqual((Auto.progress, Auto.progress_str), (100, "100 %"))
        self.assertEqual(Auto.progress_color, ProgressColor.Success)
        self.assertEqual(Gui.status3, "Das Fass ist gereinigt und vorgespannt.")
        self.assertGreaterEqual(Sensor.druck, SettingsValues.vorspannen_p)

    def test_every_machine(self) -> None:
        """Both generations, with and without steam: numbers and titles of all steps."""
        for legacy, numbers in ((False, (12, 11)), (True, (16, 15))):
            for steam, number in zip((True, False), numbers):
                with self.subTest(legacy=legacy, steam=steam):
                    reset_host()
                    version = "Legacy" if legacy else "_2024"
                    self.configure(machine_version=version, has_steam_valve=steam)
                    backend = self.make()
                    statuses = self.run_whole()
                    self.assert_success()
                    backend.stop()
                    self.assertEqual(
                        [status.split(":")[0] for status in statuses],
                        [f"Schritt {n} von {number}" for n in range(1, number + 1)],
                    )
                    if not legacy:
                        titles = [title for title in CURRENT_STEPS if steam or "Dampf" not in title]
                        self.assertEqual([s.split(": ")[1] for s in statuses], titles)

    def test_steam_is_the_operators_choice(self) -> None:
        """With the valve but without the step, there is none."""
        self.configure(**STEAM)
        self.make()
        SettingsValues.do_steam_step = False
        self.assertEqual(len(self.run_whole()), 11)

    def test_progress(self) -> None:
        """Rises from 0 to 100 in steps of a few percent, and the text says the same."""
        self.make()
        self.start()
        log = watching.SignalLog("Auto", ["progressChanged"])
        seen: list[int] = [0]

        def ended() -> bool:
            if Auto.progress != seen[-1]:
                seen.append(Auto.progress)
            self.assertEqual(Auto.progress_str, f"{Auto.progress} %")
            return not Auto.active

        self.run_until(ended)
        self.assertEqual(seen, sorted(seen))
        self.assertEqual((seen[0], seen[-1]), (0, 100))
        self.assertLess(max(b - a for a, b in zip(seen, seen[1:])), 5)
        self.assertEqual(len(log.names), len(seen) - 1)

    def test_intense(self) -> None:
        """Lengthens both circuits by the factor, which stands in `Auto` for the run."""
        self.make()
        self.start()
        plain = self.run_until(lambda: not Auto.active)
        self.assertFalse(Auto.intense_cleaning)
        SettingsValues.intense_cleaning = True
        SettingsValues.intense_factor = 2.0
        self.start()
        self.assertEqual((Auto.intense_cleaning, Auto.intense_factor), (True, 2.0))
        SettingsValues.intense_cleaning = False
        intense = self.run_until(lambda: not Auto.active)
        self.assertAlmostEqual(intense - plain, 200.0, delta=2.0)
        self.assert_success()

    def test_limits_of_the_run(self) -> None:
        """`Auto` holds what was set when the run began, and the peaks that it has seen."""
        self.make()
        SettingsValues.lw_lauge_min, SettingsValues.lw_lauge_sp = 31, 61
        SettingsValues.lw_saure_min, SettingsValues.lw_saure_sp = 11, 21
        self.start()
        SettingsValues.lw_lauge_min = 40
        self.run_until(lambda: not Auto.active)
        self.assertEqual((Auto.lw_lauge_min, Auto.lw_lauge_sp), (31, 61))
        self.assertEqual((Auto.lw_saure_min, Auto.lw_saure_sp), (11, 21))
        self.assertAlmostEqual(Auto.lw_lauge_max, 58.0, delta=0.1)
        self.assertAlmostEqual(Auto.lw_saure_max, 19.0, delta=0.1)

    def test_prestress_may_change_during_the_run(self) -> None:
        """The one parameter that stays open to the operator."""
        self.make()
        self.start()
        self.run_until(lambda: "Vorspannen" in Gui.status)
        self.backend.settings.wish(SettingsEnum.vorspannen_p, 1.1)
        self.run_until(lambda: not Auto.active)
        self.assertAlmostEqual(Sensor.druck, 1.1, delta=0.02)

    def test_weak_baths(self) -> None:
        """The run ends, in the warning colour, with both boxes marked."""
        self.make(PlantFault.WEAK_BATH)
        self.run_whole()
        self.assert_clean()
        self.assertEqual((Auto.progress, Auto.progress_color), (100, ProgressColor.Warning))
        self.assertTrue(Auto.lw_lauge_too_low and Auto.lw_saure_too_low)
        text = "Leitwert zu niedrig: Lauge und Säure. Bitte auffrischen."
        self.assertEqual(Gui.status3, text)
        self.assertEqual(self.signals("message"), [["Automatikbetrieb", text, "warning", 0]])

    def test_second_run_starts_afresh(self) -> None:
        """Nothing of an earlier run's warnings is left."""
        self.make(PlantFault.WEAK_BATH)
        self.run_whole()
        self.start()
        self.assertFalse(Auto.lw_lauge_too_low or Auto.lw_saure_too_low)
        self.assertEqual((Auto.lw_lauge_max, Auto.lw_saure_max), (0.0, 0.0))
        self.assertEqual((Auto.progress, Auto.progress_color), (0, ProgressColor.Normal))

    def test_heating(self) -> None:
        """The lye is heated during the run, and only then."""
        self.make()
        self.operation.advance(0.1)
        self.assertFalse(Actuator.heat_1.state)
        self.start()
        self.run_until(lambda: Actuator.heat_1.state, "heater")
        self.run_until(lambda: not Actuator.heat_1.state, "hysteresis")
        self.assertTrue(Auto.active)
        self.run_until(lambda: not Auto.active)


class AbortTest(SteppedCase):
    """The second press."""

    def test_log(self) -> None:
        """Tells who has ended the run: the operator, or a sensor without a signal."""
        log = watching.LogCapture()
        self.make()
        for defective in (False, True):
            self.operation.toggle(AutoEnum.Toggle)
            self.operation.advance(0.1)
            Sensor.lw_sensor_defective = defective
            if defective:
                self.operation.advance(0.1)
            else:
                self.operation.toggle(AutoEnum.Toggle)
            self.assert_clean()
        texts = [text for _, text in log.messages]
        self.assertIn("Automatikbetrieb abgebrochen", texts)
        self.assertIn(
            "Automatikbetrieb fehlgeschlagen: Es wird kein Signal vom Leitwertsensor erkannt.", texts
        )

    def test_abort_in_every_step(self) -> None:
        """Legacy with steam, all 16 steps: everything off, the state as before the run."""
        self.configure(**LEGACY, **STEAM)
        self.make()
        for number in range(1, 17):
            with self.subTest(step=number):
                self.operation.toggle(AutoEnum.Toggle)
                self.run_until(lambda: Gui.status.startswith(f"Schritt {number} von 16"))
                for _ in range(5):
                    self.operation.advance(0.1)
                self.assertTrue(outputs_on())
                self.operation.toggle(AutoEnum.Toggle)
                self.assert_clean()
                self.assertEqual((Auto.progress, Auto.progress_str), (0, "0 %"))
                self.assertEqual(Auto.progress_color, ProgressColor.Warning)
                self.assertEqual(Gui.status3, "Der Automatikbetrieb wurde abgebrochen.")

    def test_abort_at_once(self) -> None:
        """Before the first period."""
        self.make()
        self.operation.toggle(AutoEnum.Toggle)
        self.operation.toggle(AutoEnum.Toggle)
        self.assert_clean()

    def test_end_of_the_backend(self) -> None:
        """Breaks a run off for good: what is left of it switches nothing later."""
        backend = self.make()
        self.operation.toggle(AutoEnum.Toggle)
        self.run_until(lambda: Actuator.mv_luft.state, "air")
        backend.stop()
        self.assertEqual(outputs_on(), set())
        self.doCleanups()
        Actuator.mv_luft.state = True
        del backend, self.backend, self.operation
        gc.collect()
        self.assertTrue(Actuator.mv_luft.state)

    def test_run_after_an_abort(self) -> None:
        """Reaches its end."""
        self.make()
        self.operation.toggle(AutoEnum.Toggle)
        self.run_until(lambda: "Lauge" in Gui.status)
        self.operation.toggle(AutoEnum.Toggle)
        self.operation.toggle(AutoEnum.Toggle)
        self.run_until(lambda: not Auto.active)
        self.assertEqual(Auto.progress_color, ProgressColor.Success)


class FaultTest(SteppedCase):
    """Failed checks."""

    CASES = (
        (PlantFault.LEAK, "Dichtheitsprobe", "Undicht: Der Druck ist um mehr als 0.07 bar gefallen."),
        (PlantFault.NO_GAS, "Dichtheitsprobe", "Undicht: Der Druck steigt langsamer als 0.03 bar/s."),
        (PlantFault.NO_WATER, "Spülen mit Heißwasser", "Falsches Medium: .* statt Heißwasser .*"),
        (PlantFault.WRONG_MEDIUM, "Reinigen mit Lauge", "Falsches Medium: Wasser statt Lauge .*"),
        # The lye step fails at its very start.
        (PlantFault.LEVEL, "Spülen mit Heißwasser", "Der Füllstand im Laugebecken ist unterschritten."),
    )

    def test_each_fault_ends_the_run(self) -> None:
        """With a message, the reason on the page, and the progress in the error colour."""
        for fault, step, reason in self.CASES:
            with self.subTest(fault):
                backend = self.make(fault)
                self.gui.clear()
                self.operation.toggle(AutoEnum.Toggle)
                statuses: list[str] = []

                def ended() -> bool:
                    statuses.append(Gui.status)
                    return not Auto.active

                self.run_until(ended)
                self.assertIn(step, statuses[-2])
                self.assert_clean()
                self.assertEqual(Auto.progress_color, ProgressColor.Error)
                self.assertRegex(Gui.status3, reason)
                messages = self.signals("message")
                self.assertEqual(messages, [["Automatikbetrieb", Gui.status3, "error", 0]])
                backend.stop()

    def test_sensor_fails_during_the_run(self) -> None:
        """No signal, no run."""
        self.make()
        self.operation.toggle(AutoEnum.Toggle)
        self.run_until(lambda: "Säure" in Gui.status)
        Sensor.lw_sensor_defective = True
        self.operation.advance(0.1)
        self.assert_clean()
        self.assertEqual(Auto.progress_color, ProgressColor.Error)

    def test_defective_sensor_refuses_the_start(self) -> None:
        """A word to the operator, and nothing else."""
        self.make(PlantFault.SENSOR)
        for enum in (AutoEnum.Toggle, AutoEnum.ToggleLwTestSaure, AutoEnum.ToggleLwTestLauge):
            self.operation.toggle(enum)
        self.assert_clean()
        self.assertEqual(len(self.signals("toastWarn")), 3)

    def test_fault_of_the_program(self) -> None:
        """Any other exception in a step is shown, and ends the run like a failed check."""
        self.make()
        self.operation.toggle(AutoEnum.Toggle)
        with patch("controller.process.steps.vent", side_effect=ZeroDivisionError("Fehler")):
            self.run_until(lambda: not Auto.active)
        self.assert_clean()
        self.assertEqual(Auto.progress_color, ProgressColor.Error)
        self.assertEqual([error["type"] for (error,) in self.signals("exception")], ["ZeroDivisionError"])


class ThreadedRunTest(RunningCase):
    """The same through `init`, the entry functions and the machine's own thread."""

    def test_abort(self) -> None:
        """A press while the machine's thread is in the middle of a step."""
        self.start(factor=50)
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(lambda: Auto.progress > 2, "progress")
        self.assertTrue(Auto.active)
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(lambda: not Auto.active, "abort")
        self.assertEqual(outputs_on(), set())

    def test_press_and_press_again(self) -> None:
        """Twice in a row leaves nothing running."""
        self.start()
        for _ in range(10):
            controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.handled()
        self.assertFalse(Auto.active)
        self.assertEqual(outputs_on(), set())

    def test_end_of_the_program_during_a_run(self) -> None:
        """Leaves the outputs off."""
        self.start(factor=20)
        controller.auto_value_from_cpp(AutoEnum.Toggle, None)
        self.until(outputs_on, "outputs")
        self.stop()
        self.assertEqual(outputs_on(), set())


if __name__ == "__main__":
    unittest.main()
