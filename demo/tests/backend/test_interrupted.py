"""A run that was interrupted, and the question at the next start."""

import unittest
from contextlib import closing

from brovik.auto import Auto, AutoEnum, ProgressColor
from brovik.gui import Gui, GuiEnum
from brovik.sensor import SensorEnum

from demo_support import RunningCase, SteppedCase
import controller
from controller.storage import RUN, Change, Storage
from logbook.place import FILE_NAME

NOTE = {"step": "acid", "lengthening": 1.0, "steam": False}


class NotedCase(SteppedCase):
    """A file with the note of a run."""

    def note(self, **values: object) -> None:
        """Leaves a note as an interrupted run does."""
        with closing(Storage(self.directory / FILE_NAME)) as storage:
            storage.apply([Change(RUN, {**NOTE, **values}, replace=True)])

    def noted(self) -> dict[str, object]:
        """The note in the file, once the backend has stopped."""
        with closing(Storage(self.directory / FILE_NAME)) as storage:
            return storage.read(RUN)


class NoteTest(NotedCase):
    """What the run leaves in the file."""

    def test_end_of_the_program_during_a_run(self) -> None:
        """Leaves the step and the recipe."""
        self.configure(has_steam_valve=True)
        self.make()
        self.operation.toggle(AutoEnum.Toggle)
        self.run_until(lambda: "Reinigen mit Säure" in Gui.status)
        self.backend.stop()
        self.assertEqual(self.noted(), {**NOTE, "steam": True})

    def test_every_other_end(self) -> None:
        """Leaves nothing: finished, failed, aborted."""
        self.make()
        self.operation.toggle(AutoEnum.Toggle)
        self.run_until(lambda: not Auto.active)
        self.backend.stop()
        self.assertEqual(self.noted(), {})
        for end in (lambda: self.operation.toggle(AutoEnum.Toggle), self._fail):
            self.make()
            self.operation.toggle(AutoEnum.Toggle)
            self.operation.advance(0.1)
            end()
            self.backend.stop()
            self.assertEqual(self.noted(), {})

    def _fail(self) -> None:
        self.simulated.plant.level_override = False
        self.run_until(lambda: not Auto.active)
        self.assertEqual(Auto.progress_color, ProgressColor.Error)


class QuestionTest(NotedCase):
    """Asked and answered on the machine's thread."""

    def offer(self) -> None:
        """What `Ready` has the machine thread do."""
        self.make()
        note = self.backend._note  # pylint: disable=protected-access
        assert note is not None
        self.operation.offer_to_continue(note)

    def test_text(self) -> None:
        """A positive id, German, with the step's name."""
        self.note()
        self.offer()
        ((title, text, options),) = self.signals("question")
        self.assertEqual(title, "Automatikbetrieb unterbrochen")
        self.assertEqual(text, "Ein Lauf wurde im Schritt „Reinigen mit Säure“ unterbrochen. Fortsetzen?")
        self.assertEqual(options, {"id": 1, "yes": "Fortsetzen", "no": "Verwerfen", "category": "warning"})

    def test_yes(self) -> None:
        """Goes on at the interrupted step, with the recipe of the interrupted run."""
        self.note(lengthening=2.0)
        self.offer()
        self.operation.questions.take({"1": {"a": True}})
        self.operation.advance(0.1)
        self.assertEqual(Gui.status, "Schritt 7 von 11: Reinigen mit Säure")
        self.assertGreater(Auto.progress, 40)
        self.assertEqual((Auto.intense_cleaning, Auto.intense_factor), (True, 2.0))
        self.operation.questions.take({"1": {"a": True}, "current": None})
        self.run_until(lambda: not Auto.active)
        self.assertEqual(Auto.progress_color, ProgressColor.Success)
        self.backend.stop()
        self.assertEqual(self.noted(), {})

    def test_no(self) -> None:
        """Nothing starts, and the note is gone."""
        self.note()
        self.offer()
        self.operation.questions.take({"1": {"a": False}})
        self.assertFalse(Auto.active)
        self.backend.stop()
        self.assertEqual(self.noted(), {})

    def test_left_open(self) -> None:
        """Without an answer it is asked again at the next start."""
        self.note()
        self.offer()
        self.backend.stop()
        self.assertEqual(self.noted(), NOTE)

    def test_overtaken_by_a_press(self) -> None:
        """A new run closes the question, and its answer does nothing any more."""
        self.note()
        self.offer()
        self.operation.toggle(AutoEnum.Toggle)
        self.operation.questions.take({"1": {"a": False}, "current": None})
        self.operation.advance(0.1)
        self.assertIn("Schritt 1 von 11", Gui.status)
        self.backend.stop()
        self.assertEqual(self.noted()["step"], "leak_test")

    def test_overtaken_before_the_screens_were_up(self) -> None:
        """A run that was started at the machine's own button is not asked about, and keeps its note."""
        self.note()
        self.make()
        self.operation.change_input(SensorEnum.Start, True)
        self.operation.advance(0.1)
        note = self.backend._note  # pylint: disable=protected-access
        assert note is not None
        self.operation.offer_to_continue(note)
        self.assertEqual(self.signals("question"), [])
        self.backend.stop()
        self.assertEqual(self.noted()["step"], "leak_test")

    def test_a_step_that_this_machine_has_not(self) -> None:
        """Is not offered, and forgotten."""
        for step in ("steam", "circuit_hot", "unheard of", ""):
            with self.subTest(step):
                self.note(step=step)
                self.offer()
                self.assertEqual(self.signals("question"), [])
                self.backend.stop()
                self.assertEqual(self.noted(), {})

    def test_valve_that_has_been_taken_out(self) -> None:
        """The run goes on without the step, and is counted as the pages count it."""
        self.note(steam=True)
        self.offer()
        self.operation.questions.take({"1": {"a": True}})
        self.operation.advance(0.1)
        self.assertEqual(Gui.status, "Schritt 7 von 11: Reinigen mit Säure")
        self.backend.stop()
        self.note(step="steam", steam=True)
        self.offer()
        self.assertEqual(len(self.signals("question")), 1)


class ReadyTest(NotedCase, RunningCase):
    """Through the entry functions."""

    def test_question_comes_with_the_screens_and_once(self) -> None:
        """Not before `Ready`, for nobody would see it; the answer is a report of the dialogs."""
        self.note()
        self.start(factor=100)
        self.handled()
        self.assertEqual(self.signals("question"), [])
        for _ in range(2):
            controller.gui_value_from_cpp(GuiEnum.Ready, None)
        self.handled()
        self.assertEqual(len(self.signals("question")), 1)
        controller.gui_value_from_cpp(GuiEnum.DialogData, {"current": [1.0, None]})
        controller.gui_value_from_cpp(GuiEnum.DialogData, {"1": {"a": True}})
        controller.gui_value_from_cpp(GuiEnum.DialogData, {"1": {"a": True}, "current": None})
        self.until(lambda: Gui.status.endswith("Reinigen mit Säure"), "run")


if __name__ == "__main__":
    unittest.main()
