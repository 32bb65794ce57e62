"""Writes the stub files into the folder that the command line names."""

import os
import sys
from collections.abc import Sequence
from pathlib import Path
from typing import Final

import brovik

from ..stubs import write_stubs

_DEMO: Final = Path(__file__).resolve().parents[2]


def default_folder() -> Path:
    """The folder `stubs` beside the backend."""
    return Path(os.environ.get("KUBELOR_DEMO_BACKEND") or _DEMO) / "stubs"


def main(arguments: Sequence[str]) -> int:
    """Writes all of them and prints their names. Returns the exit code."""
    if len(arguments) > 1:
        print(f"--make-stubs nimmt nur einen Ordner, nicht {len(arguments)}.", file=sys.stderr)
        return 1
    folder = Path(arguments[0]) if arguments else default_folder()
    try:
        for file in write_stubs(brovik, folder):
            print(file)
    except OSError as error:
        reason = f"{error.filename or folder}: {error.strerror or error}"
        print(f"Die Stub-Dateien ließen sich nicht schreiben. {reason}", file=sys.stderr)
        return 1
    return 0
