"""What native code prints, past Python's streams."""

import contextlib
import os
import tempfile
from collections.abc import Iterator


@contextlib.contextmanager
def printed() -> Iterator[list[str]]:
    """The lines that native code writes to standard output meanwhile."""
    lines: list[str] = []
    with tempfile.TemporaryFile() as file:
        kept = os.dup(1)
        os.dup2(file.fileno(), 1)
        try:
            yield lines
        finally:
            os.dup2(kept, 1)
            os.close(kept)
            file.seek(0)
            lines.extend(file.read().decode().splitlines())
