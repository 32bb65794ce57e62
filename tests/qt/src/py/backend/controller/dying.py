"""Fails in all places where nobody catches, each time as DialogData asks for it."""

import contextlib
import gc
import io
import os
import sys
import threading
from collections.abc import Callable
from typing import Any, NoReturn

from brovik.gui import GuiEnum, PageEnum

from controller.telling import tell, wait_for_page

THREADS = 2_000


# What these classes have is called by Python itself.
# pylint: disable=too-few-public-methods
class _Unreadable(Exception):
    """Has no text."""

    def __str__(self) -> str:
        raise RuntimeError("kein Text")


class _Undead:
    """Fails when it is taken down."""

    def __init__(self, name: str) -> None:
        self._name = name

    def __repr__(self) -> str:
        if not self._name:
            raise RuntimeError("kein Name")
        return self._name

    def __del__(self) -> None:
        raise ValueError("untot")


class _Nameless(threading.Thread):
    """Does not tell its name to anybody else."""

    @property
    def name(self) -> str:
        """Only the thread itself may ask."""
        if threading.get_ident() == self.ident:
            raise RuntimeError("kein Name")
        return "Namenlos"

    @name.setter
    def name(self, _name: str) -> None:
        pass


def _fail() -> NoReturn:
    raise ValueError("falsch")


def _fail_unreadably() -> NoReturn:
    raise _Unreadable(_Unreadable())


def _die(target: Callable[[], object] = _fail, count: int = 1) -> None:
    for _ in range(count):
        thread = threading.Thread(target=target, name="Pumpe")
        thread.start()
        thread.join()


def _die_nameless() -> None:
    thread = _Nameless(target=_fail)
    thread.start()
    thread.join()


def _die_elsewhere() -> None:
    """Of a thread that `threading` does not know."""
    threading.excepthook(threading.ExceptHookArgs((ValueError, ValueError("fremd"), None, None)))


def _die_with_own_hook() -> None:
    threading.excepthook = lambda death: tell("own hook", death.exc_value)
    _die()


def _die_late() -> None:
    def fail_late() -> NoReturn:
        wait_for_page(PageEnum.Chart)
        _fail()

    threading.Thread(target=fail_late, name="Pumpe").start()


def _take_down(name: str) -> None:
    undead = _Undead(name)
    del undead


def _run_loop(
    prepare: Callable[[Any], object], handler: Callable[[Any, dict[str, Any]], object] | None = None
) -> None:
    # The host must do without it.
    import asyncio  # pylint: disable=import-outside-toplevel

    output = io.StringIO()
    loop = asyncio.new_event_loop()
    loop.set_exception_handler(handler)
    with contextlib.redirect_stderr(output):
        prepare(loop)
        loop.call_soon(loop.stop)
        loop.run_forever()
        gc.collect()
    loop.close()
    tell("asyncio has written", "falsch" in output.getvalue() or "nur Text" in output.getvalue())


def _lose_task(loop: Any) -> None:
    async def fail() -> NoReturn:
        _fail()

    loop.create_task(fail(), name="Netz")


def _call_back(loop: Any) -> None:
    loop.call_soon(_fail)


def _pass_on(loop: Any, context: dict[str, Any]) -> None:
    tell("own handler")
    loop.default_exception_handler(context)


def _fail_as_handler(_loop: Any, _context: dict[str, Any]) -> NoReturn:
    raise OSError("Handler")


_PLACES: dict[str, Callable[[], None]] = {
    "thread": _die,
    "unreadable": lambda: _die(_fail_unreadably),
    "exit": lambda: _die(lambda: sys.exit(3)),
    "flood": lambda: _die(count=THREADS),
    "nameless": _die_nameless,
    "elsewhere": _die_elsewhere,
    "own hook": _die_with_own_hook,
    "late": _die_late,
    "undead": lambda: _take_down("Zombie"),
    "nameless undead": lambda: _take_down(""),
    "task": lambda: _run_loop(_lose_task),
    "callback": lambda: _run_loop(_call_back),
    "text": lambda: _run_loop(lambda loop: loop.call_exception_handler({"message": "nur Text"})),
    "own handler": lambda: _run_loop(_call_back, lambda _loop, _context: tell("own handler")),
    "passing handler": lambda: _run_loop(_call_back, _pass_on),
    "failing handler": lambda: _run_loop(_call_back, _fail_as_handler),
}

if "TEST_AT_IMPORT" in os.environ:
    _die()


def init(_debug: bool) -> None:
    """Tells what the host has imported."""
    tell("asyncio", "asyncio" in sys.modules)


def gui_value_from_cpp(what: GuiEnum, value: str) -> None:
    """Fails."""
    if what == GuiEnum.DialogData:
        _PLACES[value]()
