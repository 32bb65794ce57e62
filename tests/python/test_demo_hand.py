"""Hand operation, inputs and the simulated hardware."""

import unittest
from functools import partial

import demo_path  # pylint: disable=unused-import
import _probe
from brovik.actuator import Actuator, ActuatorEnum
from brovik.auto import Auto, AutoEnum
from brovik.config import Config, MachineVersion
from brovik.gui import Gui
from brovik.sensor import Sensor, SensorEnum, SensorLwEnum, SensorPEnum
from brovik.settings import SettingsEnum
from brovik.simulator import SimuEnum, Simulator

from demo_support import RunningCase, SteppedCase, outputs_on
import controller
from controller.simulation.faults import PlantFault


class OutputsTest(SteppedCase):
    """The operator's toggles."""

    def test_every_output(self) -> None:
        """On and off again; the heater once its hand operation is on."""
        self.make()
        self.operation.toggle_output(ActuatorEnum.ToggleManualHeating)
        for dout in Actuator.all_douts:
            with self.subTest(dout.name):
                self.operation.toggle_output(dout.enum)
                self.assertTrue(dout.state)
                self.operation.toggle_output(dout.enum)
                self.assertFalse(dout.state)
        self.assertEqual(self.signals("toastWarn"), [])

    def test_acts_on_the_plant(self) -> None:
        """Air into the closed barrel raises the pressure, the channel lets it out."""
        self.make()
        self.operation.toggle_output(ActuatorEnum.MvLuft)
        self.run_until(lambda: Sensor.druck > 0.3)
        self.operation.toggle_output(ActuatorEnum.MvLuft)
        self.operation.toggle_output(ActuatorEnum.MvKanal)
        self.run_until(lambda: Sensor.druck < 0.05)

    def test_blocked_by_another_output(self) -> None:
        """Lye keeps acid shut, with a word to the operator."""
        self.make()
        self.operation.toggle_output(ActuatorEnum.MvLaugeIn)
        self.assertTrue(Actuator.mv_saure_in.blocked and Actuator.mv_saure_out.blocked)
        self.operation.toggle_output(ActuatorEnum.MvSaureIn)
        self.assertEqual(outputs_on(), {"MvLaugeIn"})
        self.assertEqual([text for text, _ in self.signals("toastWarn")], ["Säure IN ist gesperrt"])
        self.operation.toggle_output(ActuatorEnum.MvLaugeIn)
        self.assertFalse(Actuator.mv_saure_in.blocked)

    def test_blocked_by_the_backend(self) -> None:
        """Whoever sets the flag, it counts."""
        self.make()
        Actuator.mv_kalt.blocked = True
        self.operation.toggle_output(ActuatorEnum.MvKalt)
        self.assertFalse(Actuator.mv_kalt.state)

    def test_blocked_during_a_run(self) -> None:
        """Everything is, and free again afterwards."""
        self.make()
        self.operation.toggle(AutoEnum.Toggle)
        self.operation.advance(0.1)
        self.assertTrue(all(dout.blocked for dout in Actuator.all_douts))
        before = outputs_on()
        self.operation.toggle_output(ActuatorEnum.MvKalt)
        self.assertEqual(outputs_on(), before)
        self.operation.toggle(AutoEnum.Toggle)
        self.assert_clean()

    def test_a_run_begins_with_all_outputs_off(self) -> None:
        """What was switched by hand does not run on."""
        self.make()
        for enum in (ActuatorEnum.MvKalt, ActuatorEnum.ToggleManualHeating, ActuatorEnum.Heat1):
            self.operation.toggle_output(enum)
        self.operation.toggle(AutoEnum.Toggle)
        self.assertEqual(outputs_on(), set())
        self.assertFalse(Actuator.manual_heating_enabled)

    def test_model_and_numbers(self) -> None:
        """The screens get all outputs but the steam valve that is not there."""
        self.make()
        self.assertEqual([dout.num for dout in Actuator.all_douts], list(range(1, 14)))
        self.assertEqual([din.num for din in Sensor.all_dins], [1, 2, 3])


