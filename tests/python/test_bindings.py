"""What holds for all that the program shows to Python."""

import ast
import re
import types
import unittest
from collections.abc import Iterator
from typing import Any

import _probe
import brovik

# Submodule: its object, that object's class, the name by which the probe knows it.
SINGLETONS = {
    "actuator": ("Actuator", "ActuatorClass", "Actuator"),
    "auto": ("Auto", "AutoClass", "Auto"),
    "gpio": ("GPIO", "GPIOClass", "GPIO"),
    "gui": ("Gui", "GuiClass", "Gui"),
    "chart": ("Chart", "ChartClass", "Chart"),
    "config": ("Config", "ConfigClass", "Config"),
    "sensor": ("Sensor", "SensorClass", "Sensor"),
    "shell": ("Shell", "ShellClass", "Shell"),
    "settings": ("SettingsValues", "SettingsClass", "Settings"),
    "simulator": ("Simulator", "SimulatorClass", "Simulator"),
    "wifi": ("Wifi", "WifiClass", "Wifi"),
}

# What an attribute refuses, by the type that it has. A text takes any object.
WRONG_VALUES: dict[type, list[Any]] = {
    bool: [0, 1, 1.0, "True", None, [], brovik],
    int: ["1", 1.5, None, [], brovik, 2**40],
    float: ["1.0", None, [], brovik, 1j],
    str: [],
    list: [5, None, True, brovik],
    dict: [],
}
WRONG_FOR_OTHERS: list[Any] = [99, 1.5, "x", None, [], brovik]


def submodules() -> dict[str, types.ModuleType]:
    """The submodules in the order in which they were made."""
    return {name: value for name, value in vars(brovik).items() if isinstance(value, types.ModuleType)}


def classes() -> Iterator[type]:
    """All bound classes."""
    for module in (brovik, *submodules().values()):
        yield from (value for value in vars(module).values() if isinstance(value, type))


def properties(cls: type) -> dict[str, property]:
    """The attributes that a class gives to its objects."""
    bound = {name: value for name, value in vars(cls).items() if isinstance(value, property)}
    return {name: value for name, value in bound.items() if "static" not in type(value).__name__}


def signatures(cls: type) -> Iterator[str]:
    """What the class says of how its functions are called."""
    for value in vars(cls).values():
        doc = value.__doc__ if callable(value) else None
        yield from re.findall(r"^(?:\d+\. )?(\w+\(.*\) -> .*)$", doc or "", re.MULTILINE)


def singletons() -> Iterator[tuple[str, Any]]:
    """Each singleton with the probe's name for it."""
    for module, (name, _, path) in SINGLETONS.items():
        yield path, getattr(getattr(brovik, module), name)


def read(shared: Any, name: str) -> Any:
    """The value of an attribute; of a list that is a copy, its elements."""
    value = getattr(shared, name)
    return [str(value.at(index)) for index in range(value.size())] if hasattr(value, "size") else value


class ModuleTest(unittest.TestCase):
    """Content of the modules."""

    def test_order_of_the_content(self) -> None:
        """What brovik holds, in its order."""
        names = [name for name in vars(brovik) if not name.startswith("__")]
        self.assertEqual(names, ["forward_exception", "Logger", *SINGLETONS])

    def test_singletons(self) -> None:
        """Each submodule has its one object and its class."""
        for module, (name, cls, _) in SINGLETONS.items():
            with self.subTest(module):
                shared = getattr(getattr(brovik, module), name)
                self.assertIs(type(shared), getattr(getattr(brovik, module), cls))


class ClassTest(unittest.TestCase):
    """Classes and attributes, whatever they are."""

    def test_documented(self) -> None:
        """Every class and every attribute says what it is."""
        for cls in classes():
            with self.subTest(cls=cls.__qualname__):
                self.assertTrue(cls.__doc__)
            if hasattr(cls, "__members__"):
                continue  # the library's own attributes
            for name, value in properties(cls).items():
                with self.subTest(cls=cls.__qualname__, name=name):
                    self.assertTrue(value.__doc__)

    def test_signatures(self) -> None:
        """Python can read each signature, since editors and stubs are made of them."""
        found = [text for cls in classes() for text in signatures(cls)]
        self.assertGreater(len(found), 100)
        for text in found:
            with self.subTest(text):
                ast.parse(f"def {re.sub('<[^>]*>', '...', text)}: ...")

    def test_no_second_object(self) -> None:
        """Python cannot make a second object of a singleton's class."""
        for path, shared in singletons():
            with self.subTest(path), self.assertRaises(TypeError):
                type(shared)()

    def test_unknown_names(self) -> None:
        """A name that is not there raises AttributeError, read or written."""
        for path, shared in singletons():
            with self.subTest(path):
                with self.assertRaises(AttributeError):
                    shared.no_such_attribute = 1
                with self.assertRaises(AttributeError):
                    _ = shared.no_such_attribute
                with self.assertRaises(AttributeError):
                    del shared.no_such_attribute

    def test_wrong_types(self) -> None:
        """A wrong type raises TypeError, changes nothing and notifies nobody."""
        for path, shared in singletons():
            log = _probe.SignalLog(path)
            for name, value in properties(type(shared)).items():
                before = read(shared, name)
                if value.fset is None:
                    continue
                for wrong in WRONG_VALUES.get(type(getattr(shared, name)), WRONG_FOR_OTHERS):
                    with self.subTest(path, name=name, wrong=wrong):
                        with self.assertRaises(TypeError):
                            setattr(shared, name, wrong)
                        self.assertEqual(read(shared, name), before)
            self.assertEqual(log.names, [])

    def test_numbers_by_the_rules_of_python(self) -> None:
        """Where a number is asked for, True is 1; where a float is, a whole number is one."""
        run = brovik.auto.Auto
        for name, written, stored in (
            ("progress", True, 1),
            ("lw_saure_max", True, 1.0),
            ("lw_saure_max", 2, 2.0),
        ):
            with self.subTest(name, written=written):
                before = getattr(run, name)
                setattr(run, name, written)
                self.assertEqual(getattr(run, name), stored)
                self.assertIs(type(getattr(run, name)), type(stored))
                setattr(run, name, before)

    def test_read_only_attributes(self) -> None:
        """What cannot be written raises AttributeError."""
        for path, shared in singletons():
            for name, value in properties(type(shared)).items():
                if value.fset is None:
                    with self.subTest(path, name=name), self.assertRaises(AttributeError):
                        setattr(shared, name, getattr(shared, name))


if __name__ == "__main__":
    unittest.main()
