"""The font of the reports: DejaVu Sans, and what to do about letters that it lacks."""

from collections.abc import Container
from functools import cache
from pathlib import Path
from typing import Final

from reportlab.pdfbase import pdfmetrics
from reportlab.pdfbase.ttfonts import TTFError, TTFont

REGULAR: Final = "DejaVuSans"
BOLD: Final = "DejaVuSans-Bold"
MONO: Final = "DejaVuSansMono"

_FOLDER: Final = Path("/usr/share/fonts/truetype/dejavu")
#: What stands in place of a letter that the font lacks. It has this one.
_INSTEAD: Final = "\N{REPLACEMENT CHARACTER}"


class FontError(Exception):
    """There is no font: a German sentence."""


@cache
def register() -> None:
    """Makes the fonts known. Raises FontError."""
    for name in (REGULAR, BOLD, MONO):
        try:
            pdfmetrics.registerFont(TTFont(name, _FOLDER / f"{name}.ttf"))
        except (TTFError, OSError) as error:
            raise FontError(f"Die Schrift {name} fehlt; sie ist im Paket fonts-dejavu-core.") from error
    pdfmetrics.registerFontFamily(REGULAR, normal=REGULAR, bold=BOLD, italic=REGULAR, boldItalic=BOLD)


def printable(text: str, font: str = REGULAR) -> str:
    """The text in letters that the font has."""
    known = _letters(font)
    return "".join(letter if ord(letter) in known else _INSTEAD for letter in text)


@cache
def _letters(font: str) -> Container[int]:
    letters: Container[int] = pdfmetrics.getFont(font).face.charToGlyph
    return letters
