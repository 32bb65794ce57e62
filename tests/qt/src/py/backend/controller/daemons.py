"""Has daemon threads that are still inside the module's functions, and so back in Python, when Python ends.

TEST_DAEMONS names the function.
"""

import atexit
import itertools
import os
import threading
from collections.abc import Callable, Iterator

import brovik
from brovik.gui import Gui
from brovik.wifi import Wifi

THREADS = 2
# Rounds of each thread while exit functions run: enough to be anywhere in a round when Python ends.
ROUNDS = 20


# What these classes have is called by Python itself.
# pylint: disable=too-few-public-methods
class _Slow:
    """Does all that it is asked for in Python, during which other threads have their turn."""

    def _work(self) -> str:
        return "".join(str(number) for number in range(200))

    def __str__(self) -> str:
        return self._work()

    def __repr__(self) -> str:
        return self._work()

    def __del__(self) -> None:
        self._work()


class _Rows(_Slow):
    def __iter__(self) -> Iterator[dict[str, object]]:
        for number in range(20):
            self._work()
            yield {"name": str(number)}


class _Counted(_Rows):
    def __len__(self) -> int:
        return len(self._work())


class _Named(_Slow):
    """Shown by its __repr__."""

    __str__ = object.__str__


def _forward() -> None:
    try:
        raise ValueError(_Slow())
    except ValueError:
        brovik.forward_exception()


def _fail() -> None:
    raise ValueError(_Slow())


def _die() -> None:
    thread = threading.Thread(target=_fail, daemon=True)
    thread.start()
    thread.join()


def _write(name: str, value: Callable[[], object]) -> Callable[[], None]:
    return lambda: setattr(Gui, name, value())


def _write_rows(rows: Callable[[], object]) -> Callable[[], None]:
    return lambda: setattr(Wifi, "ip_map_list", rows())


_ROUNDS: dict[str, Callable[[], None]] = {
    "forward_exception": _forward,
    "str": _write("status", _Slow),
    "repr": _write("status", _Named),
    "iter": _write_rows(_Rows),
    "len": _write_rows(_Counted),
    "excepthook": _die,
}

_counts = [0] * THREADS


def _repeat(number: int) -> None:
    run = _ROUNDS[os.environ["TEST_DAEMONS"]]
    for _counts[number] in itertools.count():
        run()


@atexit.register
def _wait_for_rounds() -> None:
    """Lets all threads reach the middle of their work."""
    goals = [count + ROUNDS for count in _counts]
    pause = threading.Event()
    while any(count < goal for count, goal in zip(_counts, goals)):
        pause.wait(0.001)


def init(_debug: bool) -> None:
    """Starts the threads."""
    for number in range(THREADS):
        threading.Thread(target=_repeat, args=(number,), daemon=True).start()
