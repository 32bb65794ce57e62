"""The C++ of a copy of the tree, and the tests of its folders.

The copy lies in build/mutation and stays there, so that only what has changed since is compiled again.
Whatever a run leaves in it, killed or not, the next one brings it to the state of the tree first.
"""

import os
import re
import shutil
import signal
import subprocess
import time
from collections.abc import Sequence
from contextlib import AbstractContextManager
from dataclasses import dataclass
from pathlib import Path, PurePath
from typing import Final

from mutation_tests import TestsFail, holding

PRESET: Final = "mutation"
#: The folder of the program itself, which Python knows nothing of but what lies below.
HOST: Final = PurePath("qt/src")
#: Of compilers and of tests at once.
JOBS: Final = os.environ.get("CMAKE_BUILD_PARALLEL_LEVEL", str(os.cpu_count() or 1))
#: A change may make the tests that much slower before it counts as noticed; and seconds besides.
SLOWER: Final = 4
GRACE_SECS: Final = 10


#: Tests of screens for the modules whose C++ serves screens alone.
SCREENS: Final = {
    "base": ("dialog_stack", "dialogs", "dialog_keys"),
    "shell": ("updates_console", "updates_changelog"),
}


class DoesNotBuild(Exception):
    """A change that the compiler has noticed."""


@dataclass(frozen=True)
class Stage:
    """Tests that are built and run together: programs, and the beginnings of the names of their tests."""

    programs: Sequence[str]
    tests: Sequence[str]

    @property
    def pattern(self) -> str:
        """Which tests of ctest these are."""
        return f"^({'|'.join(self.tests)})(\\.|$)"


def stages_of(tree: Path, folder: PurePath) -> list[Stage]:
    """The tests that a change in this folder of the tree meets, the nearest ones first."""
    own = tuple(sorted(path.stem for path in (tree / "tests" / folder).glob("test_*.cpp")))
    found = [Stage(own, own)] if own else []
    if folder != HOST:
        subject = folder.name if folder.is_relative_to("qt/brovik") else ""
        # What the demo machine's tests run is the same as what the others do.
        wanted = re.compile(f"test_(any_|(?!demo_){subject})")
        names = sorted(path.stem for path in (tree / "tests" / "python").glob("test_*.py"))
        found.append(
            Stage(("python_test_host",), tuple(f"python_{name}" for name in names if wanted.match(name)))
        )
    if folder.is_relative_to("qt/brovik") and folder.name in SCREENS:
        found.append(Stage(("qml_tests",), tuple(f"qml_tst_{name}" for name in SCREENS[folder.name])))
    if folder.is_relative_to(HOST):
        programs = sorted(path.stem for path in (tree / "tests" / HOST).glob("test_program*.py"))
        found.append(Stage(("entry_host",), tuple(programs)))
    return found


class Build:
    """The copy and its build. Belongs to one thread."""

    def __init__(self, tree: Path) -> None:
        self._tree = tree
        self.root = tree / "build" / PRESET
        self._secs: dict[Stage, float] = {}
        self._synchronise()
        self._run(["cmake", "--preset", PRESET], "configure")

    def prepare(self, folders: Sequence[PurePath]) -> None:
        """Builds and runs the tests of these folders once without a change. Raises TestsFail."""
        for stage in dict.fromkeys(stage for folder in folders for stage in stages_of(self._tree, folder)):
            begin = time.monotonic()
            if not self._builds(stage, keep=True):
                raise TestsFail(f"{', '.join(stage.programs)}: the build fails without any change")
            built = time.monotonic()
            if not self._pass(stage, None):
                raise TestsFail(f"{stage.pattern} fails without any change")
            self._secs[stage] = time.monotonic() - built
            print(
                f"{stage.pattern}: {built - begin:.0f} s to build, {self._secs[stage]:.0f} s to run",
                flush=True,
            )

    def notices(self, folder: PurePath) -> bool:
        """Whether a test of this folder fails. Raises DoesNotBuild."""
        for stage in stages_of(self._tree, folder):
            if not self._builds(stage):
                raise DoesNotBuild
            if not self._pass(stage, self._secs[stage] * SLOWER + GRACE_SECS):
                return True
        return False

    def changed(self, file: Path, text: str) -> AbstractContextManager[None]:
        """Has this text in a file of the tree inside the block."""
        return holding(self.root / file.relative_to(self._tree), text)

    def _synchronise(self) -> None:
        listed = subprocess.run(
            ["git", "ls-files", "--cached", "--others", "--exclude-standard", "-z"],
            cwd=self._tree,
            capture_output=True,
            text=True,
            check=True,
        )
        names = {name for name in listed.stdout.split("\0") if name and (self._tree / name).is_file()}
        for name in names:
            self._copy(self._tree / name, self.root / name)
        for path in list(self.root.rglob("*")) if self.root.exists() else []:
            name = str(path.relative_to(self.root))
            if path.is_file() and not name.startswith("build/") and name not in names:
                path.unlink()

    @staticmethod
    def _copy(source: Path, target: Path) -> None:
        """Leaves a file alone that is the same, so that it is not compiled again."""
        if target.is_file() and source.read_bytes() == target.read_bytes():
            return
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(source, target)

    def _builds(self, stage: Stage, keep: bool = False) -> bool:
        targets = [word for program in stage.programs for word in ("--target", program)]
        return self._run(
            ["cmake", "--build", "--preset", PRESET, "--parallel", JOBS, *targets], "build", keep=keep
        )

    def _pass(self, stage: Stage, secs: float | None) -> bool:
        options = [
            "--stop-on-failure",
            "--no-tests=error",
            "--parallel",
            JOBS,
            "--tests-regex",
            stage.pattern,
        ]
        return self._run(["ctest", "--preset", PRESET, *options], "test", secs)

    def _run(self, command: Sequence[str], name: str, secs: float | None = None, keep: bool = False) -> bool:
        """Whether the command succeeds in so many seconds. Leaves nothing running."""
        # What the compiler makes of a change is of no use to anybody; that of the tree comes back after each.
        environment = os.environ if keep else {**os.environ, "CCACHE_READONLY": "1"}
        with open(self.root / f"{name}.log", "wb") as log, subprocess.Popen(
            command,
            cwd=self.root,
            env=environment,
            stdin=subprocess.DEVNULL,
            stdout=log,
            stderr=subprocess.STDOUT,
            start_new_session=True,
        ) as process:
            try:
                return process.wait(secs) == 0
            except subprocess.TimeoutExpired:
                return False
            finally:
                if process.poll() is None:
                    os.killpg(process.pid, signal.SIGKILL)
