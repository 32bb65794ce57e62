"""Each call that the demo's backend makes for its file fails once, in turn: it is told, and nothing is lost.

KUBELOR_FAULTS_EVERY says how many calls to go on to the next one; 1 takes all of them.
"""

import copy
import os
import shutil
import unittest
from collections import Counter
from collections.abc import Iterator
from pathlib import Path
from typing import Any, Final

import layer
from child import Child, Tell
from folders import new_folder
from journey import Journey, enter, first_life, round_trip
from layer import Call, Way
from ledger import Ledger

EVERY: Final = int(os.environ.get("KUBELOR_FAULTS_EVERY", "31"))
LIMIT_SECS: Final = 20.0
#: The folder that the program keeps its things in.
FOLDER: Final = "kubelor-faults"


class StorageCallsTest(unittest.TestCase):
    """Lives of the backend in which one call fails."""

    def setUp(self) -> None:
        self.scratch = new_folder(self)
        self.directory = self.scratch / FOLDER
        self.log = self.scratch / "calls"
        self.silent: Counter[str] = Counter()
        self.lives = 0

    def test_new_file(self) -> None:
        """The first start of a machine."""
        self.each_call(None, Ledger())

    def test_used_file(self) -> None:
        """There are charts, runs and settings, and a run was interrupted."""
        used, ledger = self.scratch / "used", Ledger()
        told = self.live(lambda tell: first_life(Journey(used, tell)))
        enter(ledger, told)
        ledger.judge(used)
        self.each_call(used, ledger)

    def each_call(self, used: Path | None, ledger: Ledger) -> None:
        """Lives that begin with a copy of that folder, if there is one."""
        for way in (Way.BROKEN, Way.REFUSED):
            self.life(used, copy.deepcopy(ledger), 0, way)
            number = len(layer.read_calls(self.log))
            self.assertGreater(number, 200)
            for at in range(1 + way, number + 1, EVERY):
                with self.subTest(way=way.name, at=at):
                    self.life(used, copy.deepcopy(ledger), at, way)
        print(
            f"{self.lives} lives; without a consequence, and nothing told: {dict(self.silent.most_common())}"
        )

    def life(self, used: Path | None, ledger: Ledger, at: int, way: Way) -> None:
        """A life in which that call fails, and the next one."""
        shutil.rmtree(self.directory, ignore_errors=True)
        if used is not None:
            shutil.copytree(used, self.directory)
        self.log.unlink(missing_ok=True)
        told = self.live(lambda tell: self.fail_at(at, way, tell))
        self.lives += 1
        # A life that is faster or slower than the first one may have fewer calls.
        failed = next(self.failed(), None)
        enter(ledger, told)
        try:
            ledger.judge(self.directory)
        except AssertionError as error:
            raise AssertionError(f"{failed}: {error}; told {told[-1]}") from None
        if failed is not None and not told[-1]["notices"]:
            self.silent[failed.name] += 1

    def fail_at(self, at: int, way: Way, tell: Tell) -> None:
        """What happens in the child."""
        layer.begin(FOLDER, at=at, way=way, log=self.log)
        journey = Journey(self.directory, tell)
        round_trip(journey)
        layer.end()
        tell({"notices": journey.notices()})

    def live(self, life: Any) -> list[Any]:
        """Has a life of the backend lived to its end. What it has told."""
        child = Child(life)
        code = child.wait(LIMIT_SECS)
        if code is None:
            child.kill()
        self.assertEqual(code, 0, [*map(str, self.failed()), *child.told])
        return child.told

    def failed(self) -> Iterator[Call]:
        """The calls that were made to fail."""
        return (call for call in layer.read_calls(self.log) if call.error)


if __name__ == "__main__":
    unittest.main(verbosity=2)
