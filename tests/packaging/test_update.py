"""kubelor-update on a machine of stand-ins: packages, dpkg and systemctl."""

import fcntl
import os
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from units import PACKAGING

UPDATE = PACKAGING / "update" / "kubelor_update.py"
INTERRUPT = Path(__file__).with_name("interrupt.py")
HEALTHY_SECS = "0.05"
INSTALLED, RESTORED, REFUSED, BROKEN = range(4)

# A package is a line: its name, its version, and how the program runs with it.
OLD = "kubelor 1 good\n"
NEW = "kubelor 2 good\n"

DPKG = """
echo "dpkg $* offline=${SYSTEMD_OFFLINE-}" >>"$MACHINE/calls"
case "$*" in *--install*) ;; *) exit 0 ;; esac
for file; do
    case $file in
    *.deb)
        echo "half of it" >"$MACHINE/installed"
        # The power fails between two steps.
        if [ -e "$MACHINE/cut" ]; then rm "$MACHINE/cut"; kill -9 "$PPID"; exit 1; fi
        ! grep -q uninstallable "$file" || { echo "dpkg: error"; exit 1; }
        [ ! -e "$MACHINE/full" ] || exit 1
        cp "$file" "$MACHINE/installed"
        ;;
    esac
done
"""

DPKG_DEB = """
grep -q '^kubelor' "$2" && cut -d ' ' -f 1 "$2"
"""

SYSTEMCTL = """
echo "systemctl $*" >>"$MACHINE/calls"
read -r _ version runs <"$MACHINE/installed"
case $1 in
restart)
    echo 0 >"$MACHINE/fed"
    echo "$version" >"$MACHINE/running"
    [ "$runs" != dead ]
    ;;
show)
    fed=$(($(cat "$MACHINE/fed") + 1))
    echo "$fed" >"$MACHINE/fed"
    restarts=0
    [ "$runs" != crashing ] || restarts=1
    [ "$runs" != late ] || [ "$fed" -lt 2 ] || restarts=1
    [ "$runs" != mute ] || fed=1
    printf 'ActiveState=active\\nInvocationID=7\\nNRestarts=%s\\nWatchdogTimestampMonotonic=%s\\n' "$restarts" "$fed"
    ;;
esac
"""


