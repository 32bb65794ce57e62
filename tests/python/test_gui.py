"""The operator interface as the backend sees it."""

import unittest
from threading import Thread
from typing import Any

import _probe
from brovik import gui
from shared_properties import Attribute, check_initial_values, check_writes

ATTRIBUTES = [
    Attribute("page", "page", gui.PageEnum.Auto, gui.PageEnum.Chart),
    Attribute("indicate_scrollable", "indicateScrollable", True, False),
    Attribute("status", "status", "Python Backend nicht initialisiert", "ä€😀"),
    Attribute("status2", "status2", "Keine Statusmeldungen vorhanden", ""),
    Attribute("status3", "status3", "", "<b>fett</b>"),
    Attribute("fsize_xs", "fSizeXs", 12.0, 1.5),
    Attribute("fsize_s", "fSizeS", 14.0, 1.5),
    Attribute("fsize_m", "fSizeM", 16.0, 1.5),
    Attribute("fsize_l", "fSizeL", 18.0, 1.5),
    Attribute("hsize", "hSize", 20.0, 1.5),
    Attribute("control_height", "controlHeight", 65, 1),
    Attribute("box_left_margin", "boxLeftMargin", 35, 1),
]

HIDDEN = [
    "title",
    "fullscreen",
    "debug",
    "scale_factor",
    "items_scale_factor",
    "controls_enabled",
    "dark_theme_enabled",
    "fsize_xs_default",
]

PAGES = [
    "Auto",
    "SettingsAuto",
    "SettingsElectrolyte",
    "SettingsMisc",
    "SettingsNetwork",
    "SettingsAppearance",
    "WifiLogin",
    "HandOp",
    "Chart",
    "ChartsList",
    "UpdatesOverview",
    "UpdatesAvailable",
    "UpdatesInstalled",
    "UpdatesConsole",
    "UpdatesShell",
]

ENUMS = {
    gui.PageEnum: PAGES,
    gui.IconEnum: ["Saved", "Smiley", "Info"],
    gui.ColorEnum: ["Transparent", "Green"],
    gui.GuiEnum: ["Ready", "DeleteWarnings", "FlashPico", "PopupOpened", "DialogData"],
    gui.PopupEnum: ["Fullen", "Recovery"],
}

Emission = tuple[str, bool, list[Any]]


