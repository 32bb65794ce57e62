"""Changes Python or C++ files at many places, one at a time, and tells which changes no test notices.

Works on a copy; the tree stays as it is. Each change of Python meets the test modules that load its file,
each one of C++ is built and meets the tests of its folder, until one of them fails or takes far too long.
What is printed last is the share of the changes that were noticed.
"""

import argparse
import random
import signal
import sys
from collections import Counter
from collections.abc import Callable, Iterator, Sequence
from contextlib import contextmanager
from dataclasses import dataclass
from pathlib import Path
from typing import Final, TypeAlias

import mutation_cpp
import mutation_changes
from mutation_build import Build, DoesNotBuild
from mutation_changes import Change
from mutation_tests import TestsFail, copy_of

TREE: Final = Path(__file__).resolve().parent.parent
TESTS: Final = TREE / "demo" / "tests"
CPP: Final = (".cpp", ".h")


@dataclass(frozen=True)
class Candidate:
    """A change, and its file in the tree."""

    file: Path
    change: Change

    @property
    def name(self) -> str:
        """The file within the tree."""
        return str(self.file.relative_to(TREE))

    @property
    def part(self) -> str:
        """What the share is counted of: a file of Python, a folder of C++."""
        return str(self.file.parent.relative_to(TREE)) if self.file.suffix in CPP else self.name


#: Whether a test fails because of a change.
Notices: TypeAlias = Callable[[Candidate], bool]


def candidates(targets: Sequence[Path]) -> list[Candidate]:
    """All changes of these files and of those in these folders."""
    files = [file for target in targets for file in (_files(target) if target.is_dir() else [target])]
    return [
        Candidate(file, change)
        for file in files
        for change in (mutation_cpp if file.suffix in CPP else mutation_changes).changes(
            file.read_text("utf-8")
        )
    ]


def _files(folder: Path) -> list[Path]:
    return [file for file in sorted(folder.rglob("*")) if file.suffix in (".py", *CPP)]


@contextmanager
def _python(tests: Sequence[Path]) -> Iterator[Notices]:
    """The module that loads the file and is the quickest has the first try."""

    def notices(candidate: Candidate) -> bool:
        own = copy.root / candidate.name
        with copy.changed(candidate.file, candidate.change.text):
            return any(not copy.passes(module) for module in modules if own in module.loaded)

    with copy_of(TREE) as copy:
        modules = copy.modules(tests)
        yield notices


@contextmanager
def _cpp(chosen: Sequence[Candidate]) -> Iterator[Notices]:
    # What was changed is put back however the script ends.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(128 + signal.SIGTERM))
    build = Build(TREE)

    def notices(candidate: Candidate) -> bool:
        with build.changed(candidate.file, candidate.change.text):
            return build.notices(candidate.file.parent.relative_to(TREE))

    build.prepare([candidate.file.parent.relative_to(TREE) for candidate in chosen])
    yield notices


def _arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="scripts/mutation", description=__doc__)
    parser.add_argument(
        "targets",
        nargs="+",
        type=Path,
        metavar="TARGET",
        help="a file, or a folder of them: of Python, or of C++ below qt/",
    )
    parser.add_argument(
        "--sample", type=int, metavar="N", help="try so many changes, chosen at random; else all"
    )
    parser.add_argument("--seed", type=int, default=1, metavar="S", help="of that choice; 1 unless told")
    parser.add_argument(
        "--tests",
        action="append",
        type=Path,
        metavar="TESTS",
        help="of Python: a test module, or a folder of them; may be repeated; demo/tests unless told",
    )
    parser.add_argument("--list", action="store_true", help="print the changes and try none")
    return parser.parse_args()


def _chosen(arguments: argparse.Namespace) -> list[Candidate]:
    every = candidates([target.resolve() for target in arguments.targets])
    if arguments.sample is None or arguments.sample >= len(every):
        return every
    places = random.Random(arguments.seed).sample(range(len(every)), arguments.sample)
    return [every[place] for place in sorted(places)]


@dataclass
class Score:
    """How many changes of each part were noticed, and how many were tried."""

    hits: Counter[str]
    tried: Counter[str]
    #: Those that are no C++ count neither as tried nor as noticed.
    refused: int = 0


def _try(chosen: Sequence[Candidate], notices: Notices) -> Score:
    """Tries the changes, and prints those that nobody notices."""
    score = Score(Counter(), Counter())
    for candidate in chosen:
        try:
            noticed = notices(candidate)
        except DoesNotBuild:
            score.refused += 1
            continue
        score.tried[candidate.part] += 1
        score.hits[candidate.part] += noticed
        if not noticed:
            print(f"{candidate.name}:{candidate.change.line}: {candidate.change.words}", flush=True)
    return score


def _print_score(score: Score) -> None:
    width = max(map(len, score.tried), default=0)
    for name in score.tried:
        print(f"{name:{width}} {_score(score.hits[name], score.tried[name])}")
    print(f"{'together':{width}} {_score(score.hits.total(), score.tried.total())}")
    if score.refused:
        print(f"{score.refused} more were refused by the compiler")


def _score(hits: int, tried: int) -> str:
    return f"{hits:4} of {tried:4} noticed, {100 * hits / max(tried, 1):5.1f} %"


def main() -> None:
    """The command."""
    arguments = _arguments()
    chosen = _chosen(arguments)
    if arguments.list:
        for candidate in chosen:
            print(f"{candidate.name}:{candidate.change.line}: {candidate.change.words}")
        return
    in_cpp = {candidate.file.suffix in CPP for candidate in chosen}
    if len(in_cpp) > 1:
        raise SystemExit("Python or C++, not both in one run.")
    tests = [path.resolve() for path in arguments.tests or [TESTS]]
    try:
        with _cpp(chosen) if in_cpp == {True} else _python(tests) as notices:
            _print_score(_try(chosen, notices))
    except TestsFail as failure:
        raise SystemExit(str(failure)) from failure


if __name__ == "__main__":
    main()
