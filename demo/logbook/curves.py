"""Curves as bytes: packed points, compressed lines, and the digest that a record has of them."""

import sys
import zlib
from array import array
from collections.abc import Mapping, Sequence
from hashlib import sha256
from itertools import chain
from typing import Final, TypeAlias

#: Seconds from the start, and what the line shows: bar, mS/cm, or the height of a label.
Point: TypeAlias = tuple[float, float]
#: Lines by the names of `brovik.chart.LineEnum`.
Curves: TypeAlias = Mapping[str, Sequence[Point]]

#: No line is longer when it is unpacked: sixteen million points.
_MOST_BYTES: Final = 1 << 28


def packed(points: Sequence[Point]) -> bytes:
    """x and y by turns, doubles, little-endian."""
    return _little_endian(array("d", chain.from_iterable(points))).tobytes()


def unpacked(data: bytes) -> list[Point]:
    """The points of packed ones. Raises ValueError if it is none or half of one."""
    values = array("d")
    values.frombytes(data)
    if len(values) % 2:
        raise ValueError("half a point")
    flat = _little_endian(values)
    return list(zip(flat[::2], flat[1::2]))


def _little_endian(values: "array[float]") -> "array[float]":
    if sys.byteorder == "big":
        values.byteswap()
    return values


def compressed(data: bytes) -> bytes:
    """A packed line as it is kept with a record."""
    return zlib.compress(data)


def decompressed(data: bytes) -> bytes:
    """The packed line. Raises ValueError if it cannot be had."""
    machine = zlib.decompressobj()
    try:
        result = machine.decompress(data, _MOST_BYTES)
    except zlib.error as error:
        raise ValueError(str(error)) from error
    if not machine.eof:
        raise ValueError("too long or cut off")
    return result


def digest(lines: Mapping[str, bytes]) -> str:
    """SHA-256 of all packed lines with their names."""
    total = sha256()
    for name, data in sorted(lines.items()):
        encoded = name.encode("utf-8", "replace")
        total.update(f"{len(encoded)} {len(data)} ".encode())
        total.update(encoded)
        total.update(data)
    return total.hexdigest()
