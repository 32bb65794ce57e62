"""What is measured of the running program, again and again."""

import csv
import os
import threading
import time
from collections.abc import Iterable
from dataclasses import astuple, dataclass, fields
from pathlib import Path
from typing import Final

KIB: Final = 1024


@dataclass(frozen=True)
class Sample:
    """One line of the table. Memory is resident, sizes are in KiB."""

    hours: float  # simulated
    memory: int
    threads: int
    descriptors: int
    stall: int  # ms, the longest since the sample before
    database: int
    database_log: int


@dataclass(frozen=True)
class Stall:
    """For so long the GUI thread came to no timer; all in ms but the monotonic time of its end."""

    end: float
    length: int
    running: int
    waiting: int

    @property
    def own(self) -> int:
        """Without the time for which the processor did other things."""
        return self.length - self.waiting


def read_stalls(file: Path) -> list[Stall]:
    """All so far. A line that is being written does not count yet."""
    if not file.exists():
        return []
    lines = file.read_text("utf-8").split("\n")[:-1]
    return [Stall(float(end), *map(int, others)) for end, *others in map(str.split, lines)]


@dataclass(frozen=True)
class Subject:
    """The running program, its file, and the file of its stalls."""

    pid: int
    database: Path
    stalls: Path


class Sampler:
    """Takes samples on a thread of its own, as a context manager."""

    def __init__(self, subject: Subject, time_factor: float, period: float) -> None:
        self.samples: list[Sample] = []
        #: Monotonic.
        self.begun = time.monotonic()
        self._subject = subject
        self._time_factor = time_factor
        self._period = period
        self._ends = threading.Event()
        self._thread = threading.Thread(target=self._run, daemon=True)

    def __enter__(self) -> "Sampler":
        self._thread.start()
        return self

    def __exit__(self, *_error: object) -> None:
        self._ends.set()
        self._thread.join()

    @property
    def hours(self) -> float:
        """Simulated so far."""
        return (time.monotonic() - self.begun) * self._time_factor / 3600

    def stalls(self) -> list[Stall]:
        """Those since the beginning."""
        return [stall for stall in read_stalls(self._subject.stalls) if stall.end > self.begun]

    def _run(self) -> None:
        last = self.begun
        while not self._ends.wait(self._period):
            try:
                self.samples.append(self._sample(last))
            except OSError:
                return  # The program has ended.
            last = time.monotonic()

    def _sample(self, since: float) -> Sample:
        process = Path("/proc") / str(self._subject.pid)
        status = dict(line.split(":", 1) for line in (process / "status").read_text().splitlines())
        return Sample(
            hours=round(self.hours, 2),
            memory=int(status["VmRSS"].split()[0]),
            threads=int(status["Threads"]),
            descriptors=len(os.listdir(process / "fd")),
            stall=max((stall.length for stall in self.stalls() if stall.end > since), default=0),
            database=_kib(self._subject.database),
            database_log=_kib(self._subject.database.with_name(f"{self._subject.database.name}-wal")),
        )


def _kib(file: Path) -> int:
    return file.stat().st_size // KIB if file.exists() else 0


def write_table(samples: Iterable[Sample], file: Path) -> None:
    """As CSV, with a line of names."""
    with file.open("w", encoding="utf-8", newline="") as stream:
        writer = csv.writer(stream)
        writer.writerow([field.name for field in fields(Sample)])
        writer.writerows(map(astuple, samples))
