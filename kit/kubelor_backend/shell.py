"""`kubelor-backend shell`: a Python prompt inside the demo program that `kubelor-backend run` has started."""

import json
import socket
import sys
from contextlib import suppress
from typing import TextIO

from .places import NotFound
from .shell_server import socket_path


def run_shell() -> int:
    """Talks until the end of the input, or of the program."""
    with suppress(ImportError):
        # Imported for its effect alone, here and not used: input() lets lines be edited then.
        import readline  # pylint: disable=import-outside-toplevel, unused-import # noqa: F401
    connection = socket.socket(socket.AF_UNIX)
    try:
        connection.connect(str(socket_path()))
    except OSError as error:
        raise NotFound(
            f"No demo program with a shell runs: begin with kubelor-backend run. ({error})"
        ) from None
    with connection, connection.makefile("rw", encoding="utf-8") as stream:
        with suppress(EOFError, BrokenPipeError, ConnectionResetError):
            _talk(stream)
    return 0


def _talk(stream: TextIO) -> None:
    for line in stream:
        message = json.loads(line)
        if "ask" in message:
            stream.write(json.dumps({"line": input(message["ask"])}) + "\n")
            stream.flush()
        else:
            print(message["out"], end="")
            sys.stdout.flush()
