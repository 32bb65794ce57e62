"""Tests of a backend without screens, in an ordinary Python.

The objects of `brovik` are those of the program, and what `press` calls is called as the program does it. In
place of the screens this module opens and answers dialogs. There is no event loop: what waits is handled by
`process_events`, and by `wait_until` while it waits.

    import controller
    from brovik import testing
    from brovik.auto import Auto, AutoEnum

    testing.start()
    testing.press("auto", AutoEnum.Toggle)
    testing.wait_until(lambda: Auto.active)

All functions belong to Python's main thread, on which the program calls a backend.
"""

import atexit
import importlib
import os
import shutil
import sys
import tempfile
import time
from collections.abc import Callable, Iterator
from contextlib import contextmanager
from dataclasses import dataclass
from types import ModuleType
from typing import TYPE_CHECKING, Any, Final, Literal, Protocol, TypeAlias, get_args

from brovik import _kit
from brovik._screens import Answers, Dialog, Screens, Toast
from brovik.actuator import Actuator, ActuatorEnum
from brovik.auto import AutoEnum
from brovik.chart import Chart, ChartEnum, ChartMetaDataList, LineEnum
from brovik.gui import Gui, GuiEnum
from brovik.sensor import Sensor, SensorEnum
from brovik.settings import SettingsEnum
from brovik.shell import Shell, ShellActionEnum
from brovik.simulator import SimuEnum
from brovik.wifi import WifiActionEnum

if TYPE_CHECKING:
    from brovik.records import DialogReport

__all__ = [
    "Answers",
    "Backend",
    "Change",
    "Changes",
    "Dialog",
    "Family",
    "Toast",
    "answer",
    "answers",
    "chart",
    "console",
    "dialogs",
    "exceptions",
    "log",
    "messages",
    "outputs",
    "press",
    "process_events",
    "questions",
    "reset",
    "shown_outputs",
    "signals",
    "start",
    "toasts",
    "wait_until",
]

#: What the operator has pressed: the backend's function begins with this word.
Family: TypeAlias = Literal[
    "actuator", "auto", "chart", "gui", "sensor", "shell", "simulator", "settings", "wifi"
]

WAIT_SECS: Final = 10.0
_POLL_SECS: Final = 0.002
#: A backend that opens a dialog at each report of a dialog never comes to rest.
_MOST_ROUNDS: Final = 1000


class Backend(Protocol):
    """What the program asks of a backend: the ten functions of the module `controller`."""

    # Each returns at once and lets no exception out; docs/backend.md tells what comes when.
    # pylint: disable=missing-function-docstring  # see the line above

    def init(self, __debug: bool) -> None:
        ...

    def actuator_toggle_from_cpp(self, __enum: ActuatorEnum) -> None:
        ...

    def auto_value_from_cpp(self, __enum: AutoEnum, __value: None) -> None:
        ...

    def chart_action_from_cpp(self, __enum: ChartEnum, __value: str | list[str] | None) -> None:
        ...

    def gui_value_from_cpp(self, __enum: GuiEnum, __value: "bool | DialogReport | None") -> None:
        ...

    def sensor_value_from_cpp(self, __enum: SensorEnum, __state: bool) -> None:
        ...

    def shell_action_from_cpp(self, __enum: ShellActionEnum, __value: str | None) -> None:
        ...

    def simulator_value_from_cpp(self, __enum: SimuEnum, __value: float) -> None:
        ...

    def settings_from_cpp(self, __enum: SettingsEnum, __value: bool | float | str | None) -> None:
        ...

    def wifi_action_from_cpp(self, __enum: WifiActionEnum, __value: str | list[str] | None) -> None:
        ...


@dataclass(frozen=True)
class Change:
    """Something that an object of `brovik` has told of."""

    #: Of the object, for example "Auto", or "Pumpe" for an output.
    object: str
    #: The attribute that has changed, or the signal.
    name: str
    #: What the attribute was set to, an enumerator as its number; the arguments of a signal. None for lists
    #: of objects.
    value: Any
    #: Of the thread that has written, as `threading` names it.
    thread: str


class Changes:
    """What was recorded, in its order."""

    def __init__(self, recorder: _kit.ChangeRecorder) -> None:
        self._recorder = recorder

    @property
    def all(self) -> list[Change]:
        """All of it so far."""
        return [_change(*change) for change in self._recorder.changes()]

    @property
    def names(self) -> list[str]:
        """Object and name of each: "Auto.active"."""
        return [f"{change.object}.{change.name}" for change in self.all]

    def named(self, name: str) -> list[Change]:
        """Those of one name: "Auto.active", "Gui.message"."""
        return [change for change in self.all if f"{change.object}.{change.name}" == name]

    def clear(self) -> None:
        """Forgets all of it."""
        self._recorder.clear()


