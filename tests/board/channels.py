"""The two ways to talk to the board: the emulator's own channel, and a root shell on the second console."""

import json
import re
import socket
from itertools import count
from pathlib import Path
from typing import Any

from waiting import DEADLINE_SECS, wait_for


def connect(path: Path) -> socket.socket:
    """A connection to a local socket that is there soon."""

    def attempt() -> socket.socket | None:
        connection = socket.socket(socket.AF_UNIX)
        try:
            connection.connect(str(path))
        except OSError:
            connection.close()
            return None
        return connection

    return wait_for(f"a socket {path}", attempt, 60)


class Emulator:
    """The emulator's own channel: what it is told comes from outside the board, as from its hardware."""

    def __init__(self, path: Path) -> None:
        self._socket = connect(path)
        self._socket.settimeout(DEADLINE_SECS)
        self._file = self._socket.makefile("rw", encoding="utf-8")
        self._file.readline()
        self("qmp_capabilities")

    def __call__(self, command: str, **arguments: Any) -> Any:
        self._file.write(json.dumps({"execute": command, "arguments": arguments}) + "\n")
        self._file.flush()
        while True:
            answer = json.loads(self._file.readline())
            if "error" in answer:
                raise RuntimeError(f"{command}: {answer['error']['desc']}")
            if "return" in answer:
                return answer["return"]

    def monitor(self, line: str) -> str:
        """The answer to a line of the emulator's monitor."""
        return str(self("human-monitor-command", **{"command-line": line}))

    def close(self) -> None:
        """Ends the connection."""
        self._file.close()
        self._socket.close()


class Shell:
    """A root shell of the board, which takes one command after the other."""

    def __init__(self, path: Path) -> None:
        self._socket = connect(path)
        self._numbers = count()

    def close(self) -> None:
        """Ends the connection; the shell stays."""
        self._socket.close()

    def __call__(self, command: str, deadline: float = DEADLINE_SECS) -> str:
        """What a command prints; AssertionError if it fails."""
        code, text = self.run(command, deadline)
        if code != 0:
            raise AssertionError(f"{command}: {code}\n{text}")
        return text

    def run(self, command: str, deadline: float = DEADLINE_SECS) -> tuple[int, str]:
        """The exit code of a command, and what it prints. TimeoutError if there is no answer."""
        number = next(self._numbers)
        # The marks are put together by the shell, so an echo of the line is none.
        line = f"stty -echo; printf '\\n<%s%d>\\n' begin {number}; {{ {command}\n}} </dev/null 2>&1; "
        line += f"printf '\\n<%s%d:%d>\\n' end {number} $?\n"
        self._socket.settimeout(deadline)
        self._socket.sendall(line.encode())
        pattern = re.compile(rf"<begin{number}>\n(.*)\n<end{number}:(\d+)>\n", re.DOTALL)
        text = ""
        while not (found := pattern.search(text)):
            if not (received := self._socket.recv(65536)):
                raise AssertionError(f"the board has ended before it answered: {command}")
            text += received.decode(errors="replace").replace("\r", "")
        return int(found[2]), found[1].strip()

    def wait(self) -> None:
        """Waits until the shell is there. What was sent to a console without one is lost."""

        def answers() -> bool:
            try:
                return self.run("true", 10)[0] == 0
            except TimeoutError:
                return False

        wait_for("a shell on the board", answers)
