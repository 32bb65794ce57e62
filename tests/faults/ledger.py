"""What a file has to have: all that was acknowledged, and nothing by halves."""

import hashlib
import sqlite3
from collections.abc import Callable, Iterable
from contextlib import closing
from dataclasses import dataclass, field, replace
from pathlib import Path
from typing import Any, Final, TypeAlias

from controller.saved_charts import SavedChart
from controller.storage import RUN, SETTINGS, open_storage
from logbook.place import FILE_NAME
from logbook.reader import open_logbook

BARRELS: Final = "Fässer"


@dataclass(frozen=True)
class Kept:
    """What is in a file."""

    settings: frozenset[tuple[str, object]] = frozenset()
    #: Names with a digest of all that there is of the chart.
    charts: frozenset[tuple[str, str]] = frozenset()
    runs: int = 0
    barrels: int = 0
    #: Whether there is a run in progress.
    draft: bool = False


#: What an action makes of it.
Step: TypeAlias = Callable[[Kept], Kept]


@dataclass
class Ledger:
    """What may be in the file, by what has been told of it."""

    possible: list[Kept] = field(default_factory=lambda: [Kept()])
    #: So many lines of the journal have been acknowledged.
    journal: int = 0
    #: Whether what is done now has to be in the file.
    keeps: bool = True
    _before: list[Kept] = field(default_factory=list)

    def begins(self) -> None:
        """A program starts. A run that was in progress, and that nobody can go on with, has a record then."""
        ended = [record(False)(kept) for kept in self.possible if kept.draft]
        self.possible = _different([*self.possible, *ended])

    def begun(self, step: Step) -> None:
        """From now on it may have been done or not."""
        self._before = self.possible
        self.possible = _different([*self._before, *map(step, self._before)])

    def done(self, step: Step) -> None:
        """It has been acknowledged."""
        self.possible = _different(map(step, self._before))

    def judge(self, directory: Path) -> Kept:
        """Looks at what is there. AssertionError if it is anything else."""
        kept, journal = read(directory)
        assert kept in self.possible, f"{kept} is none of {len(self.possible)}, such as {self.possible[-1]}"
        assert journal >= self.journal, f"{journal} of {self.journal} lines of the journal"
        self.possible = [kept]
        return kept


def _different(all_: Iterable[Kept]) -> list[Kept]:
    return list(dict.fromkeys(all_))


# What can be done.


def setting(key: str, value: object) -> Step:
    """A parameter is changed."""
    return lambda kept: replace(kept, settings=_without(kept.settings, key) | {(key, value)})


def chart(name: str, digest_: str) -> Step:
    """A chart is saved."""
    return lambda kept: replace(kept, charts=kept.charts | {(name, digest_)})


def rename(old: str, new: str) -> Step:
    """A chart gets another name."""
    return lambda kept: replace(
        kept, charts=frozenset((new if name == old else name, digest_) for name, digest_ in kept.charts)
    )


def delete(name: str) -> Step:
    """A chart is deleted."""
    return lambda kept: replace(kept, charts=_without(kept.charts, name))


def draft(kept: Kept) -> Kept:
    """A run has come to a step."""
    return replace(kept, draft=True)


def record(cleaned: bool) -> Step:
    """A run ends, and there is one more clean barrel or not."""
    return lambda kept: replace(kept, runs=kept.runs + 1, barrels=kept.barrels + int(cleaned), draft=False)


#: By name, for whoever is told of them.
STEPS: Final[dict[str, Callable[..., Step]]] = {
    "setting": setting,
    "chart": chart,
    "rename": rename,
    "delete": delete,
    "draft": lambda: draft,
    "record": record,
}


def _without(pairs: frozenset[tuple[str, Any]], key: str) -> frozenset[tuple[str, Any]]:
    return frozenset(pair for pair in pairs if pair[0] != key)


# What is there.


def read(directory: Path) -> tuple[Kept, int]:
    """What the program finds, and how many lines the journal has. AssertionError if anything is damaged."""
    reports: list[str] = []
    with closing(open_storage(directory, reports.append)) as storage:
        assert not reports, reports
        kept = Kept(
            settings=frozenset(storage.read(SETTINGS).items()),
            charts=frozenset(
                (info.name, digest(storage.charts.load(info.name))) for info in storage.charts.infos()
            ),
            runs=storage.logbook.next_number() - 1,
            barrels=int(storage.logbook.counters().get(BARRELS, 0.0)),
            draft=storage.logbook.draft() is not None,
        )
        assert kept.draft or not storage.read(RUN), "a note of a run without its draft"
    with closing(sqlite3.connect(directory / FILE_NAME)) as connection:
        for check in ("integrity_check", "foreign_key_check"):
            verdict = connection.execute(f"PRAGMA {check}").fetchall()
            assert verdict in ([], [("ok",)]), verdict
        (journal,) = connection.execute("SELECT count(*) FROM journal").fetchone()
    _check_logbook(directory / FILE_NAME)
    # The program itself keeps a file there as well.
    strange = [
        path.name for path in directory.iterdir() if not path.name.startswith((FILE_NAME, "Kubelor.ini"))
    ]
    damaged = [path.name for path in directory.iterdir() if "damaged" in path.name]
    assert not strange + damaged, strange + damaged
    return kept, int(journal)


def _check_logbook(file: Path) -> None:
    with open_logbook(file) as logbook:
        assert logbook.verify() is None, logbook.verify()
        for run in logbook.runs()[:3]:
            assert logbook.curves(run.number).lines


def digest(saved: SavedChart) -> str:
    """Of all that there is of a chart but its name."""
    info = replace(saved.info, name="")
    lines = sorted((name, [tuple(point) for point in points]) for name, points in saved.lines.items())
    content = repr((info, list(saved.step_names), list(saved.actuator_names), lines))
    return hashlib.sha256(content.encode()).hexdigest()[:16]
