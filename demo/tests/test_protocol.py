"""Everything that a whole run does and tells, from the first step to the last."""

import re
import unittest
from collections.abc import Sequence
from dataclasses import dataclass

from controller.process.control import AT_LEAST, AT_MOST, BELOW, Check
from controller.process.outputs import Output
from controller.process.recipe import Equipment
from controller.process.sequence import Step, steps_for

from .rig import Rig

#: What is switched on, one after the other, and for how many periods of a tenth of a second.
Changes = list[tuple[str, int]]

HOT = [("MV_HEISS MV_KANAL PUMPE", 50), ("MV_LUFT MV_KANAL", 30)]
COLD = [("MV_KALT MV_KANAL PUMPE", 50), ("MV_CO2 MV_KANAL", 30)]
BLOWING = ["Fass wird ausgeblasen", "Fass wird ausgeblasen, bis es leer ist"]
RINSING = ["Spülen", "Ausblasen"]
THREE_PASSES = [f"Durchgang {number} von 3: {text}" for number in (1, 2, 3) for text in RINSING]
EMPTY = [
    ("Druck nach dem Ausblasen", "bar", 0.05, "unter"),
    ("Leitwert nach dem Ausblasen", "mS/cm", None, "Grenze"),
]
HOT_WATER = [("Leitwert Heißwasser", "mS/cm", 0.1, "mindestens")]
COLD_WATER = [("Leitwert Kaltwasser", "mS/cm", 0.1, "mindestens")]


@dataclass(frozen=True)
class Expected:
    """What a step is, does and tells. `secs` is the length that weighs it in the progress."""

    title: str
    secs: float
    changes: Changes
    details: list[str]
    checks: Sequence[tuple[str, str, float | None, str]]


#: The older machine with steam under pressure has all steps.
PROTOCOL = {
    "leak_test": Expected(
        "Dichtheitsprobe",
        15.0,
        [("MV_LUFT", 80), ("", 30), ("MV_KANAL", 12)],
        ["Fass wird auf 0.5 bar gespannt", "Druck wird gehalten", "Druck wird abgelassen"],
        [("Druckanstieg", "bar/s", 0.03, "mindestens"), ("Druckverlust", "bar", 0.07, "höchstens")],
    ),
    "empty": Expected(
        "Fass in den Kanal entleeren",
        17.0,
        [("MV_LUFT MV_KANAL", 150)],
        [*BLOWING, "Gas wird ausgeblasen"],
        EMPTY,
    ),
    "rinse_hot": Expected("Spülen mit Heißwasser", 24.0, HOT * 3, THREE_PASSES, HOT_WATER),
    "lye": Expected(
        "Reinigen mit Lauge",
        100.0,
        [("MV_LAUGE_IN MV_LAUGE_OUT PUMPE", 1000)],
        ["Lauge wird im Kreis gepumpt"],
        [("Höchster Leitwert Lauge", "mS/cm", 30, "mindestens")],
    ),
    "lye_back": Expected("Lauge zurückfördern", 7.0, [("MV_LAUGE_OUT MV_LUFT", 57)], BLOWING, EMPTY),
    "rinse_lye": Expected("Laugereste in den Kanal spülen", 8.0, HOT, RINSING, HOT_WATER),
    "circuit_hot": Expected(
        "Kreislauf mit Heißwasser spülen",
        12.0,
        [("MV_HEISS MV_KREIS PUMPE", 60), ("MV_KREIS PUMPE", 60)],
        ["Kreislauf wird gefüllt", "Kreislauf wird gespült"],
        [],
    ),
    "rinse_hot_again": Expected("Nachspülen mit Heißwasser", 8.0, HOT, RINSING, HOT_WATER),
    "acid": Expected(
        "Reinigen mit Säure",
        100.0,
        [("MV_SAURE_IN MV_SAURE_OUT PUMPE", 1000)],
        ["Säure wird im Kreis gepumpt"],
        [("Höchster Leitwert Säure", "mS/cm", 10, "mindestens")],
    ),
    "acid_back": Expected("Säure zurückfördern", 7.0, [("MV_SAURE_OUT MV_CO2", 50)], BLOWING, EMPTY),
    "rinse_cold": Expected("Spülen mit Kaltwasser", 24.0, COLD * 3, THREE_PASSES, COLD_WATER),
    "circuit_cold": Expected(
        "Kreislauf mit Kaltwasser spülen",
        12.0,
        [("MV_KALT MV_KREIS PUMPE", 60), ("MV_KREIS PUMPE", 60)],
        ["Kreislauf wird gefüllt", "Kreislauf wird gespült"],
        [],
    ),
    "rinse_cold_again": Expected("Nachspülen mit Kaltwasser", 8.0, COLD, RINSING, COLD_WATER),
    "steam": Expected(
        "Sterilisieren mit Dampf",
        43.0,
        [("MV_KANAL MV_STEAM", 100), ("MV_STEAM", 300), ("MV_CO2 MV_KANAL", 30)],
        ["Fass wird mit Dampf gespült", "Fass steht unter Dampfdruck", "Dampf wird ausgeblasen"],
        [],
    ),
    "air_out": Expected(
        "Luft mit CO2 austreiben",
        12.0,
        [("MV_CO2 MV_KANAL", 60), *[("MV_KANAL", 10), ("MV_CO2 MV_KANAL", 10)] * 2],
        [*BLOWING, *(f"CO2-Takt {second}" for second in (1, 2, 3, 4, 5))],
        EMPTY,
    ),
    "prestress": Expected(
        "Vorspannen mit CO2",
        14.0,
        [("MV_CO2", 140)],
        ["Fass wird vorgespannt"],
        [("Vorspanndruck", "bar", 0.7, "mindestens")],
    ),
}


