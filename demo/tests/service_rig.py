"""What the maintenance services work with, without host, threads and real time."""

import asyncio


class Clock:
    """Time that passes when someone waits for it to, and at no other moment."""

    def __init__(self) -> None:
        self.secs = 0.0

    def now(self) -> float:
        """Seconds since the beginning."""
        return self.secs

    async def sleep(self, secs: float) -> None:
        """Lets time pass, and everybody else have a turn."""
        self.secs += secs
        await asyncio.sleep(0)


class Printed:
    """A console that keeps what is printed: the stream and the line."""

    def __init__(self) -> None:
        self.lines: list[tuple[str, str]] = []

    def out(self, text: str) -> None:
        """A line of the standard output."""
        self.lines.append(("out", text))

    def err(self, text: str) -> None:
        """A line of the error output."""
        self.lines.append(("err", text))

    def stream(self, name: str) -> str:
        """All lines of one stream."""
        return "\n".join(text for stream, text in self.lines if stream == name)
