"""At which value, and in which second, the process decides one way or the other."""

import unittest
from collections.abc import Callable, Mapping
from functools import partial
from typing import Final

from controller.process import steps
from controller.process.control import Medium, Procedure, StepFailed
from controller.process.outputs import Output
from controller.process.recipe import Electrolyte, Equipment
from controller.process.sequence import SEQUENCE, Progress, Step

from .rig import Rig

#: Half seconds add up without rounding.
HALF: Final = 0.5


class FixedRig(Rig):
    """A rig whose sensors show what the test says: attributes in place of properties."""

    pressure: float = 0.0
    conductivity: float = 0.0
    level_reached: bool = True


class LimitCase(unittest.TestCase):
    """A step on sensors that stand still."""

    def setUp(self) -> None:
        self.rig = FixedRig()
        # No step may take the time of the job for its own.
        self.rig.control.now = 16.0

    def secs(self, procedure: Procedure, events: Mapping[float, Callable[[], None]] | None = None) -> float:
        """Runs to the end in half seconds, or to the failure. Does something at some of the seconds."""
        start = self.rig.control.now
        try:
            for _ in procedure:
                self.rig.control.now += HALF
                (events or {}).get(self.rig.control.now - start, lambda: None)()
                self.assertLess(self.rig.control.now - start, 1000.0)
        except StopIteration:
            pass
        return self.rig.control.now - start

    def secs_to_failure(self, procedure: Procedure, text: str) -> float:
        """Seconds until it fails with this text, of which not a letter may differ."""
        start = self.rig.control.now
        with self.assertRaises(StepFailed) as caught:
            self.secs(procedure)
        self.assertEqual(str(caught.exception), text)
        return self.rig.control.now - start

    def show(self, pressure: float | None = None, conductivity: float | None = None) -> None:
        """Has the sensors show something else."""
        self.rig.pressure = self.rig.pressure if pressure is None else pressure
        self.rig.conductivity = self.rig.conductivity if conductivity is None else conductivity


class MediumTest(LimitCase):
    """What the sensor stands in."""

    def test_thresholds(self) -> None:
        """A threshold belongs to what is above it."""
        for conductivity, medium in (
            (0.0, Medium.AIR),
            (0.0699, Medium.AIR),
            (0.07, Medium.FOAM),
            (0.0999, Medium.FOAM),
            (0.1, Medium.WATER),
            (1.4999, Medium.WATER),
            (1.5, Medium.ELECTROLYTE),
        ):
            with self.subTest(conductivity):
                self.rig.conductivity = conductivity
                self.assertIs(self.rig.control.medium, medium)

    def test_a_job_begins_at_zero(self) -> None:
        """Its time is its own."""
        self.assertEqual(Rig().control.now, 0.0)


class LeakTest(LimitCase):
    """The leak test."""

    def setUp(self) -> None:
        super().setUp()
        self.rig.settings.leakage_p_inc_rate = self.rig.settings.leakage_p_fill = 0.5
        self.rig.settings.leakage_p_max_loss = 0.25

    def test_time_to_rise(self) -> None:
        """What the pressure still lacks, at the least rate, and a second for the valve."""
        for pressure, secs in ((0.0, 2.0), (0.25, 1.5)):
            with self.subTest(pressure):
                self.rig.pressure = pressure
                text = "Undicht: Der Druck steigt langsamer als 0.50 bar/s."
                self.assertEqual(self.secs_to_failure(steps.leak_test(self.rig.control), text), secs)

    def test_rise(self) -> None:
        """Counts from the pressure and the second at which it begins; the target itself is enough."""
        self.rig.pressure = 0.25
        events = {1.0: partial(self.show, pressure=0.5), 2.5: partial(self.show, pressure=0.25)}
        events[4.5] = partial(self.show, pressure=0.0)
        self.assertEqual(self.secs(steps.leak_test(self.rig.control), events), 4.5)
        self.assertEqual(self.rig.checks["Druckanstieg"].value, 0.25)
        # A loss that is just allowed.
        self.assertEqual(self.rig.checks["Druckverlust"].value, 0.25)

    def test_loss(self) -> None:
        """One that is not."""
        self.rig.pressure = 0.5
        text = "Undicht: Der Druck ist um mehr als 0.25 bar gefallen."
        procedure = steps.leak_test(self.rig.control)
        with self.assertRaises(StepFailed) as caught:
            self.secs(procedure, {1.0: partial(self.show, pressure=0.2)})
        self.assertEqual(str(caught.exception), text)

    def test_vent(self) -> None:
        """Half a minute for the pressure to get below its threshold."""
        self.rig.pressure = self.rig.settings.threshold_p_blow
        text = "Der Druck lässt sich nicht ablassen."
        self.assertEqual(self.secs_to_failure(steps.vent(self.rig.control), text), 30.0)


