"""The tables of records, curves, journal and counters.

Triggers refuse whatever changes or removes a record or a line of the journal. They keep a program from its
own mistakes; who takes them away to change a record is found by `chain.verify`.
"""

import sqlite3
from typing import Final

_REFUSED: Final = "Das Logbuch kann nicht geändert werden"

SCHEMA: Final = f"""
CREATE TABLE IF NOT EXISTS run_record (
    number INTEGER PRIMARY KEY,  -- from 1, without a gap
    begun TEXT NOT NULL,
    ended TEXT NOT NULL,
    result TEXT NOT NULL,
    reason TEXT NOT NULL,
    document TEXT NOT NULL,  -- canonical JSON of a RunRecord
    hash TEXT NOT NULL  -- of the hash before it and the document
);
-- Has all that a list shows, so that none of the long documents is read for it.
CREATE INDEX IF NOT EXISTS run_overview ON run_record (number, begun, ended, result, reason);

-- The last record, so that one is missed that was cut off at the end.
CREATE TABLE IF NOT EXISTS run_head (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    number INTEGER NOT NULL,
    hash TEXT NOT NULL
);
INSERT INTO run_head
    SELECT
        1,
        coalesce((SELECT max(number) FROM run_record), 0),
        coalesce((SELECT hash FROM run_record ORDER BY number DESC LIMIT 1), '')
    WHERE NOT EXISTS (SELECT 1 FROM run_head);

CREATE TABLE IF NOT EXISTS run_curve (
    run INTEGER NOT NULL REFERENCES run_record (number),
    line TEXT NOT NULL,
    points BLOB NOT NULL,  -- packed and compressed
    PRIMARY KEY (run, line)
);
-- The curves of these runs were removed because they were old.
CREATE TABLE IF NOT EXISTS curve_removed (
    run INTEGER PRIMARY KEY REFERENCES run_record (number),
    time TEXT NOT NULL
);

-- The run in progress.
CREATE TABLE IF NOT EXISTS run_draft (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    document TEXT NOT NULL
);
CREATE TABLE IF NOT EXISTS draft_curve (
    line TEXT PRIMARY KEY,
    points BLOB NOT NULL
);

CREATE TABLE IF NOT EXISTS journal (
    number INTEGER PRIMARY KEY AUTOINCREMENT,
    time TEXT NOT NULL,
    kind TEXT NOT NULL,
    event TEXT NOT NULL,
    subject TEXT NOT NULL,
    text TEXT NOT NULL,
    details TEXT NOT NULL  -- JSON
);
CREATE INDEX IF NOT EXISTS journal_kind ON journal (kind, number);

CREATE TABLE IF NOT EXISTS counter (
    name TEXT PRIMARY KEY,
    value REAL NOT NULL,
    unit TEXT NOT NULL
) WITHOUT ROWID;

CREATE TRIGGER IF NOT EXISTS run_record_next BEFORE INSERT ON run_record
    WHEN NEW.number IS NOT (SELECT number + 1 FROM run_head)
    BEGIN SELECT RAISE(ABORT, '{_REFUSED}'); END;
CREATE TRIGGER IF NOT EXISTS run_record_head AFTER INSERT ON run_record
    BEGIN UPDATE run_head SET number = NEW.number, hash = NEW.hash; END;
CREATE TRIGGER IF NOT EXISTS run_head_forward BEFORE UPDATE ON run_head
    WHEN NEW.number IS NOT OLD.number + 1 OR NEW.id IS NOT OLD.id
    BEGIN SELECT RAISE(ABORT, '{_REFUSED}'); END;
-- INSERT OR REPLACE removes a row without asking the triggers of DELETE.
CREATE TRIGGER IF NOT EXISTS run_head_once BEFORE INSERT ON run_head
    WHEN EXISTS (SELECT 1 FROM run_head)
    BEGIN SELECT RAISE(ABORT, '{_REFUSED}'); END;
CREATE TRIGGER IF NOT EXISTS run_curve_once BEFORE INSERT ON run_curve
    WHEN EXISTS (SELECT 1 FROM run_curve WHERE run = NEW.run AND line = NEW.line)
    BEGIN SELECT RAISE(ABORT, '{_REFUSED}'); END;
CREATE TRIGGER IF NOT EXISTS run_curve_kept BEFORE DELETE ON run_curve
    WHEN NOT EXISTS (SELECT 1 FROM curve_removed WHERE run = OLD.run)
    BEGIN SELECT RAISE(ABORT, '{_REFUSED}'); END;
CREATE TRIGGER IF NOT EXISTS curve_removed_once BEFORE INSERT ON curve_removed
    WHEN EXISTS (SELECT 1 FROM curve_removed WHERE run = NEW.run)
    BEGIN SELECT RAISE(ABORT, '{_REFUSED}'); END;
CREATE TRIGGER IF NOT EXISTS journal_once BEFORE INSERT ON journal
    WHEN EXISTS (SELECT 1 FROM journal WHERE number = NEW.number)
    BEGIN SELECT RAISE(ABORT, '{_REFUSED}'); END;
""" + "".join(
    f"""
CREATE TRIGGER IF NOT EXISTS {table}_no_{action.lower()} BEFORE {action} ON {table}
    BEGIN SELECT RAISE(ABORT, '{_REFUSED}'); END;"""
    for table, action in (
        ("run_record", "UPDATE"),
        ("run_record", "DELETE"),
        ("run_head", "DELETE"),
        ("run_curve", "UPDATE"),
        ("curve_removed", "UPDATE"),
        ("curve_removed", "DELETE"),
        ("journal", "UPDATE"),
        ("journal", "DELETE"),
    )
)

_CHECKS: Final = (
    "SELECT number, begun, ended, result, reason, document, hash FROM run_record LIMIT 1",
    "SELECT number, hash FROM run_head LIMIT 1",
    "SELECT run, line, points FROM run_curve LIMIT 1",
    "SELECT run, time FROM curve_removed LIMIT 1",
    "SELECT number, time, kind, event, subject, text, details FROM journal LIMIT 1",
    "SELECT name, value, unit FROM counter LIMIT 1",
)
_WRITER_CHECKS: Final = (
    "SELECT id, document FROM run_draft LIMIT 1",
    "SELECT line, points FROM draft_curve LIMIT 1",
)


def make(connection: sqlite3.Connection) -> None:
    """Makes the tables that are missing, and raises sqlite3.Error if those that are there are others."""
    run_script(connection, SCHEMA)
    check(connection)
    for query in _WRITER_CHECKS:
        connection.execute(query).fetchone()


def run_script(connection: sqlite3.Connection, script: str) -> None:
    """Runs all of it or nothing, in one transaction: the disk is waited for once, not for each table."""
    try:
        connection.executescript(f"BEGIN;{script};COMMIT;")
    except BaseException:
        connection.rollback()
        raise


def check(connection: sqlite3.Connection) -> None:
    """Raises sqlite3.Error if a table that a reader needs is missing or another one."""
    for query in _CHECKS:
        connection.execute(query).fetchone()
