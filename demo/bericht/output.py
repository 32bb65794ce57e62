"""Writes files that are either there as a whole or not at all."""

import errno
import os
import stat
import sys
import tempfile
from contextlib import suppress
from pathlib import Path
from typing import Final

_REASONS: Final = {
    errno.ENOSPC: "der Datenträger ist voll",
    errno.EDQUOT: "der zugeteilte Platz ist voll",
    errno.EFBIG: "sie würde größer, als erlaubt ist",
    errno.EROFS: "der Datenträger ist schreibgeschützt",
    errno.EACCES: "das ist nicht erlaubt",
    errno.EPERM: "das ist nicht erlaubt",
    errno.ENOENT: "das Verzeichnis gibt es nicht",
    errno.ENOTDIR: "das Verzeichnis gibt es nicht",
    errno.EISDIR: "sie ist ein Verzeichnis",
    errno.ENAMETOOLONG: "der Name ist zu lang",
}
#: Tells a spreadsheet that the file is UTF-8.
BYTE_ORDER_MARK: Final = b"\xef\xbb\xbf"


class OutputError(Exception):
    """What cannot be written, and why: one German sentence."""


def write_file(path: Path, content: bytes) -> None:
    """Puts the content in place of the file. Raises OutputError; an older file is then what it was."""
    try:
        target = Path(os.path.realpath(path))
        if target.exists() and not target.is_file():
            _write_through(target, content)
        else:
            _replace(target, content)
    except (OSError, ValueError) as error:
        raise OutputError(f"Die Datei {path} kann nicht geschrieben werden: {_reason(error)}.") from error


def _replace(target: Path, content: bytes) -> None:
    handle, name = tempfile.mkstemp(prefix=f".{target.name[:50]}.", dir=target.parent)
    try:
        with open(handle, "wb") as file:
            file.write(content)
            file.flush()
            os.fchmod(handle, _mode(target))
            os.fsync(handle)
        os.replace(name, target)
    except BaseException:
        with suppress(OSError):
            os.unlink(name)
        raise
    _keep_name(target.parent)


def _mode(target: Path) -> int:
    """The rights of the older file, or those of any new one."""
    try:
        return stat.S_IMODE(target.stat().st_mode)
    except FileNotFoundError:
        mask = os.umask(0)
        os.umask(mask)
        return 0o666 & ~mask


def _keep_name(directory: Path) -> None:
    """The new name survives a power cut, too. The file is in place whether this succeeds or not."""
    with suppress(OSError):
        handle = os.open(directory, os.O_RDONLY | os.O_DIRECTORY)
        try:
            os.fsync(handle)
        finally:
            os.close(handle)


def _write_through(target: Path, content: bytes) -> None:
    """A device or a pipe cannot be replaced."""
    with target.open("wb") as file:
        file.write(content)


def write_out(content: bytes) -> None:
    """Writes to the standard output. Raises OutputError; a reader who has gone is no error."""
    try:
        sys.stdout.flush()
        sys.stdout.buffer.write(content)
        sys.stdout.buffer.flush()
    except BrokenPipeError:
        _forget_stdout()
    except OSError as error:
        _forget_stdout()
        raise OutputError(f"Die Ausgabe kann nicht geschrieben werden: {_reason(error)}.") from error


def _forget_stdout() -> None:
    """What is left in its buffer is not tried again at the end."""
    nowhere = os.open(os.devnull, os.O_WRONLY)
    os.dup2(nowhere, sys.stdout.fileno())
    os.close(nowhere)


def _reason(error: Exception) -> str:
    number = error.errno if isinstance(error, OSError) else None
    return _REASONS.get(number or 0, str(error))
