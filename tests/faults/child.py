"""A fork of this process that tells what it does, and may be killed at any moment."""

# pylint: disable=protected-access  # os._exit is how a fork ends

import json
import os
import select
import signal
import sys
import traceback
from collections.abc import Callable
from time import monotonic
from typing import Any, Final, TypeAlias

#: Has a line of JSON come to whoever has made the child; it has left before this returns.
Tell: TypeAlias = Callable[[Any], None]

_CHUNK: Final = 65536


class Child:
    """Runs a function in a fork of this process, which has no other threads."""

    def __init__(self, function: Callable[[Tell], None]) -> None:
        reading, writing = os.pipe()
        sys.stdout.flush()
        sys.stderr.flush()
        self._pid = os.fork()
        if self._pid == 0:
            os.close(reading)
            _run(function, writing)
        os.close(writing)
        self._reading = reading
        self._pidfd = os.pidfd_open(self._pid)
        self._received = b""

    def wait(self, secs: float) -> int | None:
        """Waits for its end, and gives its exit code, negative for a signal. None if it lives longer."""
        deadline = monotonic() + secs
        waiting = {self._reading, self._pidfd}
        while self._pidfd in waiting and (left := deadline - monotonic()) > 0:
            for ready in select.select(sorted(waiting), [], [], left)[0]:
                if ready == self._pidfd or not self._read():
                    waiting.remove(ready)
        return None if self._pidfd in waiting else self._end()

    def kill(self) -> int:
        """Ends it at once, and gives its exit code."""
        signal.pidfd_send_signal(self._pidfd, signal.SIGKILL)
        return self._end()

    @property
    def told(self) -> list[Any]:
        """What it has told. A line that it has not finished does not count."""
        return [json.loads(line) for line in self._received.split(b"\n")[:-1]]

    def _read(self) -> bytes:
        data = os.read(self._reading, _CHUNK)
        self._received += data
        return data

    def _end(self) -> int:
        while self._read():
            pass
        os.close(self._reading)
        os.close(self._pidfd)
        return os.waitstatus_to_exitcode(os.waitpid(self._pid, 0)[1])


def _run(function: Callable[[Tell], None], writing: int) -> None:
    """What the child does. It ends past the buffers and the exit functions, which are those of the parent."""
    try:
        function(lambda what: _write(writing, json.dumps(what).encode() + b"\n"))
        os._exit(0)
    except BaseException:  # pylint: disable=broad-exception-caught  # nobody else would see it
        traceback.print_exc()
        sys.stderr.flush()
        os._exit(1)


def _write(file: int, line: bytes) -> None:
    while line:
        line = line[os.write(file, line) :]