class HeatingTest(SteppedCase):
    """The heater by hand."""

    def test_needs_its_hand_operation(self) -> None:
        """Without it the toggle is refused; switching it off switches the heater off."""
        self.make()
        self.operation.toggle_output(ActuatorEnum.Heat1)
        self.assertFalse(Actuator.heat_1.state)
        self.operation.toggle_output(ActuatorEnum.ToggleManualHeating)
        self.operation.toggle_output(ActuatorEnum.Heat1)
        for _ in range(50):
            self.operation.advance(0.1)
        self.assertTrue(Actuator.heat_1.state)
        self.operation.publish()
        self.assertIn("Heizung ein", Gui.status2)
        self.operation.toggle_output(ActuatorEnum.ToggleManualHeating)
        self.assertFalse(Actuator.manual_heating_enabled or Actuator.heat_1.state)

    def test_never_dry(self) -> None:
        """Below the level the heater goes off, unless the check is off or there is no switch."""
        for configuration, setting, stays in (
            ({"has_level_switch": True}, True, False),
            ({"has_level_switch": True}, False, True),
            ({"has_level_switch": False}, True, True),
        ):
            with self.subTest(**configuration, setting=setting):
                self.configure(**configuration)
                backend = self.make(PlantFault.LEVEL)
                backend.settings.wish(SettingsEnum.test_lauge_level, setting)
                self.operation.toggle_output(ActuatorEnum.ToggleManualHeating)
                self.operation.toggle_output(ActuatorEnum.Heat1)
                self.operation.advance(0.1)
                self.assertEqual(Actuator.heat_1.state, stays)
                self.operation.toggle_output(ActuatorEnum.ToggleManualHeating)
                backend.stop()

    def test_not_during_a_run(self) -> None:
        """The automatic heating has it."""
        self.make()
        self.operation.toggle(AutoEnum.Toggle)
        self.operation.toggle_output(ActuatorEnum.ToggleManualHeating)
        self.assertFalse(Actuator.manual_heating_enabled)


class InputsTest(SteppedCase):
    """Push buttons, level switch, analogue inputs."""

    def test_start_and_stop_button(self) -> None:
        """Start starts, stop aborts, each when it goes down and not while it is held."""
        self.make()
        self.operation.change_input(SensorEnum.Stop, True)
        self.operation.change_input(SensorEnum.Stop, False)
        self.assertFalse(Auto.active)
        self.operation.change_input(SensorEnum.Start, True)
        self.assertTrue(Auto.active and Sensor.start.state)
        self.operation.change_input(SensorEnum.Start, True)
        self.operation.change_input(SensorEnum.Start, False)
        self.operation.change_input(SensorEnum.Start, True)
        self.assertTrue(Auto.active)
        self.operation.change_input(SensorEnum.Stop, True)
        self.assert_clean()

    def test_level(self) -> None:
        """Follows the request; the header shows it."""
        self.make()
        self.operation.advance(0.1)
        self.assertTrue(Sensor.level.state)
        self.operation.change_input(SensorEnum.Level, False)
        self.operation.advance(0.1)
        self.operation.publish()
        self.assertFalse(Sensor.level.state)
        self.assertIn("Füllstand unterschritten", Gui.status2)

    def test_no_digital_input(self) -> None:
        """A request for anything else changes nothing."""
        self.make()
        for enum in (SensorEnum.Lw, SensorEnum.AIn1, SensorEnum.AIn2, SensorEnum.P):
            self.operation.change_input(enum, True)
        self.assert_clean()

    def test_analogue_inputs_follow(self) -> None:
        """In percent of their range, for both pressure sensors."""
        for p_type, percent in (("SMC_PSE564_02", 36.0), ("Gems_3500R0006G01B000", 100 / 6)):
            with self.subTest(p_type):
                self.configure(p_type=p_type)
                backend = self.make()
                self.simulated.plant.pressure = 1.0
                self.operation.advance(0.1)
                self.operation.publish()
                self.assertAlmostEqual(Sensor.ain1.value, percent)
                self.assertAlmostEqual(Sensor.ain2.value, 20.0)
                self.assertEqual(Simulator.a_in_0, round(percent))
                backend.stop()

    def test_simulated_inputs_move_the_plant(self) -> None:
        """Whether moved by way of the backend or by the host itself."""
        self.make()
        self.operation.publish()
        self.backend.set_simulated(SimuEnum.AIn0, 36.0)
        self.operation.advance(0.1)
        self.assertAlmostEqual(Sensor.raw_druck, 1.0, delta=0.01)
        Sensor.p_change_from_simulator(2.0)
        self.operation.advance(0.1)
        self.assertAlmostEqual(Sensor.raw_druck, 2.0, delta=0.04)
        self.backend.set_simulated(SimuEnum.AIn1, 60.0)
        self.operation.advance(0.1)
        self.assertAlmostEqual(Sensor.raw_leitwert, 50.0, delta=0.1)
        self.backend.set_simulated(SimuEnum.Lw, 25.0)
        self.operation.advance(0.1)
        self.assertAlmostEqual(Sensor.raw_leitwert, 25.0, delta=0.1)

    def test_moved_within_a_tick(self) -> None:
        """After the exchange has looked for moves, and before the sliders are shown again."""
        self.make()
        for move in (
            partial(self.backend.set_simulated, SimuEnum.AIn0, 36.0),
            partial(Sensor.p_change_from_simulator, 1.0),
        ):
            with self.subTest(move):
                self.simulated.plant.pressure = 0.0
                self.operation.publish()
                self.operation.advance(0.1)
                move()
                self.operation.publish()
                self.assertEqual(Simulator.a_in_0, 36)
                self.operation.advance(0.1)
                self.assertAlmostEqual(Sensor.raw_druck, 1.0, delta=0.01)

    def test_beyond_the_sliders(self) -> None:
        """They stay at their end, which moves nothing."""
        self.make()
        self.simulated.plant.pressure = 7.0
        self.operation.publish()
        self.assertEqual(Simulator.a_in_0, Simulator.a_in_0_max)
        self.operation.advance(0.1)
        self.assertAlmostEqual(Sensor.raw_druck, 7.0, delta=0.01)

    def test_rates_of_the_simulator(self) -> None:
        """The leak test follows them."""
        self.make()
        self.addCleanup(setattr, Simulator, "p_inc_rate", Simulator.p_inc_rate)
        Simulator.p_inc_rate = 0.02
        self.operation.toggle(AutoEnum.Toggle)
        self.run_until(lambda: not Auto.active)
        self.assertIn("langsamer als 0.03 bar/s", Gui.status3)


