"""The size and the theme of the program's window."""

from typing import NamedTuple

from support.panel import Panel

TO_LIGHT = "Helles Design"
TO_DARK = "Dunkles Design"


class Look(NamedTuple):
    """A size in pixels, and a theme."""

    width: int
    height: int
    dark: bool

    def __str__(self) -> str:
        return f"{self.width}x{self.height}-{'dunkel' if self.dark else 'hell'}"

    @property
    def stored(self) -> bytes:
        """The settings file of a window that looks so."""
        return f"[window]\nwidth={self.width}\nheight={self.height}\ndark={str(self.dark).lower()}\n".encode()

    def put_on(self, program: Panel) -> None:
        """Makes the running program look so."""
        program.resize(self.width, self.height)
        go_to_theme(program, self.dark)


def go_to_theme(program: Panel, dark: bool) -> None:
    """Shows the program in that theme."""
    press, then = (TO_DARK, TO_LIGHT) if dark else (TO_LIGHT, TO_DARK)
    program.wait_for("a theme", lambda: program.find(press) or program.find(then))
    if program.find(press):
        program.click(press)
        program.wait_until_shown(then)


_ALL = [Look(width, height, dark) for width, height in ((800, 1200), (720, 950)) for dark in (True, False)]
#: What the pages are made for, by name.
LOOKS = {str(look): look for look in _ALL}
