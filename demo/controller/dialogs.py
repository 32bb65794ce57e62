"""Questions to the operator, and what their answers do."""

from collections.abc import Callable, Mapping
from enum import IntEnum
from typing import TypeAlias

Ask: TypeAlias = Callable[[str, str, dict[str, object]], None]
Close: TypeAlias = Callable[[int], None]
Answered: TypeAlias = Callable[[bool], None]


class DialogId(IntEnum):
    """Ids of the questions. They are positive: the screens use 0 and the negative numbers."""

    CONTINUE_RUN = 1


class Questions:
    """The questions that wait for an answer. Belongs to one thread."""

    def __init__(self, ask: Ask, close: Close) -> None:
        """`ask` is `Gui.question`, `close` closes an open dialog by its id."""
        self._ask = ask
        self._close = close
        self._waiting: dict[DialogId, Answered] = {}

    def ask(  # pylint: disable=too-many-arguments
        self, id_: DialogId, title: str, text: str, yes: str, no: str, answered: Answered
    ) -> None:
        """Opens a question. `answered` is called once, with True for the yes button."""
        self._waiting[id_] = answered
        self._ask(title, text, {"id": int(id_), "yes": yes, "no": no, "category": "warning"})

    def withdraw(self, id_: DialogId) -> None:
        """Closes a question that no longer matters; its answer is not heard."""
        if self._waiting.pop(id_, None) is not None:
            self._close(id_)

    def take(self, data: object) -> None:
        """Looks for answers in a report of the dialog system.

        A question reports twice, on its button and when it has closed; the first report counts.
        """
        if not isinstance(data, Mapping):
            return
        for key, reply in data.items():
            if isinstance(reply, Mapping) and (id_ := _dialog_id(key)) in self._waiting:
                self._waiting.pop(id_)(reply.get("a") is True)


def _dialog_id(key: object) -> DialogId | None:
    try:
        return DialogId(int(str(key)))
    except ValueError:  # "current", or a dialog that nobody here has opened
        return None
