"""The small units: values, scales, heating, interlocks, questions, the note of a run."""

import math
import unittest
from itertools import count, product
from typing import TYPE_CHECKING, Any

from controller.dialogs import DialogId, Questions
from controller.interrupted import NO_RUN, RunNote
from controller.process import heating, interlocks, scaling
from controller.process.hardware import PUMP_FLOW, Readings
from controller.process.outputs import Output
from controller.process.recipe import Electrolyte, Equipment
from controller.values import Value, fitting

if TYPE_CHECKING:
    from brovik.records import QuestionOptions


class FittingTest(unittest.TestCase):
    """Values against the type of a key."""

    def test_fits(self) -> None:
        """Numbers of screens and JSON serve as int and float."""
        rows: list[tuple[object, Value, Value]] = [
            (25.0, 5, 25),
            (7, 3.0, 7.0),
            (0.5, 3.0, 0.5),
            (True, False, True),
            ("Säure 3", "", "Säure 3"),
        ]
        for value, like, expected in rows:
            with self.subTest(value=value, like=like):
                result = fitting(value, like)
                self.assertEqual((result, type(result)), (expected, type(like)))

    def test_refused(self) -> None:
        """Everything else is not meant."""
        rows: list[tuple[object, Value]] = [
            (7.5, 5),
            (-1e300, 5),
            (2**31, 5),
            (True, 5),
            (False, 1.0),
            (1, True),
            (0.0, False),
            ("5", 5),
            (5, "x"),
            (None, 5),
            ([5], 5),
            ({}, ""),
            (math.nan, 1.0),
            (math.inf, 1.0),
            (-math.inf, 1),
        ]
        for value, like in rows:
            with self.subTest(value=value, like=like):
                self.assertRaises(ValueError, fitting, value, like)


class ScaleTest(unittest.TestCase):
    """Analogue inputs."""

    def test_known_points(self) -> None:
        """As the sensors' sheets have them."""
        for scale, value, percent in (
            (scaling.SMC_PSE564_02, 0.0, 20.0),
            (scaling.SMC_PSE564_02, 5.0, 100.0),
            (scaling.GEMS_3500, 6.0, 100.0),
            (scaling.SELI_SLI_03, 0.0, 20.0),
            (scaling.SELI_SLI_03, 100.0, 100.0),
        ):
            with self.subTest(scale=scale, value=value):
                self.assertAlmostEqual(scale.percent(value), percent)
                self.assertAlmostEqual(scale.value(percent), value)

    def test_stays_in_range(self) -> None:
        """An input shows no more than it can."""
        self.assertEqual(scaling.SMC_PSE564_02.percent(6.0), 100.0)
        self.assertEqual(scaling.GEMS_3500.percent(-1.0), 0.0)


class HeatingTest(unittest.TestCase):
    """The thermostat."""

    def test_hysteresis(self) -> None:
        """Between the limits the heater stays as it is."""
        for temperature, on, wanted in (
            (57.9, False, True),
            (58.0, False, False),
            (60.0, True, True),
            (60.0, False, False),
            (62.0, True, False),
        ):
            with self.subTest(temperature=temperature, on=on):
                self.assertEqual(heating.heater_wanted(temperature, on), wanted)


class InterlocksTest(unittest.TestCase):
    """What may not be touched."""

    def test_everything_while_a_process_runs(self) -> None:
        """The process alone switches."""
        self.assertEqual(interlocks.blocked(frozenset(), running=True), frozenset(Output))

    def test_nothing_by_itself(self) -> None:
        """All off, all free."""
        self.assertEqual(interlocks.blocked(frozenset(), running=False), frozenset())

    def test_lye_and_acid(self) -> None:
        """Each blocks all of the other, and nothing of its own."""
        lye = {Output.MV_LAUGE_IN, Output.MV_LAUGE_OUT}
        acid = {Output.MV_SAURE_IN, Output.MV_SAURE_OUT}
        for mine, other in ((lye, acid), (acid, lye)):
            for output in mine:
                blocked = interlocks.blocked({output}, running=False)
                self.assertLessEqual(other, blocked)
                self.assertFalse(mine & blocked)

    def test_mutual(self) -> None:
        """What A blocks, blocks A."""
        for one, other in product(Output, Output):
            self.assertEqual(
                other in interlocks.blocked({one}, running=False),
                one in interlocks.blocked({other}, running=False),
            )


