"""Runs and files of a logbook to test with."""

import math
import sqlite3
import tempfile
import unittest
from dataclasses import replace
from pathlib import Path
from typing import Any

from logbook.curves import Curves
from logbook.records import (
    BathRecord,
    CheckRecord,
    CounterRecord,
    EquipmentRecord,
    Interruption,
    MessageRecord,
    ParameterRecord,
    QuestionRecord,
    RangeRecord,
    RunRecord,
    StepRecord,
)
from logbook.writer import LogbookWriter

#: Of a whole run.
STEPS = (
    "Dichtheitsprobe",
    "Fass in den Kanal entleeren",
    "Spülen mit Heißwasser",
    "Reinigen mit Lauge",
    "Lauge zurückfördern",
    "Laugereste in den Kanal spülen",
    "Reinigen mit Säure",
    "Säure zurückfördern",
    "Spülen mit Kaltwasser",
    "Luft mit CO2 austreiben",
    "Vorspannen mit CO2",
)
ACTUATORS = ("MV Lauge ein", "MV Säure ein", "MV kalt", "MV heiß", "MV Kreis", "MV Luft", "MV CO2", "Pumpe")
_LINES = ("LIn", "SIn", "Kalt", "Heiss", "Kreis", "Luft", "Co2", "Pumpe")
STEP_SECS = 30.0


def clock(secs: float) -> str:
    """A time of the day on which all runs are."""
    minutes, seconds = divmod(int(secs), 60)
    return f"2026-11-21T{14 + minutes // 60:02}:{minutes % 60:02}:{seconds:02}+01:00"


def step(number: int, title: str, result: str = "done") -> StepRecord:
    """One step of thirty seconds."""
    begun = (number - 1) * STEP_SECS
    return StepRecord(
        number,
        f"step_{number}",
        title,
        clock(begun),
        clock(begun + STEP_SECS),
        begun,
        begun + STEP_SECS,
        result,
        (RangeRecord("Druck", "bar", 0.02, 1.48), RangeRecord("Leitwert", "mS/cm", 0.4, 41.25)),
        (CheckRecord("Druckverlust", 0.03, "bar", 0.1, "höchstens"),) if number == 1 else (),
    )


def run(steps: int = len(STEPS), **fields: Any) -> RunRecord:
    """A run that went well, with something of everything."""
    secs = steps * STEP_SECS
    record = RunRecord(
        begun=clock(0),
        ended=clock(secs),
        secs=secs,
        result="success",
        reason="Das Fass ist gereinigt und vorgespannt.",
        program="Automatikbetrieb",
        machine_version="_2024",
        program_version="1.4.0",
        backend_version="2.1.0",
        equipment=(EquipmentRecord("has_steam_valve", "Dampfventil", False),),
        parameters=(
            ParameterRecord("secs_pump", "Dauer Pumpen", 12, 10, "s"),
            ParameterRecord("secs_blow_min", "Mindestdauer Ausblasen", 5, 5, "s"),
            ParameterRecord("saure_name", "Name der Säure", "SANAL®-SA 3", "Säure"),
        ),
        steps=tuple(step(n, STEPS[(n - 1) % len(STEPS)]) for n in range(1, steps + 1)),
        questions=(QuestionRecord(clock(3), "Dichtheit", "Ist das Fass dicht?", clock(9), "Ja"),),
        messages=(MessageRecord(clock(95), "Lauge", "Temperatur erreicht", "info"),),
        interruptions=(Interruption(clock(200), 7, clock(260)),),
        baths=(
            BathRecord("Lauge", 40.0, 30.0, 41.25, False),
            BathRecord("Säure", 20.0, 15.0, math.inf, True),
        ),
        counters=(CounterRecord("Gereinigte Fässer", 1234.0),),
        step_names=STEPS,
        actuator_names=ACTUATORS,
    )
    return replace(record, **fields)


def curves(samples: int = 600, secs: float = len(STEPS) * STEP_SECS) -> Curves:
    """The curves of such a run."""
    times = [secs * i / max(samples - 1, 1) for i in range(samples)]
    result = {
        "P": [(x, 0.75 + 0.7 * math.sin(x / 17)) for x in times],
        "Lw": [(x, 20 + 19 * math.sin(x / 41)) for x in times],
        "Step": [(n * STEP_SECS, n + 1.0) for n in range(int(secs / STEP_SECS))]
        + [(secs, secs // STEP_SECS)],
    }
    for height, line in enumerate(_LINES, start=1):
        result[line] = [(20.0 * height, float(height)), (20.0 * height + 35, 0.0)]
    return result


class LogbookCase(unittest.TestCase):
    """A directory with a file that a writer has open."""

    def setUp(self) -> None:
        # Until the end of the test.
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)
        self.path = self.directory / "kubelor-demo.sqlite3"
        self.connection = sqlite3.connect(self.path)
        self.addCleanup(self.connection.close)
        self.connection.execute("PRAGMA journal_mode = WAL")
        self.writer = LogbookWriter(self.connection)
        self.writer.prepare()
