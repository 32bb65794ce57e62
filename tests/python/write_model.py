"""What shared objects make of the writes of several threads, and whether a history of them fits that."""

import math
from collections.abc import Callable, Iterable, Mapping, Sequence
from dataclasses import dataclass, field
from typing import Any

#: A signal: the property by its name for the screens, the number of the thread, and what was stored.
Change = tuple[str, int, Any]
State = Mapping[str, Any]


@dataclass(frozen=True)
class Property:  # pylint: disable=too-many-instance-attributes  # a row of a table
    """One property of an object, as the model knows it."""

    #: Its names for Python and for the screens.
    name: str
    qml: str
    initial: Any
    #: The values that are written, and one that is refused, unless all are taken.
    values: tuple[Any, ...]
    refused: tuple[Any, ...] = ()
    #: What becomes of a value before it is compared.
    taken: Callable[[Any], Any] = lambda value: value
    #: The properties that hold its bounds, by their names for the screens.
    bounds: tuple[str, str] | None = None
    #: Not what was written, but always the same.
    reads_default: bool = False

    def __repr__(self) -> str:
        return self.name

    def bound(self, value: Any, state: State) -> Any:
        """What takes the place of a value that is written into this state; None if nothing does."""
        if self.bounds is None:
            return None
        lowest, highest = (state[bound] for bound in self.bounds)
        if value < lowest or math.isnan(value):
            return lowest
        return highest if value > highest else None


def is_same(one: Any, other: Any) -> bool:
    """In depth, by type and value. As among numbers, -0.0 is 0.0 and NaN is not even itself."""
    if isinstance(one, dict) and isinstance(other, dict):
        return one.keys() == other.keys() and all(is_same(one[key], other[key]) for key in one)
    if isinstance(one, list) and isinstance(other, list):
        return len(one) == len(other) and all(map(is_same, one, other))
    return type(one) is type(other) and bool(one == other)


def is_identical(one: Any, other: Any) -> bool:
    """As is_same, but NaN is NaN."""
    are_numbers = isinstance(one, float) and isinstance(other, float)
    return is_same(one, other) or (are_numbers and math.isnan(one) and math.isnan(other))


@dataclass(frozen=True)
class Call:
    """A call that writes one value or, with nobody in between, several."""

    #: Of the thread that tells of it.
    thread: int
    values: Sequence[tuple[Property, Any]]
    #: How many changes the log of the object had before and after.
    before: int
    after: int


@dataclass
class History:
    """What an object went through: the state at first, and each change."""

    first: State
    changes: Sequence[Change]
    #: How many values were replaced by a bound.
    replaced: int = 0
    #: The states before and after each change.
    states: list[State] = field(init=False)

    def __post_init__(self) -> None:
        self.states = [self.first]
        for name, _, value in self.changes:
            self.states.append({**self.states[-1], name: value})

    def check(self, calls: Iterable[Call]) -> None:
        """Raises AssertionError unless these calls, in some order, make just these changes."""
        explained: set[int] = set()
        for call in calls:
            explained.update(self._check_call(call))
        left = [change for index, change in enumerate(self.changes) if index not in explained]
        assert not left, f"nobody has made these changes: {left}"

    def _check_call(self, call: Call) -> list[int]:
        own = [index for index in range(call.before, call.after) if self.changes[index][1] == call.thread]
        assert not own or own[-1] - own[0] + 1 == len(own), f"somebody came between the values of {call}"
        left = list(own)
        for prop, value in call.values:
            if left and self.changes[left[0]][0] == prop.qml:
                self._check_change(left.pop(0), prop, value)
            else:
                self._check_silence(call, own, prop, value)
        assert not left, f"more than one signal: {[self.changes[index] for index in left]}, for {call}"
        return own

    def _check_change(self, index: int, prop: Property, value: Any) -> None:
        state, stored = self.states[index], self.changes[index][2]
        assert not is_same(state[prop.qml], value), f"{prop.name} = {value!r} is no change, but a signal came"
        bound = prop.bound(value, state)
        wanted = value if bound is None else bound
        assert is_identical(stored, wanted), f"{prop.name} = {value!r} becomes {stored!r}, not {wanted!r}"
        self.replaced += bound is not None

    def _check_silence(self, call: Call, own: Sequence[int], prop: Property, value: Any) -> None:
        """At some moment of the call the value was there; its other signals tell at which."""
        first, last = (own[0], own[-1] + 1) if own else (call.before, call.after)
        assert any(
            is_same(state[prop.qml], value) for state in self.states[first : last + 1]
        ), f"{prop.name} = {value!r} is a change, but no signal came"
