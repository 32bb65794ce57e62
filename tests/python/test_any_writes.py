"""Rules of the shared objects that hold whatever three threads write into them, in any order.

The programs of the threads are the same ones each time; KUBELOR_PROPERTY_STEPS has more of them run. Of one
that fails, the steps are left out that it fails without.
"""

import itertools
import os
import sys
import threading
import unittest
from collections.abc import Callable, Iterator, Mapping, Sequence
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from random import Random
from typing import Any, TypeAlias

import _probe
from brovik import sensor
from write_model import Call, History, Property, is_identical
from written_properties import MEASURED, OBJECTS, Shared

#: So many that each property has its turn.
STEPS = int(os.environ.get("KUBELOR_PROPERTY_STEPS", 10_000))
WRITERS = 3
#: Of each writer in a program, at most.
MOST_STEPS = 6
MOST_ROUNDS = 3
#: What hangs on how the threads meet does not come each time.
TRIES = 10
CRITICAL = 2


#: The values that a call writes.
Values: TypeAlias = Sequence[tuple[Property, Any]]


@dataclass(frozen=True)
class Step:
    """What a thread does: a call that writes into an object, and tells what."""

    shared: Shared
    text: str
    act: Callable[[], Values]
    #: The screens do it while the thread waits for them.
    on_screen: bool = False

    def __repr__(self) -> str:
        return self.text


def write(shared: Shared, prop: Property, value: Any) -> Step:
    """An attribute is written."""

    def act() -> Values:
        setattr(shared.python, prop.name, value)
        return [(prop, prop.taken(value))]

    return Step(shared, f"{shared.path}.{prop.name} = {value!r}", act)


def refuse(shared: Shared, prop: Property, value: Any) -> Step:
    """An attribute is written with what it does not take."""

    def act() -> Values:
        try:
            setattr(shared.python, prop.name, value)
        except TypeError:
            return []
        raise AssertionError(f"{prop.name} takes {value!r}")

    return Step(shared, f"{shared.path}.{prop.name} = {value!r} is refused", act)


def shared_object(path: str) -> Shared:
    """By its path."""
    return next(shared for shared in OBJECTS if shared.path == path)


def measure(name: str, values: tuple[str, str], number: float) -> Step:
    """A sensor is read: the number after and the one before the offset are told together."""

    def act() -> Values:
        value = getattr(sensor.Sensor, name)(number)
        if value is None:
            value = number
        else:
            assert any(
                is_identical(value, number - offset) for offset in OFFSETS
            ), f"{name}({number}) is {value}"
        return [(MEASURED[values[0]], value), (MEASURED[values[1]], number)]

    return Step(shared_object("Sensor"), f"{name}({number})", act)


def drag(method: str, name: str, number: float) -> Step:
    """The operator moves a slider of the simulator."""
    shared = shared_object("Simulator")
    prop = next(prop for prop in shared.properties if prop.name == name)

    def act() -> Values:
        _probe.invoke("Simulator", method, number)
        return [(prop, number)]

    return Step(shared, f"{method}({number})", act, on_screen=True)


OFFSETS = tuple(
    map(float, next(p for p in shared_object("Settings").properties if p.name == "lw_offset").values)
)
NUMBERS = (0.0, 0.05, 0.1, 1.0, -3.5)
WRITES = {
    (shared.path, prop.name): [write(shared, prop, value) for value in prop.values]
    + [refuse(shared, prop, value) for value in prop.refused]
    for shared in OBJECTS
    for prop in shared.properties
}
MEASUREMENTS = [
    [measure(name, values, number) for number in NUMBERS]
    for name, values in (
        ("set_lw_without_offset", ("leitwert", "raw_leitwert")),
        ("set_lw_and_apply_offset", ("leitwert", "raw_leitwert")),
        ("set_p_without_offset", ("druck", "raw_druck")),
    )
]
DRAGS = [
    [drag(method, name, number) for number in NUMBERS]
    for method, name in (("changePIncRate", "p_inc_rate"), ("changePDecRate", "p_dec_rate"))
]
#: What only one of the writers does: the changes of the screens then are its own.
OF_THE_FIRST = [steps + WRITES["Simulator", name] for steps, name in zip(DRAGS, ("p_inc_rate", "p_dec_rate"))]


def _with_bounds() -> list[list[list[Step]]]:
    """Steps that have to do with each other: those of a property and of its bounds."""
    groups = []
    for shared in OBJECTS:
        for prop in shared.properties:
            names = [shared.by_qml[bound].name for bound in prop.bounds or ()]
            group = [WRITES[shared.path, name] for name in (prop.name, *names)]
            groups.append([steps for steps in group if steps])
    return [group for group in groups if group]


GROUPS = [*_with_bounds(), *([steps] for steps in MEASUREMENTS)]


@dataclass(frozen=True)
class Program:
    """The steps of each writer, and how often it does them all."""

    writers: Sequence[Sequence[Step]]
    rounds: int

    def shorter(self) -> Iterator["Program"]:
        """The programs that lack one thing."""
        if self.rounds > 1:
            yield Program(self.writers, 1)
        for number, steps in enumerate(self.writers):
            for index in range(len(steps)):
                left = [*steps[:index], *steps[index + 1 :]]
                yield Program([*self.writers[:number], left, *self.writers[number + 1 :]], self.rounds)


def programs() -> Iterator[Program]:
    """Without an end. All threads write one property, each in its turn, and perhaps others alone."""
    random = Random(1)
    for everybody in itertools.cycle(GROUPS):
        writers = []
        for number in range(WRITERS):
            own = random.sample(GROUPS, k=random.choice((0, 0, 1, 2)))
            choices = [steps for group in (everybody, *own) for steps in group]
            if number == 0:
                choices += random.sample(OF_THE_FIRST, k=random.choice((0, 0, 1)))
            count = random.randint(1, MOST_STEPS)
            writers.append([random.choice(random.choice(choices)) for _ in range(count)])
        yield Program(writers, random.randint(1, MOST_ROUNDS))