class ConfigurationTest(SteppedCase):
    """The machine's equipment, from the file."""

    def test_defaults(self) -> None:
        """Those of the host, with the analogue conductivity sensor; they appear in the file."""
        self.make()
        self.assertEqual(Config.machine_version, Config.machine_version_default)
        self.assertEqual(Sensor.lw_type, SensorLwEnum.Seli_SLI_03)
        self.assertFalse(Config.has_steam_valve or Simulator.enabled)

    def test_stored(self) -> None:
        """Every line of it."""
        log = _probe.SignalLog("Config", ["hasLevelSwitchChanged"])
        self.configure(
            machine_version="Legacy",
            display_type="_7_WSSKU_14628",
            has_level_switch=False,
            has_steam_valve=True,
            steam_pressure_sterilization=True,
            lw_type="ILFS_02_TK2",
            p_type="Gems_3500R0006G01B000",
            simulator=True,
        )
        self.make()
        self.addCleanup(Gui.apply_items_scale_to_default, 1.0)
        self.assertEqual(Config.machine_version, MachineVersion.Legacy)
        self.assertTrue(Config.has_steam_valve and Config.steam_pressure_sterilization)
        self.assertEqual(log.names, ["hasLevelSwitchChanged"])
        self.assertFalse(_probe.qml("Config", "hasLevelSwitch"))
        self.assertEqual(Sensor.lw_type, SensorLwEnum.ILFS_02_TK2)
        self.assertEqual(Sensor.p_type, SensorPEnum.Gems_3500R0006G01B000)
        self.assertTrue(Simulator.enabled)
        self.assertLess(Gui.fsize_s, 14.0)

    def test_nonsense(self) -> None:
        """Unknown keys and values are ignored with a log line each."""
        log = _probe.LogCapture()
        self.configure(machine_version="1999", has_steam_valve=1, colour="red", p_type=["x"])
        self.make()
        self.assertEqual(Config.machine_version, Config.machine_version_default)
        self.assertFalse(Config.has_steam_valve)
        texts = [text for _, text in log.messages if "Konfiguration" in text]
        self.assertEqual(len(texts), 4)


class SimulatorWindowTest(RunningCase):
    """The window of the simulated hardware, from the environment or from the file."""

    def test_opened(self) -> None:
        """Either opens it; neither keeps it away."""
        for simulator, stored, opened in (
            ("", False, False),
            ("0", False, False),
            ("1", False, True),
            ("", True, True),
            ("0", True, True),
        ):
            with self.subTest(simulator=simulator, stored=stored):
                self.configure(simulator=stored)
                self.start(simulator=simulator)
                self.assertEqual(Simulator.enabled, opened)
                self.stop()


class ThreadedHandTest(RunningCase):
    """Through the entry functions."""

    def test_toggle_and_input(self) -> None:
        """Presses take effect soon, on the machine's thread."""
        self.start(factor=1)
        log = _probe.SignalLog("Actuator.mvKalt", ["stateChanged"])
        controller.actuator_toggle_from_cpp(ActuatorEnum.MvKalt)
        self.until(lambda: Actuator.mv_kalt.state, "output")
        controller.actuator_toggle_from_cpp(ActuatorEnum.MvKalt)
        self.until(lambda: not Actuator.mv_kalt.state, "output")
        self.assertEqual([on_gui for _, on_gui, _ in log.emissions], [False, False])
        controller.sensor_value_from_cpp(SensorEnum.Level, False)
        self.until(lambda: not Sensor.level.state, "level")


if __name__ == "__main__":
    unittest.main()
