"""`brovik.testing`."""

# Wrong types are handed over on purpose, and attributes are set that a module of its own does not declare.
# mypy: disable-error-code="arg-type,attr-defined,assignment,index"

import subprocess
import sys
import threading
import unittest
from typing import TYPE_CHECKING, Any

from plain_backend import FUNCTIONS, PlainBackend

import brovik
from brovik import testing
from brovik.actuator import Actuator, ActuatorEnum
from brovik.auto import Auto, AutoEnum, ProgressColor
from brovik.chart import Chart, ChartEnum, ChartMetaData
from brovik.config import Config
from brovik.gui import Gui, GuiEnum, IconEnum
from brovik.sensor import Sensor, SensorEnum
from brovik.settings import SettingsEnum, SettingsValues
from brovik.shell import Shell, ShellActionEnum
from brovik.simulator import Simulator, SimuEnum
from brovik.wifi import WifiActionEnum

if TYPE_CHECKING:
    from brovik.records import InstalledPackage

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
INSTALLED: "InstalledPackage" = {"name": "x", "version": "1", "arch": "all", "description": "", "name2": ""}


class BackendCase(unittest.TestCase):
    """A backend that has been started."""

    def setUp(self) -> None:
        testing.reset()
        self.backend = PlainBackend()
        testing.start(self.backend)
        self.backend.calls.clear()


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


class DialogTest(BackendCase):
    """Dialogs, and what the backend is told of them."""

    def ask(self, title: str = "Weiter?", **options: Any) -> None:
        """Opens a question."""
        Gui.question(title, "Text", options)
        testing.process_events()

    def test_question_with_an_id(self) -> None:
        """Opens, is answered, and closes: three reports."""
        self.ask(id=7, no="Nein", description="weiter", category="warning")
        (dialog,) = testing.dialogs()
        self.assertEqual(
            (dialog.id_, dialog.title, dialog.yes, dialog.no, dialog.category),
            (7, "Weiter?", "OK", "Nein", "warning"),
        )
        self.assertEqual(self.backend.reports(), [{"current": [7.0, "weiter"]}])
        testing.answer(True, 7)
        self.assertEqual(self.backend.reports(), [{"7": {"a": True}}, {"7": {"a": True}, "current": None}])
        self.assertEqual(testing.dialogs(), [])
        self.assertEqual(testing.questions(), [dialog])

    def test_question_without_an_id(self) -> None:
        """Reports its answer only when it has closed."""
        self.ask(yes=None)
        self.assertEqual(testing.dialogs()[0].yes, "")
        self.assertEqual(self.backend.reports(), [{"current": [-1.0, None]}])
        testing.answer(False)
        self.assertEqual(self.backend.reports(), [{"-1": {"a": False}, "current": None}])

    def test_stack(self) -> None:
        """What is below becomes the current one; an id that is open opens no second time."""
        self.ask("unten", id=1, description="u")
        self.ask("oben", id=2)
        self.ask("noch einmal", id=2)
        self.assertEqual([dialog.title for dialog in testing.dialogs()], ["unten", "oben"])
        self.backend.reports()
        testing.answer(True)
        self.assertEqual(self.backend.reports()[-1], {"2": {"a": True}, "current": [1.0, "u"]})

    def test_answers(self) -> None:
        """Dialogs that are in there are answered as they open, by id or title."""
        testing.answers[7] = True
        testing.answers["Neustart"] = False
        self.ask(id=7)
        self.ask("Neustart", id=8)
        self.ask("offen", id=9)
        self.assertEqual([dialog.id_ for dialog in testing.dialogs()], [9])
        replies = [report for report in self.backend.reports() if "current" not in report]
        self.assertEqual(replies, [{"7": {"a": True}}, {"8": {"a": False}}])

    def test_the_backend_asks_again(self) -> None:
        """A question that an answer leads to is shown too, also if the backend asks on another thread."""

        def take(_enum: GuiEnum, data: object) -> None:
            if data == {"1": {"a": True}}:
                thread = threading.Thread(target=Gui.question, args=("zweite", "", {"id": 2}))
                thread.start()
                thread.join()

        self.backend.gui_value_from_cpp = take
        testing.answers[1] = True
        self.ask("erste", id=1)
        self.assertEqual([dialog.title for dialog in testing.dialogs()], ["zweite"])

    def test_close_by_the_backend(self) -> None:
        """It answers as the operator would."""
        self.ask("erste", id=1)
        self.ask("zweite", id=2)
        self.backend.reports()
        Gui.close_dialog(1, True)
        Gui.close_current_dialog(False)
        Gui.close_dialog(5)
        testing.process_events()
        self.assertEqual(
            self.backend.reports(),
            [
                {"1": {"a": True}},
                {"1": {"a": True}, "current": [2.0, None]},
                {"2": {"a": False}},
                {"2": {"a": False}, "current": None},
            ],
        )

    def test_messages_toasts_and_console(self) -> None:
        """What was shown can be read, also when it is gone."""
        Gui.message("Titel", "Text", "success")
        Gui.toast_notify("gespeichert", IconEnum.Saved, duration=300)
        Gui.toast_warn("leer")
        Shell.append_stdout("Zeile")
        Shell.append_stderr("Fehler")
        (message,) = testing.messages()
        self.assertEqual((message.title, message.text, message.category), ("Titel", "Text", "success"))
        self.assertEqual(
            testing.toasts(),
            [testing.Toast("gespeichert", False, 300), testing.Toast("leer", True, 1000)],
        )
        self.assertEqual(testing.console(), [("stdout", "Zeile"), ("stderr", "Fehler")])
        testing.answer(True, "Titel")
        self.assertEqual(self.backend.reports()[-1], {"-1": {"a": False}, "current": None})

    def test_exceptions(self) -> None:
        """One that is forwarded is a dialog; one about that dialog is a toast."""

        def take(_enum: GuiEnum, _data: object) -> None:
            try:
                raise KeyError("zweiter")
            except KeyError:
                brovik.forward_exception()

        try:
            raise ValueError("erster")
        except ValueError:
            brovik.forward_exception()
        self.backend.gui_value_from_cpp = take
        testing.process_events()
        self.assertEqual(
            [(shown.title, shown.text) for shown in testing.exceptions()], [("ValueError", "erster")]
        )
        self.assertEqual([toast.text for toast in testing.toasts()], ["KeyError: zweiter"])
        self.assertEqual(testing.log()[0][0], "critical")

    def test_without_end(self) -> None:
        """A backend that answers each report with a new dialog is told of."""
        self.backend.gui_value_from_cpp = lambda _enum, _data: Gui.message("noch", "einer", "info")
        Gui.message("der", "erste", "info")
        with self.assertRaisesRegex(RuntimeError, "^The backend tells of something new each time"):
            testing.process_events()
        self.backend.gui_value_from_cpp = lambda _enum, _data: None

    def test_wrong_input(self) -> None:
        """Is refused."""
        for key, value in ((True, True), (1.5, True), (1, 1), ("x", None)):
            with self.subTest(key=key, value=value), self.assertRaises(TypeError):
                testing.answers[key] = value
        with self.assertRaisesRegex(TypeError, "^An answer is True or False, not 1$"):
            testing.answer(1)
        with self.assertRaisesRegex(LookupError, "^No dialog is open$"):
            testing.answer(True)
        self.ask(id=1)
        with self.assertRaisesRegex(LookupError, "^No dialog 'x' is open$"):
            testing.answer(True, "x")