class ProtocolTest(unittest.TestCase):
    """One run."""

    def setUp(self) -> None:
        equipment = Equipment(legacy=True, steam_valve=True, steam_pressure=True)
        self.rig = Rig(equipment=equipment, steam=True)
        self.rig.plant.connect_new_barrel()

    def changes(self, step: Step) -> Changes:
        """Runs a step."""
        found: Changes = []
        for _ in step.run(self.rig.control):
            on = " ".join(output.name for output in Output if output in self.rig.on)
            if not found or found[-1][0] != on:
                found.append((on, 0))
            found[-1] = (on, found[-1][1] + 1)
            self.rig.advance()
        return found

    def details(self) -> list[str]:
        """What was told, without the seconds that are left."""
        texts = [re.sub(r", noch \d+ s$", "", text) for text in self.rig.details]
        return [text for before, text in zip(["", *texts], texts) if text != before]

    def test_whole_run(self) -> None:
        """Outputs, texts and checks of each step."""
        steps = steps_for(self.rig.recipe)
        self.assertEqual([step.key for step in steps], list(PROTOCOL))
        for step in steps:
            with self.subTest(step.key):
                expected = PROTOCOL[step.key]
                self.rig.details.clear()
                self.rig.checks.clear()
                self.assertAlmostEqual(step.secs(self.rig.control), expected.secs)
                self.assertEqual(self.changes(step), expected.changes)
                self.assertEqual(self.details(), expected.details)
                checks = self.rig.checks.values()
                self.assertEqual([(c.name, c.unit, c.limit, c.bound) for c in checks], expected.checks)
                self.assertEqual(step.title, expected.title)

    def test_seconds_left(self) -> None:
        """Are counted down, each one in its turn."""
        step = next(step for step in steps_for(self.rig.recipe) if step.key == "rinse_lye")
        self.changes(step)
        secs = [int(text.split()[-2]) for text in self.rig.details]
        self.assertEqual(secs, [s for s in (5, 4, 3, 2, 1, 3, 2, 1) for _ in range(10)])

    def test_bounds(self) -> None:
        """The words of a record."""
        self.assertEqual((AT_LEAST, AT_MOST, BELOW), ("mindestens", "höchstens", "unter"))
        self.assertEqual(Check("", 0.0, "").bound, "Grenze")


if __name__ == "__main__":
    unittest.main()
