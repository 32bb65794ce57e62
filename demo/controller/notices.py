"""What the operator is told and asked. All of it goes through here, and from here into the journal.

For any thread. `scripts/lint house` refuses a call of the host past this module.
"""

import sys
from html import unescape
from traceback import format_exception_only, walk_tb
from typing import TYPE_CHECKING

from brovik import forward_exception
from brovik.gui import Gui

from .dialog_watch import DIALOGS
from .journal import JOURNAL, Event, Kind

if TYPE_CHECKING:
    from brovik.records import Category, QuestionOptions


def message(title: str, text: str, category: "Category") -> None:
    """Opens a message. `text` may be rich."""
    DIALOGS.show(Kind.MESSAGE, title, unescape(text), {"category": category})
    Gui.message(title, text, category)


def question(title: str, text: str, options: "QuestionOptions") -> None:
    """Opens a question. Its "id" is a positive number, and not that of a question which is open."""
    id_, yes, no = options["id"], options["yes"], options["no"]
    DIALOGS.ask(int(str(id_)), title, unescape(text), str(yes), str(no))
    Gui.question(title, text, options)


def withdraw(id_: int) -> None:
    """Closes a question that no longer matters."""
    DIALOGS.withdraw(id_)
    Gui.close_dialog(id_)


def warn(text: str) -> None:
    """Shows a short warning, which goes by itself."""
    JOURNAL.add(Kind.TOAST, Event.CAME, text)
    Gui.toast_warn(text)


def show_exception() -> None:
    """Shows the exception that is being handled: call it within the `except` block."""
    error = sys.exc_info()[1]
    if error is not None:
        DIALOGS.show(Kind.EXCEPTION, type(error).__name__, exception_text(error), {"place": _place(error)})
    forward_exception()


def exception_text(error: BaseException) -> str:
    """Type and text, also of an exception that fails at telling them."""
    return "".join(format_exception_only(type(error), error)).strip()


def _place(error: BaseException) -> str:
    """Where it was raised; empty if nobody knows."""
    places = [f"{frame.f_code.co_filename}:{line}" for frame, line in walk_tb(error.__traceback__)]
    return places[-1] if places else ""
