"""The steps of the process, each on a plant."""

import math
import unittest

from controller.process import steps
from controller.process.control import Medium, Procedure, StepFailed
from controller.process.outputs import Output
from controller.simulation.faults import PlantFault
from controller.simulation.plant import Liquid
from controller.process.recipe import Electrolyte, Equipment

from .rig import Rig


class StepCase(unittest.TestCase):
    """Whatever a step does, it leaves no output on."""

    def setUp(self) -> None:
        self.rig = Rig()
        self.addCleanup(lambda: self.assertEqual(self.rig.on, set()))

    def use(self, rig: Rig) -> Rig:
        """Takes another rig."""
        self.rig = rig
        return rig

    def assert_fails(self, procedure: Procedure, text: str) -> None:
        """The step ends with this text."""
        with self.assertRaisesRegex(StepFailed, text):
            self.rig.run(procedure)


class LeakTestTest(StepCase):
    """leakage_p_fill, leakage_p_inc_rate, leakage_p_hold_secs, leakage_p_max_loss, the switch."""

    def test_sound_barrel(self) -> None:
        """Filled, held, vented."""
        secs = self.rig.run(steps.leak_test(self.rig.control))
        self.assertAlmostEqual(self.rig.secs_on(Output.MV_LUFT), 0.5 / 0.05, delta=0.3)
        self.assertGreater(secs, 13.0)
        self.assertLess(self.rig.pressure, 0.05)

    def test_pressure_to_reach(self) -> None:
        """Twice the pressure takes twice the time."""
        self.rig.settings.leakage_p_fill = 1.0
        self.rig.run(steps.leak_test(self.rig.control))
        self.assertAlmostEqual(self.rig.secs_on(Output.MV_LUFT), 20.0, delta=0.3)

    def test_holding(self) -> None:
        """The seconds of holding add to the step."""
        self.rig.settings.leakage_p_hold_secs = 1
        short = self.rig.run(steps.leak_test(self.rig.control))
        self.rig.settings.leakage_p_hold_secs = 20
        self.assertAlmostEqual(self.rig.run(steps.leak_test(self.rig.control)) - short, 19.0, delta=1.0)

    def test_leak(self) -> None:
        """Too great a loss while holding."""
        self.use(Rig(PlantFault.LEAK))
        self.assert_fails(steps.leak_test(self.rig.control), "mehr als 0.07 bar gefallen")

    def test_leak_within_the_allowed_loss(self) -> None:
        """What is allowed passes."""
        self.use(Rig(PlantFault.LEAK)).plant.rates.fall = 0.02
        self.rig.run(steps.leak_test(self.rig.control))

    def test_slow_rise(self) -> None:
        """The pressure has to rise at the least rate."""
        self.rig.settings.leakage_p_inc_rate = 0.2
        self.assert_fails(steps.leak_test(self.rig.control), "langsamer als 0.20 bar/s")

    def test_no_gas(self) -> None:
        """No gas is no rise."""
        self.use(Rig(PlantFault.NO_GAS))
        self.assert_fails(steps.leak_test(self.rig.control), "langsamer als")

    def test_switched_off(self) -> None:
        """Without the test there is no step."""
        self.rig.settings.test_leakage_p = False
        self.assertEqual(self.rig.run(steps.leak_test(self.rig.control)), 0.0)
        self.assertEqual(self.rig.used, {})


