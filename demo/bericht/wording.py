"""Values as German words and figures."""

import math
import unicodedata
from datetime import datetime
from typing import Final

from logbook import records
from logbook.records import Value

NOTHING: Final = "–"

_RESULTS: Final = {
    records.SUCCESS: "erfolgreich",
    records.WARNING: "mit Warnung beendet",
    records.ERROR: "fehlgeschlagen",
    records.NEUTRAL: "ohne Ergebnis",
}
_STEP_RESULTS: Final = {
    records.DONE: "erledigt",
    records.FAILED: "fehlgeschlagen",
    records.ABORTED: "abgebrochen",
    records.CUT_SHORT: "unterbrochen",
}
_KINDS: Final = {
    "message": "Meldung",
    "question": "Frage",
    "exception": "Ausnahme",
    "toast": "Hinweis",
    "setting": "Einstellung",
    "login": "Anmeldung",
    "update": "Aktualisierung",
    "program": "Programm",
    "run": "Lauf",
    "maintenance": "Wartung",
}
_EVENTS: Final = {
    "came": "gekommen",
    "acknowledged": "quittiert",
    "gone": "gegangen",
    "changed": "geändert",
    "begun": "begonnen",
    "ended": "beendet",
}
_URGENCIES: Final = {
    "info": "Hinweis",
    "notify": "Hinweis",
    "success": "Erfolg",
    "warn": "Warnung",
    "warning": "Warnung",
    "error": "Fehler",
    "exception": "Ausnahme",
    "question": "Frage",
}
#: So many decimals of a number are told at most.
_DECIMALS: Final = 3
#: From here on a number is told by its power of ten.
_HUGE: Final = 1e12


def result(word: str) -> str:
    """How a run has ended; a word that is not known stays as it is."""
    return _RESULTS.get(word, word)


def step_result(word: str) -> str:
    """How a step has ended."""
    return _STEP_RESULTS.get(word, word)


def kind(word: str) -> str:
    """The kind of a line of the journal."""
    return _KINDS.get(word, word)


def event(word: str) -> str:
    """What has happened in a line of the journal."""
    return _EVENTS.get(word, word)


def urgency(word: str) -> str:
    """How urgent a message was."""
    return _URGENCIES.get(word, word)


def number(value: float, decimals: int | None = None) -> str:
    """A number with a comma: with so many decimals, or with those that it needs, three at most."""
    if not math.isfinite(value):
        return NOTHING
    if abs(value) >= _HUGE:
        return f"{value:.3e}".replace(".", ",")
    text = f"{value:.{_DECIMALS if decimals is None else decimals}f}"
    if decimals is None:
        text = text.rstrip("0").rstrip(".")
    if not text.strip("-0."):
        text = text.lstrip("-")
    return text.replace(".", ",")


def quantity(value: float, unit: str) -> str:
    """A number with its unit."""
    return f"{number(value)} {unit}".rstrip()


def setting(item: Value) -> str:
    """The value of a parameter."""
    if isinstance(item, bool):
        return "ein" if item else "aus"
    if isinstance(item, float):
        return number(item)
    return str(item)


def _read(moment: str) -> datetime | None:
    try:
        return datetime.fromisoformat(moment)
    except ValueError:
        return None


def full_time(text: str) -> str:
    """Day and time; what is no time stays as it is."""
    read = _read(text)
    return f"{read:%d.%m.%Y %H:%M:%S}" if read else text or NOTHING


def clock(text: str, beside: str = "") -> str:
    """The time, with its day if that is another one than that of the time beside it."""
    read = _read(text)
    if read is None or text[:10] != beside[:10]:
        return full_time(text)
    return f"{read:%H:%M:%S}"


def zone(text: str) -> str:
    """The zone of a time: "UTC+01:00", or "" if it has none."""
    read = _read(text)
    return f"{read:%Z}" if read and read.tzinfo else ""


def length(secs: float) -> str:
    """Minutes and seconds, with hours before them if there are any."""
    if not math.isfinite(secs) or abs(secs) >= _HUGE:
        return NOTHING
    minutes, seconds = divmod(round(max(secs, 0.0)), 60)
    hours, minutes = divmod(minutes, 60)
    return f"{hours}:{minutes:02}:{seconds:02}" if hours else f"{minutes}:{seconds:02}"


def duration(secs: float) -> str:
    """The same with its unit."""
    text = length(secs)
    return text if text == NOTHING else f"{text} {'h' if text.count(':') == 2 else 'min'}"


def one_line(text: str) -> str:
    """The text without what would move the line or the letters about: breaks, controls, directions."""
    if text.isprintable():
        return " ".join(text.split())
    return " ".join("".join(_harmless(letter) for letter in text).split())


def _harmless(letter: str) -> str:
    match unicodedata.category(letter):
        case "Cc" | "Zl" | "Zp":
            return " "
        case "Cf" | "Cs" | "Cn":
            return ""
    return letter


def shortened(text: str, most: int) -> str:
    """The text in no more than so many characters."""
    return text if len(text) <= most else text[: most - 1].rstrip() + "…"
