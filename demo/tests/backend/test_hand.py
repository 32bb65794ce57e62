"""Presses of the operator that come between two periods of the machine."""

import math
import unittest
from dataclasses import replace

from brovik.actuator import Actuator, ActuatorEnum
from brovik.auto import Auto, AutoEnum
from brovik.gui import Gui
from brovik.sensor import Sensor
from brovik.settings import SettingsEnum, SettingsValues

from demo_support import SteppedCase, outputs_on
from controller.storage import SETTINGS


class HandTest(SteppedCase):
    """What stands against an output, from the first moment on."""

    def warnings(self) -> list[str]:
        """What the operator has been told."""
        return [text for text, _ in self.signals("toastWarn")]

    def test_right_after_the_start(self) -> None:
        """A job has all outputs to itself before its first period: acid must not be open when lye comes."""
        self.make()
        for enum in (AutoEnum.Toggle, AutoEnum.ToggleLwTestLauge, AutoEnum.ToggleLwTestSaure):
            with self.subTest(enum):
                self.operation.toggle(enum)
                self.operation.toggle_output(ActuatorEnum.MvSaureIn)
                self.assertEqual(outputs_on(), set())
                self.assertEqual(self.warnings(), ["Säure IN ist gesperrt"])
                self.operation.toggle(enum)
                self.assert_clean()
                self.gui.clear()

    def test_heater_of_a_dry_tank(self) -> None:
        """Does not go on, not even for one period, and the operator is told why."""
        self.make()
        self.simulated.plant.level_override = False
        self.operation.advance(0.1)
        for enum in (ActuatorEnum.ToggleManualHeating, ActuatorEnum.Heat1):
            self.operation.toggle_output(enum)
        self.assertEqual(outputs_on(), set())
        self.assertEqual(self.warnings(), ["Der Füllstand im Laugebecken ist unterschritten"])
        self.simulated.plant.level_override = True
        self.operation.advance(0.1)
        self.operation.toggle_output(ActuatorEnum.Heat1)
        self.assertEqual(outputs_on(), {"Heat1"})

    def test_heater_that_is_on(self) -> None:
        """Can be switched off at any time."""
        self.make()
        self.operation.advance(0.1)
        for enum in (ActuatorEnum.ToggleManualHeating, ActuatorEnum.Heat1):
            self.operation.toggle_output(enum)
        # The level is lost, and the period in which that is noticed has not come yet.
        board = self.backend._board  # pylint: disable=protected-access
        board.readings = replace(board.readings, level_reached=False)
        self.operation.toggle_output(ActuatorEnum.Heat1)
        self.assertFalse(Actuator.heat_1.state)
        self.assertEqual(self.warnings(), [])


class CalibrationTest(SteppedCase):
    """The offsets."""

    def test_without_a_reading(self) -> None:
        """A sensor that gives no number leaves the offset as it is, in the file too."""
        backend = self.make()
        for value in (math.nan, math.inf):
            Sensor.set_p_and_apply_offset(value)
            Sensor.set_lw_and_apply_offset(value)
            for action in (SettingsEnum.POffsetSet, SettingsEnum.LwOffsetSet):
                backend.settings.wish(action, None)
        self.assertEqual((SettingsValues.p_offset, SettingsValues.lw_offset), (0.0, 0.0))
        texts = [text for text, _ in self.signals("toastWarn")]
        self.assertEqual(texts, ["Ohne Messwert lässt sich nicht kalibrieren"] * 4)
        backend.stop()
        self.assertEqual(self.in_file(SETTINGS), {})
        self.assertFalse(Auto.active or Gui.status != "Bereit")


if __name__ == "__main__":
    unittest.main()