class BlowingTest(StepCase):
    """secs_blow_min, threshold_lw_empty, threshold_p_blow, blow_after_empty_secs."""

    def setUp(self) -> None:
        super().setUp()
        self.rig.plant.connect_new_barrel()

    def test_empties_and_blows_on(self) -> None:
        """Into the channel, with air."""
        self.rig.run(steps.empty_into_channel(self.rig.control))
        self.assertEqual(self.rig.plant.barrel.volume, 0.0)
        self.assertIs(self.rig.control.medium, Medium.AIR)
        self.assertEqual(set(self.rig.used), {Output.MV_LUFT, Output.MV_KANAL})

    def test_blow_after_empty(self) -> None:
        """The seconds add to the step."""
        self.rig.settings.blow_after_empty_secs = 1
        short = self.rig.run(steps.empty_into_channel(self.rig.control))
        self.rig.plant.connect_new_barrel()
        self.rig.settings.blow_after_empty_secs = 60
        long = self.rig.run(steps.empty_into_channel(self.rig.control))
        self.assertAlmostEqual(long - short, 59.0, delta=5.0)

    def test_least_time(self) -> None:
        """A dry barrel is blown for as long as the conductivity does not count."""
        rig = self.use(Rig())
        rig.settings.blow_after_empty_secs = 1
        for secs in (1, 20):
            rig.settings.secs_blow_min = secs
            self.assertAlmostEqual(rig.run(steps.empty_into_channel(rig.control)), secs + 1, delta=0.3)

    def test_what_counts_as_air(self) -> None:
        """A lower threshold takes longer to dry down to."""
        secs = {}
        for threshold in (1.0, 0.01):
            rig = self.use(Rig())
            rig.plant.barrel = Liquid(10.0, 60.0)
            rig.settings.threshold_lw_empty = threshold
            secs[threshold] = rig.run(steps.empty_into_channel(rig.control))
        self.assertGreater(secs[0.01], secs[1.0] + 2.0)

    def test_blocked_outlet(self) -> None:
        """A pressure that stays above its threshold says that the barrel is not empty."""
        self.rig.settings.threshold_p_blow = 0.0
        self.assert_fails(steps.empty_into_channel(self.rig.control), "Das Fass wird nicht leer")

    def test_vent_needs_an_outlet(self) -> None:
        """A pressure that cannot be let out is reported."""
        self.rig.plant.pressure = 1.0
        self.rig.settings.threshold_p_blow = 0.0
        self.assert_fails(steps.vent(self.rig.control), "lässt sich nicht ablassen")


class RinsingTest(StepCase):
    """secs_pump, secs_blow_after_pump, threshold_lw_water and the two switches."""

    def test_passes(self) -> None:
        """Each pass pumps and blows."""
        secs = self.rig.run(steps.rinse(self.rig.control, Output.MV_HEISS, 3))
        self.assertAlmostEqual(secs, 3 * 8, delta=0.7)
        self.assertAlmostEqual(self.rig.secs_on(Output.PUMPE), 15.0, delta=0.4)
        self.assertAlmostEqual(self.rig.secs_on(Output.MV_LUFT), 9.0, delta=0.4)
        self.assertIn("Durchgang 2 von 3: Spülen, noch 5 s", self.rig.details)

    def test_secs(self) -> None:
        """Both times come from the settings."""
        self.rig.settings.secs_pump, self.rig.settings.secs_blow_after_pump = 20, 1
        self.rig.run(steps.rinse(self.rig.control, Output.MV_KALT, 1))
        self.assertAlmostEqual(self.rig.secs_on(Output.MV_KALT), 20.0, delta=0.2)
        self.assertAlmostEqual(self.rig.secs_on(Output.MV_CO2), 1.0, delta=0.2)

    def test_gas_after_acid(self) -> None:
        """Cold water comes after the acid; it is blown out with air only if the setting says so."""
        self.rig.settings.use_co2_after_saure = False
        self.rig.run(steps.rinse(self.rig.control, Output.MV_KALT, 1))
        self.assertEqual(self.rig.secs_on(Output.MV_CO2), 0.0)
        self.assertGreater(self.rig.secs_on(Output.MV_LUFT), 0.0)

    def test_no_water(self) -> None:
        """Air instead of water is noticed, hot and cold, unless the check is off."""
        for water, name, switch in (
            (Output.MV_HEISS, "Heißwasser", "test_lw_water_hot"),
            (Output.MV_KALT, "Kaltwasser", "test_lw_water_cold"),
        ):
            with self.subTest(name):
                self.use(Rig(PlantFault.NO_WATER))
                self.assert_fails(steps.rinse(self.rig.control, water, 1), f"Luft statt {name}")
                setattr(self.rig.settings, switch, False)
                self.rig.run(steps.rinse(self.rig.control, water, 1))

    def test_thresholds(self) -> None:
        """What the settings do not take for water fails the check."""
        for threshold, value, found in (
            ("threshold_lw_water", 1.3, "Schaum"),
            ("threshold_lw_electrolyte", 0.2, "Lauge oder Säure"),
        ):
            with self.subTest(threshold):
                setattr(self.use(Rig()).settings, threshold, value)
                self.assert_fails(
                    steps.rinse(self.rig.control, Output.MV_HEISS, 1), f"{found} statt Heißwasser"
                )

    def test_circuit(self) -> None:
        """Filled, then pumped round."""
        self.rig.run(steps.rinse_circuit(self.rig.control, Output.MV_KALT, 6, 4))
        self.assertAlmostEqual(self.rig.secs_on(Output.MV_KALT), 6.0, delta=0.2)
        self.assertAlmostEqual(self.rig.secs_on(Output.MV_KREIS), 10.0, delta=0.3)


