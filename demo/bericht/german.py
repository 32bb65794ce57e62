"""Lets argparse speak German. What it says goes through gettext, for which nobody delivers a catalogue."""

import argparse
from typing import Final

_TEXTS: Final = {
    "usage: ": "Aufruf: ",
    "positional arguments": "Angaben",
    "options": "Optionen",
    "show this help message and exit": "zeigt diese Hilfe",
    "%(prog)s: error: %(message)s\n": "%(prog)s: %(message)s\n",
    "argument %(argument_name)s: %(message)s": "%(argument_name)s: %(message)s",
    "the following arguments are required: %s": "Es fehlt: %s",
    "unrecognized arguments: %s": "Unbekannte Angabe: %s",
    "invalid choice: %(value)r (choose from %(choices)s)": "%(value)r gibt es nicht, nur %(choices)s",
    "invalid %(type)s value: %(value)r": "%(value)r ist hier nicht möglich",
    "expected one argument": "Es fehlt der Wert",
    "expected at most one argument": "Höchstens ein Wert ist möglich",
    "expected at least one argument": "Es fehlt mindestens ein Wert",
    "expected %s argument": "Es fehlt %s Wert",
    "expected %s arguments": "Es fehlen %s Werte",
    "not allowed with argument %s": "verträgt sich nicht mit %s",
    "one of the arguments %s is required": "Es fehlt eine von %s",
    "ignored explicit argument %r": "der Wert %r ist hier nicht möglich",
    "ambiguous option: %(option)s could match %(matches)s": "%(option)s ist nicht eindeutig: %(matches)s",
}


def speak_german() -> None:
    """From now on, in this process."""
    spoken = vars(argparse)
    spoken["_"] = lambda text: _TEXTS.get(text, text)
    spoken["ngettext"] = lambda one, many, count: _TEXTS.get(one if count == 1 else many, many)
