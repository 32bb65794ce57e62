"""The disk is full from some moment on: it is told, and nothing that was kept is lost.

KUBELOR_FAULTS_FILLS says how many moments are tried.
"""

import copy
import os
import random
import shutil
import unittest
from collections.abc import Callable
from typing import Any, Final

import layer
from child import Child, Tell
from folders import new_folder
from journey import Journey, enter, first_life, round_trip
from layer import Way
from ledger import Ledger

FILLS: Final = int(os.environ.get("KUBELOR_FAULTS_FILLS", "12"))
SEED: Final = int(os.environ.get("KUBELOR_FAULTS_SEED", "1"))
LIMIT_SECS: Final = 60.0
#: So many calls a life makes for its file, about.
MOST_CALLS: Final = 900
FOLDER: Final = "kubelor-faults"


class FullDiskTest(unittest.TestCase):
    """Lives of the backend on a disk that fills up; some of them find room again."""

    def setUp(self) -> None:
        self.scratch = new_folder(self)
        self.directory = self.scratch / FOLDER
        self.used = self.scratch / "used"
        self.ledger = Ledger()
        enter(self.ledger, self.live(lambda tell: first_life(Journey(self.used, tell))))
        self.ledger.judge(self.used)

    def test_fills(self) -> None:
        """Each begins with the file of a machine that has been in use."""
        chance = random.Random(SEED)
        refused = 0
        for number in range(FILLS):
            at, times = chance.randint(1, MOST_CALLS), chance.choice((0, 0, 50, 200))
            with self.subTest(number=number, at=at, times=times):
                shutil.rmtree(self.directory, ignore_errors=True)
                shutil.copytree(self.used, self.directory)
                ledger = copy.deepcopy(self.ledger)
                told = self.live(lambda tell: self.fill(at, times, tell))
                enter(ledger, told)
                ledger.judge(self.directory)
                failed = [line for line in told if "failed" in line]
                refused += len(failed)
                self.assertTrue(all(line["failed"] for line in failed))
                # Afterwards there is room, and the machine is in use as before.
                enter(ledger, self.live(lambda tell: round_trip(Journey(self.directory, tell))))
                ledger.judge(self.directory)
        print(f"{FILLS} full disks, {refused} actions that the operator was told had failed")

    def fill(self, at: int, times: int, tell: Tell) -> None:
        """A life whose disk is full from that call on, for so many calls."""
        layer.begin(FOLDER, at=at, times=times, way=Way.FULL)
        try:
            round_trip(Journey(self.directory, tell))
        finally:
            layer.end()

    def live(self, life: Callable[[Tell], None]) -> list[Any]:
        """Has a life of the backend lived to its end. What it has told."""
        child = Child(life)
        code = child.wait(LIMIT_SECS)
        if code is None:
            child.kill()
        self.assertEqual(code, 0, child.told)
        return child.told


if __name__ == "__main__":
    unittest.main(verbosity=2)