class _Session:  # pylint: disable=too-few-public-methods # the functions below are its face
    """The backend that is tested, and the screens that it has."""

    def __init__(self) -> None:
        self.backend: ModuleType | None = None
        self.recorder = _kit.ChangeRecorder()
        self.recorder.watch(Gui, "Gui")
        self.recorder.watch(Shell, "Shell")
        self.seen = 0
        self.screens = Screens(lambda enum, data: press("gui", enum, data), self._told)

    def _told(self) -> int:
        return self.seen + len(self.recorder.changes(self.seen))

    def show_news(self) -> bool:
        """Lets the screens take what has come since the last time. False if nothing has."""
        news = self.recorder.changes(self.seen)
        first, self.seen = self.seen, self.seen + len(news)
        for number, (_, signal, _, _, values) in enumerate(news, first):
            self.screens.take(number, signal, values)
        return bool(news)


_session = _Session()

#: What the operator answers as soon as a dialog opens: `answers[7] = True` by its id,
#: `answers["Neustart"] = False` by its title. All other dialogs stay open until `answer`.
answers = _session.screens.answers


def start(backend: ModuleType | None = None) -> ModuleType:
    """Brings the backend up as the program does: imports `controller`, calls `init`, reports `Ready`.

    `backend` is another module in its place. Without `BROVIK_CONFIG_DIR` in the environment the backend gets
    an empty folder, which goes when the process ends. Raises what the backend raises, AttributeError or
    TypeError for a function that is missing or none. To be called once for a backend: it has no end but that
    of the process.
    """
    if "BROVIK_CONFIG_DIR" not in os.environ:
        folder = tempfile.mkdtemp(prefix="brovik-")
        atexit.register(shutil.rmtree, folder, ignore_errors=True)
        os.environ["BROVIK_CONFIG_DIR"] = folder
    _session.backend = backend if backend is not None else importlib.import_module(_kit.BACKEND)
    _session.screens.loaded = False
    _function(_session.backend, _kit.INIT)(False)
    for name, _ in _kit.entry_functions().values():
        _function(_session.backend, name)
    _session.show_news()
    _session.screens.loaded = True
    press("gui", GuiEnum.Ready)
    _session.screens.show_waiting()
    _kit.screens_loaded()
    process_events()
    return _session.backend


def press(family: Family, enum: object, value: object = None) -> None:
    """Calls the backend's function for something that the operator does, with what the screens would send.

    The value goes through the program's own conversion: a whole number arrives as a float. Raises what leaves
    the function, which would end the program; AttributeError without the function; TypeError for a family, an
    enumerator or a value that no screen could send. Without `start` the backend is the module `controller`.
    """
    if family not in get_args(Family):
        raise TypeError(f"A family is one of {', '.join(get_args(Family))}, not {family!r}")
    backend = _session.backend or sys.modules.get(_kit.BACKEND) or importlib.import_module(_kit.BACKEND)
    _kit.press(backend, family, enum, _of_screen(value, "value"))


def process_events() -> None:
    """Handles what waits for the main thread, and shows and answers dialogs, until nothing is left."""
    for _ in range(_MOST_ROUNDS):
        _kit.process_events()
        if not _session.show_news():
            return
    raise RuntimeError("The backend tells of something new each time it is told of something")


def wait_until(condition: Callable[[], object], timeout: float = WAIT_SECS) -> None:
    """Handles events until the condition holds. AssertionError if it does not within so many seconds."""
    if not callable(condition):
        raise TypeError(f"A condition is a function, not {condition!r}")
    deadline = time.monotonic() + timeout
    process_events()
    while not condition():
        if time.monotonic() > deadline:
            raise AssertionError(f"This did not come about within {timeout:g} s: {condition!r}")
        time.sleep(_POLL_SECS)
        process_events()


@contextmanager
def signals(*objects: object) -> Iterator[Changes]:
    """Records what these objects of `brovik` tell of, also outputs, inputs and lines of the chart: which
    attribute is set to what, by which thread, in which order."""
    recorder = _kit.ChangeRecorder()
    for watched in objects:
        recorder.watch(watched, _name(watched))
    yield Changes(recorder)


def answer(accept: bool, dialog: int | str | None = None) -> None:
    """Presses a button of an open dialog: that of this id or title, else the uppermost. True is the yes
    button.

    LookupError if there is no such dialog.
    """
    if not isinstance(accept, bool):
        raise TypeError(f"An answer is True or False, not {accept!r}")
    process_events()
    found = [open_ for open_ in dialogs() if dialog is None or dialog in (open_.id_, open_.title)]
    if not found:
        raise LookupError(f"No dialog {dialog!r} is open" if dialog is not None else "No dialog is open")
    _session.screens.answer(found[-1], accept)
    process_events()


