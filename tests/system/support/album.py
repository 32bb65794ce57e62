"""Pictures of the program's windows."""

from pathlib import Path

from support import desktop


class Album:
    """Numbered pictures in a folder, which starts empty."""

    def __init__(self, folder: Path) -> None:
        self._folder = folder
        self._count = 0
        folder.mkdir(parents=True, exist_ok=True)
        for old in folder.glob("[0-9][0-9]-*.png"):
            old.unlink()

    def take(self, name: str, window: str) -> None:
        """Takes the next picture, of the window with that id, once nothing moves there."""
        # A touch display has no pointer that hovers.
        desktop.park_pointer()
        desktop.wait_until_still(window)
        self._take(name, window)

    def take_moving(self, name: str, window: str) -> None:
        """Takes the next picture, of a window that does not come to rest."""
        desktop.park_pointer()
        self._take(name, window)

    def _take(self, name: str, window: str) -> None:
        self._count += 1
        path = self._folder / f"{self._count:02}-{name}.png"
        desktop.screenshot(path, window)
        print(path, flush=True)
