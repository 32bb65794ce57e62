"""Pictures of the board's screen."""

import re
import struct
import zlib
from dataclasses import dataclass
from pathlib import Path

_BYTES = 3


@dataclass(frozen=True)
class Picture:
    """What the screen shows: rows of red, green and blue."""

    width: int
    height: int
    pixels: bytes

    @classmethod
    def read(cls, path: Path) -> "Picture":
        """Reads a portable pixmap, as the emulator writes it."""
        data = path.read_bytes()
        header = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", data)
        if not header:
            raise ValueError(f"{path} is no pixmap")
        return cls(int(header[1]), int(header[2]), data[header.end() :])

    def part(self, left: int, top: int, width: int, height: int) -> "Picture":
        """A rectangle of it."""
        line = self.width * _BYTES
        starts = (row * line + left * _BYTES for row in range(top, top + height))
        return Picture(
            width, height, b"".join(self.pixels[start : start + width * _BYTES] for start in starts)
        )

    def turned(self) -> "Picture":
        """It, turned clockwise by a quarter."""
        line = self.width * _BYTES
        rows = [self.pixels[start : start + line] for start in range(0, len(self.pixels), line)]
        columns = (
            b"".join(row[column : column + _BYTES] for row in reversed(rows))
            for column in range(0, line, _BYTES)
        )
        return Picture(self.height, self.width, b"".join(columns))

    def sample(self, step: int = 7) -> list[bytes]:
        """The colour of each so many pixels."""
        places = range(0, len(self.pixels) - _BYTES + 1, _BYTES * step)
        return [self.pixels[place : place + _BYTES] for place in places]

    def colours(self) -> int:
        """How many colours it has, by a sample: a bare background has few."""
        return len(set(self.sample()))

    def changed(self, before: "Picture") -> float:
        """The share that looks other than before."""
        if (self.width, self.height) != (before.width, before.height):
            return 1.0
        pairs = list(zip(self.sample(), before.sample(), strict=True))
        return sum(now != then for now, then in pairs) / len(pairs)

    def save(self, path: Path) -> None:
        """Writes it as PNG."""

        def chunk(kind: bytes, body: bytes) -> bytes:
            return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

        line = self.width * _BYTES
        rows = b"".join(b"\0" + self.pixels[i : i + line] for i in range(0, len(self.pixels), line))
        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        chunks = chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b"")
        path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunks)
