"""Measures kubelor-bericht on a year of runs: the whole process, from its start to its end.

reports.py [RUNS]. Needs neither a build nor a display. Prints a table; the file is made anew and goes again.
"""

import math
import os
import resource
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

DEMO = Path(__file__).resolve().parents[1] / "demo"
sys.path.insert(0, str(DEMO))
sys.dont_write_bytecode = True

# After the line that lets Python find them: hence the silenced checks of the order.
from logbook.curves import Curves  # noqa: E402  # pylint: disable=wrong-import-position
from logbook.records import (  # noqa: E402  # pylint: disable=wrong-import-position
    ParameterRecord,
    RangeRecord,
    RunRecord,
    StepRecord,
    timestamp,
)
from logbook.writer import LogbookWriter  # noqa: E402  # pylint: disable=wrong-import-position

TOOL = DEMO / "bericht" / "kubelor-bericht"
RUNS_OF_A_YEAR = 7300
STEPS = 16
STEP_SECS = 22.0
REPEATS = 5
LONG = 300_000  # points of each of the two measured lines


def record() -> RunRecord:
    """A run with as much in it as one of the machine has."""
    ranges = tuple(
        RangeRecord(name, unit, 0.125, 41.5) for name, unit in (("Druck", "bar"), ("Leitwert", "mS/cm"))
    )
    steps = tuple(
        StepRecord(
            n, f"step_{n}", f"Schritt {n} der Reinigung", timestamp(), timestamp(), a, b, "done", ranges
        )
        for n, a, b in ((n, (n - 1) * STEP_SECS, n * STEP_SECS) for n in range(1, STEPS + 1))
    )
    parameters = tuple(ParameterRecord(f"key_{n}", f"Parameter {n}", n, n % 40, "s") for n in range(60))
    return RunRecord(
        begun=timestamp(),
        ended=timestamp(),
        secs=STEPS * STEP_SECS,
        result="success",
        reason="Das Fass ist gereinigt und vorgespannt.",
        program="Automatikbetrieb",
        machine_version="_2024",
        program_version="1.0",
        backend_version="1.0",
        steps=steps,
        parameters=parameters,
    )


def curves(points: int) -> Curves:
    """Two measured lines with so many points each."""
    times = [STEPS * STEP_SECS * n / points for n in range(points)]
    return {
        "P": [(x, abs(math.sin(x))) for x in times],
        "Lw": [(x, 40 * abs(math.sin(x / 7))) for x in times],
    }


def fill(path: Path, runs: int) -> None:
    """Makes the file; its last run has the long curves."""
    connection = sqlite3.connect(path)
    connection.execute("PRAGMA journal_mode = WAL")
    writer = LogbookWriter(connection)
    writer.prepare()
    run, usual, long = record(), curves(int(2 * STEPS * STEP_SECS)), curves(LONG)
    connection.execute("BEGIN")
    for number in range(1, runs + 1):
        writer.append_run(run, usual if number < runs else long)
    connection.commit()
    connection.close()


def seconds(*arguments: object) -> tuple[float, float]:
    """How long the tool takes by the clock, and of the processor: medians."""
    taken = [_once(*arguments) for _ in range(REPEATS)]
    return statistics.median(clock for clock, _ in taken), statistics.median(used for _, used in taken)


def _once(*arguments: object) -> tuple[float, float]:
    begun, used = time.perf_counter(), _used()
    command = [sys.executable, str(TOOL), *map(str, arguments)]
    subprocess.run(command, stdout=subprocess.DEVNULL, check=True)
    return time.perf_counter() - begun, _used() - used


def _used() -> float:
    """What all processes that have ended have used of the processor."""
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def main() -> None:
    """Measures and prints."""
    runs = int(sys.argv[1]) if len(sys.argv) > 1 else RUNS_OF_A_YEAR
    with tempfile.TemporaryDirectory() as directory:
        path = Path(directory) / "kubelor-demo.sqlite3"
        fill(path, runs)
        os.environ["BROVIK_CONFIG_DIR"] = directory
        print(f"{runs} runs, {path.stat().st_size / 2**20:.0f} MiB")
        print("| Command | by the clock, s | of the processor, s |\n|---|---|---|")
        rows: list[tuple[str, tuple[object, ...]]] = [
            ("list", ("list",)),
            ("list, the errors", ("list", "--result", "error")),
            ("PDF", ("export", runs - 1, "-o", Path(directory) / "usual.pdf")),
            (f"PDF, {LONG:,} points a line", ("export", runs, "-o", Path(directory) / "long.pdf")),
            ("HTML", ("export", runs - 1, "--format", "html", "-o", Path(directory) / "usual.html")),
            ("verify", ("verify",)),
        ]
        for name, arguments in rows:
            clock, used = seconds(*arguments)
            print(f"| {name} | {clock:.2f} | {used:.2f} |")
        sizes = [
            f"{name} {(Path(directory) / name).stat().st_size // 1024} KiB"
            for name in ("usual.pdf", "long.pdf")
        ]
        print(", ".join(sizes))


main()
