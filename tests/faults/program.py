"""Runs of the real program, with files of their own, whose calls may be made to fail."""

import os
import re
import subprocess
import unittest
from configparser import ConfigParser
from dataclasses import dataclass
from pathlib import Path
from typing import Final

import layer
from folders import new_folder
from layer import Call, Way

#: The program.
PROGRAM: Final = "KUBELOR_DEMO"
LIMIT_SECS: Final = 120.0
QUIET: Final = Path(__file__).parent / "quiet"
SETTINGS_FOLDER: Final = "kubelor-demo/BrovikGmbH"
SETTINGS_FILE: Final = Path(SETTINGS_FOLDER) / "Kubelor.ini"
#: What was chosen in an earlier run, and what a run leaves besides when its window is closed.
CHOSEN: Final = {"dark": "false"}
GEOMETRY: Final = frozenset({"x", "y", "width", "height"})


@dataclass(frozen=True)
class Run:
    """A run of the program that has ended."""

    code: int
    output: str
    #: Warnings and worse.
    complaints: list[str]
    #: What was counted, and the call that has failed, if one was to.
    calls: list[Call]
    failed: Call | None


class ProgramCase(unittest.TestCase):
    """Runs of the program, each with a folder of its own."""

    def setUp(self) -> None:
        self.folder = new_folder(self)
        self.settings = self.folder / SETTINGS_FILE

    def variables(self, backend: Path = QUIET) -> dict[str, str]:
        """The environment of a run."""
        return os.environ | {
            "HOME": str(self.folder),
            "XDG_CONFIG_HOME": str(self.folder),
            "XDG_RUNTIME_DIR": str(self.folder),
            "PATH": "",  # No tool looks for other windows.
            "QT_QPA_PLATFORM": "offscreen",
            "QT_QUICK_BACKEND": "software",
            "KUBELOR_DEMO_BACKEND": str(backend),
            "BROVIK_DEMO_STICK": "",
            "KUBELOR_DEMO_ENVIRONMENT": str(self.folder / "environment"),
            "KUBELOR_DEMO_SOCKET": str(self.folder / "raise.sock"),
        }

    def store(self, values: dict[str, str]) -> None:
        """Leaves a settings file."""
        self.settings.parent.mkdir(parents=True, exist_ok=True)
        lines = (f"{key}={value}\n" for key, value in values.items())
        self.settings.write_text("[window]\n" + "".join(lines), "utf-8")

    def stored(self) -> dict[str, str]:
        """What the settings file has."""
        parser = ConfigParser()
        parser.read(self.settings, "utf-8")
        return dict(parser["window"]) if parser.has_section("window") else {}

    def kill_after(self, secs: float, backend: Path) -> int | None:
        """Runs the program with that backend and kills it. Its exit code if it has ended by itself."""
        with subprocess.Popen(
            [os.environ[PROGRAM]],
            env=self.variables(backend),
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        ) as process:
            try:
                return process.wait(secs)
            except subprocess.TimeoutExpired:
                process.kill()
                return None

    def run_program(self, paths: str, at: int = 0, way: Way = Way.BROKEN, trace: Path | None = None) -> Run:
        """Runs the program to its end."""
        log = self.folder / "calls"
        log.unlink(missing_ok=True)
        ended = subprocess.run(
            [os.environ[PROGRAM]],
            env=self.variables() | layer.variables(paths, at, way, log, trace),
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            encoding="utf-8",
            errors="replace",
            timeout=LIMIT_SECS,
            check=False,
        )
        calls = layer.read_calls(log)
        return Run(
            ended.returncode,
            ended.stdout,
            # That a busy machine is slow is none.
            re.findall(r"^\[(?:WARN |CRIT )\](?!.*Das Ende wartet).*", ended.stdout, re.MULTILINE),
            calls,
            next((call for call in calls if call.error), None),
        )
