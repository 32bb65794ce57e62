"""Saved charts: what is kept of one, and its tables in the file."""

import json
import sqlite3
from collections.abc import Mapping, Sequence
from dataclasses import dataclass
from typing import Final

from logbook.curves import Point, packed, unpacked

SCHEMA: Final = """
CREATE TABLE IF NOT EXISTS chart (
    name TEXT PRIMARY KEY,
    result TEXT NOT NULL,
    status TEXT NOT NULL,
    recorded TEXT NOT NULL,
    duration INTEGER NOT NULL,  -- seconds
    labels TEXT NOT NULL  -- JSON: names of the steps, names of the actuators
) WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS chart_line (
    chart TEXT NOT NULL REFERENCES chart (name) ON UPDATE CASCADE ON DELETE CASCADE,
    line TEXT NOT NULL,
    points BLOB NOT NULL,  -- x and y by turns, doubles, little-endian
    PRIMARY KEY (chart, line)
);
"""

#: How `ChartInfo.recorded` says when.
RECORDED: Final = "%d.%m.%Y %H:%M"


@dataclass(frozen=True)
class ChartInfo:
    """What the list of saved charts shows of one; its duration is in seconds."""

    name: str
    result: str
    status: str
    recorded: str
    duration: int


@dataclass(frozen=True)
class SavedChart:
    """A chart as a whole. The lines have the names of `brovik.chart.LineEnum`."""

    info: ChartInfo
    step_names: Sequence[str]
    actuator_names: Sequence[str]
    lines: Mapping[str, Sequence[Point]]


class ChartTables:
    """The charts in an open database. Each call is one transaction; each may raise sqlite3.Error."""

    def __init__(self, connection: sqlite3.Connection) -> None:
        self._connection = connection

    def check(self) -> None:
        """Raises sqlite3.Error if the tables are not the ones of this module."""
        self._connection.execute("SELECT labels FROM chart LIMIT 1").fetchone()
        self._connection.execute("SELECT line, points FROM chart_line LIMIT 1").fetchone()

    def infos(self) -> list[ChartInfo]:
        """What the list shows of all charts."""
        rows = self._connection.execute("SELECT name, result, status, recorded, duration FROM chart")
        return [ChartInfo(*row) for row in rows]

    def save(self, chart: SavedChart) -> None:
        """Adds a chart. Raises sqlite3.IntegrityError if there is one of this name."""
        info = chart.info
        labels = json.dumps([list(chart.step_names), list(chart.actuator_names)])
        with self._connection:
            self._connection.execute(
                "INSERT INTO chart VALUES (?, ?, ?, ?, ?, ?)",
                (info.name, info.result, info.status, info.recorded, info.duration, labels),
            )
            self._connection.executemany(
                "INSERT INTO chart_line VALUES (?, ?, ?)",
                [(info.name, line, packed(points)) for line, points in chart.lines.items()],
            )

    def load(self, name: str) -> SavedChart:
        """The chart of this name. Raises KeyError if there is none."""
        row = self._connection.execute(
            "SELECT name, result, status, recorded, duration, labels FROM chart WHERE name = ?", (name,)
        ).fetchone()
        if row is None:
            raise KeyError(name)
        steps, actuators = json.loads(row[5])
        lines = self._connection.execute("SELECT line, points FROM chart_line WHERE chart = ?", (name,))
        return SavedChart(
            ChartInfo(*row[:5]), steps, actuators, {line: unpacked(points) for line, points in lines}
        )

    def delete(self, name: str) -> None:
        """Removes a chart with its lines."""
        with self._connection:
            self._connection.execute("DELETE FROM chart WHERE name = ?", (name,))

    def rename(self, old: str, new: str) -> None:
        """Gives a chart another name. Raises sqlite3.IntegrityError if another chart has it."""
        with self._connection:
            self._connection.execute("UPDATE chart SET name = ? WHERE name = ?", (new, old))
