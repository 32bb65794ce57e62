"""Counters of the machine, and the maintenance that goes by them."""

import unittest
from datetime import date, timedelta

from controller.journal import JOURNAL
from controller.maintenance_plans import DAYS, PLANS, Plan
from controller.process.hardware import PUMP_FLOW
from controller.process.outputs import Output
from controller.process.usage import BARRELS, UNITS, Liquid, Usage, hours, litres, switchings
from controller.storage import MAINTENANCE, Storage, StorageWriter
from controller.upkeep import Upkeep
from logbook.records import JournalEntry

LYE = frozenset({Output.MV_LAUGE_IN, Output.PUMPE, Output.MV_LAUGE_OUT})


class UsageTest(unittest.TestCase):
    """What is counted."""

    def setUp(self) -> None:
        self.usage = Usage({})

    def advance(self, secs: int, *on: Output) -> None:
        """Lets seconds pass in tenths."""
        for _ in range(secs * 10):
            self.usage.advance(0.1, frozenset(on))

    def test_outputs(self) -> None:
        """Hours of what is on, and each time that it went on."""
        self.advance(1800, Output.PUMPE)
        self.advance(1)
        self.advance(1800, Output.PUMPE)
        values = self.usage.values
        self.assertAlmostEqual(values[hours(Output.PUMPE)], 1.0)
        self.assertEqual(values[switchings(Output.PUMPE)], 2.0)
        self.assertEqual(values[hours(Output.MV_KALT)], 0.0)

    def test_liquids(self) -> None:
        """Flow with the pump alone, through whichever valve; two for the same water count once."""
        self.advance(10, Output.MV_LAUGE_IN)
        self.advance(20, *LYE)
        self.advance(30, Output.PUMPE, Output.MV_KALT, Output.MV_HEISS)
        values = self.usage.values
        self.assertAlmostEqual(values[litres(Liquid.LYE)], 20 * PUMP_FLOW)
        self.assertAlmostEqual(values[litres(Liquid.WATER)], 30 * PUMP_FLOW)
        self.assertEqual(values[litres(Liquid.ACID)], 0.0)

    def test_each_inlet(self) -> None:
        """Brings its own liquid."""
        for secs, valve in enumerate(
            (Output.MV_KALT, Output.MV_HEISS, Output.MV_LAUGE_IN, Output.MV_SAURE_IN), 1
        ):
            self.advance(secs, Output.PUMPE, valve)
        values = self.usage.values
        found = [values[litres(liquid)] for liquid in (Liquid.WATER, Liquid.LYE, Liquid.ACID)]
        for amount, secs in zip(found, (1 + 2, 3, 4)):
            self.assertAlmostEqual(amount, secs * PUMP_FLOW)

    def test_names(self) -> None:
        """A file finds its counters by them."""
        self.assertEqual((BARRELS, UNITS[BARRELS]), ("Fässer", ""))
        for name, unit in (
            ("PUMPE, Betriebsstunden", "h"),
            ("PUMPE, Schaltungen", ""),
            ("Wasser, geschätzt", "l"),
            ("Lauge, geschätzt", "l"),
            ("Säure, geschätzt", "l"),
        ):
            self.assertEqual(UNITS[name], unit)

    def test_goes_on(self) -> None:
        """From what was counted before; names that nobody knows are left alone."""
        usage = Usage({BARRELS: 7.0, hours(Output.PUMPE): 2.5, "?": 1.0})
        usage.barrel_cleaned()
        self.assertEqual((usage.values[BARRELS], usage.values[hours(Output.PUMPE)]), (8.0, 2.5))
        self.assertEqual(usage.values.keys(), UNITS.keys())

    def test_read_twice(self) -> None:
        """Reading counts nothing a second time."""
        self.advance(36, Output.PUMPE, Output.MV_KALT)
        self.assertEqual(self.usage.values, self.usage.values)

    def test_idle(self) -> None:
        """While nothing is on."""
        self.assertTrue(self.usage.idle)
        self.advance(1, Output.MV_KALT)
        self.assertFalse(self.usage.idle)


