"""Tables as CSV as a German spreadsheet takes it: semicolons, commas in numbers."""

import csv
import math
import re
from collections.abc import Iterable, Sequence
from io import StringIO
from typing import Final

#: What a spreadsheet would take for a formula at the beginning of a text.
_FORMULA: Final = ("=", "+", "-", "@", "\t")
#: All controls but the tabulator and the line break, which a quoted field can have.
_CONTROLS: Final = re.compile(r"[\x00-\x08\x0b-\x1f\x7f-\x9f]")


def csv_text(rows: Iterable[Sequence[object]]) -> str:
    """The rows as CSV. A text that would be a formula gets an apostrophe before it."""
    target = StringIO()
    writer = csv.writer(target, delimiter=";", lineterminator="\r\n")
    writer.writerows([_plain(value) for value in row] for row in rows)
    return target.getvalue()


def _plain(value: object) -> str:
    if isinstance(value, bool):
        return "ein" if value else "aus"
    if isinstance(value, float):
        return repr(value).removesuffix(".0").replace(".", ",") if math.isfinite(value) else ""
    text = "" if value is None else str(value)
    if isinstance(value, str):
        text = _CONTROLS.sub("", text)
        return f"'{text}" if text.startswith(_FORMULA) else text
    return text
