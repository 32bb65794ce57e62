"""The stub files of the host's module."""

import importlib
import os
import tempfile
import unittest
from pathlib import Path
from unittest.mock import patch

import demo_path  # pylint: disable=unused-import
import brovik
import controller
from tools.stubs import write_stubs

DEMO = Path(controller.__file__).resolve().parents[1]


class StubsTest(unittest.TestCase):
    """Written and checked in."""

    def setUp(self) -> None:
        directory = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)

    @staticmethod
    def texts(directory: Path) -> dict[str, str]:
        """Content of the stub files below a directory."""
        return {
            str(path.relative_to(directory)): path.read_text(encoding="utf-8")
            for path in directory.rglob("*")
            if path.suffix in (".pyi", ".md")
        }

    def test_checked_in_files_are_current(self) -> None:
        """The tree's own files say what this host has. If not: kubelor-demo --make-stubs."""
        write_stubs(brovik, self.directory)
        self.assertEqual(self.texts(self.directory), self.texts(DEMO / "stubs"))

    def test_every_module(self) -> None:
        """The package and its eleven modules, and the reference of all."""
        write_stubs(brovik, self.directory)
        self.assertEqual(len(self.texts(self.directory)), 13)

    def test_signatures(self) -> None:
        """Names, defaults, types, docstrings."""
        write_stubs(brovik, self.directory)
        actuator = self.texts(self.directory)["brovik/actuator.pyi"]
        self.assertIn("    def add_blocked(self, outputs: Iterable[ActuatorEnum]) -> None:\n", actuator)
        self.assertIn("    def block_all_except_of(self, outputs: Set[ActuatorEnum]) -> None:\n", actuator)
        gui = self.texts(self.directory)["brovik/gui.pyi"]
        for line in (
            "class ColorEnum:",
            "    Transparent: ClassVar[ColorEnum]",
            "    def close_dialog(self, id_: int, accept: bool = False) -> None:",
            "    def message(self, title: str, text: str, "
            'category: typing.Literal["info", "warning", "error", "success"]) -> None:',
            "    def toast_notify(self, text: str, icon_enum: IconEnum, "
            "color_enum: ColorEnum = ColorEnum.Transparent, duration: int = 1000) -> None:",
            '    def status(self) -> str:\n        """Status line under the header."""',
            "    @status.setter\n    def status(self, value: str) -> None: ...",
            "Gui: GuiClass",
        ):
            with self.subTest(line):
                self.assertIn(f"{line}\n", gui)

    def test_reference(self) -> None:
        """Attributes with their bounds, constants, numbers of enumerators, methods."""
        write_stubs(brovik, self.directory)
        reference = self.texts(self.directory)["brovik.md"]
        for line in (
            "### `SettingsValues`, of class `SettingsClass`",
            "| `secs_pump` | `int` | Rinsing per pass, seconds. `secs_pump_min` 5. `secs_pump_max` 20. "
            "`secs_pump_default` 5. |",
            "| `druck` | `float` | Pressure after the offset, bar. Read-only. |",
            "`p_offset` 'p_offset', `lw_offset` 'lw_offset', `use_co2_after_saure` 'use_co2_after_saure'",
            "`Transparent`\u00a00, `Green`\u00a01",
            "def close_dialog(self, id_: int, accept: bool = False) -> None:",
        ):
            with self.subTest(line):
                self.assertIn(f"{line}\n", reference)
        self.assertNotIn("| `secs_pump_min` |", reference)

    def test_only_in_stub_mode(self) -> None:
        """The import writes the files if the variable says so, and starts nothing."""
        self.addCleanup(importlib.reload, controller)
        for value, times in (("1", 1), ("0", 0), ("", 0)):
            with (
                self.subTest(value),
                patch.dict(os.environ, {"BROVIK_MAKE_PY_STUBS": value}),
                patch("tools.stubs.write_stubs") as write,
            ):
                importlib.reload(controller)
                self.assertEqual([call.args for call in write.call_args_list], [(brovik,)] * times)
                self.assertEqual(controller.backend.cache_info().currsize, 0)


if __name__ == "__main__":
    unittest.main()