class GuiTest(unittest.TestCase):
    """Attributes and functions of brovik.gui.Gui."""

    def setUp(self) -> None:
        self.log = _probe.SignalLog("Gui")

    def emitted(self) -> list[Emission]:
        """What has been raised since the last call."""
        emissions: list[Emission] = self.log.emissions
        self.log.clear()
        return emissions

    def test_initial_values(self) -> None:
        """Every attribute starts as documented."""
        check_initial_values(self, gui.Gui, ATTRIBUTES)

    def test_writes(self) -> None:
        """Every attribute can be written, notifies once, and not at all if nothing changes."""
        check_writes(self, "Gui", gui.Gui, ATTRIBUTES)

    def test_hidden_attributes(self) -> None:
        """What belongs to the host is not shown."""
        for name in HIDDEN:
            with self.subTest(name), self.assertRaises(AttributeError):
                getattr(gui.Gui, name)

    def test_enums(self) -> None:
        """The enumerators have their short names and numbers."""
        for enum, names in ENUMS.items():
            with self.subTest(enum.__name__):
                members = {name: int(value) for name, value in enum.__members__.items()}
                self.assertEqual(list(members.items()), [(name, number) for number, name in enumerate(names)])

    def test_dialogs(self) -> None:
        """close_dialog() rejects unless told otherwise; close_current_dialog() must be told."""
        gui.Gui.close_dialog(5)
        gui.Gui.close_dialog(id_=6, accept=True)
        gui.Gui.close_current_dialog(True)
        gui.Gui.close_current_dialog(accept=False)
        expected = [
            ("closeDialog", False, [5, False]),
            ("closeDialog", False, [6, True]),
            ("closeCurrentDialog", False, [True]),
            ("closeCurrentDialog", False, [False]),
        ]
        self.assertEqual(self.emitted(), expected)
        with self.assertRaises(TypeError):
            gui.Gui.close_current_dialog()

    def test_signals_without_a_screen(self) -> None:
        """They are raised without failing; arguments go by position or by name, as declared."""
        gui.Gui.set_warnings_dialog_data(count=2, title="t", text="x", yes_txt="ja")
        gui.Gui.set_pico_stdout("o")
        gui.Gui.set_pico_stderr("e")
        gui.Gui.set_pico_return_value(-1)
        gui.Gui.show_poweroff_dialog()
        expected = [
            ("setWarningsDialogData", False, [2, "t", "x", "ja"]),
            ("setPicoStdout", False, ["o"]),
            ("setPicoStderr", False, ["e"]),
            ("setPicoReturnValue", False, [-1]),
            ("showPoweroffDialog", False, []),
        ]
        self.assertEqual(self.emitted(), expected)
        gui.Gui.request_popup(which=gui.PopupEnum.Recovery, id_=4)
        self.assertEqual([(name, values[1]) for name, _, values in self.emitted()], [("requestPopup", 4)])

    def test_toasts(self) -> None:
        """A toast has its icon, one without a name none."""
        gui.Gui.toast_notify("a", gui.IconEnum.Smiley)
        gui.Gui.toast_notify(text="b", icon_enum=gui.IconEnum(7), color_enum=gui.ColorEnum.Green, duration=5)
        toasts = [(values[0], values[1], values[3]) for _, _, values in self.emitted()]
        self.assertEqual(toasts, [("a", "qrc:/brovik/base/img/emoji-smile.svg", 1000), ("b", None, 5)])
        gui.Gui.toast_warn("c")
        gui.Gui.toast_warn(text="d", duration=7)
        self.assertEqual(self.emitted(), [("toastWarn", False, ["c", 1000]), ("toastWarn", False, ["d", 7])])

    def test_question(self) -> None:
        """The options reach the screens as a map."""
        gui.Gui.question(title="t", text="x", options={"id": 3, 4: [True, None]})
        (name, _, (title, text, options)) = self.emitted()[0]
        self.assertEqual((name, title, text), ("question", "t", "x"))
        self.assertEqual(options, {"4": [True, None], "id": 3})
        with self.assertRaises(TypeError):
            gui.Gui.question("t", "x", {"a": object()})
        self.assertEqual(self.emitted(), [])

    def test_messages_wait_for_the_screens(self) -> None:
        """Before the screens are loaded a message is kept; questions and toasts are raised all the same."""
        gui.Gui.message(title="t", text="x", category="info")
        self.assertEqual(self.emitted(), [])

    def test_scale(self) -> None:
        """The sizes follow the factor and come back exactly."""
        gui.Gui.apply_items_scale_to_default(factor=1.5)
        self.assertEqual((gui.Gui.control_height, gui.Gui.box_left_margin), (98, 53))
        self.assertEqual(len(self.emitted()), 8)
        gui.Gui.apply_items_scale(factor=1.0)
        self.assertEqual(self.emitted(), [])
        gui.Gui.apply_items_scale_to_default(1.0)
        check_initial_values(self, gui.Gui, ATTRIBUTES[5:])
        self.assertEqual(_probe.qml("Gui", "itemsScaleFactor"), 1.0)

    def test_wrong_types(self) -> None:
        """A wrong type raises TypeError and changes nothing; a text takes anything."""
        wrong: dict[str, list[Any]] = {
            "page": [0, "Auto", None, gui.IconEnum.Saved],
            "indicate_scrollable": [1, None, ""],
            "fsize_m": ["12", None, [1]],
            "control_height": [1.5, "1", None],
        }
        for name, values in wrong.items():
            for value in values:
                with self.subTest(name=name, value=value):
                    before = getattr(gui.Gui, name)
                    with self.assertRaises(TypeError):
                        setattr(gui.Gui, name, value)
                    self.assertEqual(getattr(gui.Gui, name), before)
        for call in (
            lambda: gui.Gui.close_dialog("5"),
            lambda: gui.Gui.close_dialog(5, 1),
            lambda: gui.Gui.toast_notify("a", 1),
            lambda: gui.Gui.request_popup(1, 2),
            lambda: gui.Gui.apply_items_scale("1"),
            lambda: gui.Gui.set_pico_return_value(1.5),
        ):
            with self.assertRaises(TypeError):
                # A lambda without annotations, that passes a wrong type on purpose.
                call()  # type: ignore[no-untyped-call]
        self.assertEqual(self.emitted(), [])
        gui.Gui.status = None
        self.assertEqual(gui.Gui.status, "None")
        gui.Gui.status = ATTRIBUTES[2].initial

    def test_unknown_attribute(self) -> None:
        """A misspelt name raises AttributeError."""
        with self.assertRaises(AttributeError):
            gui.Gui.statsu = "x"

    def test_text_that_raises(self) -> None:
        """A text whose str() fails is reported and becomes the empty text."""

        class Silent:  # pylint: disable=too-few-public-methods
            """Has no text."""

            def __str__(self) -> str:
                raise ValueError("stumm")

        log = _probe.LogCapture()
        gui.Gui.status3 = "x"
        gui.Gui.status3 = Silent()
        self.assertEqual(gui.Gui.status3, "")
        self.assertIn("py::error_already_set: ValueError: stumm", log.messages[0][1])

    def test_flood_from_four_threads(self) -> None:
        """No change is lost, huge texts arrive whole."""
        writes, huge = 500, "x" * 10_000_000

        def write(number: int) -> None:
            for count in range(writes):
                gui.Gui.status = f"{number} {count}"
            gui.Gui.status2 = huge + str(number)

        threads = [Thread(target=write, args=(number,)) for number in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(self.log.names.count("statusChanged"), 4 * writes)
        self.assertEqual(len(_probe.qml("Gui", "status2")), len(huge) + 1)
        gui.Gui.status, gui.Gui.status2 = ATTRIBUTES[2].initial, ATTRIBUTES[3].initial


if __name__ == "__main__":
    unittest.main()