class BlowTest(LimitCase):
    """Blowing out."""

    def test_conductivity(self) -> None:
        """Ninety seconds after the least time. The text has the conductivity of the beginning of those."""
        self.rig.conductivity = 0.07
        text = "Das Fass wird nicht leer (0.07 mS/cm)."
        self.assertEqual(self.secs_to_failure(steps.empty_into_channel(self.rig.control), text), 95.0)

    def test_pressure(self) -> None:
        """The threshold itself is too much."""
        self.rig.pressure = self.rig.settings.threshold_p_blow
        text = "Das Fass wird nicht leer (0.00 mS/cm)."
        self.assertEqual(self.secs_to_failure(steps.empty_into_channel(self.rig.control), text), 95.0)

    def test_outputs(self) -> None:
        """Air goes on into the channel after the barrel is empty."""
        found = set()
        for _ in steps.empty_into_channel(self.rig.control):
            found.add(frozenset(self.rig.on))
            self.rig.control.now += HALF
        self.assertEqual(found, {frozenset({Output.MV_LUFT, Output.MV_KANAL})})

    def test_prestress(self) -> None:
        """Two minutes; the pressure itself is enough."""
        text = "Das Fass erreicht den Vorspanndruck nicht."
        self.assertEqual(self.secs_to_failure(steps.prestress(self.rig.control), text), 120.0)
        self.rig.pressure = self.rig.settings.vorspannen_p
        self.assertEqual(self.secs(steps.prestress(self.rig.control)), 0.0)


class RinsingTest(LimitCase):
    """Passes."""

    def test_numbers(self) -> None:
        """Are told as soon as there are two."""
        self.rig.conductivity = 0.5
        self.secs(steps.rinse(self.rig.control, Output.MV_KALT, 2))
        self.assertEqual(self.rig.details[0], "Durchgang 1 von 2: Spülen, noch 5 s")


class CleaningTest(LimitCase):
    """Lye and acid."""

    def test_flood(self) -> None:
        """Eight seconds until another medium counts, in a cleaning and in the test of a bath."""
        text = "Falsches Medium: Luft statt Lauge (0.00 mS/cm)."
        for procedure in (
            steps.clean(self.rig.control, Electrolyte.LYE),
            steps.refresh(self.rig.control, Electrolyte.LYE, lambda: False),
        ):
            self.assertEqual(self.secs_to_failure(procedure, text), 8.0)

    def test_minimum(self) -> None:
        """The minimum itself is enough."""
        for conductivity, low in ((30.0, []), (29.9, [Electrolyte.LYE])):
            with self.subTest(conductivity):
                self.rig.low.clear()
                self.rig.conductivity = conductivity
                self.secs(steps.clean(self.rig.control, Electrolyte.LYE))
                self.assertEqual(self.rig.low, low)

    def test_peak(self) -> None:
        """Is never more than what was seen."""
        self.rig.settings.test_lw_kreis_lauge = False
        self.rig.conductivity = 0.5
        self.secs(steps.clean(self.rig.control, Electrolyte.LYE))
        self.assertEqual(self.rig.peaks, {Electrolyte.LYE: 0.5})

    def test_level(self) -> None:
        """Before anything is switched on."""
        self.rig.level_reached = False
        text = "Der Füllstand im Laugebecken ist unterschritten."
        self.assertEqual(self.secs_to_failure(steps.clean(self.rig.control, Electrolyte.LYE), text), 0.0)