class CleaningTest(StepCase):
    """lauge_kreis_secs, saure_kreis_secs, the factor, the checks of medium, level and minimum."""

    CASES = (
        (Electrolyte.LYE, Output.MV_LAUGE_IN, "lauge_kreis_secs", "test_lw_kreis_lauge"),
        (Electrolyte.ACID, Output.MV_SAURE_IN, "saure_kreis_secs", "test_lw_kreis_saure"),
    )

    def test_secs(self) -> None:
        """The circuit is as long as the settings say."""
        for electrolyte, inlet, key, _ in self.CASES:
            with self.subTest(electrolyte):
                setattr(self.use(Rig()).settings, key, 40)
                self.rig.run(steps.clean(self.rig.control, electrolyte))
                self.assertAlmostEqual(self.rig.secs_on(inlet), 40.0, delta=0.2)
                self.assertEqual(self.rig.low, [])
                self.assertGreater(self.rig.peaks[electrolyte], 18.0)

    def test_intense(self) -> None:
        """Intensive cleaning lengthens it."""
        for electrolyte, inlet, key, _ in self.CASES:
            with self.subTest(electrolyte):
                setattr(self.use(Rig(lengthening=2.5)).settings, key, 40)
                self.rig.run(steps.clean(self.rig.control, electrolyte))
                self.assertAlmostEqual(self.rig.secs_on(inlet), 100.0, delta=0.2)

    def test_wrong_medium(self) -> None:
        """Water instead of the electrolyte, unless the check is off."""
        for electrolyte, _, _, switch in self.CASES:
            with self.subTest(electrolyte):
                self._fill_with_water()
                procedure = steps.clean(self.rig.control, electrolyte)
                self.assert_fails(procedure, f"Wasser statt {electrolyte.value}")
                self._fill_with_water()
                setattr(self.rig.settings, switch, False)
                self.rig.run(steps.clean(self.rig.control, electrolyte))
                self.assertEqual(self.rig.low, [electrolyte])

    def _fill_with_water(self) -> None:
        plant = self.use(Rig()).plant
        plant.lye.conductivity = plant.acid.conductivity = 0.6

    def test_weak_bath(self) -> None:
        """A bath below its minimum is told, and cleaned with all the same."""
        for electrolyte, *_ in self.CASES:
            with self.subTest(electrolyte):
                self.use(Rig(PlantFault.WEAK_BATH))
                self.rig.run(steps.clean(self.rig.control, electrolyte))
                self.assertEqual(self.rig.low, [electrolyte])

    def test_level(self) -> None:
        """Too little lye, unless there is no switch or the check is off. Acid has none."""
        self.use(Rig(PlantFault.LEVEL))
        self.assert_fails(steps.clean(self.rig.control, Electrolyte.LYE), "Füllstand")
        self.rig.run(steps.clean(self.rig.control, Electrolyte.ACID))
        self.rig.settings.test_lauge_level = False
        self.rig.run(steps.clean(self.rig.control, Electrolyte.LYE))
        self.use(Rig(PlantFault.LEVEL, equipment=Equipment(level_switch=False)))
        self.rig.run(steps.clean(self.rig.control, Electrolyte.LYE))

    def test_give_back(self) -> None:
        """Until it is no electrolyte any more: lye with air, acid with CO2 or air."""
        for electrolyte, co2, gas in (
            (Electrolyte.LYE, True, Output.MV_LUFT),
            (Electrolyte.ACID, True, Output.MV_CO2),
            (Electrolyte.ACID, False, Output.MV_LUFT),
        ):
            with self.subTest(electrolyte, co2=co2):
                rig = self.use(Rig())
                rig.settings.use_co2_after_saure = co2
                rig.run(steps.clean(rig.control, electrolyte))
                rig.used.clear()
                rig.run(steps.give_back(rig.control, electrolyte))
                self.assertLess(rig.conductivity, 1.5)
                self.assertAlmostEqual(rig.plant.baths[electrolyte].volume, 80.0)
                self.assertIn(gas, rig.used)
                self.assertEqual(len(rig.used), 2)

    def test_give_back_stops_at_the_threshold(self) -> None:
        """The higher what counts as electrolyte, the sooner the end."""
        secs = {}
        for threshold in (0.2, 5.0):
            rig = self.use(Rig())
            rig.plant.barrel = Liquid(5.0, 58.0)
            rig.settings.secs_blow_min = 1
            rig.settings.threshold_lw_electrolyte = threshold
            secs[threshold] = rig.run(steps.give_back(rig.control, Electrolyte.LYE))
        self.assertGreater(secs[0.2], secs[5.0] + 1.0)


