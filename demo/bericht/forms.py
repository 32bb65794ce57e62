"""The forms that a report can have."""

from collections.abc import Callable, Mapping
from typing import Final, TypeAlias

from logbook.reader import StoredCurves, StoredRun

from .content import report
from .html_page import html_page
from .output import OutputError
from .report_text import report_text
from .run_csv import run_csv

#: Makes the bytes of a file.
Form: TypeAlias = Callable[[StoredRun, StoredCurves], bytes]


def text_form(run: StoredRun, curves: StoredCurves) -> str:
    """For a terminal."""
    return report_text(report(run, curves))


def _pdf(run: StoredRun, curves: StoredCurves) -> bytes:
    try:
        # All others go without it.
        from . import fonts, pdf  # pylint: disable=import-outside-toplevel  # loaded only where it is needed
    except ImportError as error:
        raise OutputError("Für PDF fehlt das Paket python3-reportlab.") from error
    try:
        return pdf.pdf(report(run, curves))
    except fonts.FontError as error:
        raise OutputError(str(error)) from error


def _html(run: StoredRun, curves: StoredCurves) -> bytes:
    return html_page(report(run, curves)).encode("utf-8", "replace")


def _csv(run: StoredRun, curves: StoredCurves) -> bytes:
    return run_csv(run, curves).encode("utf-8", "replace")


def _json(run: StoredRun, _curves: StoredCurves) -> bytes:
    """The document as it stands, to the byte: so the hash can be computed from it."""
    return run.document.encode("utf-8", "surrogateescape")


FORMS: Final[Mapping[str, Form]] = {"pdf": _pdf, "html": _html, "csv": _csv, "json": _json}