class UpkeepTest(unittest.TestCase):
    """Plans by counters and by the calendar."""

    PLANS = (Plan("seal", "Prüfen.", BARRELS, 10.0), Plan("hoses", "Ansehen.", DAYS, 90.0))

    def setUp(self) -> None:
        self.storage = Storage(":memory:")
        self.writer = StorageWriter(self.storage, self.fail)
        self.counters = {BARRELS: 100.0}
        self.today = date(2026, 1, 1)
        self.journal: list[JournalEntry] = []
        JOURNAL.open(self.journal.append)
        self.addCleanup(JOURNAL.close)

    def make(self, **stored: object) -> Upkeep:
        """The maintenance, given what is stored."""
        return Upkeep(stored, lambda: self.counters, self.writer, self.PLANS, lambda: self.today)

    def stored(self) -> dict[str, object]:
        """What has been stored. Nothing can be written after that."""
        found: dict[str, object] = {}
        self.writer.perform(lambda storage: found.update(storage.read(MAINTENANCE)))
        self.writer.stop()
        return found

    def test_begins_now(self) -> None:
        """A plan that is new counts from its first program on, and is due in its time."""
        upkeep = self.make()
        self.assertEqual(upkeep.due(), [])
        self.counters[BARRELS] = 109.0
        self.assertEqual(upkeep.due(), [])
        self.counters[BARRELS] = 110.0
        self.today += timedelta(90)
        self.assertEqual(upkeep.due(), list(self.PLANS))
        self.assertEqual(self.stored(), {"seal": 100.0, "hoses": float(date(2026, 1, 1).toordinal())})

    def test_done(self) -> None:
        """Counts anew, also for the next program; the journal has it."""
        upkeep = self.make(seal=50.0, hoses=float(self.today.toordinal()))
        plan = upkeep.due()[0]
        upkeep.answer(plan, True)
        self.assertEqual(upkeep.due(), [])
        self.assertEqual(self.stored(), {"seal": 100.0})
        self.assertEqual(len(self.journal), 1)
        entry = self.journal[0]
        self.assertEqual((entry.kind, entry.subject, entry.text), ("maintenance", "Prüfen.", "Erledigt"))

    def test_later(self) -> None:
        """Stays due."""
        upkeep = self.make(seal=50.0, hoses=float(self.today.toordinal()))
        plan = upkeep.due()[0]
        upkeep.answer(plan, False)
        self.assertEqual(upkeep.due(), [plan])
        self.assertEqual(self.stored(), {})
        self.assertEqual(self.journal[0].text, "Später")

    def test_clock_put_right(self) -> None:
        """What was worked off under a clock that was years ahead is due in its time all the same."""
        right = self.today
        self.today = date(2036, 1, 1)
        upkeep = self.make(seal=100.0, hoses=float(right.toordinal()))
        upkeep.answer(upkeep.due()[0], True)
        self.today = right
        self.assertEqual(upkeep.due(), [])
        self.today = right + timedelta(89)
        self.assertEqual(upkeep.due(), [])
        self.today = right + timedelta(90)
        self.assertEqual([plan.key for plan in upkeep.due()], ["hoses"])
        self.assertEqual(self.stored(), {"hoses": float(right.toordinal())})

    def test_nonsense(self) -> None:
        """What is stored and no reading counts as new."""
        strange: tuple[object, ...] = ("viel", None, True, float("nan"), [])
        for value in strange:
            self.assertEqual(self.make(seal=value, hoses=value).due(), [])

    def test_plans(self) -> None:
        """Those of the machine go by what is counted, under keys of their own."""
        self.assertEqual(len({plan.key for plan in PLANS}), len(PLANS))
        for plan in PLANS:
            self.assertIn(plan.counter, {*UNITS, DAYS})
            self.assertGreater(plan.every, 0.0)


if __name__ == "__main__":
    unittest.main()