class LastStepsTest(StepCase):
    """steam_sterilization_secs, steam_co2_blow_secs, co2_blow_after_empty_secs, vorspannen_p."""

    def test_steam(self) -> None:
        """Through the open channel all the time, then CO2."""
        self.rig.run(steps.steam(self.rig.control))
        self.assertAlmostEqual(self.rig.secs_on(Output.MV_STEAM), 40.0, delta=0.2)
        self.assertAlmostEqual(self.rig.secs_on(Output.MV_CO2), 3.0, delta=0.2)
        self.assertAlmostEqual(self.rig.secs_on(Output.MV_KANAL), 43.0, delta=0.3)

    def test_steam_under_pressure(self) -> None:
        """Ten seconds through the channel, the rest under pressure."""
        rig = self.use(Rig(equipment=Equipment(steam_pressure=True)))
        rig.settings.steam_sterilization_secs = 30
        procedure = steps.steam(rig.control)
        highest = 0.0
        for _ in procedure:
            rig.advance()
            highest = max(highest, rig.pressure)
        self.assertAlmostEqual(rig.secs_on(Output.MV_STEAM), 30.0, delta=0.3)
        self.assertAlmostEqual(rig.secs_on(Output.MV_KANAL), 13.0, delta=0.4)
        self.assertGreater(highest, 0.9)

    def test_pulses(self) -> None:
        """CO2 every other second, with the channel open all the time."""
        self.rig.settings.co2_blow_after_empty_secs = 10
        self.rig.settings.secs_blow_min = 1
        secs = self.rig.run(steps.drive_air_out(self.rig.control))
        self.assertAlmostEqual(secs, 11.0, delta=1.5)
        self.assertAlmostEqual(self.rig.secs_on(Output.MV_CO2), 6.0, delta=1.0)
        self.assertAlmostEqual(self.rig.secs_on(Output.MV_KANAL), secs, delta=0.2)

    def test_prestress(self) -> None:
        """Up to the pressure, which may change meanwhile, and closed afterwards."""
        procedure = steps.prestress(self.rig.control)
        for _ in range(30):
            next(procedure)
            self.rig.advance()
        self.rig.settings.vorspannen_p = 1.2
        self.rig.run(procedure)
        self.assertAlmostEqual(self.rig.pressure, 1.2, delta=0.01)

    def test_prestress_without_gas(self) -> None:
        """Fails rather than waits for ever."""
        self.use(Rig(PlantFault.NO_GAS))
        self.assert_fails(steps.prestress(self.rig.control), "Vorspanndruck nicht")


