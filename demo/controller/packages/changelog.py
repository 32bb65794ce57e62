"""Changelogs in Debian's format."""

from collections.abc import Iterable, Iterator
from dataclasses import dataclass
from email.utils import parsedate_to_datetime
from pathlib import Path

from debian.changelog import ChangeBlock, Changelog, ChangelogParseError
from debian.debian_support import Version


class UnreadableChangelog(ValueError):
    """The file is no changelog. The message is for the operator."""


@dataclass(frozen=True)
class Entry:
    """What has changed in one version."""

    package: str
    version: str
    distribution: str
    urgency: str
    date: str
    changes: tuple[str, ...]


def read(path: Path) -> list[Entry]:
    """All entries in their order, which is newest first. Raises UnreadableChangelog."""
    try:
        return [_entry(block) for block in Changelog(path.read_text(encoding="utf-8"), strict=True)]
    except (ChangelogParseError, OSError, ValueError) as error:
        raise UnreadableChangelog(f"Das Changelog ist nicht lesbar: {error}") from error


def up_to(version: str, entries: Iterable[Entry]) -> list[Entry]:
    """The entries of this version and of those before it."""
    return [entry for entry in entries if Version(entry.version) <= Version(version)]


def is_version(text: str) -> bool:
    """Whether this is the number of a version."""
    try:
        Version(text)
    except ValueError:
        return False
    return True


def _entry(block: ChangeBlock) -> Entry:
    return Entry(
        package=str(block.package),
        version=str(block.version),
        distribution=str(block.distributions),
        urgency=block.urgency,
        date=_readable(str(block.date)),
        changes=tuple(_joined(block.changes())),
    )


def _readable(date: str) -> str:
    return f"{parsedate_to_datetime(date):%d.%m.%Y %H:%M}"


def _joined(lines: Iterable[str]) -> Iterator[str]:
    """The changes behind the bullets, each on one line."""
    change = ""
    for line in map(str.strip, lines):
        if line.startswith("* ") and change:
            yield change
            change = ""
        change = f"{change} {line.removeprefix('* ')}".strip()
    if change:
        yield change