class NamesTest(unittest.TestCase):
    """What others know by its name, its number or its default."""

    def test_outputs(self) -> None:
        """Numbers are those of the host."""
        names = (
            "MV_LAUGE_IN MV_SAURE_IN MV_KALT MV_HEISS MV_KREIS MV_SAURE_OUT MV_LAUGE_OUT MV_LUFT MV_CO2 "
            "MV_KANAL PUMPE HEAT_1 MV_STEAM"
        )
        self.assertEqual({output.name: output.value for output in Output}, dict(zip(names.split(), count())))

    def test_baths(self) -> None:
        """As the screens have them."""
        self.assertEqual([electrolyte.value for electrolyte in Electrolyte], ["Lauge", "Säure"])

    def test_defaults(self) -> None:
        """A machine has a level switch and nothing more, and nobody holds its buttons."""
        equipment = Equipment()
        self.assertEqual(
            (equipment.legacy, equipment.steam_valve, equipment.steam_pressure, equipment.level_switch),
            (False, False, False, True),
        )
        readings = Readings(0.0, 0.0, 55.0, True)
        self.assertEqual((readings.start_pressed, readings.stop_pressed), (False, False))
        self.assertEqual(PUMP_FLOW, 1.0)


class QuestionsTest(unittest.TestCase):
    """Questions with positive ids and their answers."""

    def setUp(self) -> None:
        self.asked: "list[tuple[str, str, QuestionOptions]]" = []
        self.closed: list[int] = []
        self.answers: list[bool] = []
        self.questions = Questions(
            lambda title, text, options: self.asked.append((title, text, options)),
            self.closed.append,
        )

    def ask(self) -> None:
        """Opens the one question there is."""
        self.questions.ask(DialogId.CONTINUE_RUN, "T", "?", "ja", "nein", self.answers.append)

    def test_options(self) -> None:
        """The id is a plain positive int."""
        self.ask()
        options = self.asked[0][2]
        self.assertEqual(options, {"id": 1, "yes": "ja", "no": "nein", "category": "warning"})
        self.assertIs(type(options["id"]), int)

    def test_answers_once(self) -> None:
        """The report of the closing changes nothing any more."""
        for accepted in (True, False):
            self.answers.clear()
            self.ask()
            self.questions.take({"current": [1, None]})
            self.assertEqual(self.answers, [])
            self.questions.take({"1": {"a": accepted}})
            self.questions.take({"1": {"a": False}, "current": None})
            self.assertEqual(self.answers, [accepted])

    def test_closed_without_an_answer(self) -> None:
        """Counts as no."""
        self.ask()
        self.questions.take({"1": {"a": False}, "current": None})
        self.assertEqual(self.answers, [False])

    def test_withdrawn(self) -> None:
        """Closed, and the answer not heard."""
        self.ask()
        self.questions.withdraw(DialogId.CONTINUE_RUN)
        self.questions.take({"1": {"a": True}, "current": None})
        self.questions.withdraw(DialogId.CONTINUE_RUN)
        self.assertEqual((self.answers, self.closed), ([], [1]))

    def test_strange_reports(self) -> None:
        """Of other dialogs, and of none at all."""
        self.ask()
        reports: list[Any] = [
            None,
            True,
            [],
            "1",
            {},
            {"-1": {"a": True}},
            {"7": {"a": True}},
            {"x": {"a": True}},
            {"1": True},
            {"1": None},
            {"current": None},
        ]
        for report in reports:
            self.questions.take(report)
        self.assertEqual(self.answers, [])
        self.questions.take({"1": {}})
        self.assertEqual(self.answers, [False])


class RunNoteTest(unittest.TestCase):
    """The note of a run in progress."""

    def test_round_trip(self) -> None:
        """What was noted is read."""
        note = RunNote("lye", 3.0, True)
        self.assertEqual(RunNote.read(note.change().values), note)
        self.assertTrue(note.change().replace)

    def test_none(self) -> None:
        """No note, half a note, nonsense."""
        whole: dict[str, object] = {"step": "lye", "lengthening": 3.0, "steam": True}
        self.assertIsNone(RunNote.read(NO_RUN.values))
        for key in whole:
            self.assertIsNone(RunNote.read({k: v for k, v in whole.items() if k != key}))
            self.assertIsNone(RunNote.read({**whole, key: []}))


if __name__ == "__main__":
    unittest.main()
