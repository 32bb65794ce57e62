"""The power fails at any moment: what was acknowledged is there, and nothing is there by halves.

KUBELOR_FAULTS_MIXTURES says how many mixtures of what was and what was not on the disk are tried after an
action of a trace, KUBELOR_FAULTS_EVERY_CUT how many actions to go on to the next cut; 1 takes all of them.
"""

import copy
import json
import os
import random
import shutil
import unittest
from pathlib import Path
from typing import Any, Final

import layer
from child import Child, Tell
from disk import Action, Disk, read_trace
from folders import new_folder
from journey import Journey, enter, first_life, round_trip
from ledger import Ledger
from program import CHOSEN, GEOMETRY, SETTINGS_FOLDER, ProgramCase

MIXTURES: Final = int(os.environ.get("KUBELOR_FAULTS_MIXTURES", "2"))
EVERY: Final = int(os.environ.get("KUBELOR_FAULTS_EVERY_CUT", "13"))
SEED: Final = int(os.environ.get("KUBELOR_FAULTS_SEED", "1"))
LIMIT_SECS: Final = 60.0
FOLDER: Final = "kubelor-faults"


class PowerCutTest(unittest.TestCase):
    """The trace of two lives of the backend, cut off anywhere."""

    def setUp(self) -> None:
        self.scratch = new_folder(self)
        self.directory = self.scratch / FOLDER
        self.trace = self.scratch / "trace"

    def test_storage(self) -> None:
        """The first start of a machine, a run that is interrupted, another start."""
        actions = self.recorded()
        chance = random.Random(SEED)
        disk, ledger, cuts, states = Disk(), Ledger(), 0, set()
        for number, action in enumerate(actions):
            if action.name == "mark":
                enter(ledger, [json.loads(action.words[0])])
                continue
            disk.apply(action)
            if number % EVERY:
                continue
            cuts += 1
            for state in disk.states(chance, MIXTURES):
                left = {Path(path).name: content for path, content in state.items()}
                key = hash((str(ledger), tuple(sorted(left.items()))))
                if key not in states:
                    states.add(key)
                    with self.subTest(action=number, name=action.name, words=action.words):
                        self.judge(left, copy.deepcopy(ledger))
        print(f"{len(actions)} actions, {cuts} cuts, {len(states)} different states")

    def recorded(self) -> list[Action]:
        """What two lives do with the files."""
        for life in (first_life, round_trip):
            child = Child(lambda _: self.live(life))
            self.assertEqual(child.wait(LIMIT_SECS), 0)
        actions = read_trace(self.trace)
        self.assertGreater(sum(action.name == "sync" for action in actions), 5)
        return actions

    def live(self, life: Any) -> None:
        """A life of the backend, traced."""
        layer.begin(FOLDER, trace=self.trace)
        tell: Tell = lambda line: layer.mark(json.dumps(line))
        life(Journey(self.directory, tell))
        layer.end()

    def judge(self, left: dict[str, bytes], ledger: Ledger) -> None:
        """The program starts with what is left."""
        shutil.rmtree(self.directory, ignore_errors=True)
        self.directory.mkdir()
        for name, content in left.items():
            if not name.endswith("-shm"):  # That one lives in memory.
                (self.directory / name).write_bytes(content)
        ledger.judge(self.directory)


class SettingsFileTest(ProgramCase):
    """The trace of a run of the program that keeps its window, cut off anywhere."""

    def test_settings_file(self) -> None:
        """Of what is left, the program reads what was chosen, and has nothing to complain of."""
        trace = self.folder / "trace"
        self.store(CHOSEN)
        content = self.settings.read_bytes()
        self.run_program(SETTINGS_FOLDER, trace=trace)
        actions, disk = read_trace(trace), Disk()
        self.assertTrue(any(action.name in ("rename", "link") for action in actions))
        disk.begin_with(str(self.settings), content)
        chance, states = random.Random(SEED), set()
        for action in actions:
            disk.apply(action)
            for state in disk.states(chance, MIXTURES):
                states.add(state.get(str(self.settings), b""))
        for left in sorted(states):
            with self.subTest(left):
                self.settings.write_bytes(left)
                self.assertIn(self.stored().keys(), (CHOSEN.keys(), CHOSEN.keys() | GEOMETRY))
                self.assertEqual(self.stored()["dark"], "false")
                self.assertEqual(self.run_program(SETTINGS_FOLDER).complaints, [])
        print(f"{len(actions)} actions, {len(states)} different settings files")


if __name__ == "__main__":
    unittest.main(verbosity=2)
