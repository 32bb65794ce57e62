"""The order of the steps, and a run of all of them."""

import unittest

from controller.process.control import StepFailed
from controller.process.outputs import Output
from controller.simulation.faults import PlantFault
from controller.process.recipe import Equipment
from controller.process.sequence import Progress, Step, steps_for

from .rig import HIGHEST, LOWEST, Rig

LEGACY = (
    "leak_test empty rinse_hot lye lye_back rinse_lye circuit_hot rinse_hot_again acid acid_back "
    "rinse_cold circuit_cold rinse_cold_again steam air_out prestress"
).split()
CURRENT = (
    "leak_test empty rinse_hot lye lye_back rinse_lye acid acid_back rinse_cold steam air_out " "prestress"
).split()


def keys(rig: Rig) -> list[str]:
    """Keys of the rig's run."""
    return [step.key for step in steps_for(rig.recipe)]


class OrderTest(unittest.TestCase):
    """Which steps a machine has."""

    def test_all_machines(self) -> None:
        """Legacy has 16 steps with steam and 15 without, the other one 12 and 11."""
        for legacy, all_keys in ((True, LEGACY), (False, CURRENT)):
            for steam in (True, False):
                with self.subTest(legacy=legacy, steam=steam):
                    rig = Rig(equipment=Equipment(legacy, steam_valve=steam), steam=steam)
                    expected = [key for key in all_keys if steam or key != "steam"]
                    self.assertEqual(keys(rig), expected)


class RunTest(unittest.TestCase):
    """All steps, one after the other."""

    def run_all(self, rig: Rig) -> dict[str, float]:
        """Seconds of each step."""
        rig.plant.connect_new_barrel()
        secs = {}
        for step in steps_for(rig.recipe):
            secs[step.key] = rig.run(step.run(rig.control))
            self.assertEqual(rig.on, set(), step.key)
        return secs

    def test_every_machine_at_every_end_of_the_bounds(self) -> None:
        """Shortest and longest parameters lead to a barrel under pressure."""
        for legacy in (True, False):
            for name, values in (("defaults", {}), ("lowest", LOWEST), ("highest", HIGHEST)):
                with self.subTest(legacy=legacy, parameters=name):
                    equipment = Equipment(legacy, steam_valve=True, steam_pressure=legacy)
                    rig = Rig(equipment=equipment, steam=True)
                    vars(rig.settings).update(values)
                    self.run_all(rig)
                    self.assertGreaterEqual(rig.pressure, rig.settings.vorspannen_p)
                    self.assertAlmostEqual(rig.plant.barrel.volume, 0.0)
                    self.assertEqual(rig.low, [])

    def test_lye_and_acid_never_meet(self) -> None:
        """At no moment are outputs of both on."""
        rig = Rig(equipment=Equipment(legacy=True))
        lye = {Output.MV_LAUGE_IN, Output.MV_LAUGE_OUT}
        acid = {Output.MV_SAURE_IN, Output.MV_SAURE_OUT}
        for step in steps_for(rig.recipe):
            for _ in step.run(rig.control):
                rig.advance()
                self.assertFalse(rig.on & lye and rig.on & acid)

    def test_expected_lengths(self) -> None:
        """The lengths that weigh the steps are about those that they have."""
        rig = Rig(equipment=Equipment(legacy=True, steam_valve=True), steam=True)
        expected = {step.key: step.secs(rig.control) for step in steps_for(rig.recipe)}
        for key, secs in self.run_all(rig).items():
            self.assertAlmostEqual(secs, expected[key], delta=3.0, msg=key)

    def test_closing_anywhere_leaves_nothing_on(self) -> None:
        """Every step, closed at its first yield and in its middle."""
        for step in steps_for(Rig(equipment=Equipment(legacy=True), steam=True).recipe):
            for periods in (1, 5, 35, 48):
                with self.subTest(step.key, periods=periods):
                    rig = Rig(equipment=Equipment(legacy=True), steam=True)
                    self._close_after(rig, step, periods)
                    self.assertEqual(rig.on, set())

    def _close_after(self, rig: Rig, step: Step, periods: int) -> None:
        procedure = step.run(rig.control)
        for _ in range(periods):
            next(procedure)
            rig.advance()
        procedure.close()

    def test_failing_leaves_nothing_on(self) -> None:
        """A failed check, too."""
        for fault, key in (
            (PlantFault.LEAK, "leak_test"),
            (PlantFault.NO_WATER, "rinse_hot"),
            (PlantFault.WRONG_MEDIUM, "lye"),
            (PlantFault.LEVEL, "lye"),
        ):
            with self.subTest(fault):
                rig = Rig(fault)
                with self.assertRaises(StepFailed):
                    for step in steps_for(rig.recipe):
                        last = step.key
                        rig.run(step.run(rig.control))
                self.assertEqual((last, rig.on), (key, set()))


class ProgressTest(unittest.TestCase):
    """The percentage."""

    def test_rises_steadily(self) -> None:
        """From 0 to at most 99, never back."""
        rig = Rig()
        steps = steps_for(rig.recipe)
        progress = Progress(rig.control, steps)
        shown = []
        for index, step in enumerate(steps):
            progress.start_step()
            for _ in step.run(rig.control):
                shown.append(progress.percent(index))
                rig.advance()
        self.assertEqual(shown, sorted(shown))
        self.assertEqual(shown[0], 0)
        self.assertIn(shown[-1], (98, 99))

    def test_follows_the_lengths(self) -> None:
        """Half the run's time is half of the bar."""
        rig = Rig()
        steps = steps_for(rig.recipe)
        total = sum(step.secs(rig.control) for step in steps)
        until_lye = sum(step.secs(rig.control) for step in steps[:3])
        progress = Progress(rig.control, steps)
        progress.start_step()
        rig.control.now += 50.0
        self.assertEqual(progress.percent(3), int(100 * (until_lye + 50) / total))


if __name__ == "__main__":
    unittest.main()
