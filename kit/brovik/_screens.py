"""Stands in for the screens: what is open above the page, and what the backend is told of it."""

from collections.abc import Callable
from dataclasses import dataclass, field
from typing import TYPE_CHECKING, Any, Final, Literal, TypeAlias

from brovik.gui import GuiEnum

if TYPE_CHECKING:
    from brovik.records import DialogReport, QuestionOptions

Kind: TypeAlias = Literal["message", "question", "exception"]
Report: TypeAlias = Callable[[GuiEnum, object], None]

#: The program itself keeps them for the screens, but for a second backend in the same process.
_KEPT: Final = ("message", "exception")
#: How long the error stays that a backend has when it is told of another one.
ECHO_MS: Final = 5000


class Answers(dict[int | str, bool]):
    """What the operator answers as soon as a dialog opens: by its id or its title, True for the yes button.

    A dialog that is not in here stays open.
    """

    def __setitem__(self, key: int | str, accept: bool) -> None:
        if isinstance(key, bool) or not isinstance(key, (int, str)):
            raise TypeError(f"A dialog is named by its id or its title, not {key!r}")
        if not isinstance(accept, bool):
            raise TypeError(f"An answer is True or False, not {accept!r}")
        super().__setitem__(key, accept)

    def for_dialog(self, dialog: "Dialog") -> bool | None:
        """The answer to a dialog; None if there is none."""
        return self.get(dialog.id_, self.get(dialog.title))


@dataclass(frozen=True)
class Dialog:  # pylint: disable=too-many-instance-attributes # a record
    """A dialog as the operator sees it."""

    kind: Kind
    #: Positive if the backend gave one.
    id_: int
    title: str
    text: str
    #: "info", "warning", "error", "success", or what else the backend said.
    category: str
    #: Labels of the buttons; without a text there is no such button.
    yes: str = "OK"
    no: str = ""
    description: Any = None
    #: All options of a question, the record of an exception.
    options: dict[str, Any] = field(default_factory=dict)


@dataclass(frozen=True)
class Toast:
    """A short note."""

    text: str
    warning: bool
    duration_ms: int


@dataclass
class Record:
    """What the operator has seen so far."""

    dialogs: list[Dialog] = field(default_factory=list)
    toasts: list[Toast] = field(default_factory=list)
    #: "stdout" or "stderr", and the text.
    console: list[tuple[str, str]] = field(default_factory=list)


class Screens:  # pylint: disable=too-many-instance-attributes # two of them are its way to the backend
    """The stack of open dialogs and the record of what was shown. Belongs to the main thread."""

    def __init__(self, report: Report, told: Callable[[], int]) -> None:
        """`report` calls the backend, `told` is the number of the next signal."""
        self._report = report
        self._told = told
        self._slots: Final[dict[str, Callable[..., None]]] = {
            "message": self._message,
            "question": self._question,
            "exception": self._exception,
            "closeDialog": self._close,
            "closeCurrentDialog": self._close_current,
            "toastNotify": self._toast,
            "toastWarn": self._warn,
            "appendStdout": lambda text: self.record.console.append(("stdout", text)),
            "appendStderr": lambda text: self.record.console.append(("stderr", text)),
        }
        self.answers: Final = Answers()
        #: Before, messages wait, questions and toasts are lost.
        self.loaded = False
        self.clear()

    def clear(self) -> None:
        """Forgets everything; nothing is reported."""
        self.open: list[Dialog] = []
        self.record = Record()
        self.answers.clear()
        self._next_id = -1
        self._number = 0
        self._waiting: list[tuple[int, str, tuple[Any, ...]]] = []
        #: The signals that came while the backend was told of the dialog of an exception.
        self._echoes: list[range] = []

    def take(self, number: int, signal: str, values: tuple[Any, ...]) -> None:
        """Shows what an object of the host has told with its signal of this number."""
        if self.loaded:
            self._show_signal(number, signal, values)
        elif signal in _KEPT:
            self._waiting.append((number, signal, values))

    def show_waiting(self) -> None:
        """Shows what came before the screens were there."""
        waiting, self._waiting = self._waiting, []
        for number, signal, values in waiting:
            self._show_signal(number, signal, values)

    def _show_signal(self, number: int, signal: str, values: tuple[Any, ...]) -> None:
        self._number = number
        if (slot := self._slots.get(signal)) is not None:
            slot(*values)

    def answer(self, dialog: Dialog, accept: bool) -> None:
        """Presses a button of an open dialog, which closes it."""
        # A message has nothing to accept.
        accepted = accept and dialog.kind == "question"
        if dialog.id_ > 0 and dialog.kind == "question":
            self._report(GuiEnum.DialogData, {str(dialog.id_): {"a": accepted}})
        self.open.remove(dialog)
        self._tell(dialog, {str(dialog.id_): {"a": accepted}, "current": self._current()})

    def _tell(self, dialog: Dialog, data: "DialogReport") -> None:
        before = self._told()
        self._report(GuiEnum.DialogData, data)
        if dialog.kind == "exception":
            self._echoes.append(range(before, self._told()))

    def _current(self) -> list[Any] | None:
        return [self.open[-1].id_, self.open[-1].description] if self.open else None

    def _show(self, dialog: Dialog) -> None:
        if any(dialog.id_ == other.id_ for other in self.open):
            return
        self.record.dialogs.append(dialog)
        self.open.append(dialog)
        self._tell(dialog, {"current": [dialog.id_, dialog.description]})
        if (accept := self.answers.for_dialog(dialog)) is not None:
            self.answer(dialog, accept)

    def _id(self, wished: object = 0) -> int:
        number = int(wished) if isinstance(wished, (int, float)) else 0
        if number == 0:
            number = self._next_id
            self._next_id -= 1
        return number

    def _message(self, title: str, text: str, category: str, id_: int) -> None:
        self._show(Dialog("message", self._id(id_), title, text, category))

    def _question(self, title: str, text: str, options: "QuestionOptions") -> None:
        without_yes = "yes" in options and options["yes"] is None
        dialog = Dialog(
            kind="question",
            id_=self._id(options.get("id")),
            title=title,
            text=text,
            category=options.get("category") or "info",
            yes="" if without_yes else options.get("yes") or "OK",
            no=options.get("no") or "",
            description=options.get("description"),
            options=dict(options),
        )
        self._show(dialog)

    def _exception(self, record: dict[str, Any]) -> None:
        if any(self._number in echo for echo in self._echoes):
            self.record.toasts.append(Toast(f"{record['type']}: {record['text']}", True, ECHO_MS))
            return
        self._show(Dialog("exception", self._id(), record["type"], record["text"], "error", options=record))

    def _close(self, id_: int, accept: bool) -> None:
        for dialog in [dialog for dialog in self.open if dialog.id_ == id_]:
            self.answer(dialog, accept)

    def _close_current(self, accept: bool) -> None:
        if self.open:
            self.answer(self.open[-1], accept)

    def _toast(self, text: str, _icon: str, _color: int, duration: int) -> None:
        self.record.toasts.append(Toast(text, False, duration))

    def _warn(self, text: str, duration: int) -> None:
        self.record.toasts.append(Toast(text, True, duration))