class SignalsTest(BackendCase):
    """signals()."""

    def test_order_value_and_thread(self) -> None:
        """Each change in its order, with the thread that wrote."""
        with testing.signals(Auto, Gui, Actuator.pumpe, Sensor.start, Chart.p) as changes:
            Auto.active = True
            Auto.active = True

            def write() -> None:
                Gui.status = "läuft"
                Actuator.pumpe.state = True
                Chart.p.add_point((0.5, 1.25))
                Auto.progress_color = ProgressColor.Error

            thread = threading.Thread(target=write, name="maschine")
            thread.start()
            thread.join()
            Sensor.start.state = True
            Gui.message("Titel", "Text", "info")
        change = testing.Change
        self.assertEqual(
            changes.all,
            [
                change("Auto", "active", True, "MainThread"),
                change("Gui", "status", "läuft", "maschine"),
                change("Pumpe", "state", True, "maschine"),
                change("p", "pointAdded", ((0.5, 1.25),), "maschine"),
                change("Auto", "progress_color", int(ProgressColor.Error), "maschine"),
                change("Start", "state", True, "MainThread"),
                change("Gui", "message", ("Titel", "Text", "info", 0), "MainThread"),
            ],
        )
        self.assertEqual(changes.names[:2], ["Auto.active", "Gui.status"])
        self.assertEqual([entry.value for entry in changes.named("Gui.status")], ["läuft"])
        changes.clear()
        self.assertEqual(changes.all, [])

    def test_value_at_that_moment(self) -> None:
        """Not the last one."""
        with testing.signals(SettingsValues) as changes:
            for seconds in (6, 7, 8):
                SettingsValues.secs_pump = seconds
        self.assertEqual([change.value for change in changes.named("Settings.secs_pump")], [6, 7, 8])

    def test_names_are_those_of_python(self) -> None:
        """All attributes with a type that can be shown are told by their own names."""
        with testing.signals(Simulator, Config, Gui, Shell) as changes:
            Simulator.a_in_0 = 3
            Config.has_steam_valve = True
            Gui.fsize_xs = 3.0
            Shell.installed = [INSTALLED]
        self.assertEqual(
            [(change.name, change.value) for change in changes.all],
            [("a_in_0", 3), ("has_steam_valve", True), ("fsize_xs", 3.0), ("installed", [INSTALLED])],
        )

    def test_many_threads(self) -> None:
        """No change is lost, and each has its thread."""
        writes = 300

        def write() -> None:
            for count in range(writes):
                Gui.status = f"{threading.current_thread().name} {count}"

        with testing.signals(Gui) as changes:
            threads = [threading.Thread(target=write, name=f"t{number}") for number in range(4)]
            for thread in threads:
                thread.start()
            for thread in threads:
                thread.join()
        told = changes.named("Gui.status")
        self.assertEqual(len(told), 4 * writes)
        self.assertTrue(all(change.value.startswith(f"{change.thread} ") for change in told))

    def test_wrong_input(self) -> None:
        """Is refused."""
        for wrong in (5, None, AutoEnum.Toggle, brovik.gui):
            with self.subTest(wrong=wrong), self.assertRaisesRegex(
                TypeError, "^An object of brovik is wanted"
            ):
                with testing.signals(wrong):
                    pass


