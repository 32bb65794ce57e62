"""The package source: a folder with a JSON file for each package, and its changelog beside it."""

import json
import os
from collections.abc import Iterable, Mapping
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Final

from debian.debian_support import Version

from ..values import fitting

FOLDER: Final = Path(__file__).resolve().parents[2] / "package_source"


@dataclass(frozen=True)
class Package:  # pylint: disable=too-many-instance-attributes
    """A package of the source."""

    name: str
    arch: str
    description: str
    #: The version that the machine is delivered with.
    delivered: str
    #: The version on offer in each component.
    offered: Mapping[str, str]
    #: What has to be downloaded, kB.
    size: int
    #: Its set-up fails.
    broken: bool
    #: None if it comes without one.
    changelog: Path | None

    def offer(self, installed: str, components: Iterable[str]) -> str | None:
        """The newest version in these components, if it is newer than the one installed."""
        versions = [Version(self.offered[c]) for c in components if c in self.offered]
        newer = [version for version in versions if version > Version(installed)]
        return str(max(newer)) if newer else None


@dataclass(frozen=True)
class Source:
    """All packages by name, and what could not be read."""

    packages: Mapping[str, Package]
    problems: tuple[str, ...]


def read_source(folder: Path) -> Source:
    """Reads the folder. What makes no sense in it becomes a problem and leaves the rest alone."""
    packages: dict[str, Package] = {}
    problems: list[str] = []
    try:
        # Not by a pattern: that passes over a folder which nobody may read.
        names = sorted(name for name in os.listdir(folder) if name.endswith(".json"))
    except FileNotFoundError:
        return Source({}, ())
    except OSError as error:
        return Source({}, (_problem(folder, error),))
    for path in map(folder.joinpath, names):
        try:
            packages[path.stem] = _package(path)
        except (OSError, ValueError, KeyError, TypeError) as error:
            problems.append(_problem(path, error))
    return Source(packages, tuple(problems))


def _problem(path: Path, error: Exception) -> str:
    return f"{path.name}: {type(error).__name__}: {error}"


def _package(path: Path) -> Package:
    record: Any = json.loads(path.read_text(encoding="utf-8"))
    changelog = path.with_suffix(".changelog")
    return Package(
        name=path.stem,
        arch=str(fitting(record["arch"], "")),
        description=str(fitting(record["description"], "")),
        delivered=_version(record["delivered"]),
        offered=_versions(record["offered"]),
        size=int(fitting(record["size"], 0)),
        broken=bool(fitting(record.get("broken", False), False)),
        changelog=changelog if changelog.exists() else None,
    )


def _versions(value: object) -> dict[str, str]:
    if not isinstance(value, dict):
        raise ValueError(f"{value!r} sind keine Versionen")
    return {component: _version(version) for component, version in value.items()}


def _version(value: object) -> str:
    return str(Version(str(fitting(value, ""))))
