"""The conductivity tests of the two baths."""

import unittest
from typing import Any

from brovik.auto import Auto, AutoEnum, ProgressColor
from brovik.gui import Gui
from brovik.sensor import Sensor
from brovik.settings import SettingsValues

from demo_support import SteppedCase, outputs_on
from controller.simulation.faults import PlantFault

BATHS = (
    (AutoEnum.ToggleLwTestSaure, "lw_saure", "Säure", {"MvSaureIn", "MvSaureOut", "Pumpe"}),
    (AutoEnum.ToggleLwTestLauge, "lw_lauge", "Lauge", {"MvLaugeIn", "MvLaugeOut", "Pumpe"}),
)


class BathTestCase(SteppedCase):
    """Both baths."""

    def press(self, enum: AutoEnum) -> None:
        """The test's button."""
        self.operation.toggle(enum)

    @staticmethod
    def value(prefix: str, name: str) -> Any:
        """An attribute of one bath."""
        return getattr(Auto, f"{prefix}_{name}")

    def assert_ended(self, color: ProgressColor) -> None:
        """No trace of the test but its result."""
        self.assert_clean()
        self.assertFalse(Auto.lw_sp_reached)
        self.assertEqual(Auto.progress_color, color)


class WholeTest(BathTestCase):
    """From the first press to the second."""

    def test_finish(self) -> None:
        """Leak test, circulation, set point held, second press, bath given back."""
        for enum, prefix, name, outputs in BATHS:
            with self.subTest(name):
                backend = self.make()
                self.press(enum)
                self.assertTrue(self.value(prefix, "active"))
                self.assertEqual((Auto.progress, Auto.progress_str), (-1, "Prüfung"))
                self.run_until(lambda: Gui.status == f"Leitwertprüfung {name}: Dichtheitsprobe")
                self.run_until(lambda: outputs_on() == outputs, "circulation")
                self.assertFalse(Auto.lw_sp_reached)
                self.run_until(lambda: Auto.lw_sp_reached, "set point")
                set_point = self.value(prefix, "sp")
                self.assertGreaterEqual(Sensor.leitwert, set_point)
                self.press(enum)
                self.assertTrue(self.value(prefix, "active"))
                self.run_until(lambda: not self.value(prefix, "active"), "end")
                self.assert_ended(ProgressColor.Success)
                self.assertEqual(Auto.progress, 100)
                self.assertGreaterEqual(self.value(prefix, "max"), set_point)
                maximum = self.value(prefix, "max")
                self.assertIn(f"Höchstwert {maximum:.2f} mS/cm", Gui.status3)
                self.assertLess(Sensor.leitwert, 1.5)
                backend.stop()

    def test_hold_secs(self) -> None:
        """The set point has to be held for as long as the setting says."""
        for secs in (5, 30):
            with self.subTest(secs):
                backend = self.make()
                SettingsValues.lw_lauge_sp = 40  # below what the bath has
                SettingsValues.lw_test_hold_secs = secs
                self.press(AutoEnum.ToggleLwTestLauge)
                self.run_until(lambda: Gui.status.endswith("messen") and Sensor.leitwert >= 40)
                passed = self.run_until(lambda: Auto.lw_sp_reached)
                self.assertAlmostEqual(passed, secs, delta=0.3)
                backend.stop()

    def test_values_in_force(self) -> None:
        """Minimum and set point are those of the first press."""
        self.make()
        SettingsValues.lw_saure_min, SettingsValues.lw_saure_sp = 12, 22
        self.press(AutoEnum.ToggleLwTestSaure)
        SettingsValues.lw_saure_sp = 50
        self.assertEqual((Auto.lw_saure_min, Auto.lw_saure_sp), (12, 22))
        self.run_until(lambda: Auto.lw_sp_reached)

    def test_without_leak_test(self) -> None:
        """Switched off, the circulation comes at once."""
        self.make()
        SettingsValues.test_leakage_p = False
        self.press(AutoEnum.ToggleLwTestSaure)
        self.operation.advance(0.1)
        self.assertEqual(outputs_on(), BATHS[0][3])


class EndTest(BathTestCase):
    """Every other end."""

    def test_abort_at_any_moment(self) -> None:
        """A press before the set point, or while the bath is given back."""
        for enum, prefix, name, _ in BATHS:
            for status in ("Dichtheitsprobe", "Umwälzen und messen"):
                with self.subTest(name, status=status):
                    backend = self.make()
                    self.press(enum)
                    self.run_until(lambda: Gui.status.endswith(status))
                    for _ in range(20):
                        self.operation.advance(0.1)
                    self.press(enum)
                    self.assertFalse(self.value(prefix, "active"))
                    self.assert_ended(ProgressColor.Warning)
                    self.assertEqual(Auto.progress, 0)
                    self.assertEqual(Gui.status3, "Die Leitwertprüfung wurde abgebrochen.")
                    backend.stop()

    def test_abort_while_given_back(self) -> None:
        """The press after the finishing one."""
        self.make()
        self.press(AutoEnum.ToggleLwTestSaure)
        self.run_until(lambda: Auto.lw_sp_reached)
        self.press(AutoEnum.ToggleLwTestSaure)
        self.run_until(lambda: Gui.status.endswith("zurückfördern"))
        self.press(AutoEnum.ToggleLwTestSaure)
        self.assert_ended(ProgressColor.Warning)

    def test_leak(self) -> None:
        """The leak test counts here, too."""
        self.make(PlantFault.LEAK)
        self.press(AutoEnum.ToggleLwTestLauge)
        self.run_until(lambda: not Auto.lw_lauge_active)
        self.assert_ended(ProgressColor.Error)
        self.assertEqual(self.signals("message"), [["Leitwertprüfung", Gui.status3, "error", 0]])

    def test_bath_below_its_minimum(self) -> None:
        """An aborted test of a bath that is too low marks its box; the next test clears it."""
        self.make(PlantFault.WEAK_BATH)
        SettingsValues.lw_saure_min, SettingsValues.lw_saure_sp = 40, 90
        self.press(AutoEnum.ToggleLwTestSaure)
        self.run_until(lambda: Gui.status.endswith("messen"))
        for _ in range(100):
            self.operation.advance(0.1)
        self.press(AutoEnum.ToggleLwTestSaure)
        self.assertTrue(Auto.lw_saure_too_low)
        self.assertFalse(Auto.lw_lauge_too_low)
        self.assertEqual(Gui.status3, "Leitwert zu niedrig: Säure. Bitte auffrischen.")
        self.press(AutoEnum.ToggleLwTestSaure)
        self.assertFalse(Auto.lw_saure_too_low)
        self.assertEqual(Auto.lw_saure_max, 0.0)

    def test_one_job_at_a_time(self) -> None:
        """Neither the other bath nor the run starts meanwhile, and none of them ends the test."""
        self.make()
        self.press(AutoEnum.ToggleLwTestSaure)
        self.operation.advance(0.1)
        self.press(AutoEnum.ToggleLwTestLauge)
        self.press(AutoEnum.Toggle)
        self.assertTrue(Auto.lw_saure_active)
        self.assertFalse(Auto.lw_lauge_active or Auto.active)
        self.press(AutoEnum.ToggleLwTestSaure)
        self.press(AutoEnum.Toggle)
        self.press(AutoEnum.ToggleLwTestLauge)
        self.assertTrue(Auto.active)
        self.assertFalse(Auto.lw_lauge_active)
        self.assertEqual(len(self.signals("toastWarn")), 3)


if __name__ == "__main__":
    unittest.main()
