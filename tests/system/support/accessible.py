"""The program's screens, as it tells them to assistive technology."""

import json
import socket
from pathlib import Path
from typing import Any, Final, NamedTuple

_TIMEOUT_SECS: Final = 5.0
#: What the accessibility bus calls the roles of Qt; others have Qt's name.
_ROLES: Final = {
    "Button": "push button",
    "CheckBox": "check box",
    "ComboBox": "combo box",
    "Dialog": "dialog",
    "EditableText": "text",
    "Indicator": "unknown",
    "MenuItem": "menu item",
    "PageTab": "page tab",
    "PageTabList": "page tab list",
    "Password": "password text",
    "ProgressBar": "progress bar",
    "Slider": "slider",
    "SpinBox": "spin button",
    "StaticText": "label",
    "Window": "frame",
}


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


class Node(NamedTuple):
    """One thing of a screen, as it was when the screen was read."""

    role: str  # such as `push button`, `label`, `check box`
    name: str  # the text of a label or button, the name of anything else
    description: str  # what is said of it beside its name
    box: Box
    checked: bool  # whether a switch is on
    text: str  # what stands in a text field
    value: float  # the number of a slider or spin box


def read(screen: Path) -> list[Node]:
    """All that shows in the program with that socket, in the order of the tree; nothing without a program."""
    try:
        with socket.socket(socket.AF_UNIX) as connection:
            connection.settimeout(_TIMEOUT_SECS)
            connection.connect(str(screen))
            with connection.makefile(encoding="utf-8") as stream:
                return [_node(told) for told in json.load(stream)]
    except (OSError, ValueError):
        # It is starting, or ends just now.
        return []


def _node(told: dict[str, Any]) -> Node:
    return Node(
        _ROLES.get(told["role"], told["role"]),
        told["name"],
        told["description"],
        Box(*told["box"]),
        told["checked"],
        told.get("text", ""),
        told.get("value", 0.0),
    )
