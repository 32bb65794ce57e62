"""Packages and changelogs in the form in which the host takes them."""

from collections.abc import Iterable
from typing import TYPE_CHECKING

from brovik import Logger
from brovik.shell import ChangelogEntry, ChangelogEntryVector, Shell

from .changelog import Entry, UnreadableChangelog, read, up_to
from .manager import Update
from .source import Package

if TYPE_CHECKING:
    from brovik.records import AvailablePackage, InstalledPackage


def installed_record(package: Package, version: str) -> "InstalledPackage":
    """A row of the table of installed packages."""
    return {
        "name": package.name,
        "version": version,
        "arch": package.arch,
        "description": package.description,
        "name2": package.name if package.changelog else "",
    }


def upgradable_record(update: Update) -> "AvailablePackage":
    """A row of the table of updates."""
    newest = _newest_entry(update)
    return {
        "name": update.package.name,
        "versionNew": update.new,
        "versionOld": update.old,
        "urgency": newest.urgency if newest else "",
        "lastChange": list(newest.changes) if newest else [],
        "changelogAvailable": update.package.name if update.package.changelog else "",
    }


def _newest_entry(update: Update) -> Entry | None:
    if update.package.changelog is None:
        return None
    try:
        return next(iter(up_to(update.new, read(update.package.changelog))), None)
    except UnreadableChangelog as error:
        Logger.warning(f"{update.package.name}: {error}")
        return None


def changelog_vector(entries: Iterable[Entry]) -> ChangelogEntryVector:
    """A changelog."""
    vector = ChangelogEntryVector()
    for entry in entries:
        shown = ChangelogEntry(Shell)
        shown.name = entry.package
        shown.version = entry.version
        shown.distribution = entry.distribution
        shown.urgency_str = entry.urgency
        shown.date = entry.date
        shown.changes = list(entry.changes)
        vector.append(shown)
    return vector
