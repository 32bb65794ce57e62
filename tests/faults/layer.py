"""What stands between a program and the kernel, fault_layer.c, for this process or for another one."""

import ctypes
import os
from dataclasses import dataclass
from enum import IntEnum
from functools import cache
from pathlib import Path
from typing import Final

#: The library, which the build has made.
LIBRARY: Final = "KUBELOR_FAULT_LAYER"


class Way(IntEnum):
    """How a call fails: as `enum way` of the library has it."""

    BROKEN = 0
    REFUSED = 1
    FULL = 2
    KILLED = 3


@dataclass(frozen=True)
class Call:
    """A call that has been counted."""

    number: int
    name: str
    #: That it was made to fail with, or 0.
    error: int
    path: str

    def __str__(self) -> str:
        error = f", {os.strerror(self.error)}" if self.error else ""
        return f"call {self.number}: {self.name} {Path(self.path).name}{error}"


def read_calls(log: Path) -> list[Call]:
    """The calls that a process has logged."""
    lines = log.read_text("utf-8", "replace").splitlines() if log.exists() else []
    parts = (line.split(" ", 3) for line in lines)
    return [Call(int(number), name, int(error), path) for number, name, error, path in parts]


@cache
def _library() -> ctypes.CDLL:
    library = ctypes.CDLL(os.environ[LIBRARY])
    library.fault_begin.argtypes = [
        ctypes.c_char_p,
        ctypes.c_uint,
        ctypes.c_uint,
        ctypes.c_int,
        ctypes.c_char_p,
        ctypes.c_char_p,
    ]
    return library


def begin(  # pylint: disable=too-many-arguments  # each is named by its caller
    paths: str,
    at: int = 0,
    times: int = 1,
    way: Way = Way.BROKEN,
    log: Path | None = None,
    trace: Path | None = None,
) -> None:
    """Begins to watch the calls of this process, into which the library has been preloaded."""
    if os.environ[LIBRARY] not in os.environ.get("LD_PRELOAD", ""):
        raise RuntimeError(f"LD_PRELOAD has to be the library that {LIBRARY} names")
    _library().fault_begin(paths.encode(), at, times, way, str(log or "").encode(), str(trace or "").encode())


def end() -> None:
    """No call of this process fails any more."""
    _library().fault_begin(b"", 0, 0, 0, b"", b"")


def mark(text: str) -> None:
    """Writes a line into the trace."""
    _library().fault_mark(text.encode())


def variables(
    paths: str,
    at: int = 0,
    way: Way = Way.BROKEN,
    log: Path | None = None,
    trace: Path | None = None,
) -> dict[str, str]:
    """The environment of another program that is to be watched."""
    return {
        "LD_PRELOAD": os.environ[LIBRARY],
        "FAULT_PATHS": paths,
        "FAULT_AT": str(at),
        "FAULT_WAY": str(int(way)),
        "FAULT_LOG": str(log or ""),
        "FAULT_TRACE": str(trace or ""),
    }
