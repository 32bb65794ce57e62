"""Changes Python files at many places, one at a time, and tells which changes no test notices.

Works on a copy; the tree stays as it is. Each change meets the test modules that load its file, until one of
them fails or takes far too long. What is printed last is the share of the changes that were noticed.
"""

import argparse
import random
from collections import Counter
from collections.abc import Sequence
from dataclasses import dataclass
from pathlib import Path
from typing import Final

from mutation_changes import Change, changes
from mutation_tests import Copy, TestModule, TestsFail, copy_of

TREE: Final = Path(__file__).resolve().parent.parent
TESTS: Final = TREE / "demo" / "tests"


@dataclass(frozen=True)
class Candidate:
    """A change, and its file in the tree."""

    file: Path
    change: Change

    @property
    def name(self) -> str:
        """The file within the tree."""
        return str(self.file.relative_to(TREE))


def candidates(targets: Sequence[Path]) -> list[Candidate]:
    """All changes of these files and of those in these folders."""
    files = [
        file for target in targets for file in (sorted(target.rglob("*.py")) if target.is_dir() else [target])
    ]
    return [Candidate(file, change) for file in files for change in changes(file.read_text("utf-8"))]


def noticed(copy: Copy, candidate: Candidate, modules: Sequence[TestModule]) -> bool:
    """Whether a test fails. The module that loads the file and is the quickest has the first try."""
    own = copy.root / candidate.name
    with copy.changed(candidate.file, candidate.change.text):
        return any(not copy.passes(module) for module in modules if own in module.loaded)


def _arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="scripts/mutation", description=__doc__)
    parser.add_argument(
        "targets", nargs="+", type=Path, metavar="TARGET", help="a Python file, or a folder of them"
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
        help="a test module, or a folder of them; may be repeated; demo/tests unless told",
    )
    parser.add_argument("--list", action="store_true", help="print the changes and try none")
    return parser.parse_args()


def _chosen(arguments: argparse.Namespace) -> list[Candidate]:
    every = candidates([target.resolve() for target in arguments.targets])
    if arguments.sample is None or arguments.sample >= len(every):
        return every
    places = random.Random(arguments.seed).sample(range(len(every)), arguments.sample)
    return [every[place] for place in sorted(places)]


def _try(chosen: Sequence[Candidate], tests: Sequence[Path]) -> tuple[Counter[str], Counter[str]]:
    """Tries the changes, and prints those that nobody notices. Noticed and tried changes of each file."""
    hits: Counter[str] = Counter()
    tried: Counter[str] = Counter()
    with copy_of(TREE) as copy:
        modules = copy.modules(tests)
        for candidate in chosen:
            tried[candidate.name] += 1
            if noticed(copy, candidate, modules):
                hits[candidate.name] += 1
            else:
                print(f"{candidate.name}:{candidate.change.line}: {candidate.change.words}", flush=True)
    return hits, tried


def _print_score(hits: Counter[str], tried: Counter[str]) -> None:
    width = max(map(len, tried), default=0)
    for name in tried:
        print(f"{name:{width}} {_score(hits[name], tried[name])}")
    print(f"{'together':{width}} {_score(hits.total(), tried.total())}")


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
    try:
        hits, tried = _try(chosen, [path.resolve() for path in arguments.tests or [TESTS]])
    except TestsFail as failure:
        raise SystemExit(str(failure)) from failure
    _print_score(hits, tried)


if __name__ == "__main__":
    main()
