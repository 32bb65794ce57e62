"""The built-in modules themselves."""

import importlib
import sys
import unittest
from types import ModuleType
from typing import Any

import _probe
import brovik
from brovik import Logger

STREAMS = importlib.import_module("_std_redirects")

LEVELS = {"debug": 0, "info": 4, "warning": 1, "critical": 2}


def own_names(namespace: Any) -> list[str]:
    """The public names in the order of their definition."""
    return [name for name in vars(namespace) if not name.startswith("_")]


class ModuleTest(unittest.TestCase):
    """What is in the module."""

    def test_content_in_order(self) -> None:
        """The names come in their order."""
        self.assertEqual(own_names(Logger), ["debug", "info", "warning", "critical", "fatal"])
        self.assertEqual(own_names(STREAMS), ["stdout_redirect", "stderr_redirect"])

    def test_built_in(self) -> None:
        """Both modules are built in."""
        for module in (STREAMS, brovik):
            self.assertIn(module.__name__, sys.builtin_module_names)

    def test_classes_have_no_constructor(self) -> None:
        """Python cannot make a second object, and not a logger either."""
        for submodule in vars(brovik).values():
            for name, cls in vars(submodule).items() if isinstance(submodule, ModuleType) else ():
                if name.endswith("Class"):
                    with self.subTest(name), self.assertRaises(TypeError):
                        cls()
        with self.assertRaises(TypeError):
            Logger()

    def test_one_object(self) -> None:
        """The attribute is the native object itself: what it does, the screens see."""
        brovik.gui.Gui.status3 = "eins"
        self.assertEqual(_probe.qml("Gui", "status3"), "eins")
        brovik.gui.Gui.status3 = ""


class LoggerTest(unittest.TestCase):
    """brovik.Logger."""

    def test_levels(self) -> None:
        """Each function logs its text at its level, with or without w_trace."""
        log = _probe.LogCapture()
        for name, level in LEVELS.items():
            with self.subTest(name):
                log.clear()
                function = getattr(Logger, name)
                function("zu 100 % ä€😀")
                function(msg="x", w_trace=True)
                function("y", False)
                self.assertEqual(log.messages, [(level, "zu 100 % ä€😀"), (level, "x"), (level, "y")])

    def test_signature(self) -> None:
        """Names, types and default are declared."""
        for name in (*LEVELS, "fatal"):
            with self.subTest(name):
                doc = getattr(Logger, name).__doc__
                self.assertTrue(doc.startswith(f"{name}(msg: str, w_trace: bool = False) -> None"), doc)

    def test_only_text(self) -> None:
        """Something that is no str raises TypeError and logs nothing."""
        log = _probe.LogCapture()
        for name in (*LEVELS, "fatal"):
            for wrong in (5, None, b"x", ["x"]):
                with self.subTest(name=name, wrong=wrong), self.assertRaises(TypeError):
                    getattr(Logger, name)(wrong)
        with self.assertRaises(TypeError):
            Logger.info("x", w_trace=5)
        self.assertEqual(log.messages, [])

    def test_text_without_utf8(self) -> None:
        """A text that cannot be encoded is replaced."""
        log = _probe.LogCapture()
        Logger.info("\udcff")
        self.assertEqual(log.messages, [(LEVELS["info"], "<KONVERTIERUNGSFEHLER_PY->QT>")])

    def test_huge_text(self) -> None:
        """A huge text is logged whole."""
        log = _probe.LogCapture()
        Logger.info("x" * 10_000_000)
        self.assertEqual([len(text) for _, text in log.messages], [10_000_000])


class ForwardExceptionTest(unittest.TestCase):
    """brovik.forward_exception()."""

    def setUp(self) -> None:
        _probe.screens_loaded()
        self.shown = _probe.SignalLog("Gui", ["exception"])
        self.log = _probe.LogCapture()

    def forwarded(self, error: BaseException) -> dict[str, Any]:
        """The record of a raised exception."""
        self.shown.clear()
        try:
            raise error
        except BaseException:  # pylint: disable=broad-exception-caught
            self.assertIsNone(brovik.forward_exception())
        ((name, on_gui_thread, (record,)),) = self.shown.emissions
        self.assertEqual((name, on_gui_thread), ("exception", False))
        assert isinstance(record, dict)
        return record

    def test_record(self) -> None:
        """Type, text and trace are shown, without a native place."""
        record = self.forwarded(ValueError("falsch", 2))
        self.assertEqual((record["type"], record["text"]), ("ValueError", "falsch"))
        self.assertTrue(record["withTraceback"])
        self.assertEqual([frame["func"] for frame in record["trace"]], ["forwarded"])
        self.assertEqual(record["trace"][0]["file"], "test_brovik.py")
        self.assertEqual(record["trace"][0]["lineStr"], "raise error")
        ((level, text),) = self.log.messages
        self.assertEqual(level, LEVELS["critical"])
        self.assertRegex(
            text, r"(?s)\ATraceback .*in forwarded\n    raise error\nValueError: \('falsch', 2\)\Z"
        )

    def test_text_of_a_number(self) -> None:
        """The first argument is shown by its text."""
        self.assertEqual(self.forwarded(ValueError(5))["text"], "5")

    def test_without_arguments(self) -> None:
        """Without arguments there is a warning, and the text is that of the exception."""
        self.assertEqual(self.forwarded(ValueError())["text"], "")
        _traceback, (level, text) = self.log.messages
        self.assertEqual(level, LEVELS["warning"])
        reason = "IndexError: tuple index out of range"
        self.assertTrue(text.startswith(f"Konnte den Fehlertext nicht aus args[0] bekommen: {reason}"), text)

    def test_outside_an_except_block(self) -> None:
        """There is nothing to forward but a warning."""
        self.assertIsNone(brovik.forward_exception())
        text = "handle_py_exception() wurde gerufen, obwohl keine Exception geworfen wurde"
        self.assertEqual(self.log.messages, [(LEVELS["warning"], text)])
        self.assertEqual(self.shown.emissions, [])

    def test_exception_without_text(self) -> None:
        """If the record cannot be made there is a warning, and nothing is raised."""

        class Silent(Exception):
            """Has no text."""

            def __str__(self) -> str:
                raise ValueError("stumm")

        try:
            raise Silent()
        except Silent:
            self.assertIsNone(brovik.forward_exception())
        self.assertTrue(self.log.messages[-1][1].startswith("\nforward_exception failed with: "))
        self.assertEqual(self.shown.emissions, [])

    def test_takes_no_argument(self) -> None:
        """The exception is the one being handled, not an argument."""
        with self.assertRaises(TypeError):
            brovik.forward_exception(ValueError())


if __name__ == "__main__":
    unittest.main()
