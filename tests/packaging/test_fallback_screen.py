"""The screen on the console when nothing else comes up."""

import os
import pty
import subprocess
import tempfile
import unittest
from pathlib import Path

from units import UNITS

SCRIPT = UNITS / "kubelor-fallback-screen"
START = "\033c\033[9;0]\033[?25l"


class FallbackScreenTest(unittest.TestCase):
    """With a journal of the test's."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.folder = Path(self.enterContext(folder))
        self.support = self.folder / "support.conf"

    def _journal(self, script: str) -> None:
        command = self.folder / "journalctl"
        command.write_text("#!/bin/sh\n" + script, "utf-8")
        command.chmod(0o755)

    def _command(self) -> dict[str, str]:
        path = f"{self.folder}:{os.environ['PATH']}"
        return os.environ | {"PATH": path, "KUBELOR_SUPPORT_CONF": str(self.support)}

    def _screen(self) -> str:
        run = subprocess.run(
            [str(SCRIPT)], env=self._command(), stdout=subprocess.PIPE, timeout=60, check=True
        )
        text = run.stdout.decode("utf-8")
        self.assertTrue(text.startswith(START))
        return text.removeprefix(START)

    def test_log_and_telephone(self) -> None:
        """The last lines of both, and of their starts and ends, and the number from the file."""
        self.support.write_text("# Kommentar\nService: 0123 456789\n", "utf-8")
        self._journal(f'echo "$*" >"{self.folder}/asked"; seq -f "Zeile %g" 50\n')
        screen = self._screen()
        self.assertIn("  Service: 0123 456789\n", screen)
        self.assertNotIn("Kommentar", screen)
        self.assertEqual([line for line in screen.splitlines() if line.startswith("Zeile")][0], "Zeile 31")
        self.assertIn("Zeile 50\n", screen)
        asked = (self.folder / "asked").read_text()
        for source in ("_SYSTEMD_UNIT=kubelor.service", "_PID=1 UNIT=kubelor.service"):
            self.assertIn(f" {source} + ", asked)
        self.assertTrue(
            asked.endswith("_PID=1 UNIT=kubelor-display.service + SYSLOG_IDENTIFIER=kubelor-display\n")
        )

    def test_nothing_steers_the_terminal(self) -> None:
        """Control characters in the log and in the hint are left out, long lines cut."""
        self.support.write_text("\033[31mrot\n", "utf-8")
        self._journal("printf '\\033]0;x\\302\\233\\007\\tb\\177\\r\\n%0200d\\n' 0\n")
        screen = self._screen()
        self.assertIn("  [31mrot\n", screen)
        self.assertIn("]0;x b\n", screen)
        self.assertIn("\n" + "0" * 80 + "\n", screen)
        self.assertFalse(set(screen) & {"\033", "\007", "\177", "\r", "\x9b"})

    def test_without_either(self) -> None:
        """No number and a journal that fails."""
        self._journal("echo 'No journal files were found.' >&2; exit 1\n")
        screen = self._screen()
        self.assertIn("  Bitte rufen Sie den Service an.\n", screen)
        self.assertIn("No journal files were found.", screen)

    def test_width_of_the_terminal(self) -> None:
        """Lines are cut to the width of the terminal that it is shown on."""
        self._journal("printf '%0200d\\n' 0\n")
        master, slave = pty.openpty()
        subprocess.run(["stty", "cols", "40", "rows", "30", "-onlcr"], stdin=slave, check=True)
        with open(master, "rb", buffering=0) as terminal:
            with open(slave, "wb", buffering=0) as console:
                subprocess.run([str(SCRIPT)], env=self._command(), stdout=console, timeout=60, check=True)
                text = terminal.read(65536).decode("utf-8")
        self.assertIn("\n" + "0" * 40 + "\n", text)


if __name__ == "__main__":
    unittest.main()
