"""A backend that means harm, while pages change and the window is closed at any moment.

KUBELOR_FAULTS_CLOSINGS says how often it is closed, KUBELOR_FAULTS_HOSTILE_SECS how long all of it lasts.
"""

import json
import os
import random
import re
import subprocess
import tempfile
import unittest
from pathlib import Path
from typing import Any, Final

CLOSINGS: Final = int(os.environ.get("KUBELOR_FAULTS_CLOSINGS", "3"))
SECS: Final = float(os.environ.get("KUBELOR_FAULTS_HOSTILE_SECS", "6"))
SEED: Final = int(os.environ.get("KUBELOR_FAULTS_SEED", "1"))
BACKEND: Final = Path(__file__).parent / "hostile"
#: Until the program has ended after its window has been closed.
LIMIT_SECS: Final = 120.0
#: Whoever does not answer for three quarters of that stands.
WATCHDOG_SECS: Final = 40
STANDS: Final = "Bleibt es dabei, startet der Dienst neu"
#: The longest time for which no press may get through. In the tests a machine may be busy with others.
LONGEST_PAUSE_MS: Final = int(os.environ.get("KUBELOR_FAULTS_LONGEST_PAUSE_MS", "30000"))
PAUSE: Final = re.compile(r"longest pause: (\d+) ms")


class HostileTest(unittest.TestCase):
    """Closings of the program."""

    def test_closings(self) -> None:
        """Nothing but TypeError comes back; nobody stands; the end is one in good order."""
        chance = random.Random(SEED)
        total: dict[str, int] = {}
        pauses: list[int] = []
        for number in range(CLOSINGS):
            with self.subTest(closing=number):
                secs = chance.uniform(0.0, 2 * SECS / CLOSINGS)
                pause, (attributes, *errors, counts) = self.close_after(secs, SEED + 100 * number)
                pauses.append(pause)
                self.assertLess(pause, LONGEST_PAUSE_MS)
                self.assertGreater(attributes["attributes"], 250)
                self.assertEqual(errors, [])
                total = {name: total.get(name, 0) + count for name, count in counts.items()}
        print(f"{CLOSINGS} closings, {total}, longest pause of each in ms: {sorted(pauses)}")

    def close_after(self, secs: float, seed: int) -> tuple[int, list[Any]]:
        """A run whose window is closed after that time: its longest pause, what its backend has reported."""
        with tempfile.TemporaryDirectory() as name:
            folder = Path(name)
            with (folder / "log").open("wb") as log:
                code = self.run_program(folder, secs, seed, log.fileno())
            lines = (folder / "log").read_text("utf-8", "replace").splitlines()
            self.assertEqual(code, 0, "\n".join(lines[-40:]))
            self.assertEqual([line for line in lines if STANDS in line], [])
            report = (folder / "report").read_text("utf-8").splitlines()
            found = [int(match[1]) for line in lines if (match := PAUSE.search(line))]
            return max(found, default=0), [json.loads(line) for line in report]

    @staticmethod
    def run_program(folder: Path, secs: float, seed: int, log: int) -> int:
        """The exit code of a run."""
        environment = os.environ | {
            "HOME": str(folder),
            "XDG_CONFIG_HOME": str(folder),
            "XDG_RUNTIME_DIR": str(folder),
            "PATH": "",  # No tool looks for other windows.
            "QT_QPA_PLATFORM": "offscreen",
            "QT_QUICK_BACKEND": "software",
            "NOTIFY_SOCKET": "@kubelor-nobody-listens",
            "WATCHDOG_USEC": str(WATCHDOG_SECS * 1_000_000),
            "RESTLESS_MS": str(round(secs * 1000)),
            "RESTLESS_BACKEND": str(BACKEND),
            "RESTLESS_SOCKET": str(folder / "raise.sock"),
            "HOSTILE_REPORT": str(folder / "report"),
            "HOSTILE_SEED": str(seed),
        }
        return subprocess.run(
            [os.environ["KUBELOR_RESTLESS"]],
            env=environment,
            stdin=subprocess.DEVNULL,
            stdout=log,
            stderr=log,
            timeout=secs + LIMIT_SECS,
            check=False,
        ).returncode


if __name__ == "__main__":
    unittest.main(verbosity=2)