class RefreshTest(LimitCase):
    """The test of a bath."""

    def setUp(self) -> None:
        super().setUp()
        self.procedure = steps.refresh(self.rig.control, Electrolyte.LYE, lambda: False)
        self.addCleanup(self.procedure.close)

    def details(self, secs: float) -> list[str]:
        """What is told in each half second."""
        self.rig.details.clear()
        for _ in range(round(secs / HALF)):
            next(self.procedure)
            self.rig.control.now += HALF
        return self.rig.details

    def test_texts(self) -> None:
        """Dose; hold, at the set point itself; end."""
        self.rig.conductivity = 59.9
        self.assertEqual(self.details(2.0), ["Bitte auffrischen, bis 60 mS/cm erreicht sind"] * 4)
        self.rig.conductivity = 60.0
        # Since the last half second in which it was too low.
        holding = self.details(19.5)
        self.assertEqual(holding[1::2], [f"Sollwert wird seit {secs} s gehalten" for secs in range(1, 20)])
        self.assertEqual(self.rig.reached, 0)
        self.assertEqual(self.details(1.0), ["Sollwert erreicht, die Prüfung kann abgeschlossen werden"] * 2)
        self.assertEqual(self.rig.reached, 1)

    def test_strong_bath(self) -> None:
        """One that needs nothing is held from the first moment on; a moment is not yet holding."""
        self.rig.conductivity = 60.0
        told = self.details(20.0)
        self.assertEqual(told[0], "Bitte auffrischen, bis 60 mS/cm erreicht sind")
        self.assertTrue(all(text.startswith("Sollwert wird seit") for text in told[1:]))
        self.assertEqual(self.rig.reached, 0)
        self.details(HALF)
        self.assertEqual(self.rig.reached, 1)


class ProgressTest(LimitCase):
    """The percentage."""

    def progress(self, *secs: float) -> Progress:
        """Of steps that are expected to take so long."""
        lengths = iter(secs)
        sequence = [Step("", "", steps.vent, lambda _: next(lengths)) for _ in secs]
        return Progress(self.rig.control, tuple(sequence))

    def test_from_the_first_moment(self) -> None:
        """The first step counts from when the run was made, each other from its beginning."""
        progress = self.progress(8.0, 8.0)
        self.assertEqual(progress.percent(0), 0)
        self.rig.control.now += 4.0
        self.assertEqual(progress.percent(0), 25)
        progress.start_step()
        self.assertEqual(progress.percent(1), 50)
        self.rig.control.now += 4.0
        self.assertEqual(progress.percent(1), 75)

    def test_whole_percents(self) -> None:
        """A percentage is shown when it is full."""
        progress = self.progress(200.0, 200.0)
        progress.start_step()
        self.rig.control.now += 199.5
        self.assertEqual(progress.percent(0), 49)

    def test_never_whole(self) -> None:
        """Not before the end, however long the last step takes."""
        progress = self.progress(8.0)
        self.rig.control.now += 80.0
        self.assertEqual(progress.percent(0), 99)

    def test_step_without_length(self) -> None:
        """Weighs a tenth of a second."""
        self.assertEqual(self.progress(0.0, 0.9).percent(1), 10)

    def test_leak_test_that_is_off(self) -> None:
        """Takes no time."""
        self.rig.settings.test_leakage_p = False
        self.assertEqual(SEQUENCE[0].secs(self.rig.control), 0.0)

    def test_steps_that_do_not_apply(self) -> None:
        """Steam without steam, a step of the older machine on the other one."""
        recipe = Rig(equipment=Equipment()).recipe
        self.assertEqual(
            [step.key for step in SEQUENCE if step.applies(recipe) is False],
            ["circuit_hot", "rinse_hot_again", "circuit_cold", "rinse_cold_again", "steam"],
        )


if __name__ == "__main__":
    unittest.main()
