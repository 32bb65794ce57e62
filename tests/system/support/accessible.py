"""The program's screens as the accessibility bus shows them."""

from collections.abc import Callable, Iterator
from typing import Any, NamedTuple

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # pylint: disable=wrong-import-position

_CALL_TIMEOUT_MS = 5_000


class Box(NamedTuple):
    """A rectangle on the screen, in pixels."""

    x: int
    y: int
    width: int
    height: int

    @property
    def middle(self) -> tuple[int, int]:
        """The point to click on."""
        return self.x + self.width // 2, self.y + self.height // 2

    @property
    def plus(self) -> tuple[int, int]:
        """The point to click on for a step up, if it is that of a spin box."""
        return self.x + self.width - self.height // 2, self.middle[1]

    @property
    def minus(self) -> tuple[int, int]:
        """The point to click on for a step down, if it is that of a spin box."""
        return self.x + self.height // 2, self.middle[1]

    @property
    def bottom(self) -> int:
        """The first row below it."""
        return self.y + self.height


class Node:
    """One accessible thing of a screen. Ask again after the screen has changed: it may be gone."""

    def __init__(self, accessible: Any) -> None:
        self._accessible = accessible

    @property
    def name(self) -> str:
        """The text of a label or button, the name of anything else."""
        return str(self._accessible.get_name() or "")

    @property
    def description(self) -> str:
        """What is said of it beside its name."""
        return str(self._accessible.get_description() or "")

    @property
    def role(self) -> str:
        """Its role, such as `push button`, `label`, `check box`."""
        return str(self._accessible.get_role_name())

    @property
    def box(self) -> Box:
        """Where it stands on the screen."""
        extents = Atspi.Component.get_extents(self._accessible, Atspi.CoordType.SCREEN)
        return Box(extents.x, extents.y, extents.width, extents.height)

    @property
    def text(self) -> str:
        """What stands in a text field."""
        return str(Atspi.Text.get_text(self._accessible, 0, -1))

    @property
    def value(self) -> float:
        """The number of a slider or spin box."""
        return float(Atspi.Value.get_current_value(self._accessible))

    def has(self, state: Any) -> bool:
        """Whether that state of Atspi.StateType is set."""
        return bool(self._accessible.get_state_set().contains(state))

    @property
    def checked(self) -> bool:
        """Whether a switch is on."""
        return self.has(Atspi.StateType.CHECKED)

    def walk(self) -> Iterator["Node"]:
        """This and all that shows below it, in the order of the screen's tree."""
        yield self
        for index in range(self._accessible.get_child_count()):
            child = self._accessible.get_child_at_index(index)
            if child is not None and child.get_state_set().contains(Atspi.StateType.SHOWING):
                yield from Node(child).walk()


def connect() -> Any:
    """The root of all programs. Ask for it before the first program starts: two who call up the bus may miss
    each other for good."""
    desktop = Atspi.get_desktop(0)
    desktop.set_cache_mask(Atspi.Cache.NONE)
    desktop.get_child_count()
    return desktop


def application(pid: int) -> Node | None:
    """The program with that process id, if it has come to the bus."""
    desktop = connect()
    for index in range(desktop.get_child_count()):
        child = desktop.get_child_at_index(index)
        if child is not None and child.get_process_id() == pid:
            return Node(child)
    return None


def find(pid: int, matches: Callable[[Node], bool]) -> Node | None:
    """The first thing that shows in the program and matches; what vanishes meanwhile is not there."""
    try:
        root = application(pid)
        return next((node for node in root.walk() if matches(node)), None) if root else None
    except GLib.Error:
        return None


def find_all(pid: int, matches: Callable[[Node], bool]) -> list[Node]:
    """All that shows in the program and matches, in the order of the tree; none while the screen changes."""
    try:
        root = application(pid)
        return [node for node in root.walk() if matches(node)] if root else []
    except GLib.Error:
        return []


def names(pid: int) -> list[str]:
    """The texts that show in the program, in the order of the tree; none while the screen is changing."""
    try:
        root = application(pid)
        return [node.name for node in root.walk()] if root else []
    except GLib.Error:
        return []


Atspi.set_timeout(_CALL_TIMEOUT_MS, _CALL_TIMEOUT_MS)
