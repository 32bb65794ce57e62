"""The backend in a process of its own, which is killed at one moment of a run."""

# pylint: disable=protected-access  # tests look inside

import os
import signal
import unittest
from collections.abc import Callable
from pathlib import Path
from typing import Any, Final
from unittest.mock import patch

from brovik.auto import AutoEnum
from controller.backend import Backend
from controller.hardware_choice import choose_hardware
from controller.run_archive import RunArchive
from logbook.writer import LogbookWriter

#: More steps of time than a run has.
MOST_STEPS = 10_000


def kill(*_arguments: object) -> None:
    """What a power cut does to the program, seen from the file."""
    os.kill(os.getpid(), signal.SIGKILL)


def killing(function: Callable[..., Any]) -> Callable[..., Any]:
    """The function, and then the end."""

    def run(*arguments: Any) -> None:
        function(*arguments)
        kill()

    return run


def killing_at(number: int, function: Callable[..., Any]) -> Callable[..., Any]:
    """The function, and the end after it has been called so many times."""
    calls = [0]

    def run(*arguments: Any) -> None:
        function(*arguments)
        calls[0] += 1
        if calls[0] == number:
            kill()

    return run


#: By the name of the moment: what is called there.
MOMENTS: Final[dict[str, Any]] = {
    "in step 5": (RunArchive, "_keep_draft", killing_at(5, RunArchive._keep_draft)),
    "while the draft is written": (LogbookWriter, "save_draft", killing_at(5, LogbookWriter.save_draft)),
    "before the record": (RunArchive, "_append", kill),
    "while the record is written": (LogbookWriter, "append_run", killing(LogbookWriter.append_run)),
    "with the curves": (LogbookWriter, "remove_curves", kill),
    "after the record": (RunArchive, "_append", killing(RunArchive._append)),
}


class Child(unittest.TestCase):
    """Runs a whole cleaning, whose end it does not outlive."""

    def test_until_killed(self) -> None:
        """As the operator would, with the time that passes as fast as it can."""
        owner, name, replacement = MOMENTS[os.environ["KUBELOR_TEST_MOMENT"]]
        backend = Backend(Path(os.environ["BROVIK_CONFIG_DIR"]), 1.0, choose_hardware)
        with patch.object(owner, name, replacement):
            backend.operation.toggle(AutoEnum.Toggle)
            for _ in range(MOST_STEPS):
                backend.operation.advance(0.1)
            backend.stop()
        self.fail("the moment did not come")
