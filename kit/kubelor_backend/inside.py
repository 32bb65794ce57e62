"""What `kubelor-backend check` does in a process of its own, with the backend in it.

It tells what it is about to do, and what it has found, in a file: the backend has the streams, and may end
the process.
"""

import importlib
import inspect
import json
import sys
import time
import traceback
from collections.abc import Callable
from pathlib import Path
from types import ModuleType
from typing import Final

from brovik import _kit, testing
from brovik.gui import Gui

#: Longer than that, seconds, and the operator notices.
PROMPT_SECS: Final = 0.5

Finding = dict[str, str]


class Report:
    """Lines of JSON: {"begin": ...} and {"fault": ...} or {"remark": ...}."""

    def __init__(self, file: Path) -> None:
        self._file = file

    def begin(self, what: str) -> None:
        """What is about to be done, if it does not come back."""
        self._write({"begin": what})

    def fault(self, text: str) -> None:
        """Something that has to change."""
        self._write({"fault": text})

    def remark(self, text: str) -> None:
        """Something to think of."""
        self._write({"remark": text})

    def _write(self, line: Finding) -> None:
        with self._file.open("a", encoding="utf-8") as stream:
            stream.write(json.dumps(line) + "\n")


def check(report: Report) -> None:
    """Imports the backend, looks at its functions, and starts it as the program does."""
    report.begin("the import of controller")
    controller = importlib.import_module(_kit.BACKEND)
    functions_fit = [_look_at(report, controller, _kit.INIT, 1)]
    for name, count in _kit.entry_functions().values():
        functions_fit.append(_look_at(report, controller, name, count))
    if not all(functions_fit):
        return
    _start(report, controller)
    for dialog in testing.exceptions():
        report.fault(f"An exception was shown: {dialog.title}: {dialog.text}")
    if Gui.status == "Python Backend nicht initialisiert":
        report.remark("Gui.status still reads as if there were no backend: write it in init.")
    report.begin("the end of Python")


def _start(report: Report, controller: ModuleType) -> None:
    times: dict[str, float] = {}

    def timed(name: str, function: Callable[..., object]) -> Callable[..., object]:
        def run(*arguments: object) -> object:
            report.begin(f"{name}({', '.join(map(str, arguments))})")
            begin = time.monotonic()
            try:
                return function(*arguments)
            finally:
                times[name] = times.get(name, 0.0) + time.monotonic() - begin

        return run

    # A copy, for the module stays as it is.
    started = ModuleType(controller.__name__)
    for name in (_kit.INIT, *(name for name, _ in _kit.entry_functions().values())):
        setattr(started, name, timed(name, getattr(controller, name)))
    testing.start(started)
    for name, seconds in times.items():
        if seconds > PROMPT_SECS:
            report.remark(f"{name}() took {seconds:.1f} s, and the window stands still meanwhile.")


def _look_at(report: Report, controller: ModuleType, name: str, count: int) -> bool:
    """Whether there is such a function and takes so many arguments."""
    function = getattr(controller, name, None)
    arguments = "1 argument" if count == 1 else f"{count} arguments"
    if function is None:
        report.fault(f"controller has no function {name}(). It is called with {arguments}.")
        return False
    if not callable(function):
        report.fault(f"controller.{name} is no function but a {type(function).__name__}.")
        return False
    try:
        inspect.signature(function).bind(*range(count))
    except TypeError as error:
        report.fault(f"{name}() is called with {arguments}, by their position: {error}.")
        return False
    except ValueError:  # a function without a signature, of an extension module
        return True
    if inspect.iscoroutinefunction(function):
        report.fault(f"{name}() is a coroutine: nobody awaits it.")
        return False
    return True


def main() -> None:
    """`inside.py REPORT`: the folder of the backend is first on the path."""
    report = Report(Path(sys.argv[1]))
    try:
        check(report)
    except BaseException as error:  # pylint: disable=broad-exception-caught # also SystemExit
        frames = traceback.extract_tb(error.__traceback__)
        place = f" ({Path(frames[-1].filename).name}, line {frames[-1].lineno})" if frames else ""
        report.fault(f"It raised {type(error).__name__}: {error}{place}")


if __name__ == "__main__":
    main()
