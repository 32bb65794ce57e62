"""Compares the whole program with an empty window of the same style: start, memory, idle load.

Runs under a display; prints one JSON object.
"""

import json
import os
import re
import statistics
import subprocess
import sys
import tempfile
import time
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path

REPETITIONS = 5
SETTLE_SECONDS = 3.0
IDLE_SECONDS = 10.0
FRAME_LIMIT_SECONDS = 60.0
# A window that is not yet on the screen has frames, too, in which nothing is drawn.
DRAWN_LINE = re.compile(rb"time in renderer")
FRAME_LINE = re.compile(rb"[Ff]rame rendered")


@contextmanager
def started(command: list[str]) -> Iterator[tuple[subprocess.Popen[bytes], float]]:
    """Starts a program and yields it with the seconds until its first frame is on the screen."""
    with tempfile.TemporaryDirectory() as config:
        environment = os.environ | {"QSG_RENDER_TIMING": "1", "XDG_CONFIG_HOME": config}
        begin = time.monotonic()
        with subprocess.Popen(command, env=environment, stderr=subprocess.PIPE) as process:
            try:
                await_frame(process, begin + FRAME_LIMIT_SECONDS)
                yield process, time.monotonic() - begin
            finally:
                process.kill()


def await_frame(process: subprocess.Popen[bytes], latest: float) -> None:
    """Reads the log up to the first frame in which something was drawn."""
    assert process.stderr is not None
    drawn = False
    for line in process.stderr:
        drawn = drawn or DRAWN_LINE.search(line) is not None
        if drawn and FRAME_LINE.search(line):
            return
        if time.monotonic() > latest:
            raise TimeoutError("no frame")
    raise TimeoutError("no frame")


def resident_mib(pid: int) -> float:
    """Resident memory of a process, MiB."""
    status = Path(f"/proc/{pid}/status").read_text(encoding="ascii")
    match = re.search(r"VmRSS:\s+(\d+) kB", status)
    assert match is not None
    return int(match.group(1)) / 1024


def cpu_seconds(pid: int) -> float:
    """Processor time of a process so far, seconds."""
    fields = Path(f"/proc/{pid}/stat").read_text(encoding="utf-8").rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def drain(process: subprocess.Popen[bytes]) -> None:
    """Keeps reading the log, so that the program never waits for its reader."""
    assert process.stderr is not None
    os.set_blocking(process.stderr.fileno(), False)
    process.stderr.read()


def idle_percent(process: subprocess.Popen[bytes]) -> float:
    """Share of one core that the program takes while nothing happens."""
    before, begin = cpu_seconds(process.pid), time.monotonic()
    while time.monotonic() - begin < IDLE_SECONDS:
        drain(process)
        time.sleep(0.5)
    return 100 * (cpu_seconds(process.pid) - before) / (time.monotonic() - begin)


def measured(command: list[str]) -> dict[str, float]:
    """Medians of one program."""
    with started(command):
        pass  # compiles what is compiled once
    frames, processor, memory = [], [], []
    for _ in range(REPETITIONS):
        with started(command) as (process, seconds):
            frames.append(seconds)
            processor.append(cpu_seconds(process.pid))
            time.sleep(SETTLE_SECONDS)
            drain(process)
            memory.append(resident_mib(process.pid))
    with started(command) as (process, _seconds):
        time.sleep(SETTLE_SECONDS)
        idle = idle_percent(process)
    return {
        "first_frame_s": statistics.median(frames),
        "first_frame_cpu_s": statistics.median(processor),
        "resident_mib": statistics.median(memory),
        "idle_percent": idle,
    }


def main() -> None:
    """Measures the programs named on the command line as NAME=PATH."""
    programs = dict(argument.split("=", 1) for argument in sys.argv[1:])
    with tempfile.TemporaryDirectory() as compiled:
        # Python's modules are compiled, as those of a package are.
        os.environ |= {"PYTHONDONTWRITEBYTECODE": "", "PYTHONPYCACHEPREFIX": compiled}
        print(json.dumps({name: measured([path]) for name, path in programs.items()}))


if __name__ == "__main__":
    main()
