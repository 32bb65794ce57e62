"""What a power cut may leave of files, by a trace of what a program has done with them.

A file's content is safe once the file has been synced, a name once its directory has, or the file that it
names. What has not been synced may be on the disk or not, sector by sector and in any order; of the names,
those before another one that is there are there, too, as a journalling file system has it.
"""

import random
from collections.abc import Iterator
from dataclasses import dataclass, field
from pathlib import Path
from typing import Final

SECTOR: Final = 512


@dataclass(frozen=True)
class Action:
    """A line of the trace."""

    name: str
    words: tuple[str, ...]
    data: bytes = b""


def read_trace(path: Path) -> list[Action]:
    """All actions of a trace, in their order."""
    content, actions, place = path.read_bytes(), [], 0
    while place < len(content):
        end = content.index(b"\n", place)
        name, _, rest = content[place:end].decode().partition(" ")
        place, data = end + 1, b""
        if name == "write":
            size = int(rest.split(" ")[2])
            data, place = content[place : place + size], place + size + 1
        words = rest.split("\t") if name == "rename" else rest.split(" ", 2 if name == "write" else 1)
        actions.append(Action(name, (rest,) if name in ("mark", "unlink") else tuple(words), data))
    return actions


@dataclass
class _File:
    """A file: what of it is safe, and what has been done to it since."""

    safe: bytes = b""
    pending: list[Action] = field(default_factory=list)

    def sync(self) -> None:
        """All that has been done is safe."""
        self.safe = self.content(None, 1.0)
        self.pending = []

    def content(self, chance: random.Random | None, share: float) -> bytes:
        """What is on the disk if that share of what is pending has come there."""
        content = bytearray(self.safe)
        for action in self.pending:
            if action.name == "truncate":
                if _comes(chance, share):
                    _resize(content, int(action.words[1]))
            else:
                self._write(content, action, chance, share)
        return bytes(content)

    @staticmethod
    def _write(content: bytearray, action: Action, chance: random.Random | None, share: float) -> None:
        begin = int(action.words[1])
        end = begin + len(action.data)
        for start in range(begin - begin % SECTOR, end, SECTOR):
            first, last = max(start, begin), min(start + SECTOR, end)
            if _comes(chance, share):
                if len(content) < last:
                    _resize(content, last)
                content[first:last] = action.data[first - begin : last - begin]


def _comes(chance: random.Random | None, share: float) -> bool:
    return share > 0.0 and (chance is None or chance.random() < share)


def _resize(content: bytearray, size: int) -> None:
    del content[size:]
    content.extend(bytes(size - len(content)))


@dataclass
class _Names:
    """Which name stands for which file: what of it is safe, and what has been done since."""

    safe: dict[str, _File] = field(default_factory=dict)
    pending: list[tuple[str, str, _File | None]] = field(default_factory=list)

    def now(self, count: int | None = None) -> dict[str, _File]:
        """The names if so many of the pending actions have come to the disk; all if not said."""
        names = dict(self.safe)
        for name, path, file in self.pending[:count]:
            if name == "link" and file is not None:
                names[path] = file
            else:
                names.pop(path, None)
        return names

    def sync(self, count: int | None = None) -> None:
        """So many are safe."""
        self.safe = self.now(count)
        del self.pending[: len(self.pending) if count is None else count]


class Disk:
    """The state of a disk after a part of a trace."""

    def __init__(self) -> None:
        self._files: dict[str, _File] = {}
        self._names = _Names()

    def begin_with(self, path: str, content: bytes) -> None:
        """There has been such a file for long."""
        self._names.safe[path] = _File(content)

    def apply(self, action: Action) -> None:
        """Does what the program has done."""
        words = action.words
        match action.name:
            case "create":
                self._files[words[0]] = _File()
                if len(words) > 1:
                    self._names.pending.append(("link", words[1], self._files[words[0]]))
            case "link":
                self._names.pending.append(("link", words[1], self._files[words[0]]))
            case "write" | "truncate":
                self._files[words[0]].pending.append(action)
            case "sync":
                self._sync(self._files[words[0]])
            case "syncdir":
                self._names.sync()
            case "rename":
                file = self._names.now()[words[0]]
                # In one action: a name is never missing in between.
                self._names.pending.append(("link", words[1], file))
                self._names.pending.append(("unlink", words[0], None))
            case "unlink":
                self._names.pending.append(("unlink", words[0], None))

    def _sync(self, file: _File) -> None:
        file.sync()
        own = [i for i, (_, _, named) in enumerate(self._names.pending, 1) if named is file]
        self._names.sync(max(own, default=0))

    def states(self, chance: random.Random, more: int) -> Iterator[dict[str, bytes]]:
        """What a cut may leave now: nothing of what is pending, all of it, and so many mixtures."""
        count = len(self._names.pending)
        yield self._state(chance, 0.0, 0)
        yield self._state(None, 1.0, count)
        for _ in range(more):
            yield self._state(chance, chance.choice((0.1, 0.5, 0.9)), chance.randint(0, count))

    def _state(self, chance: random.Random | None, share: float, names: int) -> dict[str, bytes]:
        return {path: file.content(chance, share) for path, file in self._names.now(names).items()}
