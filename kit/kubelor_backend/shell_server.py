"""The shell of the demo program: a Python prompt on a local socket, for nobody but the user of the program.

Runs inside the demo program, on threads of its own; any thread may use `brovik`. Both sides send lines of
JSON: the program {"out": text} and {"ask": prompt}, the user {"line": text} for each prompt.
"""

import atexit
import code
import json
import os
import socket
import struct
import sys
import tempfile
import threading
from pathlib import Path
from typing import Any, Final, TextIO

_OBJECTS: Final = {
    "actuator": "Actuator",
    "auto": "Auto",
    "chart": "Chart",
    "config": "Config",
    "gpio": "GPIO",
    "gui": "Gui",
    "sensor": "Sensor",
    "settings": "SettingsValues",
    "shell": "Shell",
    "simulator": "Simulator",
    "wifi": "Wifi",
}
_BANNER: Final = "Python in kubelor-demo. Here are: controller, brovik, {objects}."
#: Text of the other streams goes where it went.
_streams = threading.local()


def socket_path() -> Path:
    """Where the shell of this user's demo program listens."""
    runtime = os.environ.get("XDG_RUNTIME_DIR")
    folder = Path(runtime) if runtime else Path(tempfile.gettempdir(), f"kubelor-{os.getuid()}")
    return folder / "kubelor-demo" / "shell"


def serve() -> None:
    """Opens the shell. A failure is a line on stderr, and the program goes on."""
    path = socket_path()
    try:
        for folder in (path.parents[1], path.parent):
            folder.mkdir(mode=0o700, exist_ok=True)
        _must_be_private(path.parent)
        path.unlink(missing_ok=True)
        listening = socket.socket(socket.AF_UNIX)
        # Nobody else reaches into the folder meanwhile.
        listening.bind(str(path))
        path.chmod(0o600)
        listening.listen()
    except OSError as error:
        print(f"No shell: {error}", file=sys.__stderr__)
        return
    atexit.register(path.unlink, missing_ok=True)
    threading.Thread(target=_accept, args=(listening,), name="shell", daemon=True).start()


def _must_be_private(folder: Path) -> None:
    """PermissionError for a folder that somebody else may use."""
    status = folder.lstat()
    if folder.is_symlink() or status.st_uid != os.getuid() or status.st_mode & 0o077:
        raise PermissionError(f"{folder} does not belong to this user alone")


def _accept(listening: socket.socket) -> None:
    while True:
        connection, _ = listening.accept()
        threading.Thread(target=_talk, args=(connection,), name="shell", daemon=True).start()


def _talk(connection: socket.socket) -> None:
    with connection, connection.makefile("rw", encoding="utf-8") as stream:
        credentials = connection.getsockopt(socket.SOL_SOCKET, socket.SO_PEERCRED, struct.calcsize("3i"))
        if struct.unpack("3i", credentials)[1] != os.getuid():
            return
        _redirect_own_streams()
        console = _Console(stream)
        _streams.own = console
        try:
            console.interact(_BANNER.format(objects=", ".join(_OBJECTS.values())), "")
        except SystemExit:  # quit() leaves the shell, not the program
            pass
        except (BrokenPipeError, ConnectionResetError):
            pass


class _Console(code.InteractiveConsole):
    """The prompt of one connection."""

    def __init__(self, stream: TextIO) -> None:
        super().__init__(_namespace(), "<shell>")
        self._stream = stream

    def _send(self, **message: str) -> None:
        self._stream.write(json.dumps(message) + "\n")
        self._stream.flush()

    def write(self, data: str) -> None:
        """What the prompt itself says, and what is printed on its thread."""
        self._send(out=data)

    def raw_input(self, prompt: str = "") -> str:
        """Asks the user."""
        self._send(ask=prompt)
        answer = self._stream.readline()
        if not answer:
            raise EOFError
        return str(json.loads(answer)["line"])


class _OwnStream:
    """A stream of Python that a thread with a prompt of its own writes to that prompt."""

    def __init__(self, original: Any) -> None:
        self._original = original

    def write(self, text: str) -> object:
        """To the prompt, or where it went before."""
        own: _Console | None = getattr(_streams, "own", None)
        if own is None:
            return self._original.write(text)
        own.write(text)
        return len(text)

    def __getattr__(self, name: str) -> Any:
        return getattr(self._original, name)


def _redirect_own_streams() -> None:
    # Not at the start: the program puts streams of its own in place later.
    # The types are silenced, for they are no TextIO: they have what is written, and pass the rest on.
    if not isinstance(sys.stdout, _OwnStream):
        sys.stdout = _OwnStream(sys.stdout)  # type: ignore[assignment]
    if not isinstance(sys.stderr, _OwnStream):
        sys.stderr = _OwnStream(sys.stderr)  # type: ignore[assignment]


def _namespace() -> dict[str, Any]:
    """What there is to begin with."""
    names = {"__name__": "__shell__", "controller": sys.modules.get("controller")}
    names["brovik"] = sys.modules.get("brovik")
    for module, name in _OBJECTS.items():
        names[name] = getattr(sys.modules.get(f"brovik.{module}"), name, None)
    return names
