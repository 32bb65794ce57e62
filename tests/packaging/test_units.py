"""The units: what systemd thinks of them."""

import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from units import UNITS

SYSTEM_UNITS = "/lib/systemd/system"
# In tenths.
HIGHEST_EXPOSURE = 20
# What systemd says of the machine that the tests run on.
NOT_OURS = ("Failed to ", "SELinux", "Cannot add dependency job")


def _run(*command: str, **environment: str) -> subprocess.CompletedProcess[str]:
    return subprocess.run(
        command,
        env=os.environ | environment,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        encoding="utf-8",
        timeout=120,
        check=False,
    )


class UnitsTest(unittest.TestCase):
    """The units in a folder as they are installed."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.root = Path(self.enterContext(folder))
        self.units = self.root / "lib/systemd/system"
        self.units.mkdir(parents=True)
        for unit in UNITS.glob("*.service"):
            shutil.copy(unit, self.units)

    def _stand_in(self, path: str) -> str:
        program = self.root / path.lstrip("/")
        program.parent.mkdir(parents=True, exist_ok=True)
        program.write_text("#!/bin/sh\n", "utf-8")
        program.chmod(0o755)
        return str(program)

    def _with_stand_ins(self) -> None:
        """Lets all commands and documents be there."""
        for unit in self.units.glob("*.service"):
            text = re.sub(
                r"(?m)(^Exec\w+=[-+]*)(/\S+)",
                lambda found: found[1] + self._stand_in(found[2]),
                unit.read_text("utf-8"),
            )
            unit.write_text(text, "utf-8")

    def _verify(self, *units: str, first: str = "") -> None:
        path = f"{first}{self.units}:{SYSTEM_UNITS}"
        run = _run("systemd-analyze", "verify", "--man=no", *units, SYSTEMD_UNIT_PATH=path)
        complaints = [line for line in run.stdout.splitlines() if not line.startswith(NOT_OURS)]
        # The system's own units have complaints of their own.
        ours = [line for line in complaints if "kubelor" in line]
        self.assertEqual(ours, [], run.stdout)

    def test_verified(self) -> None:
        """Nothing is misspelt or missing, with the display of the installation."""
        self._with_stand_ins()
        self._verify(*(unit.name for unit in self.units.glob("*.service") if "x11" not in unit.name))

    def test_what_is_wrong_is_found(self) -> None:
        """That test would see a wrong line and a missing command."""
        for line in ("WatchdogSecs=3", "ExecStartPre=/missing"):
            self._with_stand_ins()
            unit = self.units / "kubelor.service"
            unit.write_text(unit.read_text("utf-8").replace("[Service]\n", f"[Service]\n{line}\n"), "utf-8")
            with self.subTest(line), self.assertRaises(AssertionError):
                self._verify("kubelor.service")

    def test_the_other_display_takes_its_place(self) -> None:
        """The variant, once enabled, is the display that the program is bound to."""
        self._with_stand_ins()
        enabled = _run("systemctl", f"--root={self.root}", "enable", "kubelor-display-x11.service")
        self.assertEqual(enabled.returncode, 0, enabled.stdout)
        link = self.root / "etc/systemd/system/kubelor-display.service"
        self.assertEqual(Path(os.readlink(link)).name, "kubelor-display-x11.service")
        link.unlink()
        link.symlink_to(self.units / "kubelor-display-x11.service")
        self._verify("kubelor.service", first=f"{link.parent}:")

    def test_lines_of_the_display(self) -> None:
        """What finds the display's lines in the journal is the same name, whichever display it is."""
        for unit in self.units.glob("kubelor-display*.service"):
            self.assertIn("\nSyslogIdentifier=kubelor-display\n", unit.read_text("utf-8"), unit.name)
        screen = (UNITS / "kubelor-fallback-screen").read_text("utf-8")
        self.assertIn("SYSLOG_IDENTIFIER=kubelor-display ", screen)

    def test_exposure(self) -> None:
        """What the program could do to the machine stays small."""
        unit = str(self.units / "kubelor.service")
        threshold = f"--threshold={HIGHEST_EXPOSURE}"
        run = _run("systemd-analyze", "security", "--offline=true", threshold, "--no-pager", unit)
        self.assertEqual(run.returncode, 0, run.stdout)
        self.assertIn("Overall exposure level", run.stdout)

    def test_user(self) -> None:
        """The user and the groups can be made, and those of the devices are the user's."""
        (self.root / "etc").mkdir()
        run = _run("systemd-sysusers", f"--root={self.root}", str(UNITS / "kubelor.sysusers"))
        self.assertEqual(run.returncode, 0, run.stdout)
        self.assertRegex((self.root / "etc/passwd").read_text(), r"(?m)^kubelor:.*:/usr/sbin/nologin$")
        groups = (self.root / "etc/group").read_text()
        for group in ("gpio", "input", "render", "video"):
            self.assertRegex(groups, rf"(?m)^{group}:.*:kubelor$")


if __name__ == "__main__":
    unittest.main()
