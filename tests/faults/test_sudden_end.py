"""SIGKILL at any moment: what was acknowledged is there at the next start, and nothing is there by halves.

KUBELOR_FAULTS_KILLS says how many, KUBELOR_FAULTS_PROGRAM_KILLS how many of the program itself.
"""

import os
import random
import signal
import unittest
from pathlib import Path
from typing import Any, Final

import layer
from child import Child, Tell
from folders import new_folder
from journey import Journey, enter, wander
from layer import Way
from ledger import Ledger, read
from program import CHOSEN, GEOMETRY, SETTINGS_FOLDER, ProgramCase

KILLS: Final = int(os.environ.get("KUBELOR_FAULTS_KILLS", "40"))
PROGRAM_KILLS: Final = int(os.environ.get("KUBELOR_FAULTS_PROGRAM_KILLS", "3"))
SEED: Final = int(os.environ.get("KUBELOR_FAULTS_SEED", "1"))
#: So long a life lasts at most, seconds. A start takes a tenth of one, a run a third.
LONGEST_SECS: Final = 0.7
#: So many calls it makes at most for its file. A start takes three hundred, the first one more.
MOST_CALLS: Final = 1200
#: Of the lives that end by the number of calls, which go by quickly at the moments that count.
BY_CALLS: Final = 0.7
LIMIT_SECS: Final = 60.0
#: After so many lives, a new file.
LIVES: Final = 25
FOLDER: Final = "kubelor-faults"
DEMO: Final = Path(__file__).parents[2] / "demo"


class SuddenEndTest(unittest.TestCase):
    """Lives of the backend that end when nobody has thought of it."""

    def test_kills(self) -> None:
        """Each life goes on with the file that the one before it has left."""
        chance = random.Random(SEED)
        acknowledged = 0
        for number in range(KILLS):
            if number % LIVES == 0:
                directory = new_folder(self) / FOLDER
                directory.mkdir()
                ledger = Ledger()
            with self.subTest(kill=number):
                told = self.live(directory, chance)
                enter(ledger, told)
                acknowledged += sum("done" in line for line in told)
                self.assertEqual([line for line in told if "failed" in line], [])
                ledger.judge(directory)
        print(f"{KILLS} kills, {acknowledged} acknowledged actions")

    def live(self, directory: Path, chance: random.Random) -> list[Any]:
        """A life that ends at some time, or at some call. What it has told."""
        by_calls = chance.random() < BY_CALLS
        last_call = chance.randint(1, MOST_CALLS) if by_calls else 0
        seed = chance.randrange(10**9)

        def life(tell: Tell) -> None:
            layer.begin(FOLDER, at=last_call, way=Way.KILLED)
            for _ in wander(Journey(directory, tell), random.Random(seed)):
                pass

        child = Child(life)
        code = child.wait(LIMIT_SECS if by_calls else chance.uniform(0.0, LONGEST_SECS))
        if code is None:
            self.assertFalse(by_calls, "the backend stands")
            code = child.kill()
        self.assertEqual(code, -signal.SIGKILL, "the backend ended by itself")
        return child.told


class ProgramEndTest(ProgramCase):
    """The program itself."""

    def test_with_the_demo_machine(self) -> None:
        """At any moment of its start or afterwards."""
        chance = random.Random(SEED)
        for number in range(PROGRAM_KILLS):
            with self.subTest(kill=number):
                self.assertIsNone(
                    self.kill_after(chance.uniform(0.3, 3.0), DEMO), "the program ended by itself"
                )
                if self.settings.parent.exists():
                    read(self.settings.parent)

    def test_while_the_window_is_kept(self) -> None:
        """The settings file is what it was or what it is to be."""
        chance = random.Random(SEED)
        self.store(CHOSEN)
        calls = len(self.run_program(SETTINGS_FOLDER).calls)
        for _ in range(PROGRAM_KILLS):
            self.store(CHOSEN)
            # The first calls only read.
            at = chance.randint(calls // 2, calls)
            with self.subTest(at=at):
                self.assertEqual(self.run_program(SETTINGS_FOLDER, at, Way.KILLED).code, -signal.SIGKILL)
                self.assertEqual(self.stored().get("dark"), "false")
                self.assertIn(self.stored().keys(), (CHOSEN.keys(), CHOSEN.keys() | GEOMETRY))
                self.assertEqual(self.run_program(SETTINGS_FOLDER).complaints, [])
                self.assertEqual(self.stored().keys(), CHOSEN.keys() | GEOMETRY)


if __name__ == "__main__":
    unittest.main(verbosity=2)
