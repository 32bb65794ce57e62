"""The chain of records: each has a hash of the one before it and of its own document.

Found is every record that was changed, removed, exchanged or put in between, and curves that are not
those which the record speaks of. That the last record was cut off is told by `run_head`. Curves may be
missing if `curve_removed` says so.

What no file can tell by itself: that somebody has made the chain anew from some record on, `run_head`
included. A report on paper does, for it has the hash of its record. Whether curves were removed for their
age or by somebody who has made the row in `curve_removed` cannot be told either. Journal and counters have
no chain.
"""

import json
import sqlite3
from dataclasses import dataclass
from hashlib import sha256
from typing import Final

from . import curves

#: Stands before the first record.
START: Final = "0" * 64


_ROWS: Final = "SELECT number, begun, ended, result, reason, document, hash FROM run_record"


@dataclass(frozen=True)
class Break:
    """The first record that is not as it was written, and why, as a German sentence."""

    number: int
    text: str


def row_hash(previous: str, document: str) -> str:
    """The hash of a row, from that of the row before it."""
    return sha256(f"{previous}{document}".encode("utf-8", "surrogateescape")).hexdigest()


def verify(connection: sqlite3.Connection) -> Break | None:
    """The first break of the chain; None if all is as it was written. Changes nothing.

    All that it reads belongs together only inside a transaction. May raise sqlite3.Error.
    """
    previous, expected = START, 1
    rows = connection.execute(f"{_ROWS} ORDER BY number")
    for row in rows:
        number, hash_ = row[0], row[6]
        if number != expected:
            return Break(expected, f"Der Bericht Nr. {expected} fehlt.")
        found = _row_break(connection, row, previous)
        if found is not None:
            return found
        previous, expected = hash_, expected + 1
    return _head_break(connection, expected - 1, previous)


def verify_run(connection: sqlite3.Connection, number: int) -> Break | None:
    """Whether one record that is there is as it was written, as far as it and the one before it tell."""
    row = connection.execute(f"{_ROWS} WHERE number = ?", (number,)).fetchone()
    previous = connection.execute("SELECT hash FROM run_record WHERE number = ?", (number - 1,)).fetchone()
    return _row_break(connection, row, previous[0] if previous else START)


def _row_break(
    connection: sqlite3.Connection, row: tuple[int, str, str, str, str, str, str], previous: str
) -> Break | None:
    number, document, hash_ = row[0], row[5], row[6]
    if not isinstance(document, str) or row_hash(previous, document) != hash_:
        return Break(
            number, f"Der Bericht Nr. {number} wurde geändert oder gehört nicht an diese Stelle der Kette."
        )
    try:
        fields = json.loads(document)
        written = tuple(fields[key] for key in ("number", "begun", "ended", "result", "reason"))
        curves_digest = str(fields["curves_digest"])
    except (ValueError, KeyError, TypeError, RecursionError):
        return Break(number, f"Der Bericht Nr. {number} ist nicht lesbar.")
    if written != row[:5]:
        return Break(number, f"In der Liste steht beim Bericht Nr. {number} etwas anderes als in ihm selbst.")
    return _curves_break(connection, number, curves_digest)


def _curves_break(connection: sqlite3.Connection, number: int, curves_digest: str) -> Break | None:
    rows = connection.execute("SELECT line, points FROM run_curve WHERE run = ?", (number,)).fetchall()
    if not rows and connection.execute("SELECT 1 FROM curve_removed WHERE run = ?", (number,)).fetchone():
        return None
    try:
        found = curves.digest({str(line): curves.decompressed(points) for line, points in rows})
    except (ValueError, TypeError):
        found = ""
    if found == curves_digest:
        return None
    text = f"Die Kurven des Berichts Nr. {number} " + ("wurden geändert." if rows else "fehlen.")
    return Break(number, text)


def _head_break(connection: sqlite3.Connection, last: int, hash_: str) -> Break | None:
    head = connection.execute("SELECT number, hash FROM run_head").fetchone()
    if head is None:
        return Break(
            last, f"Der Vermerk über den letzten Bericht fehlt; nach Nr. {last} können weitere fehlen."
        )
    if head[0] > last:
        return Break(last + 1, f"Der Bericht Nr. {last + 1} fehlt.")
    if head[0] < last or (last and head[1] != hash_):
        return Break(last, f"Der Bericht Nr. {last} ist nicht der, der zuletzt geschrieben wurde.")
    return None
