"""Pictures of the program's window."""

from pathlib import Path

from desktop import screenshot
from panel import Panel

TO_LIGHT = "Helles Design"
TO_DARK = "Dunkles Design"


def to_light(program: Panel) -> None:
    """Goes from the dark theme to the light one."""
    program.click(TO_LIGHT)
    program.wait_until_shown(TO_DARK)


def to_dark(program: Panel) -> None:
    """Goes from the light theme to the dark one."""
    program.click(TO_DARK)
    program.wait_until_shown(TO_LIGHT)


class Album:
    """Numbered pictures of the program's window in a folder, which starts empty."""

    def __init__(self, program: Panel, folder: Path) -> None:
        self._program = program
        self._folder = folder
        self._count = 0
        folder.mkdir(parents=True, exist_ok=True)
        for old in folder.glob("[0-9][0-9]-*.png"):
            old.unlink()

    def take(self, name: str) -> None:
        """Takes the next picture."""
        self._count += 1
        path = self._folder / f"{self._count:02}-{name}.png"
        screenshot(path, self._program.window)
        print(path, flush=True)

    def take_both_themes(self, name: str) -> None:
        """Takes a picture in the dark theme, which is in force, and one in the light theme."""
        self.take(f"{name}-dunkel")
        to_light(self._program)
        self.take(f"{name}-hell")
        to_dark(self._program)
