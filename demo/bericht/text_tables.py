"""Tables as lines of text, for a terminal."""

import unicodedata
from collections.abc import Iterable, Sequence
from typing import Final

from .wording import one_line

_GAP: Final = "  "
#: A column is no wider; only the last one is, for it stands at the end of the line.
_WIDEST: Final = 60
#: All letters before it take one place each.
_FIRST_COMBINING: Final = "\u0300"


def text_table(head: Sequence[str], rows: Iterable[Sequence[str]], figures: Sequence[bool]) -> str:
    """A table with its columns below each other; `figures` says which ones stand to the right.

    A row may end before the others: its last cell has all the room to the right.
    """
    lines = [[one_line(cell) for cell in row] for row in (head, *rows)]
    whole = [line for line in lines if len(line) == len(head)]
    widths = [min(max(map(_width, column)), _WIDEST) for column in zip(*whole)]
    return "".join(f"{_line(line, widths, figures)}\n" for line in lines)


def _line(cells: Sequence[str], widths: Sequence[int], figures: Sequence[bool]) -> str:
    padded = []
    for cell, width, right in zip(cells, widths, figures):
        blanks = " " * max(width - _width(cell), 0)
        padded.append(blanks + cell if right else cell + blanks)
    return _GAP.join(padded).rstrip()


def _width(text: str) -> int:
    """How many places of a terminal the text takes."""
    if text.isascii() or max(text) < _FIRST_COMBINING:
        return len(text)
    return sum(_places(letter) for letter in text)


def _places(letter: str) -> int:
    if unicodedata.combining(letter):
        return 0
    return 2 if unicodedata.east_asian_width(letter) in "WF" else 1
