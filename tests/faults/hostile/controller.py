"""A backend that means harm: nine threads write anything into every attribute, as fast as they can.

HOSTILE_REPORT names the file for what comes back that may not, a line of JSON each. HOSTILE_SEED begins the
chance.
"""

import atexit
import importlib
import json
import os
import random
import threading
from collections import Counter
from typing import Any, Final


WRITERS: Final = 9
#: What may come back. Anything else is reported.
EXPECTED: Final = TypeError
MODULES: Final = (
    "actuator",
    "auto",
    "chart",
    "config",
    "gpio",
    "gui",
    "sensor",
    "settings",
    "shell",
    "simulator",
    "wifi",
)
TEXTS: Final = (
    "",
    "Fass 7",
    "<b>fett</b><img src='x'>",
    "x" * 500,
    "Wort " * 20000,
    "\u202egespiegelt",
    "\0",
    "\ud800",
    "🛢" * 50,
    "Zeile\n" * 20,
)
NUMBERS: Final = (
    0,
    1,
    -1,
    0.5,
    100,
    -273.15,
    1e9,
    1e300,
    -1e300,
    2**31,
    2**63,
    2**100,
    float("nan"),
    float("inf"),
)
LISTS_OF_RECORDS: Final = ("installed", "upgradables", "ip_map_list")
RECORDS: Final = ("scan_results",)
#: The share of records among what is written there. What is no dict is no error of the writer: a dialog tells
#: of it.
MOSTLY: Final = 0.9
STRANGE: Final[tuple[object, ...]] = (
    None,
    object(),
    b"\xff",
    (),
    [],
    {},
    {1, 2},
    [[[]]],
    {"a": None},
    int,
    print,
    ...,
    1j,
)

_report = os.open(os.environ["HOSTILE_REPORT"], os.O_WRONLY | os.O_CREAT | os.O_APPEND)
_written: Counter[str] = Counter()
_seen: set[tuple[str, str]] = set()


def _tell(**values: object) -> None:
    os.write(_report, json.dumps(values).encode() + b"\n")


def _tell_counts() -> None:
    _tell(**_written)


def _is_object(value: object) -> bool:
    """Whether it is one that has attributes of its own to write."""
    cls = type(value)
    return cls.__module__.startswith("brovik") and not hasattr(cls, "__members__")


def _objects() -> dict[int, object]:
    """All objects of the module, and what they hand out."""
    found: dict[int, object] = {}
    waiting = [
        value
        for name in MODULES
        for value in vars(importlib.import_module(f"brovik.{name}")).values()
        if _is_object(value)
    ]
    while waiting:
        value = waiting.pop()
        if id(value) in found:
            continue
        found[id(value)] = value
        for name in _properties(value):
            inner = getattr(value, name)
            waiting += [x for x in (inner if isinstance(inner, list) else [inner]) if _is_object(x)]
    return found


def _properties(value: object) -> list[str]:
    return [name for name, kind in vars(type(value)).items() if isinstance(kind, property)]


def _attributes() -> list[tuple[object, str]]:
    """All that can be written."""
    return [
        (value, name)
        for value in _objects().values()
        for name in _properties(value)
        if vars(type(value))[name].fset is not None
    ]


# pylint: disable-next=too-many-return-statements  # one for each type
def _fitting(like: Any, chance: random.Random) -> object:
    """Something of the same type."""
    if isinstance(like, bool):
        return chance.random() < 0.5
    if isinstance(like, (int, float)):
        return chance.choice(
            (like, -like, like + 1, chance.uniform(-1000, 1000), chance.randint(-1000, 1000))
        )
    if isinstance(like, str):
        return chance.choice(TEXTS)
    if hasattr(type(like), "__members__"):
        return chance.choice(list(type(like).__members__.values()))
    if isinstance(like, (list, tuple)):
        items = [*like, *(like or TEXTS)]
        return [chance.choice(items) for _ in range(chance.randint(0, 20))]
    if isinstance(like, dict):
        return {
            chance.choice(TEXTS): chance.choice((*TEXTS, *NUMBERS, *STRANGE))
            for _ in range(chance.randint(0, 5))
        }
    return like


def _record(chance: random.Random) -> dict[str, object]:
    """What a list of the screens may show; or what it does not know."""
    keys = ("name", "version", "arch", "ip4", "type_", "is_wg", "quality", "is5GHz", "lastChange", "x", "")
    return {
        key: chance.choice((*TEXTS, *NUMBERS[:6], None, True, [], ["a"], {}))
        for key in keys
        if chance.random() < 0.6
    }


def _anything(name: str, like: object, chance: random.Random) -> object:
    kind = chance.random()
    if name in LISTS_OF_RECORDS and kind < MOSTLY:
        return [_record(chance) for _ in range(chance.randint(0, 30))]
    if name in RECORDS and kind < MOSTLY:
        return {chance.choice(TEXTS[1:5]): _record(chance) for _ in range(chance.randint(0, 9))}
    if kind < 0.6:
        return _fitting(like, chance)
    return chance.choice(chance.choice((TEXTS, NUMBERS, STRANGE)))


def _write(attributes: list[tuple[object, str]], seed: int) -> None:
    chance = random.Random(seed)
    while True:
        owner, name = chance.choice(attributes)
        try:
            value = _anything(name, getattr(owner, name), chance)
            setattr(owner, name, value)
            _written["writes"] += 1
        except EXPECTED:
            _written["refused"] += 1
        except BaseException as error:  # pylint: disable=broad-exception-caught  # that is what is looked for
            place = f"{type(owner).__name__}.{name}", type(error).__name__
            if place not in _seen:
                _seen.add(place)
                _tell(attribute=place[0], error=place[1], text=str(error)[:200], value=ascii(value)[:80])


def init(_debug: bool) -> None:
    """Begins at once: the screens come up meanwhile."""
    attributes = _attributes()
    _tell(attributes=len(attributes))
    atexit.register(_tell_counts)
    seed = int(os.environ["HOSTILE_SEED"])
    for number in range(WRITERS):
        threading.Thread(target=_write, args=(attributes, seed + number), daemon=True).start()


def _ignore(*_arguments: object) -> None:
    pass


actuator_toggle_from_cpp = auto_value_from_cpp = chart_action_from_cpp = gui_value_from_cpp = _ignore
sensor_value_from_cpp = settings_from_cpp = shell_action_from_cpp = simulator_value_from_cpp = _ignore
wifi_action_from_cpp = _ignore