class StateTest(BackendCase):
    """What can be read, and reset()."""

    def test_outputs(self) -> None:
        """Those that are on, and those that the page shows."""
        Actuator.pumpe.state = Actuator.mv_luft.state = True
        self.assertEqual(testing.outputs(), {"Pumpe", "MvLuft"})
        Actuator.set_dout_model([Actuator.mv_luft, Actuator.pumpe])
        self.assertEqual(testing.shown_outputs(), ["MvLuft", "Pumpe"])

    def test_chart(self) -> None:
        """The points of lines that have any. Nothing is logged, for the screens are there."""
        Chart.p.add_point((0.5, 1.0))
        Chart.step.data = [(0.0, 1.0), (2.0, 2.0)]
        self.assertEqual(testing.chart(), {"P": [(0.5, 1.0)], "Step": [(0.0, 1.0), (2.0, 2.0)]})
        self.assertEqual(testing.log(), [])

    def test_log(self) -> None:
        """Level and text."""
        brovik.Logger.info("eins")
        SettingsValues.secs_pump = 10_000
        self.assertEqual(testing.log()[0], ("info", "eins"))
        self.assertEqual(testing.log()[1][0], "critical")

    def test_wait_until(self) -> None:
        """Waits for another thread, and not for ever."""
        begin = threading.Event()

        def write() -> None:
            begin.wait()
            Auto.progress = 50

        thread = threading.Thread(target=write)
        thread.start()
        begin.set()
        testing.wait_until(lambda: Auto.progress == 50)
        thread.join()
        Gui.toast_warn("x")
        testing.wait_until(lambda: True)
        self.assertEqual([toast.text for toast in testing.toasts()], ["x"])
        with self.assertRaisesRegex(AssertionError, r"^This did not come about within 0\.01 s"):
            testing.wait_until(lambda: Auto.progress == 51, 0.01)
        with self.assertRaisesRegex(TypeError, "^A condition is a function, not False$"):
            testing.wait_until(False)

    def test_reset(self) -> None:
        """Everything is as at the import."""
        before = Gui.status, SettingsValues.secs_pump, SettingsValues.secs_pump_max, Auto.progress_color
        Gui.status = "x"
        SettingsValues.secs_pump_max = 500
        SettingsValues.secs_pump = 400
        Auto.progress_color = ProgressColor.Error
        Actuator.pumpe.state = Actuator.pumpe.blocked = True
        Actuator.set_dout_model(Actuator.all_douts)
        Sensor.set_p_without_offset(2.0)
        Sensor.start.state = True
        Chart.p.add_point((0.0, 1.0))
        Chart.meta_data_list.append(ChartMetaData())
        Gui.apply_items_scale(2.0)
        Gui.message("x", "y", "info")
        Gui.toast_warn("z")
        testing.answers[5] = True
        brovik.Logger.info("w")
        testing.process_events()
        testing.reset()
        after = Gui.status, SettingsValues.secs_pump, SettingsValues.secs_pump_max, Auto.progress_color
        self.assertEqual(after, before)
        self.assertEqual((testing.outputs(), testing.shown_outputs(), testing.chart()), (set(), [], {}))
        self.assertEqual((Actuator.pumpe.blocked, Sensor.druck, Sensor.start.state), (False, 0.0, False))
        self.assertEqual((Chart.meta_data_list.size(), Gui.fsize_xs), (0, 12.0))
        self.assertEqual((testing.dialogs(), testing.messages(), testing.toasts()), ([], [], []))
        self.assertEqual((dict(testing.answers), testing.log()), ({}, []))

    def test_reset_of_the_scale(self) -> None:
        """That of the controls has no attribute."""
        with testing.signals(Gui) as changes:
            Gui.apply_items_scale(2.0)
            testing.reset()
        self.assertEqual([change.value for change in changes.named("Gui.itemsScaleFactor")], [2.0, 1.0])


if __name__ == "__main__":
    unittest.main()
