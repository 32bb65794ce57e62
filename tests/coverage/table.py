"""Prints what the tests come to, by folder, and compares with gates: table.py <results> <gates> <section>.

The results are demo.json of coverage, qt.json of gcovr and qt.llvm.json of llvm-cov, whichever were measured.
"""

import json
import sys
import tomllib  # pylint: disable=wrong-import-order  # pylint of Debian 12 does not know it
from collections import defaultdict
from dataclasses import dataclass
from pathlib import Path, PurePath


@dataclass
class Count:
    """What was come to, and of how much."""

    lines: int = 0
    all_lines: int = 0
    branches: int = 0
    all_branches: int = 0

    def add(self, other: "Count") -> None:
        """Adds a part."""
        self.lines += other.lines
        self.all_lines += other.all_lines
        self.branches += other.branches
        self.all_branches += other.all_branches

    @property
    def line_share(self) -> float:
        """Percent."""
        return 100 * self.lines / self.all_lines if self.all_lines else 100.0

    @property
    def branch_share(self) -> float:
        """Percent."""
        return 100 * self.branches / self.all_branches if self.all_branches else 100.0


def read_gcovr(file: Path) -> dict[str, Count]:
    """By the file of the tree."""
    return {
        found["filename"]: Count(
            found["line_covered"], found["line_total"], found["branch_covered"], found["branch_total"]
        )
        for found in json.loads(file.read_text("utf-8"))["files"]
    }


def marked_lines(source: Path) -> set[int]:
    """Those whose branches no test can come to; llvm-cov does not know the marks."""
    marked: set[int] = set()
    inside = False
    for number, line in enumerate(source.read_text("utf-8").splitlines(), start=1):
        inside = (inside or "GCOVR_EXCL_BR_START" in line) and "GCOVR_EXCL_BR_STOP" not in line
        if inside or "GCOVR_EXCL_BR_LINE" in line:
            marked.add(number)
    return marked


def read_llvm(file: Path) -> dict[str, Count]:
    """By the file of the tree."""
    tree = Path.cwd()
    counts = {}
    for found in json.loads(file.read_text("utf-8"))["data"][0]["files"]:
        path = Path(found["filename"])
        if not path.is_relative_to(tree / "qt"):
            continue
        lines, marked = found["summary"]["lines"], marked_lines(path)
        # A branch is [line, column, end's line, end's column, times taken, times not taken, ...]. Those of a
        # template come once for each instance.
        ways: defaultdict[tuple[int, ...], bool] = defaultdict(bool)
        for branch in found["branches"]:
            if branch[0] not in marked:
                for way, times in enumerate(branch[4:6]):
                    ways[*branch[:4], way] |= times > 0
        counts[str(path.relative_to(tree))] = Count(
            lines["covered"], lines["count"], sum(ways.values()), len(ways)
        )
    return counts


def read_coverage(file: Path) -> dict[str, Count]:
    """By the file of the tree."""
    tree = Path.cwd()
    counts = {}
    for name, found in json.loads(file.read_text("utf-8"))["files"].items():
        path = Path(name)
        summary = found["summary"]
        counts[str(path.relative_to(tree) if path.is_absolute() else path)] = Count(
            summary["covered_lines"],
            summary["num_statements"],
            summary["covered_branches"],
            summary["num_branches"],
        )
    return counts


READERS = {"demo.json": read_coverage, "qt.json": read_gcovr, "qt.llvm.json": read_llvm}


def by_folder(files: dict[str, Count]) -> dict[str, Count]:
    """Sums of the folders themselves, without those in them."""
    folders: defaultdict[str, Count] = defaultdict(Count)
    for name, count in files.items():
        folders[str(PurePath(name).parent)].add(count)
    return dict(sorted(folders.items()))


def below(files: dict[str, Count], top: str) -> Count:
    """The sum of all that is below a folder."""
    total = Count()
    for name, count in files.items():
        if PurePath(name).is_relative_to(top):
            total.add(count)
    return total


def row(name: str, count: Count) -> str:
    """A line of the table."""
    return (
        f"| {name} | {count.line_share:.1f} % | {count.all_lines} "
        f"| {count.branch_share:.1f} % | {count.all_branches} |"
    )


def main() -> int:
    """Gives the exit code."""
    results, gates = map(Path, sys.argv[1:3])
    files: dict[str, Count] = {}
    for name, read in READERS.items():
        if (results / name).exists():
            files |= read(results / name)
    print("| Folder | Lines | of | Branches | of |\n|---|---|---|---|---|")
    print("\n".join(row(f"`{name}`", count) for name, count in by_folder(files).items()))
    missed = 0
    for top, least in tomllib.loads(gates.read_text("utf-8"))[sys.argv[3]].items():
        total = below(files, top)
        print(row(f"`{top}` together", total))
        if total.branch_share < least:
            print(f"{top}: {total.branch_share:.1f} % of the branches, not {least} %", file=sys.stderr)
            missed += 1
    return min(missed, 1)


if __name__ == "__main__":
    sys.exit(main())