class UpdateTest(unittest.TestCase):
    """A machine on which version 1 runs."""

    def setUp(self) -> None:
        # enterContext() ends it with the test.
        folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        self.machine = Path(self.enterContext(folder))
        self._set_up()

    def _set_up(self) -> None:
        self.state = Path(tempfile.mkdtemp(dir=self.machine))
        for name, script in (("dpkg", DPKG), ("dpkg-deb", DPKG_DEB), ("systemctl", SYSTEMCTL)):
            command = self.machine / "bin" / name
            command.parent.mkdir(exist_ok=True)
            command.write_text("#!/bin/sh\n" + script, "utf-8")
            command.chmod(0o755)
        (self.machine / "cgroup").write_text("0::/system.slice/update.service\n", "utf-8")
        (self.machine / "installed").write_text(OLD, "utf-8")
        (self.machine / "running").write_text("1\n", "utf-8")
        self.assertEqual(self._run("keep", self._package(OLD)), INSTALLED)
        (self.machine / "calls").write_text("", "utf-8")

    def _package(self, text: str) -> str:
        file = self.machine / f"kubelor_{text.split()[1]}_arm64.deb"
        file.write_text(text, "utf-8")
        return str(file)

    def _environment(self) -> dict[str, str]:
        return os.environ | {
            "MACHINE": str(self.machine),
            "PATH": f"{self.machine}/bin:{os.environ['PATH']}",
            "KUBELOR_UPDATE_FOLDER": str(self.state),
            "KUBELOR_UPDATE_CGROUP": str(self.machine / "cgroup"),
            "KUBELOR_UPDATE_HEALTHY_SECS": HEALTHY_SECS,
        }

    def _run(self, *arguments: str, interrupt_at: int = 0) -> int:
        program = [str(INTERRUPT), str(interrupt_at)] if interrupt_at else []
        run = subprocess.run(
            [sys.executable, *program, str(UPDATE), *arguments],
            env=self._environment(),
            stderr=subprocess.PIPE,
            encoding="utf-8",
            timeout=60,
            check=False,
        )
        self.log = run.stderr
        return run.returncode

    def _read(self, name: str) -> str:
        return (self.machine / name).read_text("utf-8")

    def _kept(self) -> list[str]:
        return [file.read_text("utf-8") for file in (self.state / "kept").iterdir()]

    def _result(self) -> str:
        return (self.state / "result").read_text("utf-8").split()[0]

    def _is_at_rest(self, version: str) -> None:
        """That version is installed and kept, and nothing is left to do."""
        self.assertEqual(self._read("installed"), version)
        self.assertEqual(self._kept(), [version])
        self.assertFalse((self.state / "state").exists())
        self.assertFalse((self.state / "new").exists())
        calls = self._read("calls")
        self.assertEqual(self._run("resume"), 0)
        self.assertEqual(self._read("calls"), calls)

    def test_good_packages(self) -> None:
        """They are installed, the service runs them, and they are the way back."""
        self.assertEqual(self._run("install", self._package(NEW)), INSTALLED, self.log)
        self.assertEqual(self._read("running"), "2\n")
        self.assertEqual(self._result(), "installed")
        self.assertIn("<6>installed and healthy: kubelor_2_arm64.deb\n", self.log)
        self._is_at_rest(NEW)
        for line in self._read("calls").splitlines():
            self.assertEqual("offline=1" in line, line.startswith("dpkg "), line)

    def test_bad_packages(self) -> None:
        """Whatever is wrong with them, the previous ones are back and run."""
        for fault in ("dead", "crashing", "late", "mute", "uninstallable"):
            with self.subTest(fault):
                self._set_up()
                self.assertEqual(
                    self._run("install", self._package(f"kubelor 2 {fault}\n")), RESTORED, self.log
                )
                self.assertEqual(self._read("running"), "1\n")
                self.assertEqual(self._result(), "restored")
                self.assertIn("<3>", self.log)
                # While the packages are exchanged, nobody starts what does not run.
                calls = self._read("calls")
                stopped, back = calls.index("systemctl stop"), calls.rindex("--install")
                self.assertLess(stopped, back)
                self._is_at_rest(OLD)

    def test_no_way_back(self) -> None:
        """If the previous ones cannot be installed either, the next boot tries once more."""
        (self.machine / "full").touch()
        self.assertEqual(self._run("install", self._package("kubelor 2 dead\n")), BROKEN, self.log)
        self.assertEqual(self._result(), "broken")
        self.assertEqual(self._run("resume"), BROKEN)
        (self.machine / "full").unlink()
        self.assertEqual(self._run("resume"), RESTORED)
        self._is_at_rest(OLD)

    def test_refused(self) -> None:
        """What cannot go well is not begun."""
        new, text = self._package(NEW), self.machine / "text.deb"
        text.write_text("no package", "utf-8")
        for arguments in ((), (str(text),), (str(self.machine / "missing.deb"),)):
            self.assertEqual(self._run("install", *arguments), REFUSED)
            self.assertEqual(self._result(), "refused")
        self.assertEqual(self._run("install", self._package("kubelor-extra 2 good\n")), REFUSED)
        self.assertIn("no way back is kept for kubelor-extra", self.log)
        (self.machine / "cgroup").write_text("0::/system.slice/kubelor.service\n", "utf-8")
        self.assertEqual(self._run("install", new), REFUSED)
        self.assertEqual(self._run("uninstall"), REFUSED)
        self.assertNotIn("--install", self._read("calls"))
        self._is_at_rest(OLD)

    def test_nothing_kept(self) -> None:
        """Without a way back there is no update."""
        self.state = self.machine / "empty"
        self.assertEqual(self._run("install", self._package(NEW)), REFUSED)
        self.assertIn("no packages are kept as the way back", self.log)

    def test_one_at_a_time(self) -> None:
        """Who comes second is refused, and leaves the first one's files alone."""
        with (self.state / "lock").open("w") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            self.assertEqual(self._run("install", self._package(NEW)), REFUSED)
            self.assertEqual(self._run("resume"), REFUSED)
        self._is_at_rest(OLD)

    def test_power_cut_between_the_steps_of_dpkg(self) -> None:
        """The next boot has the previous version, whichever dpkg it was."""
        (self.machine / "cut").touch()
        self.assertEqual(self._run("install", self._package(NEW)), -signal.SIGKILL)
        self.assertEqual(self._read("installed"), "half of it\n")
        (self.machine / "cut").touch()
        self.assertEqual(self._run("resume"), -signal.SIGKILL)
        self.assertEqual(self._run("resume"), RESTORED)
        self.assertEqual(self._result(), "restored")
        self.assertIn("--configure --pending", self._read("calls"))
        self._is_at_rest(OLD)

    def test_state_that_cannot_be_read(self) -> None:
        """A damaged note of how far it had come means the way back."""
        (self.state / "state").write_bytes(b"\xff\x00")
        self.assertEqual(self._run("resume"), RESTORED)
        self._is_at_rest(OLD)

    def _interrupt_everywhere(self, new: str, outcome: int) -> set[str]:
        """Kills an update at each of its steps, and the resumption at some; gives how it ends."""
        ends: set[str] = set()
        for step in range(1, 1000):
            self._set_up()
            code = self._run("install", self._package(new), interrupt_at=step)
            if code != -signal.SIGKILL:
                self.assertEqual(code, outcome, self.log)
                self.assertGreater(step, 30)
                return ends
            with self.subTest(step=step):
                self._run("resume", interrupt_at=step % 17 + 1)
                self.assertIn(self._run("resume"), (INSTALLED, RESTORED), self.log)
                version = self._read("installed")
                self.assertIn(version, (OLD, new))
                self._is_at_rest(version)
                ends.add(version)
        raise AssertionError("the update never came to an end")

    def test_interrupted_while_keeping(self) -> None:
        """The way back is the old one, the new one or none, but never a part of one."""
        new = [NEW, "kubelor-extra 3 good\n"]
        for step in range(1, 1000):
            self._set_up()
            code = self._run("keep", *map(self._package, new), interrupt_at=step)
            kept = self._kept() if (self.state / "kept").exists() else []
            if code != -signal.SIGKILL:
                self.assertEqual(sorted(kept), new)
                self.assertGreater(step, 5)
                return
            self.assertIn(sorted(kept), ([], [OLD], new), step)

    def test_interrupted_anywhere(self) -> None:
        """The machine ends in one of the two states, never between."""
        self.assertEqual(self._interrupt_everywhere(NEW, INSTALLED), {OLD, NEW})

    def test_interrupted_on_the_way_back(self) -> None:
        """With packages that do not run it ends in the previous state alone."""
        self.assertEqual(self._interrupt_everywhere("kubelor 2 dead\n", RESTORED), {OLD})


if __name__ == "__main__":
    unittest.main()