class RefreshTest(StepCase):
    """The test of a bath: set point, lw_test_hold_secs, end."""

    def test_holds_the_set_point(self) -> None:
        """Reached is what has been held, and told once."""
        rig = self.rig
        rig.dosing.begin(rig.plant.lye, 60.0)
        procedure = steps.refresh(rig.control, Electrolyte.LYE, lambda: False)
        above_since = 0.0
        while not rig.reached:
            next(procedure)
            rig.advance()
            if rig.conductivity < 60.0:
                above_since = rig.control.now
            self.assertLess(rig.control.now, 300.0)
        self.assertAlmostEqual(rig.control.now - above_since, 20.0, delta=0.3)
        for _ in range(600):
            next(procedure)
            rig.advance()
        procedure.close()
        self.assertEqual(rig.reached, 1)
        self.assertEqual(rig.on, set())

    def test_falling_below_starts_anew(self) -> None:
        """The seconds count without a break."""
        rig = self.rig
        rig.plant.lye.conductivity = 61.0
        procedure = steps.refresh(rig.control, Electrolyte.LYE, lambda: False)
        for second in range(400):
            next(procedure)
            rig.advance()
            if second == 200:
                rig.plant.conductivity = 10.0
        self.assertEqual(rig.reached, 0)
        procedure.close()

    def test_ends_when_finished(self) -> None:
        """On the operator's word."""
        finished: list[bool] = []
        procedure = steps.refresh(self.rig.control, Electrolyte.ACID, lambda: bool(finished))
        for _ in range(200):
            next(procedure)
            self.rig.advance()
        finished.append(True)
        self.assertRaises(StopIteration, next, procedure)

    def test_low_bath(self) -> None:
        """Below the minimum to the end."""
        self.use(Rig(PlantFault.WEAK_BATH))
        procedure = steps.refresh(self.rig.control, Electrolyte.ACID, lambda: False)
        for _ in range(200):
            next(procedure)
            self.rig.advance()
        procedure.close()
        self.assertEqual(self.rig.low, [Electrolyte.ACID])

    def test_closed_before_the_bath_was_seen(self) -> None:
        """Nothing is said of a bath that has not reached the sensor."""
        procedure = steps.refresh(self.rig.control, Electrolyte.ACID, lambda: False)
        next(procedure)
        self.rig.advance()
        procedure.close()
        self.assertEqual(self.rig.low, [])


class CheckTest(StepCase):
    """What the checks tell of what they have looked at."""

    def values(self) -> dict[str, tuple[float, float | None]]:
        """Value and limit by name."""
        return {name: (check.value, check.limit) for name, check in self.rig.checks.items()}

    def test_leak_test(self) -> None:
        """Rise and loss, against their limits."""
        self.rig.run(steps.leak_test(self.rig.control))
        rise, least = self.values()["Druckanstieg"]
        loss, most = self.values()["Druckverlust"]
        self.assertAlmostEqual(rise, 0.05, delta=0.001)
        self.assertAlmostEqual(loss, 0.0)
        self.assertEqual((least, most), (0.03, 0.07))

    def test_failure(self) -> None:
        """Is told, too: with the value that has failed."""
        self.use(Rig(PlantFault.LEAK))
        self.assert_fails(steps.leak_test(self.rig.control), "gefallen")
        loss, most = self.values()["Druckverlust"]
        self.assertGreater(loss, most or 1.0)

    def test_slow_rise(self) -> None:
        """Below the least rise."""
        self.use(Rig(PlantFault.NO_GAS))
        self.assert_fails(steps.leak_test(self.rig.control), "langsamer")
        self.assertEqual(self.values(), {"Druckanstieg": (0.0, 0.03)})

    def test_abort(self) -> None:
        """What there was up to it."""
        procedure = steps.leak_test(self.rig.control)
        for _ in range(20):
            next(procedure)
            self.rig.advance()
        procedure.close()
        self.assertEqual(list(self.values()), ["Druckanstieg"])

    def test_water_and_baths(self) -> None:
        """Conductivities: of the water, and the highest of the lye."""
        self.rig.run(steps.rinse(self.rig.control, Output.MV_HEISS, 1))
        self.rig.run(steps.clean(self.rig.control, Electrolyte.LYE))
        value, limit = self.values()["Leitwert Heißwasser"]
        self.assertAlmostEqual(value, 0.6, delta=0.05)
        self.assertEqual(limit, 0.1)
        value, limit = self.values()["Höchster Leitwert Lauge"]
        self.assertGreater(value, 50.0)
        self.assertEqual(limit, 30)

    def test_prestress(self) -> None:
        """The pressure that the barrel is left under."""
        self.rig.run(steps.prestress(self.rig.control))
        value, limit = self.values()["Vorspanndruck"]
        self.assertGreaterEqual(value, limit or math.inf)


if __name__ == "__main__":
    unittest.main()
