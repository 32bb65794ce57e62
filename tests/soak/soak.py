#!/usr/bin/python3
"""A long life of the demo machine: soak.py <folder> <simulated hours> [seed].

KUBELOR_DEMO is the program. From inside, KUBELOR_SCREEN_READER tells of its screens and KUBELOR_STALL_METER
measures its GUI thread.
"""

import os
import sys
import tempfile
from pathlib import Path
from typing import Final

SYSTEM_TESTS: Final = Path(__file__).parents[1] / "system"
sys.path.insert(0, str(SYSTEM_TESTS))

# pylint: disable=wrong-import-position  # they stand there
from support import panel
from support.automatic import START
from support.complaints import complaints
from support.desktop import Desktop

from picture import draw
from samples import Sampler, Subject, write_table
from unseen_operator import Operator
from verdict import DAY_HOURS, findings, growth

TIME_FACTOR: Final = 200
#: Between two samples, of the clock.
PERIOD_SECS: Final = 10.0


def soak(folder: Path, hours: float, seed: int) -> list[str]:
    """Has the operator work for so long. What is wrong, in words."""
    with tempfile.TemporaryDirectory() as name:
        configuration = Path(name)
        stalls = configuration / "stalls"
        # Tall enough for all buttons of the pages.
        panel.store_window(configuration, b"[window]\nwidth=800\nheight=1200\n")
        environment = {
            "XDG_CONFIG_HOME": name,
            "QT_QUICK_BACKEND": "software",
            "LD_PRELOAD": os.environ["KUBELOR_STALL_METER"],
            "KUBELOR_STALLS": str(stalls),
        }
        with panel.demo(TIME_FACTOR, **environment) as program:
            program.wait_until_shown(START)
            operator = Operator(program, seed)
            subject = Subject(program.process.pid, next(configuration.rglob("*.sqlite3")), stalls)
            with Sampler(subject, TIME_FACTOR, PERIOD_SECS) as sampler:
                while sampler.hours < hours:
                    operator.act()
            found = complaints(program)
        folder.mkdir(parents=True, exist_ok=True)
        write_table(sampler.samples, folder / "soak.csv")
        draw(sampler.samples, folder / "soak.svg")
        (folder / "stalls.txt").write_text(stalls.read_text("utf-8") if stalls.exists() else "", "utf-8")
        print(f"Seed {seed}, {sampler.hours:.1f} simulated hours. Done: {dict(operator.done)}")
        print(f"Missed: {dict(operator.missed)}")
        print(f"Memory after {DAY_HOURS:.0f} hours: {growth(sampler.samples):+.2f} MB in a day")
        longest = sorted(sampler.stalls(), key=lambda stall: stall.length)[-5:]
        print("Longest stalls:", *longest, sep="\n    ")
        done = operator.done.total()
        return findings(sampler.samples, sampler.stalls(), found, done, operator.missed.total())


def main() -> int:
    """Gives the exit code."""
    folder, hours, *seed = sys.argv[1:]
    with Desktop():
        found = soak(Path(folder), float(hours), int(seed[0]) if seed else 1)
    print("\n".join(["What does not hold:", *found] if found else ["All holds."]))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