class Watch:  # pylint: disable=too-few-public-methods  # what it has is read
    """What all objects tell, and what screens show of them."""

    def __init__(self) -> None:
        names = {shared.path: list(shared.by_qml) for shared in OBJECTS}
        self.logs = {path: _probe.ChangeLog(path, properties) for path, properties in names.items()}
        self.screens = {path: _probe.ShownValues(path, properties) for path, properties in names.items()}
        self.log = _probe.LogCapture()

    def clear(self) -> None:
        """Forgets what there was."""
        for log in (self.log, *self.logs.values()):
            log.clear()


class Run:  # pylint: disable=too-few-public-methods  # it does one thing
    """Three threads at work, and what the objects tell meanwhile."""

    def __init__(self, program: Program, logs: Mapping[str, Any]) -> None:
        self.calls: dict[str, list[Call]] = {shared.path: [] for shared in OBJECTS}
        self._logs = logs
        self._program = program
        self._begin = threading.Barrier(WRITERS)

    def finish(self) -> None:
        """All that the writers do."""
        with ThreadPoolExecutor(WRITERS) as threads:
            list(threads.map(self._write, self._program.writers))

    def _write(self, steps: Sequence[Step]) -> None:
        self._begin.wait()
        for _ in range(self._program.rounds):
            for step in steps:
                self._do(step)

    def _do(self, step: Step) -> None:
        path = step.shared.path
        before = len(self._logs[path])
        values = step.act()
        after = len(self._logs[path])
        # The process has the number of its first thread, the one that screens live on.
        thread = os.getpid() if step.on_screen else threading.get_native_id()
        self.calls[path].append(Call(thread, values, before, after))


def initialise(shared: Shared) -> None:
    """Has the initial values in an object: the bounds before what is between them."""
    for prop in sorted(shared.properties, key=lambda prop: prop.bounds is not None):
        if prop.values:
            setattr(shared.python, prop.name, prop.initial)
    if shared.python is sensor.Sensor:
        shared.python.set_lw_without_offset(0.0)
        shared.python.set_p_without_offset(0.0)


class AnyWritesTest(unittest.TestCase):
    """Three writers, and the screens."""

    watch: Watch | None

    @classmethod
    def setUpClass(cls) -> None:
        cls.watch = Watch()
        cls.addClassCleanup(sys.setswitchinterval, sys.getswitchinterval())
        # The threads shall meet.
        sys.setswitchinterval(1e-6)

    @classmethod
    def tearDownClass(cls) -> None:
        # What is left of it goes on the GUI thread.
        cls.watch = None
        _probe.settle()

    def check_program(self, program: Program) -> None:
        """All that was told is explained by what was written, and all see the last of it."""
        touched = {step.shared.path for steps in program.writers for step in steps}
        for shared in OBJECTS:
            if shared.path in touched:
                initialise(shared)
        _probe.settle()
        assert self.watch is not None
        self.watch.clear()
        run = Run(program, self.watch.logs)
        run.finish()
        _probe.settle()
        replaced = sum(self.check_object(self.watch, shared, run.calls[shared.path]) for shared in OBJECTS)
        told = [text for level, text in self.watch.log.messages if level == CRITICAL and " WERT ZU " in text]
        assert len(told) == replaced, f"{replaced} values were replaced, but the log has {told}"

    def check_object(self, watch: Watch, shared: Shared, calls: Sequence[Call]) -> int:
        """Gives the number of values that a bound has taken the place of."""
        changes = watch.logs[shared.path].changes
        history = History({prop.qml: prop.taken(prop.initial) for prop in shared.properties}, changes)
        history.check(calls)
        for name in {name for name, _, _ in changes}:
            self.check_last(shared, shared.by_qml[name], history.states[-1][name])
            shown = watch.screens[shared.path].values[name]
            assert repr(shown) == repr(history.states[-1][name]), f"the screens show {shown!r} as {name}"
        return history.replaced

    @staticmethod
    def check_last(shared: Shared, prop: Property, last: Any) -> None:
        """The backend reads what was stored last."""
        read = getattr(shared.python, prop.name)
        number = int(read) if hasattr(read, "__members__") else read
        wanted = prop.initial if prop.reads_default else last
        assert repr(number) == repr(wanted), f"{prop.name} reads {read!r}, not {wanted!r}"

    def failure(self, program: Program) -> AssertionError | None:
        """Why the program fails, if it does."""
        try:
            self.check_program(program)
        except AssertionError as error:
            return error
        return None

    def shortest(self, program: Program) -> Program:
        """A program that fails as well, and does not without any of its steps."""
        for shorter in program.shorter():
            if any(self.failure(shorter) for _ in range(TRIES)):
                return self.shortest(shorter)
        return program

    def test_any_writes(self) -> None:
        """Each change is told of once, an equal value never, and what is out of bounds is replaced."""
        done = 0
        for program in programs():
            error = self.failure(program)
            if error is not None:
                raise self.failureException(f"{error}\nin {self.shortest(program)}") from error
            done += program.rounds * sum(map(len, program.writers))
            if done >= STEPS:
                break

    def test_defaults_stay(self) -> None:
        """No constant is another one after all that."""
        for shared in OBJECTS:
            for prop in shared.properties:
                default = getattr(shared.python, f"{prop.name}_default", prop.initial)
                wanted = prop.taken(prop.initial)
                self.assertEqual(prop.taken(default), wanted, prop.name)


if __name__ == "__main__":
    unittest.main()
