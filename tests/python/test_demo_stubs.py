"""The stub files of the host's module."""

import re
import tempfile
import unittest
from pathlib import Path
from typing import get_args

import demo_path  # pylint: disable=unused-import
import brovik
from brovik.simulator import Simulator
from tools import records
from tools.stubs import stub_texts, write_stubs

TREE = Path(__file__).resolve().parents[2]
STUBS = TREE / "demo" / "stubs"


class StubsTest(unittest.TestCase):
    """Written and checked in."""

    def test_checked_in_files_are_current(self) -> None:
        """The tree's own files say what this host has. If not: kubelor-demo --make-stubs."""
        checked_in = {
            str(path.relative_to(STUBS)): path.read_text(encoding="utf-8")
            for path in STUBS.rglob("*")
            if path.suffix in (".pyi", ".md")
        }
        self.assertEqual(stub_texts(brovik), checked_in)

    def test_every_module(self) -> None:
        """The package and its eleven modules, the records, and the reference of all."""
        with tempfile.TemporaryDirectory() as directory:
            files = list(write_stubs(brovik, Path(directory)))
            self.assertEqual(len(files), 14)
            self.assertEqual(set(files), {path for path in Path(directory).rglob("*") if path.is_file()})
            for path in files:
                self.assertEqual(
                    path.read_text(encoding="utf-8"), stub_texts(brovik)[str(path.relative_to(directory))]
                )

    def test_every_container_tells_its_content(self) -> None:
        """What the host calls no more than a dict or a list is said by the table of the signatures."""
        for name, text in stub_texts(brovik).items():
            self.assertIsNone(re.search(r"(?<=[:>] )(Iterable|dict|list|set)(?![\w\[])", text), name)
            self.assertNotIn("dict[str, typing.Any]", text)

    def test_signatures(self) -> None:
        """Names, defaults, types, docstrings."""
        actuator = stub_texts(brovik)["brovik/actuator.pyi"]
        self.assertIn("    def add_blocked(self, outputs: Iterable[ActuatorEnum]) -> None:\n", actuator)
        self.assertIn("    def block_all_except_of(self, outputs: Set[ActuatorEnum]) -> None:\n", actuator)
        gui = stub_texts(brovik)["brovik/gui.pyi"]
        for line in (
            "class ColorEnum:",
            "    Transparent: ClassVar[ColorEnum]",
            "    def close_dialog(self, id_: int, accept: bool = False) -> None:",
            "    def message(self, title: str, text: str, category: brovik.records.Category) -> None:",
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
        reference = stub_texts(brovik)["brovik.md"]
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


class RecordsTest(unittest.TestCase):
    """The records have the keys that the host looks at."""

    @staticmethod
    def read_in(file: str, pattern: str) -> set[str]:
        """The keys that a screen reads: its text matches the pattern with each of them."""
        return set(re.findall(pattern, (TREE / "qt" / "brovik" / file).read_text(encoding="utf-8")))

    @staticmethod
    def keys(record: type) -> set[str]:
        """Those of a type, also the optional ones."""
        return set(record.__annotations__)

    def test_packages(self) -> None:
        """The columns of the two tables."""
        for record, file in (
            (records.InstalledPackage, "shell/UpdatesTabInstalled.qml"),
            (records.AvailablePackage, "shell/UpdatesTabAvailable.qml"),
        ):
            self.assertEqual(self.keys(record), self.read_in(file, r"\brecord\.(\w+)"), file)

    def test_networks(self) -> None:
        """The two lists of the page "Netzwerk"."""
        page = "wifi/SettingsNetwork.qml"
        self.assertEqual(self.keys(records.NetworkInterface), self.read_in(page, r"\brecord\.(\w+)"))
        self.assertEqual(self.keys(records.FoundNetwork), self.read_in(page, r"\bdata\?\.(\w+)"))

    def test_dialogs(self) -> None:
        """The options of a question, the reply of a dialog, the categories."""
        dialogs = "base/Dialogs.qml"
        text = (TREE / "qt" / "brovik" / dialogs).read_text(encoding="utf-8")
        question = text.partition("function question(")[2].partition("\n    }\n")[0]
        self.assertEqual(
            self.keys(records.QuestionOptions),
            set(re.findall(r"\boptions\.(\w+)", question)) | set(re.findall(r'\btake\("(\w+)"\)', question)),
        )
        self.assertEqual(
            self.keys(records.DialogAnswer),
            self.read_in(dialogs, r"\{(\w): accepted\}") | self.read_in(dialogs, r"reply\[key\]\.(\w) ="),
        )
        self.assertEqual(set(get_args(records.Category)), self.read_in(dialogs, r'case "(\w+)":'))

    def test_defaults(self) -> None:
        """What the simulator says of itself."""
        values = Simulator.get_default_values()
        self.assertEqual(
            {key: type(value) for key, value in values.items()}, records.SimulatorDefaults.__annotations__
        )


if __name__ == "__main__":
    unittest.main()
