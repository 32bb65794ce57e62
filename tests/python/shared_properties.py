"""What holds for every attribute of a shared object."""

import unittest
from dataclasses import dataclass
from typing import Any

import _probe


@dataclass(frozen=True)
class Attribute:
    """An attribute as the backend and the screens know it, its initial value and another legal one."""

    name: str
    qml: str
    initial: Any
    other: Any


def as_qml(value: Any) -> Any:
    """What QML reads for a value that was written from Python."""
    return int(value) if hasattr(value, "__members__") else value


def check_initial_values(test: unittest.TestCase, shared: Any, attributes: list[Attribute]) -> None:
    """Every attribute starts as the table says, with exactly that type."""
    for attribute in attributes:
        with test.subTest(attribute.name):
            value = getattr(shared, attribute.name)
            test.assertEqual(value, attribute.initial)
            test.assertIs(type(value), type(attribute.initial))


def check_writes(test: unittest.TestCase, path: str, shared: Any, attributes: list[Attribute]) -> None:
    """A write notifies once, on the writer's thread, and both sides read it; an equal write is silent."""
    for attribute in attributes:
        with test.subTest(attribute.name):
            log = _probe.SignalLog(path)
            setattr(shared, attribute.name, attribute.other)
            setattr(shared, attribute.name, attribute.other)
            test.assertEqual(log.emissions, [(f"{attribute.qml}Changed", False, [])])
            test.assertEqual(getattr(shared, attribute.name), attribute.other)
            test.assertEqual(_probe.qml(path, attribute.qml), as_qml(attribute.other))
            setattr(shared, attribute.name, attribute.initial)


def check_read_only(test: unittest.TestCase, shared: Any, values: dict[str, Any]) -> None:
    """Every attribute has its value and cannot be written."""
    for name, value in values.items():
        with test.subTest(name):
            test.assertEqual(getattr(shared, name), value)
            test.assertIs(type(getattr(shared, name)), type(value))
            with test.assertRaises(AttributeError):
                setattr(shared, name, value)
