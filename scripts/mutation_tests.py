"""The tests of a copy of the tree, module by module."""

import os
import shutil
import subprocess
import sys
import tempfile
from collections.abc import Iterable, Iterator
from contextlib import AbstractContextManager, contextmanager
from dataclasses import dataclass
from pathlib import Path
from typing import Final

#: Runs the test module named first. Writes into the file named second, if there is one, its seconds of
#: processor time and what it has loaded.
RUNNER: Final = """
import resource, sys, unittest
module, report = sys.argv[1:]
result = unittest.main(module, argv=["unittest", "-q"], exit=False, failfast=True).result
usage = resource.getrusage(resource.RUSAGE_SELF)
if report:
    with open(report, "w", encoding="utf-8") as file:
        print(usage.ru_utime + usage.ru_stime, file=file)
        for loaded in list(sys.modules.values()):
            print(getattr(loaded, "__file__", None), file=file)
sys.exit(not result.wasSuccessful())
"""
#: A change may make the tests that much slower before it counts as noticed; and seconds besides.
SLOWER: Final = 4
GRACE_SECS: Final = 5
#: Of real time, for each second of processor time: what waits for ever uses none.
WAITING: Final = 8


class TestsFail(Exception):
    """A test fails without any change."""


@dataclass(frozen=True)
class TestModule:
    """A module of tests: where it is run, what it has loaded, and its processor time in seconds."""

    name: str
    directory: Path
    loaded: frozenset[Path] = frozenset()
    secs: float = 0.0


@contextmanager
def holding(file: Path, text: str) -> Iterator[None]:
    """Has this text in a file inside the block."""
    original = file.read_text("utf-8")
    file.write_text(text, "utf-8")
    try:
        yield
    finally:
        file.write_text(original, "utf-8")


class Copy:
    """A copy of the tree's Python, in which files can be changed and tests run. Belongs to one thread."""

    def __init__(self, tree: Path, root: Path) -> None:
        self._tree = tree
        self.root = root

    def modules(self, tests: Iterable[Path]) -> list[TestModule]:
        """The modules in these folders and files of the tree, the quickest first. Raises TestsFail."""
        files = [
            file for path in tests for file in (sorted(path.glob("test_*.py")) if path.is_dir() else [path])
        ]
        return sorted(
            (self._measured(self.root / f.relative_to(self._tree)) for f in files), key=lambda m: m.secs
        )

    def _measured(self, file: Path) -> TestModule:
        name, directory = file.stem, file.parent
        while (directory / "__init__.py").exists():
            name, directory = f"{directory.name}.{name}", directory.parent
        report = self.root / "report"
        if not self.passes(TestModule(name, directory), report):
            raise TestsFail(f"{name} in {directory.relative_to(self.root)} fails without any change")
        secs, *loaded = report.read_text("utf-8").splitlines()
        return TestModule(name, directory, frozenset(map(Path, loaded)), float(secs))

    def passes(self, module: TestModule, report: Path | None = None) -> bool:
        """Whether all tests of the module pass, in time if that is known."""
        secs = round(module.secs * SLOWER) + GRACE_SECS
        limits = [] if report else ["prlimit", f"--cpu={secs}"]
        try:
            done = subprocess.run(
                [*limits, sys.executable, "-B", "-c", RUNNER, module.name, str(report or "")],
                cwd=module.directory,
                env=self._environment(),
                stdout=subprocess.DEVNULL,
                stderr=subprocess.DEVNULL,
                timeout=None if report else secs * WAITING,
                check=False,
            )
        except subprocess.TimeoutExpired:
            return False
        return done.returncode == 0

    def _environment(self) -> dict[str, str]:
        paths = [self.root / "demo", self._tree / "build" / "release" / "python"]
        inherited = os.environ.get("PYTHONPATH", "").split(os.pathsep)
        return {**os.environ, "PYTHONPATH": os.pathsep.join([*map(str, paths), *filter(None, inherited)])}

    def changed(self, file: Path, text: str) -> AbstractContextManager[None]:
        """Has this text in a file of the tree inside the block."""
        return holding(self.root / file.relative_to(self._tree), text)


def _test_files(path: Path) -> list[Path]:
    return sorted(path.glob("test_*.py")) if path.is_dir() else [path]


@contextmanager
def copy_of(tree: Path) -> Iterator[Copy]:
    """A copy of the demo machine and of the scripts in a directory for the block."""
    with tempfile.TemporaryDirectory(prefix="kubelor-mutation-") as directory:
        root = Path(directory).resolve()
        for folder in ("demo", "scripts", "pyproject.toml"):
            source = tree / folder
            if source.is_dir():
                shutil.copytree(source, root / folder, ignore=shutil.ignore_patterns("__pycache__"))
            else:
                shutil.copy(source, root / folder)
        yield Copy(tree, root)
