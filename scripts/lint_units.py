#!/usr/bin/python3
"""Runs a checker of C++ over the sources of this project, several of them in one go.

Most of the time that clang-tidy or clazy takes for a file is that of its headers. So sources that are
compiled alike are included into one unit. A unit with a complaint is halved, until a source stands alone,
and what is said of that one counts: sources that only do not go together are no fault. But it is told of, for
to check them again and again takes longer than all else.

    scripts/lint_units.py COMPILE_COMMANDS FOLDERS CHECKER [ARGUMENT...]

FOLDERS are those of the sources, with blanks between them. The checker is called as
`CHECKER ARGUMENT... FILE -- OPTIONS OF THE COMPILER...`.
"""

import json
import os
import re
import shlex
import subprocess
import sys
from collections.abc import Container, Iterable, Iterator
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from functools import cached_property
from pathlib import Path
from tempfile import TemporaryDirectory
from typing import Final

ROOT: Final = Path(__file__).resolve().parent.parent
SOURCES_OF_A_UNIT: Final = 50
#: A name that is defined at the left margin, as what stands outside of classes and functions is.
DEFINED: Final = re.compile(
    r"^(?!namespace )(?:template <.*> )?(?:[\w:<>,*&]+ )+[*&]?(\w+)(?: =|[({;]|$)|^(PYBIND11_\w*MODULE)\(",
    re.MULTILINE,
)
COMPILER: Final = re.compile(r".*(g|c|clang)\+\+(-\d+)?")
#: What CMake calls a file that includes several sources of a target.
TOGETHER: Final = re.compile(r"unity_.*\.cxx")
INCLUDED: Final = re.compile(r'^#include "(.*)"$', re.MULTILINE)
#: For the compiler alone: its precompiled headers, warnings that the checkers do not know or that come
#: from sources standing together, and the folders that Qt tells each test.
FOREIGN: Final = re.compile(
    r"-W(duplicated-cond|logical-op|invalid-pch|shadow|no-stringop-overflow|no-subobject-linkage)"
    r"|-fpch-preprocess|-include=.*cmake_pch\.hxx|-DQT_TESTCASE_(BUILD|SOURCE)DIR=.*"
)
#: A line of a checker that is one.
COMPLAINT: Final = re.compile(r": (warning|error): ")
#: Options whose argument follows as a word of its own.
WITH_ARGUMENT: Final = ("-isystem", "-include")


@dataclass(frozen=True)
class Source:
    """A file with the options that it is compiled with, each with its argument."""

    path: Path
    directory: str
    options: tuple[tuple[str, ...], ...]

    @cached_property
    def definitions(self) -> dict[str, str]:
        """Macros of the command line, with their values."""
        pairs = (option[0][2:].partition("=") for option in self.options if option[0].startswith("-D"))
        return {name: value for name, _, value in pairs}

    @cached_property
    def names(self) -> frozenset[str]:
        """What it seems to define for itself, but for main()."""
        found = DEFINED.finditer(self.path.read_text(encoding="utf-8"))
        return frozenset(name for match in found for name in match.groups() if name) - {"main"}

    def goes_with(self, other: "Source") -> bool:
        """Whether no macro has another value there, and no name another meaning."""
        definitions = self.definitions.items()
        return self.names.isdisjoint(other.names) and all(
            other.definitions.get(name, value) == value for name, value in definitions
        )


def _options(words: list[str]) -> Iterator[tuple[str, ...]]:
    """The options of a command line, without what is to be compiled into what."""
    rest = iter(words)
    for word in rest:
        if word in ("-o", "-c"):
            next(rest, None)
        elif word in WITH_ARGUMENT:
            yield (word, next(rest, ""))
        else:
            yield (word,)


def _compiled(file: Path) -> list[Path]:
    """The file, or those that the build has put together in it."""
    if not TOGETHER.fullmatch(file.name):
        return [file]
    return [Path(name) for name in INCLUDED.findall(file.read_text(encoding="utf-8"))]


def _is_checked(path: Path, folders: Container[str]) -> bool:
    return path.suffix == ".cpp" and path.is_relative_to(ROOT) and path.relative_to(ROOT).parts[0] in folders


def read_sources(commands: Path, folders: Container[str]) -> list[Source]:
    """The sources in these folders, by their path."""
    found: dict[Path, Source] = {}
    for entry in json.loads(commands.read_text(encoding="utf-8")):
        paths = [path for path in _compiled(Path(entry["file"])) if _is_checked(path, folders)]
        if not paths:
            continue
        words = shlex.split(entry["command"])
        compiler = next(i for i, word in enumerate(words) if COMPILER.fullmatch(word))
        options = tuple(o for o in _options(words[compiler + 1 :]) if not FOREIGN.fullmatch("=".join(o)))
        for path in paths:
            found.setdefault(path, Source(path, entry["directory"], options))
    return [found[path] for path in sorted(found)]


def in_units(sources: Iterable[Source]) -> list[list[Source]]:
    """Puts sources together that seem to bear each other."""
    units: list[list[Source]] = []
    for source in sources:
        fitting = (
            unit for unit in units if len(unit) < SOURCES_OF_A_UNIT and all(map(source.goes_with, unit))
        )
        unit = next(fitting, None)
        if unit is None:
            units.append([source])
        else:
            unit.append(source)
    return units


def text_of(unit: Iterable[Source]) -> str:
    """Includes the sources, the main() of each program under a name of its own if there are several."""
    # To include a source looks wrong to clang-tidy, and is what a unit is for.
    includes = [f'#include "{source.path}" // NOLINT\n' for source in unit]
    if len(includes) > 1:
        names = (f"#undef main\n#define main main_{i} // NOLINT\n" for i in range(len(includes)))
        includes = [name + include for name, include in zip(names, includes)]
    return "".join(includes)


def check(checker: list[str], unit: list[Source], folder: Path) -> list[str]:
    """What the checker has to say, for each source that it does not like."""
    path = folder / f"{len(unit)}_{'_'.join(unit[0].path.relative_to(ROOT).parts)}"
    path.write_text(text_of(unit), encoding="utf-8")
    options = dict.fromkeys(option for source in unit for option in source.options)
    words = [*checker, str(path), "--", *(word for option in options for word in option)]
    done = subprocess.run(words, capture_output=True, text=True, check=False, cwd=unit[0].directory)
    said = done.stdout + done.stderr
    if done.returncode == 0 and not COMPLAINT.search(said):
        return []
    if len(unit) == 1:
        return [said]
    half = len(unit) // 2
    complaints = check(checker, unit[:half], folder) + check(checker, unit[half:], folder)
    if not complaints:
        print(f"{len(unit)} sources do not go together:\n{said}")
    return complaints


def main() -> int:
    """0 if there is nothing to complain about."""
    commands, folders, checker = Path(sys.argv[1]), sys.argv[2].split(), sys.argv[3:]
    units = in_units(read_sources(commands, folders))
    with TemporaryDirectory() as folder, ThreadPoolExecutor(os.cpu_count()) as pool:
        said = pool.map(lambda unit: check(checker, unit, Path(folder)), units)
        complaints = [text for texts in said for text in texts]
    print("\n".join(complaints))
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
