"""Fingers on the window, through Qt's TUIO plugin: it takes OSC bundles over UDP."""

import socket
import struct

_PROFILE = "/tuio/2Dcur"
_IMMEDIATELY = 1


def free_port() -> int:
    """A UDP port that nobody listens on."""
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as probe:
        probe.bind(("127.0.0.1", 0))
        return int(probe.getsockname()[1])


def environment(port: int) -> dict[str, str]:
    """What makes a Qt program listen for fingers on that port."""
    return {
        "QT_QPA_GENERIC_PLUGINS": f"tuiotouch:udp={port}",
        "QT_TUIOTOUCH_DELIVER_WITHOUT_FOCUS": "1",
    }


class Fingers:
    """The fingers on a window of the given size. Each call sends one frame with all of them."""

    def __init__(self, port: int, width: int, height: int) -> None:
        self._address = ("127.0.0.1", port)
        self._size = (width, height)
        self._positions: dict[int, tuple[float, float]] = {}
        self._frame = 0

    def put(self, **positions: tuple[float, float]) -> None:
        """Puts down or moves fingers: `a=(x, y)`, in pixels of the window."""
        self._positions |= {ord(name): position for name, position in positions.items()}
        self._send()

    def lift(self, *names: str) -> None:
        """Takes these fingers away; all of them if none is named."""
        for finger in [ord(name) for name in names] or list(self._positions):
            del self._positions[finger]
        self._send()

    def _send(self) -> None:
        self._frame += 1
        moves = [self._set(finger) for finger in self._positions]
        alive = _message("alive", *self._positions)
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as sender:
            sender.sendto(_bundle(alive, *moves, _message("fseq", self._frame)), self._address)

    def _set(self, finger: int) -> bytes:
        position = (pixel / size for pixel, size in zip(self._positions[finger], self._size, strict=True))
        return _message("set", finger, *position, 0.0, 0.0, 0.0)


def _text(text: str) -> bytes:
    """Ended by a zero, filled up to a multiple of four."""
    data = text.encode() + b"\0"
    return data + b"\0" * (-len(data) % 4)


def _message(command: str, *arguments: int | float) -> bytes:
    types = ",s" + "".join("i" if isinstance(value, int) else "f" for value in arguments)
    values = struct.pack(">" + types[2:], *arguments)
    return _text(_PROFILE) + _text(types) + _text(command) + values


def _bundle(*messages: bytes) -> bytes:
    elements = (struct.pack(">i", len(message)) + message for message in messages)
    return _text("#bundle") + struct.pack(">q", _IMMEDIATELY) + b"".join(elements)
