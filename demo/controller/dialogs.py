"""Questions to the operator, and what their answers do."""

from collections.abc import Callable, Mapping
from enum import IntEnum
from typing import TYPE_CHECKING, TypeAlias

if TYPE_CHECKING:
    from brovik.records import Category, QuestionOptions

Ask: TypeAlias = "Callable[[str, str, QuestionOptions], None]"
Close: TypeAlias = Callable[[int], None]
Answered: TypeAlias = Callable[[bool], None]


class DialogId(IntEnum):
    """Ids of the questions. They are positive: the screens use 0 and the negative numbers."""

    CONTINUE_RUN = 1
    SAVE_REPORT = 2
    #: The first plan of the maintenance, and the others from here on. Each has an id of its own, for a
    #: question is not opened while one of the same id closes.
    MAINTENANCE = 10


class Questions:
    """The questions that wait for an answer. Belongs to one thread."""

    def __init__(self, ask: Ask, close: Close) -> None:
        """`ask` opens a question as the host does, `close` closes an open one by its id."""
        self._ask = ask
        self._close = close
        self._waiting: dict[int, Answered] = {}

    def ask(  # pylint: disable=too-many-arguments
        self,
        id_: int,
        title: str,
        text: str,
        yes: str,
        no: str,
        answered: Answered,
        category: "Category" = "warning",
    ) -> None:
        """Opens a question. `answered` is called once, with True for the yes button."""
        self._waiting[id_] = answered
        self._ask(title, text, {"id": int(id_), "yes": yes, "no": no, "category": category})

    def waits(self, id_: int) -> bool:
        """Whether a question has not been answered yet."""
        return id_ in self._waiting

    def withdraw(self, id_: int) -> None:
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
            if isinstance(reply, Mapping) and (id_ := dialog_id(key)) in self._waiting:
                self._waiting.pop(id_)(reply.get("a") is True)


def dialog_id(key: object) -> int:
    """The id of a dialog that a report has as a text; 0, which none has, for anything else."""
    try:
        return int(str(key))
    except ValueError:  # "current"
        return 0