def dialogs() -> list[Dialog]:
    """The open dialogs, the uppermost last."""
    return list(_session.screens.open)


def messages() -> list[Dialog]:
    """The messages that were shown, also those that are closed."""
    return _shown("message")


def questions() -> list[Dialog]:
    """The questions that were asked, also those that are answered."""
    return _shown("question")


def exceptions() -> list[Dialog]:
    """The exceptions that were shown: the type is the title."""
    return _shown("exception")


def toasts() -> list[Toast]:
    """The short notes that were shown."""
    return list(_session.screens.record.toasts)


def console() -> list[tuple[str, str]]:
    """What the console of the updates was given: "stdout" or "stderr", and the text."""
    return list(_session.screens.record.console)


def log() -> list[tuple[str, str]]:
    """The newest lines of the program's log: "debug", "info", "warning" or "critical", and the text."""
    return _kit.log_lines()


def outputs() -> set[str]:
    """Names of the outputs that are on, as in `ActuatorEnum`."""
    return {dout.enum.name for dout in Actuator.active_douts}


def shown_outputs() -> list[str]:
    """Names of the outputs on the page of hand operation, in its order."""
    process_events()
    return [dout.enum.name for dout in _kit.shown_outputs()]


def chart() -> dict[str, list[tuple[float, float]]]:
    """The points of each line that has any, by the name in `LineEnum`."""
    lines = {name: Chart.line_from_line_enum(enum) for name, enum in LineEnum.__members__.items()}
    return {name: line.data for name, line in lines.items() if line is not None and line.data}


def reset() -> None:
    """Puts the objects of `brovik` back to what they were at the import, and forgets dialogs, answers, toasts
    and the log.

    The backend goes on as it was: what its threads write afterwards is there again.
    """
    process_events()
    # In the order of their declaration, in which bounds come before their value.
    for owner, name, value in _kit.initial_values:
        setattr(owner, name, value)
    Gui.apply_items_scale_to_default(1.0)
    Chart.clear()
    Chart.meta_data_list = ChartMetaDataList()
    Sensor.set_lw_without_offset(0.0)
    Sensor.set_p_without_offset(0.0)
    Actuator.set_dout_model(())
    _kit.process_events()
    _session.recorder.clear()
    _session.seen = 0
    _session.screens.clear()
    _kit.clear_log()


def _shown(kind: str) -> list[Dialog]:
    process_events()
    return [dialog for dialog in _session.screens.record.dialogs if dialog.kind == kind]


def _function(backend: ModuleType, name: str) -> Callable[..., object]:
    found: object = getattr(backend, name, None)
    if found is None:
        raise AttributeError(f"{backend.__name__} has no function {name}()")
    if not callable(found):
        raise TypeError(f"{backend.__name__}.{name} is no function but {found!r}")
    return found


def _of_screen(value: object, place: str) -> object:
    """The value, if a screen could send it."""
    if value is None or isinstance(value, (bool, float, str)):
        return value
    if isinstance(value, int):
        try:
            return float(value)
        except OverflowError:
            raise TypeError(f"{place}: no number of a screen is as large as {value}") from None
    if isinstance(value, (list, tuple)):
        return [_of_screen(item, f"{place}[{index}]") for index, item in enumerate(value)]
    if isinstance(value, dict):
        return {_key(key, place): _of_screen(item, f"{place}[{key!r}]") for key, item in value.items()}
    raise TypeError(
        f"{place}: a screen sends None, bool, numbers, str, list and dict, not {type(value).__name__}"
    )


def _key(key: object, place: str) -> str:
    if not isinstance(key, str):
        raise TypeError(f"{place}: the keys of a screen are str, not {type(key).__name__}")
    return key


def _name(watched: object) -> str:
    cls = type(watched).__name__
    enum = getattr(watched, "enum", None)
    if enum is not None:
        return str(enum.name)
    name: object = getattr(watched, "name", None) if cls == "ChartLineClass" else None
    return str(name) if name else cls.removesuffix("Class")


def _change(owner: str, signal: str, property_: str, thread: str, values: tuple[Any, ...]) -> Change:
    if not property_:
        return Change(owner, signal, values, thread)
    name = property_.lower()
    names = _attribute_names()
    return Change(owner, names.get(name, names.get(name.removeprefix("sim"), property_)), values[0], thread)


def _attribute_names() -> dict[str, str]:
    """Names of the attributes by those of the screens: they differ by case and underscores, and those of the
    simulator have a prefix there."""
    return {name.replace("_", "").lower(): name for _, name, _ in _kit.initial_values}
