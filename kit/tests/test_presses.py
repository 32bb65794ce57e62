"""`brovik.testing`: the start of a backend, and what the operator presses."""

# Wrong types are handed over on purpose, and attributes are set that a module of its own does not declare.
# mypy: disable-error-code="arg-type,attr-defined,assignment,index"

import subprocess
import sys
import threading
import unittest

from plain_backend import FUNCTIONS, BackendCase, PlainBackend

from brovik import testing
from brovik.actuator import ActuatorEnum
from brovik.auto import AutoEnum
from brovik.chart import ChartEnum
from brovik.gui import Gui, GuiEnum
from brovik.sensor import SensorEnum
from brovik.settings import SettingsEnum
from brovik.shell import ShellActionEnum
from brovik.simulator import SimuEnum
from brovik.wifi import WifiActionEnum

ENUMS = {
    "actuator": ActuatorEnum.Pumpe,
    "auto": AutoEnum.Toggle,
    "chart": ChartEnum.Save,
    "gui": GuiEnum.PopupOpened,
    "sensor": SensorEnum.Start,
    "shell": ShellActionEnum.Update,
    "simulator": SimuEnum.Lw,
    "settings": SettingsEnum.secs_pump,
    "wifi": WifiActionEnum.Scan,
}


class StartTest(unittest.TestCase):
    """start()."""

    def test_order(self) -> None:
        """First `init`, then the first report of the screens."""
        backend = PlainBackend()
        self.assertIs(testing.start(backend), backend)
        self.assertEqual(backend.calls, [("init", False), ("gui_value_from_cpp", GuiEnum.Ready, None)])

    def test_missing_and_wrong_functions(self) -> None:
        """It says which one."""
        for name in ("init", *FUNCTIONS.values()):
            with self.subTest(name):
                backend = PlainBackend()
                delattr(backend, name)
                with self.assertRaisesRegex(AttributeError, rf"^controller has no function {name}\(\)$"):
                    testing.start(backend)
                setattr(backend, name, 5)
                with self.assertRaisesRegex(TypeError, rf"^controller\.{name} is no function but 5$"):
                    testing.start(backend)

    def test_before_the_screens(self) -> None:
        """As in the program, a message of `init` waits for the screens, a question and a toast are lost."""
        code = """
from plain_backend import PlainBackend
from brovik import testing
from brovik.gui import Gui

def init(_debug):
    Gui.question("Frage", "", {"id": 1})
    Gui.toast_warn("Notiz")
    Gui.message("Meldung", "", "info")

backend = PlainBackend()
backend.init = init
testing.start(backend)
print([dialog.title for dialog in testing.dialogs()], testing.toasts())
"""
        ended = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, check=False)
        self.assertEqual((ended.stdout, ended.stderr), ("['Meldung'] []\n", ""))

    def test_message_of_a_second_backend(self) -> None:
        """It waits for `Ready`, too."""
        testing.reset()
        backend = PlainBackend()
        backend.init = lambda _debug: Gui.message("Meldung", "", "info")
        testing.start(backend)
        self.assertEqual([dialog.title for dialog in testing.dialogs()], ["Meldung"])
        self.assertEqual([call[1] for call in backend.calls], [GuiEnum.Ready, GuiEnum.DialogData])
        testing.reset()

    def test_error_of_init(self) -> None:
        """It is the test's."""
        backend = PlainBackend()
        backend.init = lambda _debug: 1 / 0
        with self.assertRaises(ZeroDivisionError):
            testing.start(backend)


class PressTest(BackendCase):
    """press()."""

    def test_every_family(self) -> None:
        """Calls the function of the family with the enumerator and, but for outputs, with a value."""
        for family, enum in ENUMS.items():
            with self.subTest(family):
                self.backend.calls.clear()
                value = True if family == "sensor" else None
                testing.press(family, enum, value)
                expected = (FUNCTIONS[family], enum) + (() if family == "actuator" else (value,))
                self.assertEqual(self.backend.calls, [expected])
                self.assertIs(type(self.backend.calls[0][1]), type(enum))

    def test_values_as_from_a_screen(self) -> None:
        """Whole numbers are floats, tuples are lists."""
        for sent, arrives in (
            (5, 5.0),
            (2**40, float(2**40)),
            (True, True),
            ("ä€😀", "ä€😀"),
            (("a", "b"), ["a", "b"]),
            ([], []),
            ({}, {}),
            ({"7": {"a": True}, "current": [1, None]}, {"7": {"a": True}, "current": [1.0, None]}),
        ):
            with self.subTest(sent=sent):
                self.backend.calls.clear()
                testing.press("chart", ChartEnum.Rename, sent)
                got = self.backend.calls[0][2]
                self.assertEqual((got, repr(got)), (arrives, repr(arrives)))

    def test_wrong_input(self) -> None:
        """A TypeError says what is wrong, and the backend is not called."""
        for arguments, text in (
            (("motor", AutoEnum.Toggle), "A family is one of actuator, auto, chart, .*, not 'motor'"),
            (([], AutoEnum.Toggle), r"A family is one of .*, not \[\]"),
            (("auto", ChartEnum.Save), r'press\("auto", ...\) takes a AutoEnum, not <ChartEnum.Save: 1>'),
            (("auto", 0), r'press\("auto", ...\) takes a AutoEnum, not 0'),
            (("actuator", ActuatorEnum.Pumpe, 1), r'press\("actuator", ...\) takes no value, not 1.0'),
            (("sensor", SensorEnum.Start), r'press\("sensor", ...\) takes True or False, not None'),
            (("sensor", SensorEnum.Start, 1), r'press\("sensor", ...\) takes True or False, not 1.0'),
            (("chart", ChartEnum.Save, {1, 2}), "value: a screen sends .*, not set"),
            (("chart", ChartEnum.Save, [b"x"]), r"value\[0\]: a screen sends .*, not bytes"),
            (("chart", ChartEnum.Save, {"a": object()}), r"value\['a'\]: a screen sends .*, not object"),
            (("chart", ChartEnum.Save, {1: 2}), "value: the keys of a screen are str, not int"),
            (("chart", ChartEnum.Save, 10**400), "value: no number of a screen is as large as 1000"),
        ):
            with self.subTest(arguments=arguments):
                with self.assertRaisesRegex(TypeError, f"^{text}"):
                    testing.press(*arguments)
        self.assertEqual(self.backend.calls, [])

    def test_exception_of_the_backend(self) -> None:
        """What would end the program fails the test."""
        self.backend.auto_value_from_cpp = lambda _enum, _value: 1 / 0
        with self.assertRaises(ZeroDivisionError):
            testing.press("auto", AutoEnum.Toggle)

    def test_missing_function(self) -> None:
        """Says which."""
        del self.backend.auto_value_from_cpp
        with self.assertRaisesRegex(AttributeError, "auto_value_from_cpp"):
            testing.press("auto", AutoEnum.Toggle)

    def test_wrong_thread(self) -> None:
        """The program calls on the main thread alone."""
        errors: list[str] = []

        def press() -> None:
            try:
                testing.press("auto", AutoEnum.Toggle)
            except RuntimeError as error:
                errors.append(str(error))

        thread = threading.Thread(target=press)
        thread.start()
        thread.join()
        self.assertEqual(errors, ["The host calls a backend on Python's main thread: press there"])
        self.assertEqual(self.backend.calls, [])


if __name__ == "__main__":
    unittest.main()
